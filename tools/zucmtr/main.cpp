// zucmtr, the command-line program: an ordinary user of the library's public interface. This file knows the
// list of subcommands and turns every way out into an exit code.
#include "application.h"
#include "checkcommand.h"
#include "command.h"
#include "console.h"
#include "convertcommand.h"
#include "dictionarycommand.h"
#include "infocommand.h"
#include "messages.h"
#include "parsertexts.h"
#include "samplecommand.h"
#include "texts.h"
#include "viewcommand.h"
#include "watchcommand.h"

#include <CLI/CLI.hpp>

#include <QLocale>
#include <QTextCodec>
#include <QTranslator>

#include <clocale>
#include <exception>
#include <memory>
#include <new>

namespace {

// Paths and section names are UTF-8 whatever the locale says; otherwise Qt would lose Cyrillic names under
// LC_ALL=C, and single lines of the log would be in another encoding than the others.
void UseUtf8Everywhere()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

void CheckArgumentsAreUtf8(int count, char** arguments)
{
    QTextCodec* codec = QTextCodec::codecForName("UTF-8");
    for (int i = 1; i < count; ++i) {
        QTextCodec::ConverterState state;
        const QString text = codec->toUnicode(arguments[i], static_cast<int>(qstrlen(arguments[i])), &state);
        if (state.invalidChars > 0 || state.remainingChars > 0)
            throw ConfigurationError(
                Tr("main", "argument %1 ('%2') is not UTF-8; rename the file, or run the program from a "
                           "UTF-8 terminal")
                    .arg(i)
                    .arg(text));
    }
}

int WrongUsage(const QString& text, const QString& command)
{
    Complain(Tr("main", "%1\nRun '%2 --help' for the options and an example.").arg(text, command));
    return ExitUsage;
}

// Help and version are no errors.
int ExitAfterParsing(const CLI::App& app, const CLI::ParseError& error)
{
    if (error.get_exit_code() == 0)
        return app.exit(error);
    QString command = QStringLiteral("zucmtr");
    for (const CLI::App* subcommand : app.get_subcommands())
        command += QLatin1Char(' ') + QString::fromStdString(subcommand->get_name());
    return WrongUsage(TextOf(error), command);
}

// Everything that --help tells of the program and its commands.
void Describe(CLI::App& app, Action& chosen, const char* program)
{
    app.description(HelpText("main", "Converts the recordings of digital fault recorders (.ZU) into COMTRADE "
                                     "records (IEEE C37.111)."));
    app.set_help_flag("-h,--help", HelpText("main", "Print this help and exit"));
    app.set_version_flag("--version", std::string("zucmtr ") + ZUCMTR_VERSION);
    app.get_option("--version")->description(HelpText("main", "Print the version and exit"));
    app.require_subcommand(0, 1);
    AddCheckCommand(app, chosen);
    AddConvertCommand(app, chosen);
    AddDictionaryCommand(app, chosen);
    AddInfoCommand(app, chosen);
    AddSampleCommand(app, chosen, QString::fromUtf8(program));
    AddViewCommand(app, chosen);
    AddWatchCommand(app, chosen);
    // After the commands, which would inherit it.
    app.footer(HelpText("main", "'zucmtr COMMAND --help' tells more about a command. To try the program:\n"
                                "\n"
                                "  mkdir -p station\n"
                                "  zucmtr sample --out station\n"
                                "  zucmtr convert --out station/comtrade --make-out station"));
    TranslateHeadings(app);
}

int ParseAndRun(int count, char** arguments)
{
    CheckArgumentsAreUtf8(count, arguments);
    CLI::App app(std::string(), "zucmtr");
    Action chosen;
    Describe(app, chosen, arguments[0]);
    try {
        app.parse(count, arguments);
    } catch (const CLI::ParseError& error) {
        return ExitAfterParsing(app, error);
    }
    if (!chosen)
        return WrongUsage(Tr("main", "no command is given"), QStringLiteral("zucmtr"));
    return chosen();
}

} // namespace

int main(int count, char** arguments)
{
    HoldStandardStreams();
    UseUtf8Everywhere();
    messages::Take();
    const std::unique_ptr<QCoreApplication> application =
        MakeApplication(arguments, PaintsPicture(count, arguments));
    std::setlocale(LC_NUMERIC,
                   "C"); // the application took the user's; options have a decimal point everywhere
    QTranslator translator;
    if (translator.load(QLocale::system(), QStringLiteral("zucmtr"), QStringLiteral("_"),
                        QStringLiteral(":/translations")))
        QCoreApplication::installTranslator(&translator);
    int code = ExitFailed;
    try {
        code = ParseAndRun(count, arguments);
    } catch (const ConfigurationError& error) {
        Complain(QString::fromUtf8(error.what()));
        return ExitUsage;
    } catch (const std::bad_alloc&) {
        Complain(Tr("main", "out of memory; work on fewer or shorter recordings"));
        return ExitFailed;
    } catch (const std::exception& error) {
        Complain(Tr("main", "stopped by an unexpected error: %1").arg(QString::fromUtf8(error.what())));
        return ExitFailed;
    }
    if (code == ExitDone && !OutputIsWhole()) {
        Complain(Tr("main", "standard output could not be written; check the disk or the pipe"));
        return ExitFailed;
    }
    return code;
}
