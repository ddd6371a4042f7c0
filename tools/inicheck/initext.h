// An ini file line by line, as the library's reader takes it, with what the reader forgets: line numbers,
// repeated keys and the lines that are dropped.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

namespace inicheck {

/// A line "key=value" of a section.
struct Entry
{
    int line;
    QString key;
    QString whole; // behind the "=", with its comment, trimmed
    QString value; // as the library reads it
};

/// All entries under one name, wherever they stand in the file.
struct Section
{
    QString name;
    std::vector<int> lines;      // of its headings
    std::vector<Entry> entries;  // in the order of the file
    QHash<QString, size_t> last; // the entry of each key that counts

    /// The entry that counts; null if there is none.
    const Entry* Find(const QString& key) const;
};

/// A line that the reader drops, or takes for something else than it looks like.
struct OddLine
{
    enum Kind { AheadOfSections, NoKey, BrokenHeading, EmptyHeading };
    int line;
    Kind kind;
    QString text;
    QString section; // in force there
};

struct IniText
{
    std::vector<Section> sections; // in the order of their first headings
    std::vector<OddLine> oddLines;
    std::vector<int> notUtf8; // lines with bytes that are no UTF-8
    bool byteOrderMark = false;
    bool utf16 = false;
    QString error; // why the file cannot be read; all else is then empty

    /// The section; null if there is none.
    const Section* Find(const QString& name) const;
    QStringList Names() const;
};

/// Reads the file. Nothing is thrown but std::bad_alloc.
IniText ReadIni(const QString& path);

} // namespace inicheck
