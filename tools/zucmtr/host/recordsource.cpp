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

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

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

void Write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
        throw SourceError(
            Tr("record source", "'%1' cannot be written: %2; free space in the directory for temporary files")
                .arg(path, explain::SystemText(file.errorString())));
}

// Links to the recording's chain: not even a conversion that deletes its sources could reach the files.
QString LinkChain(const QString& file, const QDir& directory)
{
    const QFileInfo first(file);
    QString linked = directory.filePath(QStringLiteral("recording.") + first.suffix());
    for (int number = 0; number <= zu::MostContinuations; ++number) {
        const QString path = zu::ContinuationName(first.absoluteFilePath(), number);
        if (QFile::exists(path))
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

RecordSource::RecordSource(const QString& file, DeviceChoice choice, bool isPlain)
{
    ini = choice.ini;
    if (comtrade::IsRecordFile(file)) {
        Check(file, explain::NotARecord(file));
        path = file;
        return;
    }
    CheckRecording(file);
    choice = ChoiceForReading(file, choice, isPlain);
    ini = choice.ini;
    Convert(file, choice);
}

void RecordSource::Convert(const QString& file, const DeviceChoice& choice)
{
    directory = std::make_unique<QTemporaryDir>();
    if (!directory->isValid())
        throw SourceError(Tr("record source", "no temporary directory: %1")
                              .arg(explain::SystemText(directory->errorString())));
    const QDir inside(directory->path());
    DeviceChoice complete = choice;
    if (choice.ini.isEmpty()) {
        complete = NamelessChoice();
        complete.ini = inside.filePath(QStringLiteral("nameless.ini"));
        Write(complete.ini, NamelessIni(file));
    }
    inside.mkdir(QStringLiteral("record"));
    const QString out = inside.filePath(QStringLiteral("record"));

    Host host{QString()};
    const unsigned int device = LoadDevice(host, ChangedIni(complete, OwnKeys()));
    const QString linked = LinkChain(file, inside);
    const Outcome outcome = host.Convert(linked, out, device);
    if (!outcome.converted)
        Check(file, QString(outcome.error).replace(linked.chopped(2), file.chopped(2)));
    const QStringList records = QDir(out).entryList({QStringLiteral("*.cfg")}, QDir::Files);
    if (records.isEmpty())
        throw SourceError(Tr("record source", "%1: its record was not found after the conversion").arg(file));
    path = out + QLatin1Char('/') + records.first();
}
