// Files of a record that may be anything; failures are a Mismatch that says why the file cannot be read.
#pragma once

#include <QByteArray>
#include <QString>

class QFile;

namespace verify {

[[noreturn]] void CannotRead(const QString& path, const QString& reason);

/// Opens the file for reading. Throws Mismatch.
void Open(QFile& file);

/// Moves to a position, in bytes from the begin. Throws Mismatch.
void Seek(QFile& file, qint64 position);

/// The next bytes, at most so many; fewer at the end of the file alone. Throws Mismatch.
QByteArray Read(QFile& file, qint64 most);

} // namespace verify
