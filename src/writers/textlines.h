// The lines of a text file of a record.
#pragma once

#include "base/encodedtext.h"

#include <QString>

#include <algorithm>
#include <iterator>

class QFile;

namespace zu {

/// Collects lines, each with a line feed, and writes them together when it goes out of scope. Whether they
/// could be written is not noticed.
class TextLines
{
public:
    TextLines(QFile& file_, const QTextCodec* codec) : file(file_), text(codec, UsualSize) {}
    ~TextLines();
    TextLines(const TextLines&) = delete;
    TextLines& operator=(const TextLines&) = delete;

    /// False for a line of which the codec makes no bytes at all.
    bool Add(const QString& line) { return text.Add(line + QLatin1Char('\n')); }

    /// The same for several, up to the first of that kind.
    template <class Lines>
    bool AddAll(const Lines& lines)
    {
        return std::all_of(std::begin(lines), std::end(lines),
                           [this](const QString& line) { return Add(line); });
    }

private:
    static constexpr int UsualSize = 16384; // bytes
    QFile& file;
    EncodedText text;
};

} // namespace zu
