#include "zucmtr/terminal/parsertexts.h"

#include "explain/pattern.h"
#include "inicheck/nearest.h"
#include "text/error.h"
#include "text/texts.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/helpformat.h"

#include <CLI/CLI.hpp>

#include <QFileInfo>

namespace {

// The parser's own texts, with what varies as %1 and %2, and the texts that replace them.
struct OwnText
{
    const char* parser;
    const char* text;
};

const OwnText OwnTexts[] = {
    {"%1 is required", QT_TRANSLATE_NOOP("parser", "%1 is required")},
    {"%1 requires %2", QT_TRANSLATE_NOOP("parser", "%1 is given without %2; give both")},
    {"%1 excludes %2", QT_TRANSLATE_NOOP("parser", "%1 and %2 exclude each other; leave one out")},
    {"%1: 1 required %2 missing", QT_TRANSLATE_NOOP("parser", "%1: the value is missing (%2)")},
    {"%1: At Most 1 required but received %2",
     QT_TRANSLATE_NOOP("parser", "%1 is given %2 times; give it once")},
    {"Could not convert: %1 = %2", QT_TRANSLATE_NOOP("parser", "%1 takes no value; leave '%2' out")},
    {"%1: %2", QT_TRANSLATE_NOOP("parser", "%1: %2")}, // of the checks in values.h
};

std::vector<const CLI::App*> CommandsOf(const CLI::App& app)
{
    return app.get_subcommands([](const CLI::App*) { return true; });
}

// Those below the command, and those below them.
std::vector<const CLI::App*> AllBelow(const CLI::App& app)
{
    std::vector<const CLI::App*> all;
    for (const CLI::App* command : CommandsOf(app)) {
        all.push_back(command);
        const std::vector<const CLI::App*> below = AllBelow(*command);
        all.insert(all.end(), below.begin(), below.end());
    }
    return all;
}

QStringList CommandNames(const CLI::App& app)
{
    QStringList names;
    for (const CLI::App* command : CommandsOf(app))
        names << FromUtf8(command->get_name());
    return names;
}

QStringList OptionNames(const CLI::App& app)
{
    QStringList names;
    for (const CLI::Option* option : app.get_options([](const CLI::Option* one) { return !IsHidden(*one); }))
        names << FlagsOf(*option);
    return names;
}

QStringList CommandsWithOption(const CLI::App& root, const QString& option)
{
    QStringList commands;
    for (const CLI::App* command : AllBelow(root)) {
        if (OptionNames(*command).contains(option))
            commands << Tr("parser", "'%1'").arg(CommandName(*command));
    }
    return commands;
}

QString UnknownOptionText(const CLI::App& root, const CLI::App& command, const QString& word)
{
    const QString option = word.section(QLatin1Char('='), 0, 0);
    const QString unknown = Tr("parser", "'%1' has no option %2").arg(CommandName(command), option);
    const QStringList others = CommandsWithOption(root, option);
    if (!CommandsWithOption(command, option).isEmpty())
        return Tr("parser", "%1 is before the command; put it after").arg(option);
    if (!others.isEmpty())
        return unknown + Tr("parser", "; it is one of %1").arg(others.join(QLatin1String(", ")));
    const QString nearest = option.size() > 2
                                ? inicheck::Nearest(option, OptionNames(command).filter(QStringLiteral("--")))
                                : QString();
    return nearest.isEmpty() ? unknown : unknown + Tr("parser", "; did you mean %1?").arg(nearest);
}

QString SuperfluousText(const CLI::App& command, const QString& word)
{
    const std::vector<const CLI::Option*> positionals =
        command.get_options([](const CLI::Option* option) { return option->get_positional(); });
    if (positionals.empty())
        return Tr("parser", "'%1' is too much: '%2' takes nothing but options")
            .arg(word, CommandName(command));
    const auto name = [&](size_t i) { return ShownName(FromUtf8(positionals[i]->get_name(true, false))); };
    if (positionals.size() > 1)
        return Tr("parser", "'%1' is too much: '%2' takes one %3 and one %4")
            .arg(word, CommandName(command), name(0), name(1));
    return Tr("parser", "'%1' is too much: '%2' takes one %3").arg(word, CommandName(command), name(0));
}

// What the parser could not place. Empty if there is nothing.
QString UnexpectedText(const CLI::App& root)
{
    for (const CLI::App* place : GivenCommands(root)) {
        for (const std::string& left : place->remaining()) {
            const QString word = FromUtf8(left);
            if (word == QLatin1String("--"))
                continue;
            if (word.startsWith(QLatin1Char('-')) && word.size() > 1)
                return UnknownOptionText(root, *place, word);
            return CommandsOf(*place).empty() ? SuperfluousText(*place, word)
                                              : UnknownCommandText(*place, word);
        }
    }
    return QString();
}

} // namespace

