#include "parsertexts.h"

#include "texts.h"

#include <CLI/CLI.hpp>

#include <QRegularExpression>

namespace {

// The parser's own texts, with what varies as %1 and %2.
const char* const errorTexts[] = {
    QT_TRANSLATE_NOOP("parser", "%1 is required"),
    QT_TRANSLATE_NOOP("parser", "%1 requires %2"),
    QT_TRANSLATE_NOOP("parser", "%1 excludes %2"),
    QT_TRANSLATE_NOOP("parser", "The following argument was not expected: %1"),
    QT_TRANSLATE_NOOP("parser", "The following arguments were not expected: %1"),
    QT_TRANSLATE_NOOP("parser", "Could not convert: %1"),
    QT_TRANSLATE_NOOP("parser", "%1: 1 required %2 missing"),
    QT_TRANSLATE_NOOP("parser", "%1: Value %2"),
};

// As in "--jobs: Value 300 not in range 0 to 256".
QRegularExpression Expression(const char* text)
{
    QString pattern = QRegularExpression::escape(QString::fromLatin1(text));
    for (const char* place : {"1", "2"})
        pattern.replace(QStringLiteral("\\%") + QLatin1String(place), QStringLiteral("(.*)"));
    return QRegularExpression(QStringLiteral("\\A%1\\z").arg(pattern));
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

} // namespace

void TranslateHeadings(CLI::App& app)
{
    const std::shared_ptr<CLI::FormatterBase> formatter = app.get_formatter();
    formatter->label("Usage", HelpText("parser", "Usage"));
    formatter->label("OPTIONS", HelpText("parser", "OPTIONS"));
    formatter->label("SUBCOMMAND", HelpText("parser", "SUBCOMMAND"));
    formatter->label("Positionals", HelpText("parser", "Positionals"));
    TranslateGroups(app);
}

QString TextOf(const CLI::ParseError& error)
{
    QString text = QString::fromUtf8(error.what());
    for (const char* known : errorTexts) {
        const QRegularExpressionMatch match = Expression(known).match(text);
        if (!match.hasMatch())
            continue;
        QString translated = Tr("parser", known);
        return match.lastCapturedIndex() == 2 ? translated.arg(match.captured(1), match.captured(2))
                                              : translated.arg(match.captured(1));
    }
    return text;
}
