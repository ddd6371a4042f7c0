#include "zucmtr/host/logfile.h"

#include "text/texts.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/messages.h"

#include <zucmtrlib.h>

#include <QFile>
#include <QFileInfo>

namespace {

constexpr int LinesShown = 25; // a section with all its keys and the error

} // namespace

LogFile::LogFile(const QString& path_) : path(path_)
{
    if (output::TargetOf(path).kind == output::Kind::Stream) {
        OpenStream(path_);
        path.clear();
    }
    if (path.isEmpty())
        UseOwnLog();
    seen = QFileInfo(path).size(); // an older log stays in front
    ZuCmtrSetLogFilePath(path);
    if (!path_.isEmpty())
        messages::GoTo([this](const QString& text) { Append(text); });
}

void LogFile::OpenStream(const QString& name)
{
    stream = std::make_unique<output::OutputFile>(name);
    if (!stream->Open())
        throw ConfigurationError(
            Tr("log", "--log: '%1' cannot be written: %2").arg(name, stream->ErrorText()));
}

void LogFile::UseOwnLog()
{
    own = std::make_unique<output::ScratchFile>();
    path = own->Path();
    if (path.isEmpty())
        throw ConfigurationError(Tr("log", "cannot make a temporary log file in '%1'; set TMPDIR to a "
                                           "directory that can be written to, or name a log file by --log")
                                     .arg(qEnvironmentVariable("TMPDIR", QStringLiteral("/tmp"))));
}

LogFile::~LogFile()
{
    messages::GoTo({});
    ZuCmtrSetLogFilePath(QString());
}

// As the library does it: the file is open only for the moment.
void LogFile::Append(const QString& line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    if (stream != nullptr) {
        Copy(bytes);
        return;
    }
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Append))
        file.write(bytes);
}

void LogFile::Copy(const QByteArray& bytes)
{
    if (stream == nullptr || stream->Write(bytes))
        return;
    Complain(Tr("log", "the log cannot be written any more: %1").arg(stream->ErrorText()));
    stream.reset();
}

QStringList LogFile::TakeNewLines()
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(seen))
        return {};
    const QByteArray bytes = file.readAll();
    seen += bytes.size();
    Copy(bytes);
    QStringList lines = QString::fromUtf8(bytes).split(QLatin1Char('\n'));
    if (lines.last().isEmpty())
        lines.removeLast();
    if (lines.size() > LinesShown) {
        const int hidden = lines.size() - LinesShown;
        lines = lines.mid(hidden);
        lines.prepend(Tr("log", "... (%1 lines before)").arg(hidden));
    }
    return lines;
}
