// Times of repeated work.
#pragma once

#include "rows.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <vector>

namespace bench {

/// Seconds on the clock that work takes: for work of several threads, and for times too short for the other
/// one.
template <class Work>
double ElapsedSecondsOf(Work&& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Seconds that this process and its finished children have spent in the processor, programs and system
/// together.
double ProcessorSeconds();

/// Seconds in the processor that work takes, in this process and in children that it waits for. What other
/// programs do meanwhile does not count, apart from the caches that they take away.
template <class Work>
double SecondsOf(Work&& work)
{
    const double start = ProcessorSeconds();
    work();
    return ProcessorSeconds() - start;
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

/// The times of two sides that do their work in turn, in many short rounds. The best of each side counts.
/// That is steady if the first, the second and the last third of the rounds, each taken alone, give nearly
/// the same ratio.
class Contest
{
public:
    /// Adds a round, in seconds.
    void Add(double limit, double measured);

    /// The best times, and their ratio.
    double Limit() const { return Best(0, rounds.size()).limit; }
    double Measured() const { return Best(0, rounds.size()).measured; }
    double Ratio() const { return Measured() / Limit(); }

    /// Ratios of the thirds: the lowest and the highest.
    struct Range
    {
        double lowest, highest;
    };
    Range Thirds() const;

    bool IsSteady() const;

    /// Whether there is to be another round: up to the rounds that are set, and up to MostRounds times as
    /// many while it is not steady.
    bool GoesOn(const Settings& settings) const;

    static constexpr double Tolerance = 0.05;
    static constexpr int MostRounds = 5;

private:
    struct Round
    {
        double limit, measured;
    };
    Round Best(size_t first, size_t end) const;

    std::vector<Round> rounds;
};

} // namespace bench
