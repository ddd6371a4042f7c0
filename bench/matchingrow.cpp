// Matching the channels of a recording with a sorting dictionary.
#include "dictionarydata.h"
#include "measure.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "rows.h"
#include "workload.h"

#include <stdexcept>

namespace {

constexpr int Few = 400;
constexpr int Many = 4000;
constexpr int RunsInRound = 20;

// A device with a dictionary, and a recording of its channels in the reverse order.
struct Match
{
    Match(int entries_, const QString& directory)
        : entries(entries_), scratch(directory), device(bench::LargeDictionary(entries), scratch)
    {
        bench::AddChannelsInReverse(file, entries);
    }

    // Seconds of one sort that has no earlier order to keep.
    double Sort()
    {
        ResorterZuCmtrConv& resorter = *device.Parameters().Resorter;
        device.Parameters().ClearLog();
        resorter.ClearPrevFileAnIndexes();
        const double seconds = bench::ElapsedSecondsOf([&] { resorter.SortZuFile(&file); });
        const auto last = static_cast<unsigned int>(entries - 1);
        if (resorter.PrevFileAnMatched != file.AnChannels.size() || resorter.PrevFileAnIndexes.at(0) != last)
            throw std::runtime_error("the dictionary does not match the channels");
        return seconds;
    }

    const int entries;
    const bench::Scratch scratch;
    bench::Device device;
    ZuFileFormat file;
};

} // namespace

void bench::MeasureMatching(const Settings& settings, Report& report)
{
    Match few(Few, settings.directory);
    Match many(Many, settings.directory);
    Contest contest;
    while (contest.GoesOn(settings)) {
        Fastest fewTime;
        Fastest manyTime;
        for (int run = 0; run < RunsInRound; ++run) {
            fewTime.Add(few.Sort());
            manyTime.Add(many.Sort());
        }
        contest.Add(fewTime.Seconds(), manyTime.Seconds());
    }
    report.AtMost(12, contest, "matching, 4000 channels and entries, reversed", "400 of them");
}
