#include "zucmtr/host/devicechoice.h"

#include "inicheck/inilines.h"
#include "text/texts.h"
#include "zucmtr/terminal/checks.h"
#include "zucmtr/terminal/command.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>

namespace {

QString IniName()
{
    return QStringLiteral("ZuDrv.ini");
}

// In order of preference.
QStringList DefaultsNames()
{
    return {QStringLiteral("Default"), QStringLiteral("Defaults")};
}

// The directories in which a recording's ini file is searched for: its own, then each one above it up to the
// directory of the command line.
QStringList Upwards(const Recording& recording)
{
    QString directory = QFileInfo(recording.path).path();
    QStringList directories = {directory};
    const int steps = recording.below.isEmpty() ? 0 : recording.below.count(QLatin1Char('/')) + 1;
    for (int i = 0; i < steps; ++i) {
        directory = QFileInfo(directory).path();
        directories << directory;
    }
    return directories;
}

// The ini files of the recordings: the path as found, by its normalised spelling, and a recording for each.
struct Found
{
    QString ini;
    QString recording;
};

QStringList LinesOf(const QMap<QString, Found>& found)
{
    QStringList lines;
    for (const Found& one : found)
        lines << Tr("choice", "  '%1' for '%2'").arg(one.ini, one.recording);
    return lines;
}

QString NoIniText(const Recording& recording)
{
    const QString advice = Tr(
        "choice", "name the recorders' ini file by --ini, or have 'zucmtr dictionary --complete' make one");
    const QString directory = QFileInfo(recording.path).path();
    if (directory == QLatin1String("."))
        return Tr("choice", "there is no %1 in the current directory; %2").arg(IniName(), advice);
    return Tr("choice", "there is no %1 in '%2' or in the current directory; %3")
        .arg(IniName(), directory, advice);
}

QString ChosenIni(const std::vector<Recording>& recordings)
{
    QMap<QString, Found> found;
    for (const Recording& recording : recordings) {
        const QString ini = IniOf(recording);
        if (ini.isEmpty())
            throw ConfigurationError(NoIniText(recording));
        const QString key = QFileInfo(ini).canonicalFilePath();
        if (!found.contains(key))
            found.insert(key, {ini, recording.path});
    }
    if (found.isEmpty()) // nothing to convert
        return IniName();
    if (found.size() > 1)
        throw ConfigurationError(
            QStringList{Tr("choice", "the recordings have different ini files; convert them one directory "
                                     "after the other, or name one file by --ini:")} +
            LinesOf(found));
    return found.first().ini;
}

QString Bracketed(const QStringList& sections)
{
    return QLatin1Char('[') + sections.join(QLatin1String("], [")) + QLatin1Char(']');
}

QString ChosenDefaults(const QString& ini, const QStringList& sections)
{
    for (const QString& name : DefaultsNames()) {
        if (sections.contains(name))
            return name;
    }
    if (sections.size() == 1)
        return sections.first();
    throw ConfigurationError(
        Tr("choice",
           "'%1' has no section [Default]; name the section with the defaults by --defaults: it has %2")
            .arg(ini, Bracketed(sections)));
}

QString ChosenDevice(const QString& ini, const QString& defaults, const QStringList& sections)
{
    QStringList devices = sections;
    devices.removeAll(defaults);
    if (devices.isEmpty())
        return defaults;
    if (devices.size() == 1)
        return devices.first();
    throw ConfigurationError(
        Tr("choice", "'%1' describes %2 recorders; name the section of the one by --device: it has %3")
            .arg(ini)
            .arg(devices.size())
            .arg(Bracketed(devices)));
}

} // namespace

QString IniOf(const Recording& recording)
{
    for (const QString& directory : Upwards(recording) + QStringList{QStringLiteral(".")}) {
        QString path = QDir::cleanPath(directory + QLatin1Char('/') + IniName());
        if (QFileInfo(path).isFile())
            return path;
    }
    return QString();
}

void CompleteIni(DeviceChoice& choice, const std::vector<Recording>& recordings)
{
    if (choice.ini.isEmpty() && recordings.empty() && !QFileInfo(IniName()).isFile())
        throw ConfigurationError(NoIniText({IniName(), QString(), QString()}));
    if (choice.ini.isEmpty())
        choice.ini = ChosenIni(recordings);
}

void CompleteDefaults(DeviceChoice& choice, const std::vector<Recording>& recordings)
{
    CompleteIni(choice, recordings);
    CheckIniFile(choice.ini);
    CheckSection(QStringLiteral("--defaults"), choice.ini, choice.defaults);
    CheckSection(QStringLiteral("--device"), choice.ini, choice.device);
    if (!choice.defaults.isEmpty())
        return;
    const QStringList sections = inicheck::IniLines(choice.ini).Sections();
    if (sections.isEmpty())
        throw ConfigurationError(
            Tr("choice", "'%1' has no section at all; is it the recorders' ini file?").arg(choice.ini));
    choice.defaults = ChosenDefaults(choice.ini, sections);
}

void CompleteChoice(DeviceChoice& choice, const std::vector<Recording>& recordings)
{
    CompleteDefaults(choice, recordings);
    if (choice.device.isEmpty())
        choice.device = ChosenDevice(choice.ini, choice.defaults, inicheck::IniLines(choice.ini).Sections());
}
