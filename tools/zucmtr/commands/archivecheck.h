// zucmtr archive check: the catalogue held against the files.
#pragma once

#include "zucmtr/terminal/command.h"

namespace CLI {
class App;
}

void AddArchiveCheck(CLI::App& archive, Action& chosen);
