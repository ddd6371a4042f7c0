// zucmtr events: what happened in a recording or a record.
#pragma once

#include "zucmtr/terminal/command.h"

namespace CLI {
class App;
}

/// Adds the subcommand to the parser. `chosen` must outlive the parsing.
void AddEventsCommand(CLI::App& app, Action& chosen);
