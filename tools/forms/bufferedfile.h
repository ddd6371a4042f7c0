// A file that is written in large pieces.
#pragma once

#include "forms/fileerror.h"

#include <QFile>
#include <QString>

#include <vector>

namespace forms {

/// A new file with that name, or what is there emptied. All functions throw FileError if the disk does not
/// take the bytes.
class BufferedFile
{
public:
    explicit BufferedFile(const QString& path);

    /// Room for so many bytes after those that were taken; valid until the next call.
    char* Room(size_t bytes);

    /// The room is filled up to there.
    void TakeUntil(const char* end) { used = static_cast<size_t>(end - buffer.data()); }

    void Write(const QByteArray& bytes);

    /// Writes what is left and closes the file.
    void Finish();

private:
    void Flush();
    [[noreturn]] void Fail() const;

    QFile file;
    std::vector<char> buffer;
    size_t used = 0;
};

} // namespace forms
