// An ini file line by line, by the grammar of the converter's reader.
#pragma once

#include "config/inigrammar.h"
#include "inicheck/encoding.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace inicheck {

using zu::IniLine;
using LineKind = zu::IniLineKind;

/// The lines of a file, and for each key of a section the line that counts.
class IniLines
{
public:
    /// Throws text::Error if the file cannot be read.
    explicit IniLines(const QString& path);

    const std::vector<IniLine>& All() const { return parsed->lines; }

    /// Whether the file starts with a byte order mark, which the reader skips.
    bool HasByteOrderMark() const { return parsed->byteOrderMark; }

    /// The encoding of the whole file if it is not UTF-8.
    const std::optional<Encoding>& OtherEncoding() const { return parsed->encoding; }

    /// Numbers of the lines that are not UTF-8; none if the whole file is in another encoding.
    const std::vector<int>& BadlyEncoded() const { return parsed->badlyEncoded; }

    /// The line that counts for a key; null if there is none.
    const IniLine* Find(const QString& section, const QString& key) const;

    /// The lines that count in a section, in the order of the file.
    std::vector<const IniLine*> EntriesOf(const QString& section) const;

    /// First line of a section; 0 if there is none.
    int LineOfSection(const QString& section) const;

    /// All sections, each once, in the order of the file.
    QStringList Sections() const;

private:
    struct Parsed
    {
        std::vector<IniLine> lines;
        std::vector<int> badlyEncoded;
        std::optional<Encoding> encoding;
        bool byteOrderMark = false;
        QHash<QString, size_t> counting;             // full key: index of the line
        QHash<QString, std::vector<size_t>> entries; // section: indexes of its entries' lines
        QHash<QString, int> firstLines;              // section: number of the line that opens it first
        QStringList sections;                        // in the order of the file
    };

    static std::shared_ptr<const Parsed> Parse(const QByteArray& bytes, QString text);

    std::shared_ptr<const Parsed> parsed;
};

} // namespace inicheck
