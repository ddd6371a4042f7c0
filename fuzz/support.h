// What the fuzzers share: a directory in memory, and quiet Qt.
#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>

namespace fuzz {

/// A directory of this process in memory (if there is such a file system), made when first used and removed
/// at the end.
const QString& Directory();

/// Writes Directory()/name and returns its path.
QString Write(const QString& name, const QByteArray& bytes);

/// Removes everything in Directory().
void Clean();

/// Hands out pieces of an input. Each starts with its length in two bytes, little-endian, except the last.
class Pieces
{
public:
    Pieces(const uint8_t* data, size_t size);

    uint8_t Byte();     // 0 at the end
    QByteArray Piece(); // as much of the piece as there is
    QByteArray Rest();

private:
    const char* position;
    const char* end;
};

} // namespace fuzz
