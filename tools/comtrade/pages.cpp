#include "comtrade/pages.h"

#include <cstdlib>
#include <new>
#include <sys/mman.h>
#include <unistd.h>

namespace comtrade {

namespace {

constexpr size_t LeastMapped = size_t{1} << 20U;

size_t PageSize()
{
    static const auto size = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    return size;
}

size_t UpToPage(size_t bytes)
{
    return (bytes + PageSize() - 1) / PageSize() * PageSize();
}

char* Map(size_t bytes)
{
    void* const memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        throw std::bad_alloc();
    madvise(memory, bytes,
            MADV_HUGEPAGE); // first touches cost a third; where there are none, nothing is lost
    return static_cast<char*>(memory);
}

} // namespace

Pages::Pages(size_t bytes_) : bytes(bytes_), mapped(bytes_ < LeastMapped ? 0 : UpToPage(bytes_))
{
    if (mapped > 0)
        data = Map(mapped);
    else if (bytes > 0)
        data = static_cast<char*>(operator new(bytes));
}

Pages::~Pages()
{
    Free();
}

Pages::Pages(Pages&& other) noexcept
    : data(std::exchange(other.data, nullptr)), bytes(std::exchange(other.bytes, 0)),
      mapped(std::exchange(other.mapped, 0))
{}

Pages& Pages::operator=(Pages&& other) noexcept
{
    std::swap(data, other.data);
    std::swap(bytes, other.bytes);
    std::swap(mapped, other.mapped);
    return *this;
}

void Pages::Free()
{
    if (mapped > 0)
        munmap(data, mapped);
    else
        operator delete(data);
}

void Pages::Discard(size_t offset, size_t length)
{
    const size_t from = UpToPage(offset);
    const size_t to = (offset + length) / PageSize() * PageSize();
    if (mapped > 0 && from < to)
        madvise(data + from, to - from, MADV_DONTNEED);
}

void Pages::Shorten(size_t bytes_)
{
    const size_t kept = UpToPage(bytes_);
    if (mapped == 0 || kept == 0 || kept >= mapped)
        return;
    munmap(data + kept, mapped - kept);
    mapped = kept;
    bytes = bytes_;
}

} // namespace comtrade
