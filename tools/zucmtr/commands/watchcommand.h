// zucmtr watch: converts recordings as they arrive.
#pragma once

#include "zucmtr/terminal/command.h"

namespace CLI {
class App;
}

void AddWatchCommand(CLI::App& app, Action& chosen);
