// The options of what is exported, and in which form.
#pragma once

#include "forms/requestwords.h"

namespace CLI {
class App;
}

/// Adds them to a subcommand; options must live as long as it.
void AddExportFormOptions(CLI::App& command, forms::FormWords& options);
void AddExportPartOptions(CLI::App& command, forms::PartWords& options);

/// What the command line calls them.
inline constexpr forms::OptionNames ExportOptionNames = {
    "--form", "--data", "--revision", "--out-encoding", "--side",  "--time", "--decimal-comma",
    "--from", "--to",   "--window",   "--channels",     "--every", "--rate", "--out"};
