// zucmtr verify.
#pragma once

#include "zucmtr/terminal/command.h"

namespace CLI {
class App;
}

/// Adds the subcommand; `chosen` becomes its work when the command line names it.
void AddVerifyCommand(CLI::App& app, Action& chosen);
