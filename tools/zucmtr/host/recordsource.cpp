#include "zucmtr/host/recordsource.h"

#include "base/chainnames.h"
#include "comtrade/record.h"
#include "config/deviceinikeys.h"
#include "text/texts.h"
#include "zucmtr/host/host.h"
#include "zucmtr/host/recordform.h"
#include "zucmtr/terminal/command.h"

#include "explain/file.h"
#include "explain/system.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <filesystem>
#include <sys/statvfs.h>
#include <unistd.h>
#include <vector>

namespace {

// Keys that decide what becomes of the files.
QString OwnKeys()
{
    RecordForm form;
    form.isContainer = false;
    form.isBinary = true;
    form.is1999 = false;
    form.isUtf8 = true;
    return QStringLiteral("Удалять исходные=0\n") + form.Keys();
}

// A text that an ini file can hold: a ";" would start a comment.
QString IniValue(QString text)
{
    return text.replace(QLatin1Char(';'), QLatin1Char(','));
}

// Where records of small recordings are made, unless the user has said where.
constexpr char MemoryDirectory[] = "/dev/shm";
constexpr qint64 LargestInMemory = qint64{8} << 20; // bytes of the recording
constexpr qint64 RoomInMemory = qint64{1} << 30;    // that a record of it surely fits into

bool FitsInMemory(const QString& file)
{
    if (!qEnvironmentVariableIsEmpty("TMPDIR"))
        return false;
    qint64 bytes = 0;
    for (int number = 0; number <= zu::MostContinuations; ++number) {
        const QFileInfo piece(zu::ContinuationName(file, number));
        if (!piece.exists())
            break;
        bytes += piece.size();
    }
    struct statvfs system = {};
    return bytes <= LargestInMemory && access(MemoryDirectory, W_OK) == 0 &&
           statvfs(MemoryDirectory, &system) == 0 &&
           static_cast<qint64>(system.f_bavail) * static_cast<qint64>(system.f_frsize) >= RoomInMemory;
}

// Links to the recording's chain: not even a conversion that deletes its sources could reach the files.
QString LinkChain(const QString& file, const QDir& directory)
{
    const QFileInfo first(file);
    QString linked = directory.filePath(QStringLiteral("recording.") + first.suffix());
    for (int number = 0; number <= zu::MostContinuations; ++number) {
        const QString path = zu::ContinuationName(first.absoluteFilePath(), number);
        if (!QFile::exists(path))
            break;
        QFile::link(path, zu::ContinuationName(linked, number));
    }
    return linked;
}

void Check(const QString& file, const QString& reason)
{
    if (!reason.isEmpty())
        throw SourceError(file + QLatin1String(": ") + reason);
}

} // namespace

QByteArray NamelessIni(const QString& file)
{
    const QString name = IniValue(QFileInfo(file).completeBaseName());
    QMap<QString, QString> values = {{QStringLiteral("Объект"), name}};
    for (const char* key : {"Энергосистема", "Субъект", "Источник", "Версия ПО", "Версия аппаратной части"})
        values.insert(QString::fromUtf8(key), QStringLiteral("-"));
    return DefaultsLines(QStringLiteral("Default"), values).join(QLatin1Char('\n')).toUtf8();
}

DeviceChoice NamelessChoice()
{
    return {QString(), QStringLiteral("Default"), QStringLiteral("Device")};
}

unsigned int LoadDevice(Host& host, const ChangedIni& ini)
{
    const DeviceChoice& choice = ini.Choice();
    try {
        host.LoadDefaults(choice.ini, choice.defaults);
        const unsigned int device = host.LoadDevice(choice.ini, choice.device);
        Host::TakeNotes(device);
        return device;
    } catch (const ConfigurationError& error) {
        throw ConfigurationError(ini.WithOwnName(error.Message()).split(QLatin1Char('\n')));
    }
}

void CheckIsWritten(const output::TemporaryFile& file)
{
    if (!file.ErrorText().isEmpty())
        throw SourceError(
            Tr("record source", "'%1' cannot be written: %2; free space in the directory for temporary files")
                .arg(file.Path(), file.ErrorText()));
}

void CheckRecording(const QString& file)
{
    if (!zu::FirstFileOf(file).isEmpty() && QFileInfo(file).isFile())
        Check(file, ContinuationText(file));
    Check(file, explain::NotConvertible(file));
}

