// zucmtr check: what the library makes of an ini file, in words.
#pragma once

#include "command.h"

namespace CLI {
class App;
}

/// Adds the subcommand to the parser. The object behind `chosen` must outlive the parsing.
void AddCheckCommand(CLI::App& app, Action& chosen);
