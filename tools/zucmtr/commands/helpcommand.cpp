#include "zucmtr/commands/helpcommand.h"

#include "text/texts.h"
#include "zucmtr/terminal/parsertexts.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>
#include <string>

namespace {

std::string Commands(const CLI::App& app)
{
    return CLI::detail::join(
        app.get_subcommands([](const CLI::App*) { return true; }),
        [](const CLI::App* command) { return command->get_name(); }, ", ");
}

int PrintHelp(const CLI::App& app, const std::string& name)
{
    const CLI::App* command = &app;
    if (!name.empty()) {
        const auto found = app.get_subcommands([&](const CLI::App* one) { return one->get_name() == name; });
        if (found.empty())
            throw UsageError(UnknownCommandText(app, Text(name)), QStringLiteral("zucmtr"));
        command = found.front();
    }
    const std::string words = name.empty() ? "zucmtr" : "zucmtr " + name;
    std::cout << app.get_formatter()->make_help(command, words, CLI::AppFormatMode::Normal) << std::flush;
    return ExitDone;
}

} // namespace

void AddHelpCommand(CLI::App& app, Action& chosen)
{
    CLI::App* command =
        app.add_subcommand("help", HelpText("help", "Print the help of the program or of a command"));
    const auto name = std::make_shared<std::string>();
    command
        ->add_option("COMMAND", *name, Tr("help", "The command: %1").arg(Text(Commands(app))).toStdString())
        ->type_name("");
    command->footer(HelpText("help", "Example:\n"
                                     "  zucmtr help convert"));
    command->callback([name, &app, &chosen] { chosen = [name, &app] { return PrintHelp(app, *name); }; });
}