QString CommandName(const CLI::App& app)
{
    const CLI::App* above = app.get_parent();
    return above == nullptr ? QStringLiteral("zucmtr")
                            : CommandName(*above) + QLatin1Char(' ') + FromUtf8(app.get_name());
}

NamedCommand CommandNamed(CLI::App& app, const QStringList& words)
{
    NamedCommand named{&app, words};
    while (!named.rest.isEmpty()) {
        const std::vector<CLI::App*> found = named.command->get_subcommands(
            [&](const CLI::App* one) { return FromUtf8(one->get_name()) == named.rest.first(); });
        if (found.empty())
            break;
        named.command = found.front();
        named.rest.removeFirst();
    }
    return named;
}

std::vector<const CLI::App*> GivenCommands(const CLI::App& app)
{
    std::vector<const CLI::App*> given = {&app};
    while (!given.back()->get_subcommands().empty())
        given.push_back(given.back()->get_subcommands().back());
    return given;
}

QString NoCommandText(const CLI::App& app)
{
    const CLI::App& last = *GivenCommands(app).back();
    return &last == &app ? Tr("parser", "no command is given")
                         : Tr("parser", "say what '%1' is to do: %2")
                               .arg(CommandName(last), CommandNames(last).join(QLatin1String(", ")));
}

QString UnknownCommandText(const CLI::App& app, const QString& word)
{
    if (CommandsOf(app).empty())
        return Tr("parser", "'%1' is too much: '%2' has no commands").arg(word, CommandName(app));
    if (QFileInfo::exists(word)) {
        const QString command =
            CommandName(app) + QLatin1Char(' ') +
            (app.get_parent() == nullptr ? QStringLiteral("info") : CommandNames(app).first());
        return Tr("parser", "'%1' is no command; say first what to do with it, as in: %2 %3")
            .arg(word, command, ShellWord(word));
    }
    const QString unknown = app.get_parent() == nullptr
                                ? Tr("parser", "there is no command '%1'").arg(word)
                                : Tr("parser", "'%1' has no command '%2'").arg(CommandName(app), word);
    const QStringList names = CommandNames(app);
    const QString nearest = inicheck::Nearest(word, names);
    if (!nearest.isEmpty())
        return unknown + Tr("parser", "; did you mean '%1'?").arg(nearest);
    return unknown + Tr("parser", "; there are %1").arg(names.join(QLatin1String(", ")));
}

QString ParseErrorText(const CLI::App& app, const CLI::ParseError& error)
{
    // A misspelt option comes first: other errors may follow from it.
    QString unexpected = UnexpectedText(app);
    if (!unexpected.isEmpty())
        return unexpected;
    QString text = text::MessageOf(error);
    for (const OwnText& own : OwnTexts) {
        std::optional<QStringList> values = explain::PlacesOf(text, QLatin1String(own.parser));
        if (!values)
            continue;
        std::transform(values->begin(), values->end(), values->begin(), ShownName);
        return explain::Filled(Tr("parser", own.text), *values);
    }
    return text;
}

QString SlipText(CLI::App& app, const QStringList& arguments)
{
    // Without this, the help of the program would be printed if it is asked for.
    const NamedCommand named = CommandNamed(app, arguments);
    if (!named.rest.isEmpty() && !named.rest.first().startsWith(QLatin1Char('-')) &&
        !CommandsOf(*named.command).empty())
        return UnknownCommandText(*named.command, named.rest.first());
    QStringList options;
    for (const CLI::App* command : AllBelow(app)) {
        if (arguments.contains(FromUtf8(command->get_name())))
            options << OptionNames(*command);
    }
    for (const QString& argument : arguments) {
        if (argument == QLatin1String("--"))
            break;
        if (argument.startsWith(QLatin1String("--")) &&
            argument.indexOf(QLatin1Char('=')) == argument.size() - 1)
            return Tr("parser", "%1 has no value after the '='").arg(argument);
        if (options.contains(QLatin1Char('-') + argument.section(QLatin1Char('='), 0, 0)))
            return Tr("parser", "'%1' has one dash only; did you mean -%1?").arg(argument);
    }
    return QString();
}
