// zucmtr export: a recording or a COMTRADE record in another form.
#pragma once

#include "zucmtr/terminal/command.h"

namespace CLI {
class App;
}

/// Adds the subcommand to the parser. `chosen` must outlive the parsing.
void AddExportCommand(CLI::App& app, Action& chosen);
