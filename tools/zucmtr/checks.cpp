#include "checks.h"

#include "command.h"
#include "console.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QTextStream>

namespace {

QStringList SectionsOf(const QString& iniPath)
{
    QStringList sections;
    QFile file(iniPath);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return sections;
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    while (!stream.atEnd()) {
        const QString line = stream.readLine().trimmed();
        if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']')))
            sections << line;
    }
    sections.removeDuplicates();
    return sections;
}

} // namespace

QString CheckedOutputDirectory(const QString& path)
{
    const QFileInfo directory(path);
    if (path.isEmpty() || !directory.exists())
        throw ConfigurationError(
            QStringLiteral("--out: the directory '%1' does not exist; make it first: mkdir -p %2")
                .arg(path, ShellWord(path)));
    if (!directory.isDir())
        throw ConfigurationError(
            QStringLiteral("--out: '%1' is a file; give a directory to write into").arg(path));
    if (!directory.isWritable())
        throw ConfigurationError(
            QStringLiteral("--out: no permission to write into '%1'; choose another directory").arg(path));
    return QDir::cleanPath(path);
}

void CheckIniFile(const QString& path)
{
    const QFileInfo file(path);
    if (!file.exists())
        throw ConfigurationError(
            QStringLiteral("--ini: the file '%1' does not exist; give the path of the recorders' ini file")
                .arg(path));
    if (!file.isFile())
        throw ConfigurationError(QStringLiteral("--ini: '%1' is not a file; give the path of the recorders' "
                                                "ini file")
                                     .arg(path));
    if (!file.isReadable())
        throw ConfigurationError(
            QStringLiteral("--ini: no permission to read '%1'; check its permissions").arg(path));
}

void CheckLogFile(const QString& path)
{
    const QFileInfo file(path);
    const QFileInfo directory(file.absolutePath());
    const bool usable = file.exists() ? file.isFile() && file.isWritable()
                                      : !path.isEmpty() && directory.isDir() && directory.isWritable();
    if (!usable)
        throw ConfigurationError(
            QStringLiteral("--log: cannot write the file '%1'; give a file in a directory that exists and "
                           "can be written to")
                .arg(path));
}

QString MissingSectionText(const QString& iniPath, const QString& section)
{
    const QStringList sections = SectionsOf(iniPath);
    if (sections.contains(QLatin1Char('[') + section + QLatin1Char(']')))
        return QString();
    if (sections.isEmpty())
        return QStringLiteral("'%1' has no section at all; is it the recorders' ini file?").arg(iniPath);
    return QStringLiteral("'%1' has no section [%2]; it has %3")
        .arg(iniPath, section, sections.join(QLatin1String(", ")));
}
