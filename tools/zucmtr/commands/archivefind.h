// zucmtr archive find: entries of the catalogue that meet conditions.
#pragma once

#include "zucmtr/terminal/command.h"

namespace CLI {
class App;
}

void AddArchiveFind(CLI::App& archive, Action& chosen);
