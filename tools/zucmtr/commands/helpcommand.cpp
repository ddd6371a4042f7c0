#include "zucmtr/commands/helpcommand.h"

#include "text/texts.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/helpdump.h"
#include "zucmtr/terminal/parsertexts.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace {

struct HelpOptions
{
    std::vector<std::string> command;
    bool dump = false;
};

std::vector<std::string> Commands(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        names.push_back(command->get_name());
    return names;
}

int PrintHelp(CLI::App& app, const HelpOptions& options)
{
    const NamedCommand named = CommandNamed(app, FromUtf8(options.command));
    const QString name = CommandName(*named.command);
    if (!named.rest.isEmpty())
        throw UsageError(UnknownCommandText(*named.command, named.rest.first()), name);
    if (options.dump)
        PrintJson(HelpDump(*named.command, name.split(QLatin1Char(' '))));
    else
        std::cout << app.get_formatter()->make_help(named.command, name.toStdString(),
                                                    CLI::AppFormatMode::Normal)
                  << std::flush;
    return ExitDone;
}

} // namespace

void AddHelpCommand(CLI::App& app, Action& chosen)
{
    CLI::App* command =
        app.add_subcommand("help", HelpText("help", "Print the help of the program or of a command"));
    const auto options = std::make_shared<HelpOptions>();
    const std::vector<std::string> commands = Commands(app);
    AddValue(*command, "COMMAND", options->command, "",
             Tr("help", "The command, and the one below it: %1")
                 .arg(FromUtf8(CLI::detail::join(commands, ", ")))
                 .toStdString())
        ->check(values::Offer(commands));
    command->add_flag("--dump-json", options->dump)->group(std::string()); // for the build, not for users
    command->footer(HelpText("help", "Examples:\n"
                                     "  zucmtr help convert\n"
                                     "  zucmtr help archive find"));
    command->callback(
        [options, &app, &chosen] { chosen = [options, &app] { return PrintHelp(app, *options); }; });
}
