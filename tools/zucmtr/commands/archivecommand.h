// zucmtr archive: the catalogue of many recordings and records.
#pragma once

#include "zucmtr/terminal/command.h"

namespace CLI {
class App;
}

void AddArchiveCommand(CLI::App& app, Action& chosen);
