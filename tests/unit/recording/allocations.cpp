#include "allocations.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>

static constexpr size_t Unlimited = std::numeric_limits<size_t>::max();
static size_t largestAllowed = Unlimited;
static size_t largestRequest = 0;

static void* Allocate(size_t size) noexcept
{
    largestRequest = std::max(largestRequest, size);
    return size > largestAllowed ? nullptr : std::malloc(std::max<size_t>(size, 1));
}

static void* AllocateOrThrow(size_t size)
{
    void* memory = Allocate(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

AllocationLimit::AllocationLimit(size_t limit)
{
    largestAllowed = limit;
    largestRequest = 0;
}

AllocationLimit::~AllocationLimit()
{
    largestAllowed = Unlimited;
}

size_t AllocationLimit::LargestRequest() const
{
    return largestRequest;
}

void* operator new(size_t size)
{
    return AllocateOrThrow(size);
}

void* operator new[](size_t size)
{
    return AllocateOrThrow(size);
}

void* operator new(size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return Allocate(size);
}

void* operator new[](size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return Allocate(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, size_t /*size*/) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, size_t /*size*/) noexcept
{
    std::free(memory);
}
