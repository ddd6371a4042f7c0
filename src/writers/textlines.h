// The lines of a text file of a record.
#pragma once

#include "base/encodedtext.h"

#include <QString>

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

    void Add(const QString& line)
    {
        text.Add(line);
        text.AddBytes("\n", 1);
    }

private:
    static constexpr int UsualSize = 16384; // bytes
    QFile& file;
    EncodedText text;
};

} // namespace zu
