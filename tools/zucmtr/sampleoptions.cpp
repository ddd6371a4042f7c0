#include "sampleoptions.h"

#include "command.h"
#include "station/bays.h"
#include "texts.h"

#include <CLI/CLI.hpp>

#include <QString>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace {

// A recorder file's limits.
constexpr int channelLimit = 4096;
constexpr double durationLimit = 268;  // seconds of a segment
constexpr double rateLimit = 10000000; // samples per second
constexpr int segmentsLimit = 16;

// The station is made in memory.
constexpr double pointsLimit = 10e6;   // samples of a channel in a segment
constexpr double samplesLimit = 500e6; // samples of a recording

// Whole decimal numbers of a range. The text is brought into its plain form, since the parser would take a
// leading zero for an octal number.
CLI::Validator WholeNumber(int64_t lowest, int64_t highest)
{
    return CLI::Validator(
        [=](std::string& text) {
            int64_t number = 0;
            const char* end = text.data() + text.size();
            const std::from_chars_result result = std::from_chars(text.data(), end, number);
            if (result.ec != std::errc() || result.ptr != end || number < lowest || number > highest)
                return Tr("sample", "'%1' is wrong; give a whole number from %2 to %3")
                    .arg(QString::fromStdString(text))
                    .arg(lowest)
                    .arg(highest)
                    .toStdString();
            text = std::to_string(number);
            return std::string();
        },
        "");
}

// Decimal numbers above 0 and below a limit.
CLI::Validator NumberBelow(double limit)
{
    return CLI::Validator(
        [=](std::string& text) {
            double number = 0;
            const char* end = text.data() + text.size();
            const std::from_chars_result result = std::from_chars(text.data(), end, number);
            const bool good = result.ec == std::errc() && result.ptr == end && number > 0 && number < limit;
            return good ? std::string()
                        : Tr("sample", "'%1' is wrong; give a number above 0 and below %2")
                              .arg(QString::fromStdString(text), QString::number(limit, 'f', 0))
                              .toStdString();
        },
        "");
}

CLI::Validator OneOf(const std::vector<std::string>& values)
{
    return CLI::Validator(
        [=](std::string& text) {
            return std::find(values.begin(), values.end(), text) != values.end()
                       ? std::string()
                       : Tr("sample", "'%1' is wrong; give one of %2")
                             .arg(QString::fromStdString(text),
                                  QString::fromStdString(CLI::detail::join(values, ", ")))
                             .toStdString();
        },
        "");
}

station::Fault FaultOf(const std::string& name)
{
    if (name == "none")
        return station::Fault::None;
    if (name == "two")
        return station::Fault::TwoPhase;
    return name == "three" ? station::Fault::ThreePhase : station::Fault::SinglePhase;
}

void CheckChannels(const station::StationOptions& options)
{
    // A chain gets a discrete channel even if none is asked for, so the channels are counted as they are
    // made.
    const size_t channels = station::AnalogSignals(options).size() + station::DiscreteSignals(options).size();
    if (channels >= channelLimit)
        throw ConfigurationError(
            Tr("sample", "--analog %1 and --discrete %2 make %3 channels; a recording has fewer than %4")
                .arg(options.analogChannels)
                .arg(options.discreteChannels)
                .arg(channels)
                .arg(channelLimit));
}

// The points are rounded to whole samples of at least one, so a segment may last longer than it was asked to.
void CheckLength(const station::StationOptions& options)
{
    const double points = std::max(1.0, std::round(options.seconds * options.sampleRate));
    const double duration = points / options.sampleRate;
    if (!(duration < durationLimit))
        throw ConfigurationError(Tr("sample", "--rate %1 and --seconds %2 make a segment of %3 s; it lasts "
                                              "less than %4 s: raise the rate")
                                     .arg(options.sampleRate)
                                     .arg(options.seconds)
                                     .arg(duration)
                                     .arg(durationLimit));
    const double samples = points * std::max(1, options.analogChannels) * options.segments;
    if (points > pointsLimit || samples > samplesLimit)
        throw ConfigurationError(
            Tr("sample", "the recordings would have %1 samples a channel and segment, %2 in all; at most %3 "
                         "and %4 are made: lower --rate, --seconds, --segments or --analog")
                .arg(points, 0, 'f', 0)
                .arg(samples, 0, 'f', 0)
                .arg(pointsLimit, 0, 'f', 0)
                .arg(samplesLimit, 0, 'f', 0));
}

} // namespace

void AddStationOptions(CLI::App& command, SampleOptions& options)
{
    station::StationOptions& values = options.station;
    command
        .add_option("--analog", values.analogChannels, HelpText("sample", "Analog channels, 0 to 4095 (32)"))
        ->transform(WholeNumber(0, channelLimit - 1))
        ->type_name("N");
    command
        .add_option("--discrete", values.discreteChannels,
                    HelpText("sample", "Discrete channels, 0 to 4095 (64)"))
        ->transform(WholeNumber(0, channelLimit - 1))
        ->type_name("N");
    command
        .add_option("--rate", values.sampleRate,
                    HelpText("sample", "Samples per second, below 10000000 (2400)"))
        ->check(NumberBelow(rateLimit))
        ->type_name("HZ");
    command.add_option("--seconds", values.seconds, HelpText("sample", "Length of a segment, below 268 (2)"))
        ->check(NumberBelow(durationLimit))
        ->type_name("S");
    command
        .add_option("--segments", values.segments, HelpText("sample", "Files of a recording, 1 to 16 (1)"))
        ->transform(WholeNumber(1, segmentsLimit))
        ->type_name("N");
    CLI::Option* compressed = command.add_flag("--compressed", options.compressed,
                                               HelpText("sample", "Compress the samples (the default)"));
    command.add_flag("--plain", options.plain, HelpText("sample", "Store the samples as they are"))
        ->excludes(compressed);
    command
        .add_option("--code-page", options.codePage,
                    HelpText("sample", "Code page of the texts: cp866, cp1251 (cp866)"))
        ->check(OneOf({"cp866", "cp1251"}))
        ->type_name("NAME");
    command
        .add_option("--fault", options.fault,
                    HelpText("sample", "Fault on the line: single, two, three, none (single)"))
        ->check(OneOf({"single", "two", "three", "none"}))
        ->type_name("KIND");
    command
        .add_option("--seed", values.seed,
                    HelpText("sample", "Seed of noise and operating times, 0 to 4294967295 (1)"))
        ->transform(WholeNumber(0, UINT32_MAX))
        ->type_name("N");
}

station::StationOptions CheckedStation(const SampleOptions& options)
{
    station::StationOptions station = options.station;
    station.compressed = !options.plain;
    station.codePage =
        options.codePage == "cp1251" ? recorderfile::CodePage::Cp1251 : recorderfile::CodePage::Cp866;
    station.fault = FaultOf(options.fault);
    CheckChannels(station);
    CheckLength(station);
    return station;
}
