#include "logfile.h"

#include "command.h"
#include "texts.h"

#include <zucmtrlib.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr int linesShown = 25; // a section with all its keys and the error

} // namespace

LogFile::LogFile(const QString& path_) : path(path_)
{
    if (path.isEmpty())
        path = MakeTemporary();
    seen = QFileInfo(path).size(); // an older log stays in front
    ZuCmtrSetLogFilePath(path);
}

QString LogFile::MakeTemporary()
{
    const QString directory = QDir::tempPath(); // empty if TMPDIR does not exist
    temporary.setFileTemplate(directory + QLatin1String("/zucmtr-log.XXXXXX"));
    if (directory.isEmpty() || !temporary.open())
        throw ConfigurationError(
            Tr("log", "cannot make a temporary log file in '%1'; set TMPDIR to a directory that can be "
                      "written to, or name a log file by --log")
                .arg(directory.isEmpty() ? qEnvironmentVariable("TMPDIR") : directory));
    QString name = temporary.fileName();
    temporary.close();
    return name;
}

LogFile::~LogFile()
{
    ZuCmtrSetLogFilePath(QString());
}

QStringList LogFile::TakeNewLines()
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(seen))
        return {};
    const QByteArray bytes = file.readAll();
    seen += bytes.size();
    QStringList lines = QString::fromUtf8(bytes).split(QLatin1Char('\n'));
    if (lines.last().isEmpty())
        lines.removeLast();
    if (lines.size() > linesShown) {
        const int hidden = lines.size() - linesShown;
        lines = lines.mid(hidden);
        lines.prepend(Tr("log", "... (%1 lines before)").arg(hidden));
    }
    return lines;
}
