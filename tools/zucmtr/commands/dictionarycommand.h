// zucmtr dictionary: a first sorting dictionary for the channels of a recording.
#pragma once

#include "zucmtr/terminal/command.h"

namespace CLI {
class App;
}

/// Adds the subcommand to the parser. `chosen` must outlive the parsing.
void AddDictionaryCommand(CLI::App& app, Action& chosen);
