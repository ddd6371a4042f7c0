#include "measure.h"

#include <ctime>
#include <sys/resource.h>

namespace bench {

double ProcessorSeconds()
{
    timespec own = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &own);
    rusage children = {};
    getrusage(RUSAGE_CHILDREN, &children);
    const auto secondsOf = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return static_cast<double>(own.tv_sec) + static_cast<double>(own.tv_nsec) * 1e-9 +
           secondsOf(children.ru_utime) + secondsOf(children.ru_stime);
}

void Contest::Add(double limit, double measured)
{
    rounds.push_back({limit, measured});
}

Contest::Round Contest::Best(size_t first, size_t end) const
{
    Fastest limit;
    Fastest measured;
    for (size_t i = first; i < end; ++i) {
        limit.Add(rounds[i].limit);
        measured.Add(rounds[i].measured);
    }
    return {limit.Seconds(), measured.Seconds()};
}

Contest::Range Contest::Thirds() const
{
    constexpr size_t Parts = 3;
    Range range = {Ratio(), Ratio()};
    for (size_t part = 0; part < Parts && rounds.size() >= Parts; ++part) {
        const Round best = Best(rounds.size() * part / Parts, rounds.size() * (part + 1) / Parts);
        range.lowest = std::min(range.lowest, best.measured / best.limit);
        range.highest = std::max(range.highest, best.measured / best.limit);
    }
    return range;
}

bool Contest::IsSteady() const
{
    const Range range = Thirds();
    return range.highest <= range.lowest * (1 + Tolerance);
}

bool Contest::GoesOn(const Settings& settings) const
{
    const auto least = static_cast<size_t>(settings.rounds);
    return rounds.size() < least || (rounds.size() < MostRounds * least && !IsSteady());
}

} // namespace bench
