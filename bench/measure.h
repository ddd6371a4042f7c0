// Times of repeated work.
#pragma once

#include <algorithm>
#include <chrono>
#include <limits>

namespace bench {

/// Seconds that work takes.
template <class Work>
double SecondsOf(Work&& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The shortest of several times: the one that other programs disturbed least.
class Fastest
{
public:
    void Add(double seconds) { shortest = std::min(shortest, seconds); }

    /// Seconds; infinite before the first Add.
    double Seconds() const { return shortest; }

private:
    double shortest = std::numeric_limits<double>::infinity();
};

} // namespace bench
