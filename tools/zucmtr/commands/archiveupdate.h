// zucmtr archive update: the catalogue brought up to date with the files.
#pragma once

#include "zucmtr/terminal/command.h"

namespace CLI {
class App;
}

void AddArchiveUpdate(CLI::App& archive, Action& chosen);
