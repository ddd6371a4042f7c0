// Memory for the samples of large recordings.
//
// A page of memory that is written for the first time costs more than copying its bytes into it. So the
// samples of a segment's channels lie together in large pieces, for which the system may take large pages.
#pragma once

#include <QtGlobal>

#include <cstddef>
#include <vector>

namespace zu {

class SampleMemory
{
public:
    SampleMemory() = default;
    ~SampleMemory();
    SampleMemory(const SampleMemory&) = delete;
    SampleMemory& operator=(const SampleMemory&) = delete;

    /// Room for that many samples, until this object ends. Null where they are so few that they are better
    /// placed with new, and where there is no memory.
    quint16* Take(size_t samples);

private:
    struct Piece
    {
        char* start;
        size_t size; // bytes
    };
    bool AddPiece(size_t bytes);

    std::vector<Piece> pieces;
    size_t used = 0; // bytes of the last piece
};

} // namespace zu
