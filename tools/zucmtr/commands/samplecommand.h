// zucmtr sample: a station with recordings to try the program on.
#pragma once

#include "zucmtr/terminal/command.h"

#include <QString>

namespace CLI {
class App;
}

/// Adds the subcommand to the parser. `program` is how the user called the program, for the command that is
/// printed. `chosen` must outlive the parsing.
void AddSampleCommand(CLI::App& app, Action& chosen, const QString& program);
