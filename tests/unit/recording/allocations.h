// Watches and limits what the test program allocates with new. Its functions replace the global ones.
#pragma once

#include <cstddef>

/// While it lives, a single new of more than limit bytes fails, and the largest request is remembered.
class AllocationLimit
{
public:
    explicit AllocationLimit(size_t limit);
    ~AllocationLimit();
    AllocationLimit(const AllocationLimit&) = delete;
    AllocationLimit& operator=(const AllocationLimit&) = delete;

    /// Largest size, in bytes, that was asked for so far, refused requests included.
    size_t LargestRequest() const;
};
