// zucmtr help: the help of the program or of a command, as --help.
#pragma once

#include "zucmtr/terminal/command.h"

namespace CLI {
class App;
}

/// Adds the subcommand to the parser, after all the others: it lists them. The object behind `chosen` must
/// outlive the parsing.
void AddHelpCommand(CLI::App& app, Action& chosen);
