// zucmtr view: a recording or a COMTRADE record as a page to look at, or as a picture.
#pragma once

#include "zucmtr/terminal/command.h"

namespace CLI {
class App;
}

/// Adds the subcommand to the parser. `chosen` must outlive the parsing.
void AddViewCommand(CLI::App& app, Action& chosen);

/// Whether these arguments ask for a picture: only then does the program need an application that can paint.
bool PaintsPicture(int count, char** arguments);
