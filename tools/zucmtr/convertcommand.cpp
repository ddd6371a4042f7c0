#include "convertcommand.h"

#include "checks.h"
#include "console.h"
#include "host.h"
#include "memorylimit.h"
#include "recordinglist.h"

#include <CLI/CLI.hpp>

#include <QMap>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

const char* const description = "Convert recordings into COMTRADE records";

const char* const footer =
    "A recording is a first file (.ZU or .zu) with its continuation files (.Z01 ... .Z0f) beside it; give "
    "the\n"
    "first file, the others are found. The ini file says how the records are to look: a section of "
    "defaults,\n"
    "in which nearly every key must be, and a section for each recorder. For each recording one line on\n"
    "standard output tells the record's name and the notes on it; failures go to standard error.\n"
    "\n"
    "Exit code: 0 all recordings converted, 1 at least one failed, 2 wrong usage or configuration.\n"
    "\n"
    "Example, with the sample station:\n"
    "  mkdir -p station/comtrade\n"
    "  zucmtr sample --out station\n"
    "  zucmtr convert --ini station/ZuDrv.ini --defaults Default --device Vostochnaya "
    "--out station/comtrade station/*.ZU";

struct Options
{
    std::string ini;
    std::string defaults;
    std::string device;
    std::string out;
    std::string log;
    uint64_t maxMemory = 0;
    bool ownLog = false; // --log is not given
    std::vector<std::string> files;
};

QString Text(const std::string& utf8)
{
    return QString::fromStdString(utf8);
}

void ReportLoadingNotes(unsigned int device, const Options& options)
{
    const QStringList notes = Host::TakeNotes(device);
    if (notes.isEmpty())
        return;
    Complain(QStringLiteral("warnings and notes on section [%1] of '%2':\n  ")
                 .arg(Text(options.device), Text(options.ini)) +
             notes.join(QLatin1String("\n  ")));
}

// One run over the files of the command line.
class Batch
{
public:
    Batch(Host& host_, unsigned int device_, const QString& out_, const QStringList& files_)
        : host(host_), device(device_), out(out_), files(files_)
    {}

    // Goes through all files, whatever becomes of each; gives the number of those that failed.
    int Run()
    {
        return static_cast<int>(
            std::count_if(files.begin(), files.end(), [this](const QString& file) { return !Handle(file); }));
    }

private:
    // True unless the file failed.
    bool Handle(const QString& file)
    {
        switch (RoleOf(file, files)) {
        case Role::PassedOver:
            Complain(QStringLiteral("%1: passed over, it is converted with its first file %2")
                         .arg(file, FirstFileOf(file)));
            return true;
        case Role::WithoutFirst:
            Complain(
                QStringLiteral("%1: not converted: it continues a recording; give the first file %2 instead")
                    .arg(file, FirstFileOf(file)));
            return false;
        case Role::FirstFile:
            break;
        }
        return Report(file, host.Convert(file, out, device));
    }

    // True if the recording was converted.
    bool Report(const QString& file, const Outcome& outcome)
    {
        if (!outcome.converted) {
            Complain((QStringList{file + QLatin1String(": not converted: ") + outcome.error} + outcome.notes)
                         .join(QLatin1String("; ")));
            return false;
        }
        PrintLine((QStringList{file + QLatin1String(" -> ") + outcome.outputName} + outcome.notes)
                      .join(QLatin1String("; ")));
        if (records.contains(outcome.outputName))
            Complain(
                QStringLiteral("%1: its record replaced that of %2, which has the same name; convert them "
                               "into different directories")
                    .arg(file, records[outcome.outputName]));
        records[outcome.outputName] = file;
        return true;
    }

    Host& host;
    const unsigned int device;
    const QString out;
    const QStringList files;
    QMap<QString, QString> records; // output name to the file that it was made of
};

int Run(const Options& options)
{
    CheckIniFile(Text(options.ini));
    if (!options.ownLog)
        CheckLogFile(Text(options.log));
    const QString out = CheckedOutputDirectory(Text(options.out));
    LimitMemory(options.maxMemory);

    Host host(Text(options.log));
    host.LoadDefaults(Text(options.ini), Text(options.defaults));
    const unsigned int device = host.LoadDevice(Text(options.ini), Text(options.device));
    ReportLoadingNotes(device, options);

    QStringList files;
    for (const std::string& file : options.files)
        files << Text(file);
    const int failed = Batch(host, device, out, files).Run();
    if (failed > 0 && files.size() > 1)
        Complain(QStringLiteral("%1 of %2 files failed").arg(failed).arg(files.size()));
    return failed == 0 ? ExitDone : ExitFailed;
}

} // namespace

void AddConvertCommand(CLI::App& app, Action& chosen)
{
    CLI::App* command = app.add_subcommand("convert", description);
    const auto options = std::make_shared<Options>();
    command->add_option("--ini", options->ini, "The recorders' ini file")->required()->type_name("FILE");
    command->add_option("--defaults", options->defaults, "Section of the ini file with the defaults")
        ->required()
        ->type_name("SECTION");
    command->add_option("--device", options->device, "Section of the ini file for this recorder")
        ->required()
        ->type_name("SECTION");
    command->add_option("--out", options->out, "Existing directory for the COMTRADE files")
        ->required()
        ->type_name("DIR");
    const CLI::Option* log =
        command->add_option("--log", options->log, "File to which loading the ini file appends its log")
            ->type_name("FILE");
    AddMemoryOption(*command, options->maxMemory);
    command->add_option("FILE", options->files, "First files of the recordings")->required()->type_name("");
    command->footer(footer);
    command->callback([options, log, &chosen] {
        options->ownLog = log->count() == 0;
        chosen = [options] { return Run(*options); };
    });
}
