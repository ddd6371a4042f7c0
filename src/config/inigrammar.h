// The grammar of an ini file, for its reader and for programs that explain its lines.
//
// Each line is trimmed. "[section]" opens a section; "key=value" under a section is an entry, its value cut
// at the first ";"; everything else is dropped. There is no quoting and no comment line of its own.
#pragma once

#include <QString>

class QTextStream;

namespace zu {

enum class IniLineKind {
    Blank,
    Section,
    Entry,
    Outside, // dropped: an entry while no section is open, or one without a name
    Stray    // dropped: anything else
};

struct IniLine
{
    int number = 0; // from 1
    IniLineKind kind = IniLineKind::Blank;
    QString text;    // trimmed
    QString section; // in force at the line; the opened one of a section line
    QString key;     // of an entry, also outside
    QString value;   // of an entry, also outside, without its comment
};

/// Reads the next line of stream into line, which holds the line before, or a fresh object at the start of
/// the file. False at the end, with line as it was.
bool ReadIniLine(QTextStream& stream, IniLine& line);

} // namespace zu
