// zucmtr view: a recording or a COMTRADE record as a page to look at, or as a picture.
#pragma once

#include "zucmtr/terminal/command.h"

namespace CLI {
class App;
}

/// Adds the subcommand to the parser. The object behind `chosen` must outlive the parsing.
void AddViewCommand(CLI::App& app, Action& chosen);

/// Whether these arguments ask for a picture: only then the program needs the painter's application.
bool PaintsPicture(int count, char** arguments);
