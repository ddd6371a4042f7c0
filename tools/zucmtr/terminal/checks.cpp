#include "zucmtr/terminal/checks.h"

#include "base/chainnames.h"
#include "output/target.h"
#include "text/texts.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/console.h"

#include "explain/file.h"
#include "explain/system.h"
#include "inicheck/inilines.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QStringList>

#include <cerrno>

QString CheckedDirectory(const QString& option, const QString& path)
{
    const QFileInfo directory(path);
    if (path.isEmpty() || !directory.exists())
        throw ConfigurationError(
            Tr("checks", "%1: the directory '%2' does not exist; make it first: mkdir -p %3")
                .arg(option, path, ShellWord(path)));
    if (!directory.isDir())
        throw ConfigurationError(
            Tr("checks", "%1: '%2' is a file; give a directory to write into").arg(option, path));
    if (!directory.isWritable())
        throw ConfigurationError(
            Tr("checks", "%1: no permission to write into '%2'; choose another directory").arg(option, path));
    return QDir::cleanPath(path);
}

// The path, or the nearest one above it that exists.
static QString NearestThere(QString path)
{
    while (!QFileInfo::exists(path) && QFileInfo(path).path() != path)
        path = QFileInfo(path).path();
    return path;
}

void MakeDirectory(const QString& option, const QString& path)
{
    if (QFileInfo(path).isDir())
        return;
    const QFileInfo above(NearestThere(path));
    if (above.exists() && !above.isDir())
        throw ConfigurationError(
            Tr("checks", "%1: the directory '%2' cannot be made, since '%3' is a file; choose another one")
                .arg(option, path, above.filePath()));
    errno = 0;
    if (!QDir().mkpath(path))
        throw ConfigurationError(Tr("checks", "%1: the directory '%2' cannot be made: %3; choose another one")
                                     .arg(option, path, explain::SystemText(errno)));
}

void CheckIniFile(const QString& path)
{
    const QFileInfo file(path);
    if (file.exists() && !file.isFile())
        throw ConfigurationError(
            Tr("checks", "--ini: '%1' is not a file; give the path of the recorders' ini file").arg(path));
    const QString reason = explain::Unreadable(path);
    if (!reason.isEmpty())
        throw ConfigurationError(QStringLiteral("--ini: %1: %2").arg(path, reason));
    if (const std::optional<inicheck::Encoding> encoding = inicheck::UnknownEncodingOf(path))
        throw ConfigurationError(
            QStringLiteral("--ini: %1: %2").arg(path, inicheck::EncodingText(*encoding)));
}

void CheckLogFile(const QString& path)
{
    const output::Target target = output::TargetOf(path);
    if (target.kind == output::Kind::Stream)
        return; // it may be opened only once: its reader takes the first close for the end
    const QFileInfo file(target.path);
    const QFileInfo directory(file.absolutePath());
    const bool usable = target.kind == output::Kind::RegularFile
                            ? file.isWritable()
                            : target.kind == output::Kind::NewFile && !path.isEmpty() && directory.isDir() &&
                                  directory.isWritable();
    if (!usable)
        throw ConfigurationError(Tr("checks", "--log: cannot write the file '%1'; give a file in a directory "
                                              "that exists and can be written to")
                                     .arg(path));
}

// Says which sections there are; empty if the section is among them.
static QString MissingSectionText(const QString& iniPath, const QString& section)
{
    const bool isThere = explain::Unreadable(iniPath).isEmpty();
    const QStringList sections = isThere ? inicheck::IniLines(iniPath).Sections() : QStringList();
    if (sections.contains(section))
        return QString();
    if (sections.isEmpty())
        return Tr("checks", "'%1' has no section at all; is it the recorders' ini file?").arg(iniPath);
    return Tr("checks", "'%1' has no section [%2]; it has [%3]")
        .arg(iniPath, section, sections.join(QLatin1String("], [")));
}

void CheckSection(const QString& option, const QString& iniPath, const QString& section)
{
    const QString missing = section.isEmpty() ? QString() : MissingSectionText(iniPath, section);
    if (!missing.isEmpty())
        throw ConfigurationError(option + QStringLiteral(": ") + missing);
}

// One name for each file, whether it exists or not. Empty for what may be written to twice.
static QString FileOf(const QString& path)
{
    const output::Target target = output::TargetOf(path);
    if (target.kind == output::Kind::Stream)
        return output::IsStandardOutput(path) ? QStringLiteral("-") : QString();
    const QFileInfo file(target.path);
    return QFileInfo(file.path()).canonicalFilePath() + QLatin1Char('/') + file.fileName();
}

void CheckOutputsDiffer(const QVector<QPair<QString, QString>>& outputs)
{
    QMap<QString, QString> options; // by file
    for (const auto& [option, path] : outputs) {
        const QString file = path.isEmpty() ? QString() : FileOf(path);
        if (file.isEmpty())
            continue;
        if (options.contains(file))
            throw ConfigurationError(Tr("checks", "%1: '%2' is the file of %3, too; choose another name")
                                         .arg(option, path, options.value(file)));
        options.insert(file, option);
    }
}

void CheckIsNoInput(const QString& option, const QString& path, const QString& input)
{
    static const QRegularExpression read(QStringLiteral("\\A(cfg|dat|hdr|inf|cff)\\z"),
                                         QRegularExpression::CaseInsensitiveOption);
    const QFileInfo target(QFileInfo(path).canonicalFilePath());
    const QFileInfo source(QFileInfo(input).canonicalFilePath());
    if (path.isEmpty() || !target.isFile() || !source.isFile())
        return;
    const bool belongs = target.path() == source.path() &&
                         target.completeBaseName() == source.completeBaseName() &&
                         (read.match(target.suffix()).hasMatch() ||
                          zu::IsRecorderFile(QLatin1Char('.') + target.suffix().toLower()));
    if (belongs || target == source)
        throw ConfigurationError(
            Tr("checks", "%1: '%2' is what is to be read; choose another name").arg(option, path));
}
