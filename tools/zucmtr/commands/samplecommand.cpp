#include "zucmtr/commands/samplecommand.h"

#include "output/outputfile.h"
#include "text/texts.h"
#include "zucmtr/commands/sampleoptions.h"
#include "zucmtr/terminal/checks.h"
#include "zucmtr/terminal/console.h"

#include <CLI/CLI.hpp>

#include <QDir>
#include <QStringList>

#include <memory>

namespace {

struct SampleCommandOptions
{
    SampleOptions sample;
    std::string out;
    bool force = false;
};

const char* const IniName = "ZuDrv.ini";

// Files of an older sample in the directory.
QStringList PresentFiles(const QDir& directory)
{
    const QStringList patterns = {QLatin1String(IniName), QStringLiteral("Vostochnaya_00012[3-9].Z*"),
                                  QStringLiteral("Vostochnaya_000130.Z*")};
    return directory.entryList(patterns, QDir::Files | QDir::Hidden | QDir::CaseSensitive, QDir::Name);
}

bool Write(const QString& path, const QByteArray& bytes)
{
    QString error;
    if (!output::WriteOutput(path, bytes, error)) {
        Complain(Tr("sample", "'%1' cannot be written: %2").arg(path, error));
        return false;
    }
    PrintLine(path);
    return true;
}

// Removes the files that it writes from the list of older ones.
bool WriteStation(const QDir& directory, const station::StationOptions& options, QStringList& older)
{
    older.removeAll(QLatin1String(IniName));
    if (!Write(directory.filePath(QLatin1String(IniName)), station::MakeIni(options).toUtf8()))
        return false;
    for (const station::StartKind start : station::PossibleStarts(options)) {
        for (const recorderfile::NamedFile& file : station::MakeFiles(options, start)) {
            older.removeAll(file.name);
            if (!Write(directory.filePath(file.name), file.bytes))
                return false;
        }
    }
    return true;
}

QString ConvertCommand(const QString& program, const QDir& directory)
{
    const QString records = ShellWord(directory.filePath(QStringLiteral("comtrade")));
    return QStringLiteral("mkdir -p %1 && %2 convert --ini %3 --defaults %4 --device %5 --out %1 %6/%5_*.ZU")
        .arg(records, ShellWord(program), ShellWord(directory.filePath(QLatin1String(IniName))),
             station::DefaultsSection(), station::DeviceSection(), ShellWord(directory.path()));
}

int RunSample(const SampleCommandOptions& options, const QString& program)
{
    const station::StationOptions station = CheckedStation(options.sample);
    const QString out = FromUtf8(options.out);
    MakeDirectory(QStringLiteral("--out"), out);
    const QDir directory(CheckedDirectory(QStringLiteral("--out"), out));
    QStringList older = PresentFiles(directory);
    if (!older.isEmpty() && !options.force)
        throw ConfigurationError(Tr("sample", "--out: '%1' already has '%2'; choose another directory, or "
                                              "replace the sample and its ini file by --force")
                                     .arg(directory.path(), older.first()));
    if (!WriteStation(directory, station, older))
        return ExitFailed;
    // A continuation file left behind would be read after the new first file.
    for (const QString& name : qAsConst(older))
        QFile::remove(directory.filePath(name));
    PrintLine(ConvertCommand(program, directory));
    return ExitDone;
}

} // namespace

void AddSampleCommand(CLI::App& app, Action& chosen, const QString& program)
{
    CLI::App* command = app.add_subcommand(
        "sample", HelpText("sample", "Write a sample station: recordings and their ini file"));
    const auto options = std::make_shared<SampleCommandOptions>();
    command
        ->add_option("--out", options->out,
                     HelpText("sample", "Directory for the files; it is made if it is not there"))
        ->required()
        ->type_name("DIR");
    AddStationOptions(*command, options->sample);
    command->add_flag("--force", options->force,
                      HelpText("sample", "Replace an older sample in the directory"));
    command->footer(HelpText("sample",
                             "The station is a substation of 220/110 kV with a short circuit on a line. "
                             "There is one recording for each\n"
                             "kind of start, and the ini file ZuDrv.ini. The same options give the same "
                             "bytes everywhere. The files\n"
                             "written are listed; the last line is the command that converts them.\n"
                             "\n"
                             "Example:\n"
                             "  zucmtr sample --out station --fault three --segments 2"));
    command->callback([options, program, &chosen] {
        chosen = [options, program] { return RunSample(*options, program); };
    });
}
