#include "zucmtr/terminal/helpformat.h"

#include "text/texts.h"
#include "zucmtr/terminal/command.h"

namespace {

// Texts that the parser itself writes into the help.
const char* const Headings[] = {
    QT_TRANSLATE_NOOP("parser", "Usage"),      QT_TRANSLATE_NOOP("parser", "OPTIONS"),
    QT_TRANSLATE_NOOP("parser", "SUBCOMMAND"), QT_TRANSLATE_NOOP("parser", "Positionals"),
    QT_TRANSLATE_NOOP("parser", "REQUIRED"),   QT_TRANSLATE_NOOP("parser", "Excludes"),
    QT_TRANSLATE_NOOP("parser", "Needs"),
};

// Names of values and arguments in the help.
const char* const ValueNames[] = {
    QT_TRANSLATE_NOOP("parser", "FILE"),    QT_TRANSLATE_NOOP("parser", "DIR"),
    QT_TRANSLATE_NOOP("parser", "SECTION"), QT_TRANSLATE_NOOP("parser", "COMMAND"),
    QT_TRANSLATE_NOOP("parser", "NAME"),    QT_TRANSLATE_NOOP("parser", "KIND"),
    QT_TRANSLATE_NOOP("parser", "PERCENT"), QT_TRANSLATE_NOOP("parser", "OHM"),
    QT_TRANSLATE_NOOP("parser", "DEGREES"), QT_TRANSLATE_NOOP("parser", "FRACTION"),
    QT_TRANSLATE_NOOP("parser", "KM"),      QT_TRANSLATE_NOOP("parser", "RESULT"),
    QT_TRANSLATE_NOOP("parser", "SEEDS"),   QT_TRANSLATE_NOOP("parser", "SIZE"),
    QT_TRANSLATE_NOOP("parser", "SECONDS"), QT_TRANSLATE_NOOP("parser", "N"),
    QT_TRANSLATE_NOOP("parser", "HZ"),      QT_TRANSLATE_NOOP("parser", "S"),
    QT_TRANSLATE_NOOP("parser", "SECOND"),  QT_TRANSLATE_NOOP("parser", "PATTERN"),
    QT_TRANSLATE_NOOP("parser", "ADDRESS"), QT_TRANSLATE_NOOP("parser", "MOMENT"),
    QT_TRANSLATE_NOOP("parser", "CURRENT"), QT_TRANSLATE_NOOP("parser", "DURATION"),
    QT_TRANSLATE_NOOP("parser", "PHASES"),  QT_TRANSLATE_NOOP("parser", "WORDS"),
    QT_TRANSLATE_NOOP("parser", "COLUMN"),  QT_TRANSLATE_NOOP("parser", "DISTANCE"),
};

} // namespace

HelpFormat::HelpFormat()
{
    for (const char* text : Headings)
        label(text, HelpText("parser", text));
    for (const char* text : ValueNames)
        label(text, HelpText("parser", text));
}

std::string HelpFormat::make_option_name(const CLI::Option* option, bool isPositional) const
{
    const std::string name = Formatter::make_option_name(option, isPositional);
    return isPositional ? get_label(name) : name;
}

// The parser's own version has the arguments that an option needs in English.
std::string HelpFormat::make_option_opts(const CLI::Option* option) const
{
    QString text = FromUtf8(Formatter::make_option_opts(option));
    for (const CLI::Option* needed : option->get_needs())
        if (needed->get_positional())
            text.replace(FromUtf8(needed->get_name()), ShownName(FromUtf8(needed->get_name())));
    return text.toStdString();
}

// The parser's own version counts bytes.
std::string HelpFormat::make_option(const CLI::Option* option, bool isPositional) const
{
    const auto width = static_cast<int>(get_column_width());
    QString left =
        QStringLiteral("  ") + FromUtf8(make_option_name(option, isPositional) + make_option_opts(option));
    const bool fits = left.size() < width;
    left = fits ? left.leftJustified(width) : left + QLatin1Char('\n') + QString(width, QLatin1Char(' '));
    return left.toStdString() + make_option_desc(option) + '\n';
}

QStringList FlagsOf(const CLI::Option& option)
{
    QStringList flags;
    for (const std::string& name : option.get_snames())
        flags << QLatin1Char('-') + FromUtf8(name);
    for (const std::string& name : option.get_lnames())
        flags << QStringLiteral("--") + FromUtf8(name);
    return flags;
}

bool IsHidden(const CLI::Option& option)
{
    return option.get_group().empty();
}

QString ShownName(const QString& name)
{
    for (const char* known : ValueNames) {
        if (name == QLatin1String(known))
            return Tr("parser", known);
    }
    return name;
}

void TranslateGroups(CLI::App& app)
{
    for (CLI::Option* option :
         app.get_options([](const CLI::Option* one) { return one->get_group() == "Options"; }))
        option->group(HelpText("parser", "Options"));
    for (CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        command->group(HelpText("parser", "Subcommands"));
        TranslateGroups(*command);
    }
}
