// The lines that separate the sections of a container (.cff).
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace comtrade {

/// A section mark, such as "--- file type: DAT BINARY: 1234 ---".
struct Mark
{
    QString kind;          // CFG, INF, HDR or DAT
    qint64 dataBytes = -1; // of binary data; not known if negative
    bool isExact = false;  // written as the standard has it, but for case and blanks
};

/// The mark on the line; nothing if it is another kind of line. The number of dashes may be any from two on,
/// and blanks, the colon and a byte order mark before it may be there or not.
std::optional<Mark> MarkOf(const QByteArray& line);

} // namespace comtrade
