// Ini files in another encoding than UTF-8, in which the converter takes them.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace inicheck {

struct Encoding
{
    const char* name;  // for people and for iconv
    bool isRecognised; // the converter reads it right, because of a byte order mark
};

/// The encoding of a whole ini file if it is not UTF-8: one with a byte order mark, or one in which the file
/// has keys of the converter or sections while it has none as UTF-8. A file in UTF-8 with some bytes that are
/// not has none.
std::optional<Encoding> OtherEncodingOf(const QByteArray& bytes);

/// The encoding of the file at path if the converter takes its letters for others, so that it finds nothing
/// in it; none if the file cannot be read.
std::optional<Encoding> UnknownEncodingOf(const QString& path);

/// What the converter makes of a file in the encoding and how to rewrite it, to follow the file's path.
QString EncodingText(const Encoding& encoding);

} // namespace inicheck
