// zucmtr, the command-line program: an ordinary user of the library's public interface. This file knows the
// list of subcommands and turns every way out into an exit code.
#include "text/error.h"
#include "text/texts.h"
#include "zucmtr/commands/archivecommand.h"
#include "zucmtr/commands/checkcommand.h"
#include "zucmtr/commands/convertcommand.h"
#include "zucmtr/commands/dictionarycommand.h"
#include "zucmtr/commands/eventscommand.h"
#include "zucmtr/commands/exportcommand.h"
#include "zucmtr/commands/helpcommand.h"
#include "zucmtr/commands/infocommand.h"
#include "zucmtr/commands/samplecommand.h"
#include "zucmtr/commands/validatecommand.h"
#include "zucmtr/commands/verifycommand.h"
#include "zucmtr/commands/viewcommand.h"
#include "zucmtr/commands/watchcommand.h"
#include "zucmtr/terminal/application.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/helpformat.h"
#include "zucmtr/terminal/interrupt.h"
#include "zucmtr/terminal/messages.h"
#include "zucmtr/terminal/parsertexts.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <QLocale>
#include <QTextCodec>
#include <QTranslator>

#include <clocale>
#include <csignal>
#include <exception>
#include <memory>
#include <new>

namespace {

// Paths and section names are UTF-8 whatever the locale says; otherwise Qt would lose Cyrillic names under
// LC_ALL=C, and some lines of the log would be in another encoding than the rest.
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
            throw ConfigurationError(Tr("main", "argument %1 ('%2') is not UTF-8; rename the file, or run "
                                                "the program from a UTF-8 terminal")
                                         .arg(i)
                                         .arg(text));
    }
}

// Help and version are not errors.
int ExitAfterParsing(const CLI::App& app, const CLI::ParseError& error)
{
    if (error.get_exit_code() == 0)
        return app.exit(error);
    throw UsageError(ParseErrorText(app, error), CommandName(*GivenCommands(app).back()));
}

// Everything that --help says about the program and its commands.
void Describe(CLI::App& app, Action& chosen, const char* program)
{
    app.formatter(std::make_shared<HelpFormat>());
    app.description(HelpText(
        "main",
        "Converts the recordings of digital fault recorders (.ZU) into COMTRADE records (IEEE C37.111)."));
    app.set_help_flag("-h,--help", HelpText("main", "Print this help and exit"));
    app.set_version_flag("--version", std::string("zucmtr ") + ZUCMTR_VERSION);
    app.get_option("--version")->description(HelpText("main", "Print the version and exit"));
    app.require_subcommand(0, 1);
    AddArchiveCommand(app, chosen);
    AddCheckCommand(app, chosen);
    AddConvertCommand(app, chosen);
    AddDictionaryCommand(app, chosen);
    AddEventsCommand(app, chosen);
    AddExportCommand(app, chosen);
    AddInfoCommand(app, chosen);
    AddSampleCommand(app, chosen, QString::fromUtf8(program));
    AddValidateCommand(app, chosen);
    AddVerifyCommand(app, chosen);
    AddViewCommand(app, chosen);
    AddWatchCommand(app, chosen);
    values::RefuseEmpty(app);
    AddHelpCommand(app, chosen);
    // Set after the commands were added, which would inherit it.
    app.footer(HelpText("main", "'zucmtr help COMMAND' says more about a command. To try the program:\n"
                                "\n"
                                "  zucmtr sample --out station\n"
                                "  zucmtr convert --out station/comtrade --make-out station"));
    TranslateGroups(app);
}

void CheckSlips(CLI::App& app, int count, char** arguments)
{
    QStringList words;
    for (int i = 1; i < count; ++i)
        words << QString::fromUtf8(arguments[i]);
    const QString text = SlipText(app, words);
    if (text.isEmpty())
        return;
    throw UsageError(text, CommandName(*CommandNamed(app, words).command));
}

int ParseAndRun(int count, char** arguments)
{
    CheckArgumentsAreUtf8(count, arguments);
    CLI::App app(std::string(), "zucmtr");
    Action chosen;
    Describe(app, chosen, arguments[0]);
    CheckSlips(app, count, arguments);
    try {
        app.parse(count, arguments);
    } catch (const CLI::ParseError& error) {
        return ExitAfterParsing(app, error);
    }
    if (!chosen)
        throw UsageError(NoCommandText(app), CommandName(*GivenCommands(app).back()));
    return chosen();
}

} // namespace

UsageError::UsageError(const QString& text, const QString& command)
    : ConfigurationError(
          QStringList{text, Tr("main", "Run '%1 --help' for the options and an example.").arg(command)})
{}

int main(int count, char** arguments)
{
    HoldStandardStreams();
    UseUtf8Everywhere();
    messages::Take();
    std::signal(SIGXFSZ, SIG_IGN); // a file that is as long as the user may make it is a failed write
    const std::unique_ptr<QCoreApplication> application =
        MakeApplication(arguments, PaintsPicture(count, arguments));
    std::setlocale(LC_NUMERIC,
                   "C"); // the application has set the user's; options have a decimal point everywhere
    QTranslator translator;
    if (translator.load(QLocale::system(), QStringLiteral("zucmtr"), QStringLiteral("_"),
                        QStringLiteral(":/translations")))
        QCoreApplication::installTranslator(&translator);
    int code = ExitFailed;
    try {
        code = ParseAndRun(count, arguments);
    } catch (const ConfigurationError& error) {
        Complain(error.Lines());
        return ExitUsage;
    } catch (const std::bad_alloc&) {
        Complain(Tr("main", "out of memory; work on fewer or shorter recordings"));
        return ExitFailed;
    } catch (const std::exception& error) {
        Complain(Tr("main", "stopped by an unexpected error: %1").arg(text::MessageOf(error)));
        return ExitFailed;
    }
    if (interrupt::Signal() == SIGPIPE)
        return interrupt::ExitCode();
    if (code == ExitDone && !OutputIsWhole()) {
        Complain(Tr("main", "standard output could not be written; check the disk or the pipe"));
        return ExitFailed;
    }
    return code;
}
