#include "zucmtr/terminal/console.h"
#include "text/numbers.h"

#include "zucmtr/terminal/interrupt.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

QString& Prefix()
{
    static QString prefix = QStringLiteral("zucmtr: ");
    return prefix;
}

void Write(std::FILE* stream, const QString& line)
{
    const QByteArray bytes = WithoutControls(line).toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
    std::fflush(stream);
}

// JSON escapes some control characters by itself; terminals also react to the others.
QString WithEscapedControls(const QString& json)
{
    QString text;
    for (const QChar character : json) {
        if (character.category() == QChar::Other_Control)
            text += QString::asprintf("\\u%04x", unsigned{character.unicode()});
        else
            text += character;
    }
    return text;
}

bool IsPlain(QChar character)
{
    const ushort code = character.unicode();
    return (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z') || (code >= '0' && code <= '9') ||
           QStringLiteral("_./-+,:@%").contains(character);
}

} // namespace

void HoldStandardStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) >= 0 || errno != EBADF)
            continue;
        const int place = open("/", O_PATH); // can neither be read nor written
        if (place >= 0 && place != stream) {
            dup2(place, stream);
            close(place);
        }
    }
}

QString WithoutControls(QString text)
{
    for (QChar& character : text)
        if (character.category() == QChar::Other_Control)
            character = QLatin1Char('?');
    return text;
}

void PrintLine(const QString& text)
{
    Write(stdout, text);
}

void PrintJson(const QJsonObject& object)
{
    const QByteArray json = text::JsonText(QJsonDocument(object), QJsonDocument::Compact);
    Write(stdout, WithEscapedControls(QString::fromUtf8(json)));
}

void PrintBytes(const QByteArray& bytes)
{
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

void ComplainFor(const QString& recorder)
{
    Prefix() = QStringLiteral("zucmtr: ") + recorder + QLatin1String(": ");
}

void Complain(const QString& text)
{
    Complain(QStringList{text});
}

void Complain(const QStringList& lines)
{
    if (interrupt::Signal() == SIGPIPE)
        return; // the user has seen enough, and whatever fails now fails for that reason
    Write(stderr, Prefix() + lines.first());
    for (int i = 1; i < lines.size(); ++i)
        Write(stderr, lines[i]);
}

int OutputColumns()
{
    winsize size = {};
    if (isatty(STDOUT_FILENO) == 0)
        return 0;
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

bool OutputIsWhole()
{
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

QString ShellWord(const QString& text)
{
    if (!text.isEmpty() && std::all_of(text.begin(), text.end(), IsPlain))
        return text;
    return QLatin1Char('\'') + QString(text).replace(QLatin1String("'"), QLatin1String("'\\''")) +
           QLatin1Char('\'');
}
