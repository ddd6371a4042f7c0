#include "zucmtr/commands/archivecommand.h"

#include "text/texts.h"
#include "zucmtr/commands/archiveupdate.h"

#include <CLI/CLI.hpp>

void AddArchiveCommand(CLI::App& app, Action& chosen)
{
    CLI::App* command = app.add_subcommand(
        "archive", HelpText("archive", "Keep a catalogue of many recordings and records, and search it"));
    command->require_subcommand(1);
    AddArchiveUpdate(*command, chosen);
}
