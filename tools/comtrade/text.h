// Texts of COMTRADE files, in whatever encoding they were written.
#pragma once

#include <QByteArray>
#include <QString>

namespace comtrade {

/// The name of the encoding that bytes are in, one that QTextCodec knows: ASCII, UTF-8, UTF-16LE, UTF-16BE,
/// CP1251, CP866, KOI8-R, GBK or Latin-1. Certain for the Unicode encodings; of the others the one whose
/// words look best.
QString EncodingOf(const QByteArray& bytes);

/// Whether the bytes start with a byte order mark.
bool HasByteOrderMark(const QByteArray& bytes);

/// Whether there is an encoding of this name.
bool IsEncoding(const QString& name);

/// The text of bytes in the encoding, which is found out if it is empty. Every byte sequence has a text; a
/// byte order mark is not part of it.
QString DecodedText(const QByteArray& bytes, const QString& encoding = QString());

} // namespace comtrade
