// zucmtr convert: recordings into COMTRADE records.
#pragma once

#include "zucmtr/terminal/command.h"

namespace CLI {
class App;
}

/// Adds the subcommand to the parser. `chosen` must outlive the parsing.
void AddConvertCommand(CLI::App& app, Action& chosen);
