#include "zucmtr/commands/sampleoptions.h"

#include "base/chainnames.h"
#include "station/bays.h"
#include "text/texts.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>

namespace {

// A recorder file's limits.
constexpr int ChannelLimit = 4096;
constexpr double DurationLimit = 268;  // seconds of a segment
constexpr double RateLimit = 10000000; // samples per second
constexpr int SegmentsLimit = zu::MostContinuations + 1;

// The station is made in memory.
constexpr double PointsLimit = 10e6;   // samples of a channel in a segment
constexpr double SamplesLimit = 500e6; // samples of a recording

station::Fault FaultOf(const std::string& name)
{
    if (name == "none")
        return station::Fault::None;
    if (name == "two")
        return station::Fault::TwoPhase;
    return name == "three" ? station::Fault::ThreePhase : station::Fault::SinglePhase;
}

std::vector<std::string> FaultWords()
{
    std::vector<std::string> words = {"single", "two", "three", "none"};
    for (const std::string& name : LineFaultNames())
        words.push_back(name);
    return words;
}

recorderfile::CodePage CodePageOf(const std::string& name)
{
    return name == "cp1251" ? recorderfile::CodePage::Cp1251 : recorderfile::CodePage::Cp866;
}

void CheckChannels(const station::StationOptions& options)
{
    // A chain gets a discrete channel even if none is asked for, so the channels are counted as they are
    // made.
    const size_t channels = station::AnalogSignals(options).size() + station::DiscreteSignals(options).size();
    if (channels >= ChannelLimit)
        throw ConfigurationError(
            Tr("sample", "--analog %1 and --discrete %2 make %3 channels; a recording has fewer than %4")
                .arg(options.analogChannels)
                .arg(options.discreteChannels)
                .arg(channels)
                .arg(ChannelLimit));
}

// The points are rounded to whole samples, one at least, so a segment may last longer than asked for.
void CheckLength(const station::StationOptions& options)
{
    const double points = std::max(1.0, std::round(options.seconds * options.sampleRate));
    const double duration = points / options.sampleRate;
    if (!(duration < DurationLimit))
        throw ConfigurationError(
            Tr("sample",
               "--rate %1 and --seconds %2 make a segment of %3 s; it lasts less than %4 s: raise the rate")
                .arg(options.sampleRate)
                .arg(options.seconds)
                .arg(duration)
                .arg(DurationLimit));
    const double samples = points * std::max(1, options.analogChannels) * options.segments;
    if (points > PointsLimit || samples > SamplesLimit)
        throw ConfigurationError(
            Tr("sample", "the recordings would have %1 samples per channel and segment, %2 in all; at most "
                         "%3 and %4 are made: lower --rate, --seconds, --segments or --analog")
                .arg(points, 0, 'f', 0)
                .arg(samples, 0, 'f', 0)
                .arg(PointsLimit, 0, 'f', 0)
                .arg(SamplesLimit, 0, 'f', 0));
}

} // namespace

void AddStationOptions(CLI::App& command, SampleOptions& options)
{
    station::StationOptions& station = options.station;
    AddValue(command, "--analog", station.analogChannels, "N",
             HelpText("sample", "Analog channels, 0 to 4095 (32)"))
        ->transform(values::WholeNumber(0, ChannelLimit - 1));
    AddValue(command, "--discrete", station.discreteChannels, "N",
             HelpText("sample", "Discrete channels, 0 to 4095 (64)"))
        ->transform(values::WholeNumber(0, ChannelLimit - 1));
    AddValue(command, "--rate", station.sampleRate, "HZ",
             HelpText("sample", "Samples per second, below 10000000 (2400)"))
        ->check(values::NumberBelow(RateLimit));
    AddValue(command, "--seconds", options.seconds, "S",
             HelpText("sample", "Length of a segment, below 268 (2)"))
        ->check(values::NumberBelow(DurationLimit));
    AddValue(command, "--segments", station.segments, "N",
             HelpText("sample", "Files of a recording, 1 to 16 (1)"))
        ->transform(values::WholeNumber(1, SegmentsLimit));
    CLI::Option* compressed = command.add_flag("--compressed", options.compressed,
                                               HelpText("sample", "Compress the samples (the default)"));
    command.add_flag("--plain", options.plain, HelpText("sample", "Store the samples as they are"))
        ->excludes(compressed);
    AddValue(command, "--code-page", options.codePage, "NAME",
             HelpText("sample", "Code page of the texts: cp866, cp1251 (cp866)"))
        ->check(values::OneOf({"cp866", "cp1251"}));
    AddValue(command, "--fault", options.fault, "KIND",
             HelpText("sample", "Fault on the line: single, two, three, none (single); simulated: AG to ABC"))
        ->check(values::OneOf(FaultWords()));
    AddValue(command, "--seed", station.seed, "N",
             HelpText("sample", "Seed of noise and operating times, 0 to 4294967295 (1)"))
        ->transform(values::WholeNumber(0, UINT32_MAX));
    AddLineSampleOptions(command, options.line);
}

bool IsLineSample(const SampleOptions& options)
{
    return IsLineSample(options.line, options.fault);
}

LineSample CheckedLineSample(const SampleOptions& options)
{
    LineSampleOptions line = options.line;
    line.fault.sampleRate = options.station.sampleRate;
    line.fault.seconds = options.seconds;
    line.fault.seed = options.station.seed;
    line.fault.compressed = !options.plain;
    line.fault.codePage = CodePageOf(options.codePage);
    return CheckedLineSample(line, options.fault);
}

station::StationOptions CheckedStation(const SampleOptions& options)
{
    station::StationOptions station = options.station;
    if (options.seconds > 0)
        station.seconds = options.seconds;
    station.compressed = !options.plain;
    station.codePage = CodePageOf(options.codePage);
    station.fault = FaultOf(options.fault);
    CheckChannels(station);
    CheckLength(station);
    return station;
}
