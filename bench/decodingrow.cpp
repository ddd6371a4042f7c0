// The decoder at each width code, in memory: the one for this processor, and those for older ones.
#include "deltadata.h"
#include "measure.h"
#include "processors.h"
#include "rows.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <unistd.h>

namespace {

constexpr size_t Points = 240000; // a channel of a segment of the large recording
constexpr int RunsInRound = 20;   // back to back, so that each finds its own data in the cache

// The innermost cache that can hold this many bytes.
std::string CacheFor(size_t bytes)
{
    const struct
    {
        int size;
        const char* name;
    } levels[] = {
        {_SC_LEVEL1_DCACHE_SIZE, "L1"}, {_SC_LEVEL2_CACHE_SIZE, "L2"}, {_SC_LEVEL3_CACHE_SIZE, "L3"}};
    for (const auto& level : levels) {
        const long size = sysconf(level.size);
        if (size > 0 && static_cast<size_t>(size) >= bytes)
            return level.name;
    }
    return "memory";
}

// Keeps the compiler from optimising the copy away.
void Use(const void* data)
{
    asm volatile("" : : "r"(data) : "memory");
}

// One round: the shortest of several runs of each side.
void MeasureRound(const bench::DeltaData& data, const zu::ItemDecoderTable& decoders,
                  std::vector<int16_t>& target, bench::Contest& contest)
{
    bench::Fastest copying;
    bench::Fastest decoding;
    for (int run = 0; run < RunsInRound; ++run)
        copying.Add(bench::ElapsedSecondsOf([&] {
            std::memcpy(target.data(), data.samples.data(), data.samples.size() * sizeof(int16_t));
            Use(target.data());
        }));
    for (int run = 0; run < RunsInRound; ++run)
        decoding.Add(bench::ElapsedSecondsOf([&] { bench::Expand(data, target, decoders); }));
    if (target != data.samples)
        throw std::runtime_error("the decoder gives other samples");
    contest.Add(copying.Seconds(), decoding.Seconds());
}

// The times of width codes 1 to 15.
std::vector<bench::Contest> MeasureWidths(const bench::Settings& settings,
                                          const zu::ItemDecoderTable& decoders)
{
    std::vector<int16_t> target(Points);
    std::vector<bench::DeltaData> data;
    for (int code = 1; code <= 15; ++code)
        data.push_back(bench::MakeDeltaData(code, Points));
    std::vector<bench::Contest> all(data.size());
    // The rounds of a width are spread over time, so that another program does not disturb all of them.
    const auto goesOn = [&](const bench::Contest& contest) { return contest.GoesOn(settings); };
    while (std::any_of(all.begin(), all.end(), goesOn)) {
        for (size_t i = 0; i < data.size(); ++i)
            MeasureRound(data[i], decoders, target, all[i]);
    }
    return all;
}

} // namespace

void bench::MeasureDecoding(const Settings& settings, Report& report)
{
    const size_t bytes = Points * sizeof(int16_t);
    report.Detail("decoding: " + std::to_string(bytes / 1000) + " KB of samples a run",
                  "memcpy's two buffers fit " + CacheFor(2 * bytes));
    const std::vector<Contest> all = MeasureWidths(settings, zu::ItemDecoders());
    for (int code = 1; code <= 15; ++code)
        report.AtMost(code == 7 || code == 15 ? 3 : 6, all[static_cast<size_t>(code - 1)],
                      "decoding, width code " + std::to_string(code), "memcpy");
}

void bench::MeasureDecodingBySets(const Settings& settings, Report& report)
{
    for (const Processor& processor : OlderProcessors()) {
        const std::vector<Contest> all = MeasureWidths(settings, zu::ItemDecodersFor(processor.targets));
        for (int code = 1; code <= 15; ++code) {
            const Contest& contest = all[static_cast<size_t>(code - 1)];
            const std::string workload =
                std::string("decoding, ") + processor.name + ", width code " + std::to_string(code);
            if (processor.targets != 0)
                report.AtMost(8, contest, workload, "memcpy");
            else
                report.Ratio(contest, workload, "memcpy");
        }
    }
}