DeviceChoice ChoiceForReading(const QString& file, DeviceChoice choice, bool isPlain)
{
    const Recording recording{file, QString(), QString()};
    const bool isChosen = !choice.ini.isEmpty() || !choice.defaults.isEmpty() || !choice.device.isEmpty();
    if (!isPlain && (isChosen || !IniOf(recording).isEmpty()))
        CompleteChoice(choice, {recording});
    return choice;
}

// The devices of one ini file.
struct RecordMaker::Loaded
{
    explicit Loaded(const QString& key_) : key(key_), host(QString()) {}

    const QString key;
    Host host;
    std::unique_ptr<ChangedIni> ini;
    unsigned int device = 0;
};

RecordMaker::RecordMaker() = default;

RecordMaker::~RecordMaker() = default;

void RecordMaker::Rest()
{
    loaded.reset();
}

// The ini file of a directory is looked for once.
const DeviceChoice& RecordMaker::Completed(const QString& file, const DeviceChoice& choice, bool isPlain)
{
    const QString directory = QFileInfo(file).path() + (isPlain ? QLatin1String("/plain") : QLatin1String());
    if (directory != completedFor || !(choice == asked)) {
        completedFor.clear();
        completed = ChoiceForReading(file, choice, isPlain);
        asked = choice;
        completedFor = directory;
    }
    return completed;
}

void RecordMaker::Clear()
{
    std::error_code failed; // then the directory for temporary files keeps it until the end
    std::vector<std::filesystem::path> files;
    if (!place.isEmpty())
        for (const auto& file : std::filesystem::directory_iterator(place.toStdString(), failed))
            files.push_back(file.path());
    for (const std::filesystem::path& file : files)
        std::filesystem::remove(file, failed);
    place.clear();
}

// An empty directory for the recording's record.
QString RecordMaker::Place(const QString& file)
{
    Clear();
    std::unique_ptr<output::TemporaryDirectory>& directory = FitsInMemory(file) ? inMemory : onDisk;
    if (!directory)
        directory = std::make_unique<output::TemporaryDirectory>(
            &directory == &inMemory ? QLatin1String(MemoryDirectory) : QDir::tempPath());
    if (directory->Error() != 0)
        throw SourceError(
            Tr("record source", "no temporary directory: %1").arg(explain::SystemText(directory->Error())));
    place = directory->Path();
    return place;
}

unsigned int RecordMaker::Load(const QString& file, DeviceChoice choice)
{
    const QFileInfo info(choice.ini);
    const QString key =
        choice.ini.isEmpty()
            ? QString()
            : QStringList{choice.ini, choice.defaults, choice.device, QString::number(info.size()),
                          QString::number(info.lastModified().toMSecsSinceEpoch())}
                  .join(QLatin1Char('\n'));
    if (loaded && loaded->key == key)
        return loaded->device;
    loaded.reset();
    std::unique_ptr<output::TemporaryFile> nameless;
    if (choice.ini.isEmpty()) {
        nameless = std::make_unique<output::TemporaryFile>(NamelessIni(file));
        CheckIsWritten(*nameless);
        choice = NamelessChoice();
        choice.ini = nameless->Path();
    }
    auto fresh = std::make_unique<Loaded>(key);
    fresh->ini = std::make_unique<ChangedIni>(choice, OwnKeys());
    fresh->device = LoadDevice(fresh->host, *fresh->ini);
    loaded = std::move(fresh);
    return loaded->device;
}

RecordMaker::Made RecordMaker::Make(const QString& file, const DeviceChoice& choice, bool isPlain)
{
    CheckRecording(file);
    const DeviceChoice& complete = Completed(file, choice, isPlain);
    const unsigned int device = Load(file, complete);
    const QString out = Place(file);
    const QString linked = LinkChain(file, QDir(out));
    const Outcome outcome = loaded->host.Convert(linked, out, device);
    if (!outcome.converted)
        Check(file, QString(outcome.error).replace(linked.chopped(2), file.chopped(2)));
    const QString record = out + QLatin1Char('/') + outcome.outputName + QLatin1String(".cfg");
    if (!QFile::exists(record))
        throw SourceError(Tr("record source", "%1: its record was not found after the conversion").arg(file));
    return {record, complete.ini};
}

RecordSource::RecordSource(const QString& file, const DeviceChoice& choice, bool isPlain)
{
    ini = choice.ini;
    if (comtrade::IsRecordFile(file)) {
        Check(file, explain::NotARecord(file));
        path = file;
        return;
    }
    maker = std::make_unique<RecordMaker>();
    const RecordMaker::Made made = maker->Make(file, choice, isPlain);
    maker->Rest();
    path = made.record;
    ini = made.ini;
}
