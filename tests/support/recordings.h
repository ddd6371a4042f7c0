// Small recordings for the tests of the service, and what their conversion makes.
#pragma once

#include "recorderfile/recorderfile.h"
#include "support/device.h"

#include <QDir>

#include <vector>

/// Base name of the output of every recording here, on a device with the texts of DefaultsSection().
inline QString OutName()
{
    return QStringLiteral("240131,120000.2,+3t,Object,Source.Subject");
}

/// Where the station's output file with this extension (".cfg", ".dattmp", ...) is, inside its directory.
inline QString OutFile(const QString& extension)
{
    return QStringLiteral("out/") + OutName() + extension;
}

/// Names of output files with these extensions, as Names("out") returns them if everything is right.
inline QStringList OutNames(const QStringList& extensions)
{
    QStringList names;
    for (const QString& extension : extensions)
        names.append(OutName() + extension);
    return names;
}

/// A recording with one analog channel, all of whose samples have this code, and one discrete channel. The 24
/// samples at 2400 per second take 10000 microseconds.
inline recorderfile::Recording SmallRecording(int16_t code = 1)
{
    recorderfile::Recording recording;
    recording.Add(recorderfile::AnalogChannel{"Q1:Ia", "А", std::vector<int16_t>(24, code)})
        .Add(recorderfile::DiscreteChannel{"Q1:x"});
    return recording;
}

/// The analog channel with which the small recording starts.
inline recorderfile::AnalogChannel& FirstAnalog(recorderfile::Recording& recording)
{
    return std::get<recorderfile::AnalogChannel>(recording.sections.at(0));
}

/// The bytes of a small recording.
inline QByteArray SmallFile(int16_t code = 1)
{
    return recorderfile::Encode(SmallRecording(code));
}

/// The note at the end of a successful conversion.
inline QString SuccessNote()
{
    return QStringLiteral("Преобразование в Comtrade выполнено успешно, файл ") + OutName();
}

/// All notes of the device's queue, oldest first.
inline QStringList Notes(const ZuCmtrDevParam& device)
{
    QStringList notes;
    for (const QString& note : device.LogMessages)
        notes.append(note);
    return notes;
}

/// Makes a directory the current one for as long as the object lives.
class CurrentDirectory
{
public:
    explicit CurrentDirectory(const QString& path) : before(QDir::currentPath()) { QDir::setCurrent(path); }
    ~CurrentDirectory() { QDir::setCurrent(before); }
    CurrentDirectory(const CurrentDirectory&) = delete;
    CurrentDirectory& operator=(const CurrentDirectory&) = delete;

private:
    QString before;
};
