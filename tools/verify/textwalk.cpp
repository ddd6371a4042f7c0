#include "verify/textwalk.h"

#include "text/texts.h"
#include "verify/device.h"
#include "verify/mismatch.h"

#include <QTextCodec>

#include <cstring>

namespace verify {

TextWalk::TextWalk(const QByteArray& bytes_, const QString& fileName_, const char* lineEnd_,
                   const Device& device_)
    : bytes(bytes_), fileName(fileName_), lineEnd(lineEnd_), device(device_)
{}

QString TextWalk::Place() const
{
    return Tr("verify", "'%1', line %2").arg(fileName).arg(line);
}

QString TextWalk::TakeLine()
{
    const int end = bytes.indexOf(lineEnd, position);
    if (end < 0)
        throw Mismatch(
            Tr("verify", "'%1' ends within line %2 or before it; free the disk, then convert again")
                .arg(fileName)
                .arg(line + 1));
    const QByteArray text = bytes.mid(position, end - position);
    position = end + lineEnd.size();
    ++line;
    return device.Codec().toUnicode(text);
}

void TextWalk::Line(const QString& text)
{
    const QByteArray expected = device.Codec().fromUnicode(text) + lineEnd;
    if (bytes.mid(position, expected.size()) == expected) {
        position += expected.size();
        line += 1 + static_cast<int>(text.count(QLatin1Char('\n')));
        return;
    }
    const QString found = TakeLine();
    Differ(Place(), found, text);
}

bool TextWalk::Skip(const QByteArray& lines, int count)
{
    if (bytes.size() - position < lines.size() ||
        std::memcmp(bytes.constData() + position, lines.constData(), static_cast<size_t>(lines.size())) != 0)
        return false;
    position += lines.size();
    line += count;
    return true;
}

void TextWalk::LineLike(const QString& begin, const QString& end)
{
    const QString found = TakeLine();
    if (!found.startsWith(begin) || !found.endsWith(end))
        Differ(Place(), found, begin + QStringLiteral("...") + end);
}

void TextWalk::End() const
{
    if (position != bytes.size())
        throw Mismatch(
            Tr("verify", "'%1' goes on after line %2, which should be its last").arg(fileName).arg(line));
}

} // namespace verify
