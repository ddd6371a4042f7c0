// Memory for the samples of large recordings.
//
// A page of memory that is written for the first time costs more than copying its bytes into it. So the
// samples of a segment's channels lie together in large pieces, for which the system may take large pages.
#pragma once

#include <QtGlobal>

#include <cstddef>
#include <memory>
#include <vector>

namespace zu {

class SampleMemory
{
public:
    /// For a file of that many bytes. No piece is larger than the file.
    explicit SampleMemory(qint64 fileSize);

    /// Room for that many samples, until this object ends. Null where these are better placed with new: few
    /// samples, or so many that they are a piece of their own; and where there is no memory for a piece.
    quint16* Take(size_t samples);

private:
    bool AddPiece();

    const size_t pieceSize; // bytes
    std::vector<std::unique_ptr<char[]>> pieces;
    char* next = nullptr; // in the last piece
    size_t left = 0;      // bytes from there
};

} // namespace zu
