// The lines that part a container (.cff) into sections.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace comtrade {

/// A section mark, such as "--- file type: DAT BINARY: 1234 ---".
struct Mark
{
    QString kind;          // CFG, INF, HDR or DAT
    qint64 dataBytes = -1; // of binary data
};

/// The mark that the line is; none if it is another line.
std::optional<Mark> MarkOf(const QByteArray& line);

} // namespace comtrade
