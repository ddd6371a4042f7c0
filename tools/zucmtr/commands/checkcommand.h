// zucmtr check: explains what is wrong with an ini file.
#pragma once

#include "zucmtr/terminal/command.h"

namespace CLI {
class App;
}

void AddCheckCommand(CLI::App& app, Action& chosen);
