// Columns of codes turned into rows, for each instruction set.
#include "measure.h"
#include "processors.h"
#include "recording/zufileformat.h"
#include "rows.h"
#include "writers/coderows.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace {

constexpr size_t Channels = 64;
constexpr size_t Points = 240000; // of a segment of the large recording
constexpr size_t Codes = Channels * Points;

void AddChannels(ZuFileFormat& segment)
{
    for (size_t i = 0; i < Channels; ++i) {
        auto* channel = new AnChannelData; // the segment owns it
        channel->m_HeaderAn.points = Points;
        channel->m_pData = new quint16[Points];
        channel->Samples = reinterpret_cast<qint16*>(channel->m_pData);
        std::iota(channel->Samples, channel->Samples + Points, static_cast<qint16>(i));
        segment.AnChannels.push_back(channel);
    }
}

} // namespace

void bench::MeasureTurning(const Settings& settings, Report& report)
{
    ZuFileFormat segment;
    AddChannels(segment);
    std::vector<unsigned int> order(Channels);
    std::iota(order.begin(), order.end(), 0U);
    const std::vector<Processor> processors = OlderProcessors();
    std::vector<Contest> contests(processors.size());
    // A part of the codes, so that it stays in the cache like a block of rows.
    std::vector<qint16> copy(Codes / 16);
    const auto copyAll = [&] {
        for (const AnChannelData* channel : segment.AnChannels) {
            std::memcpy(copy.data(), channel->Samples, Points * sizeof(qint16));
            asm volatile("" : : "r"(copy.data()) : "memory");
        }
    };
    const auto goesOn = [&](const Contest& contest) { return contest.GoesOn(settings); };
    while (std::any_of(contests.begin(), contests.end(), goesOn)) {
        for (size_t i = 0; i < processors.size(); ++i) {
            CodeRows rows(Channels, zu::TileTurnerFor(processors[i].targets));
            rows.Enter(segment, order);
            const double copying = SecondsOf(copyAll);
            contests[i].Add(copying, SecondsOf([&] {
                                for (size_t sample = 0; sample < Points; sample += 64)
                                    rows.Row(sample);
                            }));
        }
    }
    for (size_t i = 0; i < processors.size(); ++i)
        report.Ratio(contests[i], std::string("columns into rows, ") + processors[i].name, "memcpy");
}
