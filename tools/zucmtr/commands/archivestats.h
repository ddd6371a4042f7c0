// zucmtr archive stats: numbers about the catalogue.
#pragma once

#include "zucmtr/terminal/command.h"

namespace CLI {
class App;
}

void AddArchiveStats(CLI::App& archive, Action& chosen);
