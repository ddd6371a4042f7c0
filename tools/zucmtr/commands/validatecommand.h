// zucmtr validate: whether records keep to the standard.
#pragma once

#include "zucmtr/terminal/command.h"

namespace CLI {
class App;
}

void AddValidateCommand(CLI::App& app, Action& chosen);
