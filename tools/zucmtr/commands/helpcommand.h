// zucmtr help: the help of the program or of a command, the same as --help.
#pragma once

#include "zucmtr/terminal/command.h"

namespace CLI {
class App;
}

/// Adds the subcommand to the parser, after those that it lists. `chosen` must outlive the parsing.
void AddHelpCommand(CLI::App& app, Action& chosen);
