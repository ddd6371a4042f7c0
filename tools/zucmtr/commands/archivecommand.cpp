#include "zucmtr/commands/archivecommand.h"

#include "text/texts.h"
#include "zucmtr/commands/archivefind.h"
#include "zucmtr/commands/archivepage.h"
#include "zucmtr/commands/archivestats.h"
#include "zucmtr/commands/archiveupdate.h"

#include <CLI/CLI.hpp>

void AddArchiveCommand(CLI::App& app, Action& chosen)
{
    CLI::App* command = app.add_subcommand(
        "archive", HelpText("archive", "Keep a catalogue of many recordings and records, and search it"));
    command->require_subcommand(0, 1);
    AddArchivePage(*command, chosen);
    AddArchiveUpdate(*command, chosen);
    AddArchiveFind(*command, chosen);
    AddArchiveStats(*command, chosen);
    // Set after the commands were added, which would inherit it.
    command->footer(HelpText("archive", "Example:\n"
                                        "  zucmtr archive update recordings\n"
                                        "  zucmtr archive find recordings --kind single --longer-than 80ms"));
}
