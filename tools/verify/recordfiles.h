// Opening the files of a record.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

namespace verify {

/// More bytes than the texts of 4096 channels can take.
constexpr qint64 LargestText = qint64{64} << 20;

/// Throws the Mismatch of a file that cannot be read.
[[noreturn]] void FailToRead(const QString& path, const QString& reason);

/// Whether there is a file of this name. Throws Mismatch for anything but a regular file: opening a pipe
/// would wait for ever.
bool IsThere(const QString& path);

/// Opens a file to read it. Throws Mismatch.
void Open(QFile& file);

/// Moves to a position, in bytes from the start. Throws Mismatch.
void Seek(QFile& file, qint64 position);

/// The next bytes of a file, fewer at its end. Throws Mismatch.
QByteArray Read(QFile& file, qint64 most);

/// A whole file. Throws Mismatch, also if it is too large for a text.
QByteArray ReadText(const QString& path);

} // namespace verify
