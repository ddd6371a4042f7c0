#include "recording/samplememory.h"

#include <algorithm>
#include <new>
#include <sys/mman.h>

namespace {

constexpr size_t FewBytes = size_t{128} << 10U;
constexpr size_t LargePage = size_t{2} << 20U;
// Only what is written takes memory, so that a piece may be larger than the samples that are left.
constexpr size_t PieceBytes = size_t{32} << 20U;
constexpr size_t CacheLine = 64;

constexpr size_t RoundedUp(size_t bytes, size_t step)
{
    return (bytes + step - 1) / step * step;
}

} // namespace

zu::SampleMemory::~SampleMemory()
{
    for (const Piece& piece : pieces)
        munmap(piece.start, piece.size);
}

quint16* zu::SampleMemory::Take(size_t samples)
{
    const size_t bytes = RoundedUp(samples * sizeof(quint16), CacheLine);
    if (bytes < FewBytes)
        return nullptr;
    if ((pieces.empty() || pieces.back().size - used < bytes) && !AddPiece(bytes))
        return nullptr;
    char* const place = pieces.back().start + used;
    used += bytes;
    return reinterpret_cast<quint16*>(place);
}

bool zu::SampleMemory::AddPiece(size_t bytes)
{
    const size_t size = RoundedUp(std::max(bytes, PieceBytes), LargePage);
    const size_t mapped = size + LargePage;
    void* const memory =
        mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED)
        return false;
    // Large pages begin at multiples of their size; what lies around them goes back.
    char* const start = static_cast<char*>(memory);
    const size_t before =
        RoundedUp(reinterpret_cast<size_t>(start), LargePage) - reinterpret_cast<size_t>(start);
    if (before > 0)
        munmap(start, before);
    if (before < LargePage)
        munmap(start + before + size, LargePage - before);
    try {
        pieces.push_back({start + before, size});
    } catch (const std::bad_alloc&) {
        munmap(start + before, size);
        return false;
    }
    used = 0;
    madvise(start + before, size, MADV_HUGEPAGE); // without them it takes longer
    return true;
}
