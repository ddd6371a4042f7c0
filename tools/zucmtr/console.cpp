#include "console.h"

#include <algorithm>
#include <cstdio>

namespace {

// A name or note from a recording must not steer the terminal.
QString WithoutControls(QString text)
{
    for (QChar& character : text)
        if (character.category() == QChar::Other_Control)
            character = QLatin1Char('?');
    return text;
}

void Write(std::FILE* stream, const QString& line)
{
    const QByteArray bytes = WithoutControls(line).toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
    std::fflush(stream);
}

bool IsPlain(QChar character)
{
    const ushort code = character.unicode();
    return (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z') || (code >= '0' && code <= '9') ||
           QStringLiteral("_./-+,:@%").contains(character);
}

} // namespace

void PrintLine(const QString& text)
{
    Write(stdout, text);
}

void Complain(const QString& text)
{
    Complain(QStringList{text});
}

void Complain(const QStringList& lines)
{
    Write(stderr, QStringLiteral("zucmtr: ") + lines.first());
    for (int i = 1; i < lines.size(); ++i)
        Write(stderr, lines[i]);
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
