#include "station/linerecording.h"

#include "base/chainnames.h"
#include "station/drawing.h"
#include "station/linetruth.h"
#include "station/segments.h"
#include "station/startcomment.h"

#include <algorithm>
#include <cmath>

namespace station {

using recorderfile::AnalogChannel;
using recorderfile::DiscreteChannel;
using recorderfile::NamedFile;
using recorderfile::Recording;

namespace {

constexpr int64_t MicrosecondsInSecond = 1000000;
constexpr uint32_t NoiseSeed = 0x9e3779b9u; // times the channel's number
constexpr int LargestHours = 29;            // greater numbers are minutes
constexpr uint16_t BlockSamples = 32;

// Peak of the rated current or voltage, in the signal's unit.
double RatedPeak(const AnalogSignal& signal)
{
    if (signal.quantity == Quantity::Current)
        return std::sqrt(2.0) * signal.bay.ratedCurrent;
    return signal.bay.kilovolts * UnitsPerVolt(signal) * 1000.0 * std::sqrt(2.0 / 3.0);
}

AnalogChannel MakeAnalog(const AnalogSignal& signal, const LineScenario& scenario,
                         const std::vector<PhaseValues>& waves, Drawing& draw)
{
    AnalogChannel channel{signal.name, signal.unit};
    channel.rate = static_cast<float>(scenario.sampleRate);
    channel.primary = signal.primary;
    channel.secondary = signal.secondary;
    channel.scale = signal.scale;
    channel.offset = signal.offset;
    channel.compressed = scenario.compressed;
    channel.blockSamples = BlockSamples;
    channel.samples.reserve(waves.size());
    const double coefficient = double{signal.primary} * double{signal.secondary} * double{signal.scale};
    const double noise = RatedPeak(signal) * scenario.noise / 100.0;
    const double unit = UnitsPerVolt(signal);
    for (const PhaseValues& values : waves) {
        double value = ValueOf(values, signal.phase) * unit;
        if (noise > 0.0)
            value += noise * draw.Noise();
        const long code = std::lround(std::clamp(value / coefficient, -32767.0, 32767.0));
        channel.samples.push_back(static_cast<int16_t>(code));
    }
    return channel;
}

DiscreteChannel MakeDiscrete(const SignalHistory& history)
{
    DiscreteChannel channel{history.signal.name, static_cast<uint8_t>(history.signal.inverted)};
    bool state = history.atStart != history.signal.inverted;
    channel.changes.push_back({0, static_cast<uint8_t>(state)});
    for (const int64_t toggle : history.toggles) {
        state = !state;
        channel.changes.push_back({static_cast<uint32_t>(toggle), static_cast<uint8_t>(state)});
    }
    return channel;
}

StartKind StartOf(const LineScenario& scenario)
{
    if (scenario.quiet)
        return StartKind::External;
    return scenario.startedByProtection ? StartKind::Discrete : StartKind::PositiveSequence;
}

int64_t StartOfRecording(const LineScenario& scenario)
{
    const Recording defaults;
    return (int64_t{defaults.startTime} + scenario.startSecond) * MicrosecondsInSecond +
           defaults.startMicroseconds;
}

} // namespace

int ZoneSecondsOf(const LineScenario& scenario)
{
    return scenario.zone > LargestHours ? scenario.zone * 60 : scenario.zone * 3600;
}

int64_t TimeToTrigger(const LineScenario& scenario)
{
    return std::llround(scenario.beforeTrigger * 1e6);
}

int64_t TriggerOf(const LineScenario& scenario)
{
    return StartOfRecording(scenario) + TimeToTrigger(scenario);
}

Recording MakeLineRecording(const LineScenario& scenario, const LineOutcome& outcome,
                            const std::vector<SignalHistory>& histories)
{
    const int64_t start = StartOfRecording(scenario);
    const int64_t trigger = TriggerOf(scenario);
    Recording recording;
    recording.codePage = scenario.codePage;
    recording.identity = scenario.identity;
    recording.comment =
        BayStartComment(StartOf(scenario), scenario.line.name, StampOf(trigger, ZoneSecondsOf(scenario)));
    recording.startTime = static_cast<uint32_t>(start / MicrosecondsInSecond);
    recording.startMicroseconds = static_cast<int32_t>(start % MicrosecondsInSecond);
    recording.trigTime = static_cast<uint32_t>(trigger / MicrosecondsInSecond);
    recording.trigMicroseconds = static_cast<int32_t>(trigger % MicrosecondsInSecond);
    recording.timeZone = scenario.zone;

    const LineBays bays = BaysAround(scenario.line);
    uint32_t number = 0;
    for (const AnalogSignal& signal : AnalogSignalsAround(scenario.line)) {
        Drawing draw(scenario.seed + NoiseSeed * ++number);
        recording.Add(MakeAnalog(signal, scenario, QuantityOf(signal, bays, outcome.waves), draw));
    }
    for (const SignalHistory& history : histories)
        recording.Add(MakeDiscrete(history));
    return recording;
}

std::vector<NamedFile> MakeLineFiles(const LineScenario& scenario)
{
    const LineOutcome outcome = Play(scenario);
    const std::vector<SignalHistory> histories = HistoriesOf(scenario, outcome);
    const QString first = scenario.stem + QStringLiteral(".ZU");
    const Recording recording = MakeLineRecording(scenario, outcome, histories);
    const std::vector<Recording> segments = scenario.segmentSamples > 0
                                                ? CutIntoSegments(recording, scenario.segmentSamples)
                                                : std::vector<Recording>{recording};
    std::vector<NamedFile> files;
    for (const Recording& segment : segments)
        files.push_back(
            {zu::ContinuationName(first, static_cast<int>(files.size())), recorderfile::Encode(segment)});
    files.push_back(
        {scenario.stem + QStringLiteral(".truth.json"), MakeTruth(scenario, outcome, histories, first)});
    return files;
}

} // namespace station
