#include "zucmtr/commands/workoptions.h"

#include "text/texts.h"
#include "zucmtr/commands/deviceoptions.h"
#include "zucmtr/host/linefile.h"
#include "zucmtr/terminal/checks.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

void AddWorkOptions(CLI::App& command, WorkOptions& options)
{
    command.add_flag("--view", options.view,
                     HelpText("work", "Write a page for the browser beside each record, as 'zucmtr view'"));
    command.add_flag("--events", options.events,
                     HelpText("work", "Write what happened beside each record, as 'zucmtr events': "
                                      "NAME.events.json and NAME.events.txt"));
    AddLinesOption(command, options.lines);
    CLI::Option* verify =
        command.add_flag("--verify")
            ->description(
                HelpText("work", "Read each record back and compare it with its recording (the default)"));
    command.add_flag("--no-verify", options.noVerify, HelpText("work", "Do not read the records back"))
        ->excludes(verify);
    CLI::Option* remove = command.add_flag(
        "--remove-source", options.removeSource,
        HelpText("work", "Delete each recording after its record is verified and on the disk"));
    AddValue(command, "--archive", options.archive, "DIR",
             HelpText("work", "Existing directory to which each recording is moved after its record "
                              "is verified and on the disk"))
        ->excludes(remove);
    AddValue(command, "--catalogue", options.catalogue, "ADDRESS",
             HelpText("work", "Write each record and its recording into this catalogue, too, as 'zucmtr "
                              "archive update': a file, or postgresql://user@host/database"));
}

bool PutsAway(const WorkOptions& options)
{
    return options.removeSource || !options.archive.empty();
}

WorkOrder OrderOf(const WorkOptions& options, const QString& out)
{
    if (PutsAway(options) && options.noVerify)
        throw ConfigurationError(
            Tr("work", "--remove-source and --archive need a verified record; leave --no-verify out"));
    WorkOrder order;
    order.out = out;
    order.verify = !options.noVerify;
    order.view = options.view;
    order.events = options.events;
    order.removeSource = options.removeSource;
    if (!options.archive.empty())
        order.archive = CheckedDirectory(QStringLiteral("--archive"), FromUtf8(options.archive));
    return order;
}

std::unique_ptr<archive::Scribes> ScribesOf(const WorkOptions& options, const DeviceChoice& choice,
                                            size_t count)
{
    if (options.catalogue.empty())
        return nullptr;
    const archive::Reading reading{choice, false, FromUtf8(options.lines)};
    return std::make_unique<archive::Scribes>(FromUtf8(options.catalogue), reading, count);
}

void AddSummary(WorkOrder& order, const WorkOptions& options, bool summary, const QString& ini)
{
    order.summary = summary;
    if (!order.events && !summary && !order.view)
        return;
    LineData data = LoadLines(QString::fromStdString(options.lines), ini, QString());
    order.lines = std::move(data.lines);
    order.lineFile = data.path;
}
