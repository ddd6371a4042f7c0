// Ini files in an encoding other than UTF-8, which is what the converter reads.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace inicheck {

struct Encoding
{
    const char* name;  // for people and for iconv
    bool isRecognised; // the converter reads it correctly, thanks to a byte order mark
};

/// The encoding of a whole ini file if it is not UTF-8: one with a byte order mark, or one in which the file
/// has sections or keys of the converter while it has none when read as UTF-8. Nothing for a UTF-8 file in
/// which some bytes are not valid.
std::optional<Encoding> OtherEncodingOf(const QByteArray& bytes);

/// The encoding of the file at path if the converter takes its letters for others, so that it finds nothing
/// in it; none if the file cannot be read.
std::optional<Encoding> UnknownEncodingOf(const QString& path);

/// What the converter makes of a file in this encoding and how to rewrite it; goes after the file's path.
QString EncodingText(const Encoding& encoding);

} // namespace inicheck
