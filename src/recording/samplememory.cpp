#include "recording/samplememory.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <sys/mman.h>

namespace {

constexpr size_t FewBytes = size_t{128} << 10U;
constexpr size_t LargePage = size_t{2} << 20U;
constexpr size_t LargestPiece = size_t{34}
                                << 20U; // malloc gives those of more than 32 MB back to the system at once
constexpr size_t CacheLine = 64;

constexpr size_t RoundedUp(size_t bytes, size_t step)
{
    return (bytes + step - 1) / step * step;
}

} // namespace

zu::SampleMemory::SampleMemory(qint64 fileSize)
    : pieceSize(std::min(LargestPiece, static_cast<size_t>(std::max<qint64>(fileSize, 0))))
{}

quint16* zu::SampleMemory::Take(size_t samples)
{
    const size_t bytes = RoundedUp(samples * sizeof(quint16), CacheLine);
    const size_t most = pieceSize > 2 * LargePage ? (pieceSize - LargePage) / 4 : 0;
    if (bytes < FewBytes || bytes > most || (left < bytes && !AddPiece()))
        return nullptr;
    char* const place = next;
    next += bytes;
    left -= bytes;
    return reinterpret_cast<quint16*>(place);
}

bool zu::SampleMemory::AddPiece()
{
    std::unique_ptr<char[]> piece(new (std::nothrow) char[pieceSize]);
    if (piece == nullptr)
        return false;
    // Large pages begin at multiples of their size.
    const auto start = reinterpret_cast<uintptr_t>(piece.get());
    const size_t before = RoundedUp(start, LargePage) - start;
    next = piece.get() + before;
    left = pieceSize - before;
    // What could be no large page is left alone. Without large pages it takes longer, and nothing else.
    madvise(next, left / LargePage * LargePage, MADV_HUGEPAGE);
    pieces.push_back(std::move(piece));
    return true;
}
