// zucmtr info: what is in a recording or a record.
#pragma once

#include "zucmtr/terminal/command.h"

namespace CLI {
class App;
}

/// Adds the subcommand to the parser. `chosen` must outlive the parsing.
void AddInfoCommand(CLI::App& app, Action& chosen);
