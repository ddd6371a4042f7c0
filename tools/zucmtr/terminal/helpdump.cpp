#include "zucmtr/terminal/helpdump.h"

#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/helpformat.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <QJsonArray>

namespace {

QString ValueOf(const CLI::Option& option)
{
    if (option.get_positional())
        return FromUtf8(option.get_name(true, false));
    return option.get_type_size() == 0 ? QString() : FromUtf8(option.get_type_name());
}

// In the order of the command: the parser sorts them by their addresses, which differ from run to run.
QJsonArray ExcludedBy(const CLI::Option& option, const std::vector<CLI::Option*>& options)
{
    const std::set<CLI::Option*> excluded = option.get_excludes();
    QJsonArray names;
    for (CLI::Option* other : options)
        if (excluded.count(other) > 0)
            names << FromUtf8(other->get_name());
    return names;
}

QJsonArray EntriesOf(const std::vector<CLI::Option*>& options, bool positional)
{
    QJsonArray entries;
    for (CLI::Option* option : options) {
        if (option->get_positional() != positional)
            continue;
        entries << QJsonObject{
            {"flags", QJsonArray::fromStringList(FlagsOf(*option))},
            {"value", ValueOf(*option)},
            {"shown", ShownName(ValueOf(*option))},
            {"required", option->get_required()},
            {"repeated", option->get_expected_max() == CLI::detail::expected_max_vector_size},
            {"excludes", ExcludedBy(*option, options)},
            {"description", FromUtf8(option->get_description())},
            {"choices", QJsonArray::fromStringList(values::OfferedWords(*option))},
        };
    }
    return entries;
}

} // namespace

QJsonObject HelpDump(CLI::App& command, const QStringList& words)
{
    const std::vector<CLI::Option*> options =
        command.get_options([](const CLI::Option* one) { return !IsHidden(*one); });
    QJsonArray commands;
    for (CLI::App* below : command.get_subcommands([](const CLI::App*) { return true; }))
        commands << HelpDump(*below, words + QStringList{FromUtf8(below->get_name())});
    return {
        {"words", QJsonArray::fromStringList(words)},
        {"description", FromUtf8(command.get_description())},
        {"positionals", EntriesOf(options, true)},
        {"options", EntriesOf(options, false)},
        {"commands", commands},
        {"footer", FromUtf8(command.get_footer())},
    };
}
