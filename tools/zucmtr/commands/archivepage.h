// zucmtr archive page: the catalogue as a directory for the browser.
#pragma once

#include "zucmtr/terminal/command.h"

namespace CLI {
class App;
}

void AddArchivePage(CLI::App& archive, Action& chosen);
