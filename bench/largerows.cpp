// Whole conversions of one large recording against reading the inputs and `cp` of the outputs.
#include "copylimit.h"
#include "measure.h"
#include "rows.h"
#include "workload.h"

#include <algorithm>
#include <random>

namespace {

using bench::Form;
using bench::Report;
using bench::Settings;

struct LargeRow
{
    const char* workload;
    Form form;
    int outputCopies; // how often the output counts
    double target;
};

// Alternates the conversion, into an empty directory each time, with its limit.
void Measure(const LargeRow& row, const station::StationOptions& options, const QStringList& inputs,
             const bench::Scratch& scratch, const Settings& settings, Report& report)
{
    bench::Device device(options, row.form, scratch);
    bench::Contest contest;
    while (contest.GoesOn(settings)) {
        const QString out = scratch.EmptyDirectory(QStringLiteral("out"));
        const double measured = bench::SecondsOf([&] { device.Convert(inputs.first(), out); });
        const QStringList outputs = scratch.Files(QStringLiteral("out"));
        const QString copies[] = {scratch.EmptyDirectory(QStringLiteral("copy")),
                                  scratch.EmptyDirectory(QStringLiteral("copy2"))};
        const double limit = bench::SecondsOf([&] {
            bench::ReadThrough(inputs);
            for (int i = 0; i < row.outputCopies; ++i)
                bench::CopyWithCp(outputs, copies[i]);
        });
        contest.Add(limit, measured);
    }
    report.AtMost(row.target, contest, row.workload, "read + cp");
}

void MeasureLarge(const LargeRow& row, bool compressed, const Settings& settings, Report& report)
{
    const bench::Scratch scratch(settings.directory);
    station::StationOptions options = bench::LargeStation(settings.quick);
    options.compressed = compressed;
    const QStringList inputs = bench::WriteRecording(options, scratch.EmptyDirectory(QStringLiteral("in")));
    Measure(row, options, inputs, scratch, settings, report);
}

// Changes the signal at random moments, two for each pulse of up to half a second.
void AddPulses(recorderfile::DiscreteChannel& channel, int pulses, double seconds, std::mt19937& random)
{
    const auto below = [&](uint32_t limit) { return static_cast<uint32_t>(random() % limit); };
    const auto slot = static_cast<uint32_t>(seconds * 1e6 / pulses); // microseconds
    const uint32_t half = slot / 2;
    const uint8_t rest = channel.changes.front().value;
    channel.changes.resize(1);
    for (int i = 0; i < pulses; ++i) {
        const uint32_t start = static_cast<uint32_t>(i) * slot + 1 + below(half - 1);
        const uint32_t end = start + 1 + below(std::min<uint32_t>(500000, half - 1));
        channel.changes.push_back({start, static_cast<uint8_t>(rest == 0)});
        channel.changes.push_back({end, rest});
    }
}

} // namespace

void bench::MeasureLargePlain(const Settings& settings, Report& report)
{
    MeasureLarge({"large, plain, binary 1999", Form::Binary1999, 1, 1.3}, false, settings, report);
}

void bench::MeasureLargeCompressed(const Settings& settings, Report& report)
{
    MeasureLarge({"large, compressed, binary 1999", Form::Binary1999, 1, 1.3}, true, settings, report);
}

void bench::MeasureLargeAscii(const Settings& settings, Report& report)
{
    MeasureLarge({"large, plain, ASCII 1999", Form::Ascii1999, 1, 1.3}, false, settings, report);
}

void bench::MeasureLargeCff(const Settings& settings, Report& report)
{
    MeasureLarge({"large, plain, binary 2013 CFF", Form::BinaryCff2013, 2, 1.3}, false, settings, report);
}

void bench::MeasureStates(const Settings& settings, Report& report)
{
    const Scratch scratch(settings.directory);
    station::StationOptions options;
    options.analogChannels = 0;
    options.discreteChannels = 256;
    options.seconds = settings.quick ? 20 : 200;
    std::vector<recorderfile::Recording> segments =
        station::MakeRecording(options, station::StartKind::Discrete);
    std::mt19937 random(1);
    for (recorderfile::Recording::Section& section : segments.front().sections)
        AddPulses(std::get<recorderfile::DiscreteChannel>(section), settings.quick ? 15 : 150,
                  options.seconds, random);
    const QStringList inputs = WriteRecording(segments, scratch.EmptyDirectory(QStringLiteral("in")));
    Measure({"states alone, 256 discrete, 300 changes each, ASCII 1999", Form::Ascii1999, 1, 2.5}, options,
            inputs, scratch, settings, report);
}
