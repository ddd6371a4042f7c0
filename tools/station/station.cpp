#include "station/station.h"

#include "base/chainnames.h"
#include "station/bays.h"
#include "station/network.h"
#include "station/startcomment.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace station {

using recorderfile::AnalogChannel;
using recorderfile::DiscreteChannel;
using recorderfile::NamedFile;
using recorderfile::Recording;

namespace {

constexpr int64_t microsecondsInSecond = 1000000;
constexpr int64_t recordingInterval = 600; // seconds between the recordings of the station
constexpr int64_t usualTrigger = 500000;   // microseconds from the first sample
constexpr int ZoneHours = 3;
constexpr int FirstNumber = 123;
constexpr int NoiseSpan = 5; // noise of -2 to 2 codes

const StartKind AllStarts[] = {
    StartKind::PositiveSequence, StartKind::NegativeSequence, StartKind::ZeroSequence, StartKind::Channel,
    StartKind::Discrete,         StartKind::Frequency,        StartKind::Harmonic,     StartKind::External};

// A state and the moments (seconds) at which it changes.
struct StateHistory
{
    bool atStart;
    std::vector<double> toggles;
};

// What all segments of one recording have in common.
struct Plan
{
    StationOptions options;
    std::vector<AnalogSignal> analog;
    std::vector<DiscreteSignal> discrete;
    Scenario scenario;
    size_t points;    // samples of a channel in a segment
    int64_t duration; // of a segment, microseconds
    int64_t start;    // of the recording, microseconds since 1970-01-01 00:00:00 UTC
    int64_t trigger;  // the same
    QString comment;
};

int64_t Microseconds(double seconds)
{
    return std::llround(seconds * 1e6);
}

Plan MakePlan(const StationOptions& options, StartKind start)
{
    Plan plan = {};
    plan.options = options;
    plan.analog = AnalogSignals(options);
    plan.discrete = DiscreteSignals(options);
    plan.points = static_cast<size_t>(std::max(1LL, std::llround(options.seconds * options.sampleRate)));
    plan.duration = Microseconds(static_cast<double>(plan.points) / options.sampleRate);

    const Recording defaults;
    const int64_t first = int64_t{defaults.startTime} * microsecondsInSecond + defaults.startMicroseconds;
    const int64_t untilTrigger = std::min(usualTrigger, plan.duration / 4);
    plan.start = first + static_cast<int>(start) * recordingInterval * microsecondsInSecond;
    plan.trigger = plan.start + untilTrigger;
    plan.scenario = MakeScenario(options, start, static_cast<double>(untilTrigger) / 1e6);
    plan.comment = StartComment(start, plan.analog, plan.discrete, StampOf(plan.trigger, ZoneHours * 3600))
                       .value_or(QString());
    return plan;
}

StateHistory HistoryOf(const DiscreteSignal& signal, const Scenario& scenario)
{
    const bool atRest = signal.behaviour == Behaviour::On || signal.behaviour == Behaviour::BreakerClosed;
    if (scenario.fault == Fault::None || signal.bay.name != FaultedBay().name)
        return {atRest, {}};
    switch (signal.behaviour) {
    case Behaviour::ProtectionStart:
        return {atRest, {scenario.protectionStart, scenario.protectionReturn}};
    case Behaviour::Trip:
        return {atRest, {scenario.trip, scenario.protectionReturn}};
    case Behaviour::BreakerClosed:
    case Behaviour::BreakerOpen:
        return {atRest, {scenario.breakerOpen, scenario.breakerClosed}};
    case Behaviour::Reclosing:
        return {atRest, {scenario.recloseCommand, scenario.breakerClosed + 0.100}};
    case Behaviour::Off:
    case Behaviour::On:
        break;
    }
    return {atRest, {}};
}

// The state at the start of the segment, then its changes within the segment.
DiscreteChannel MakeDiscrete(const DiscreteSignal& signal, const Plan& plan, int64_t timeBase)
{
    const StateHistory history = HistoryOf(signal, plan.scenario);
    DiscreteChannel channel{signal.name, static_cast<uint8_t>(signal.inverted)};
    bool state = history.atStart != signal.inverted;
    channel.changes.push_back({0, static_cast<uint8_t>(state)});
    for (const double toggle : history.toggles) {
        const int64_t time = Microseconds(toggle) - timeBase;
        if (time >= plan.duration)
            break;
        state = !state;
        if (time <= 0)
            channel.changes.front().value = static_cast<uint8_t>(state);
        else
            channel.changes.push_back({static_cast<uint32_t>(time), static_cast<uint8_t>(state)});
    }
    return channel;
}

AnalogChannel MakeAnalog(const AnalogSignal& signal, const Plan& plan, const std::vector<Instant>& instants,
                         std::mt19937& random)
{
    AnalogChannel channel{signal.name, signal.unit};
    channel.rate = static_cast<float>(plan.options.sampleRate);
    channel.primary = signal.primary;
    channel.secondary = signal.secondary;
    channel.scale = signal.scale;
    channel.offset = signal.offset;
    channel.compressed = plan.options.compressed;
    channel.blockSamples = plan.options.blockSamples;
    channel.samples.reserve(instants.size());
    const double coefficient = double{signal.primary} * double{signal.secondary} * double{signal.scale};
    for (const Instant& instant : instants) {
        const double code = (ValueOf(signal, instant) - double{signal.offset}) / coefficient;
        const long noise = static_cast<long>(random() % NoiseSpan) - NoiseSpan / 2;
        channel.samples.push_back(
            static_cast<int16_t>(std::clamp(std::lround(code) + noise, -32767L, 32767L)));
    }
    return channel;
}

Recording MakeHeader(const Plan& plan, int64_t timeBase)
{
    const int64_t start = plan.start + timeBase;
    Recording recording;
    recording.codePage = plan.options.codePage;
    recording.comment = plan.comment;
    recording.identity = QStringLiteral("ПС Узловая, РАС-1");
    recording.startTime = static_cast<uint32_t>(start / microsecondsInSecond);
    recording.startMicroseconds = static_cast<int32_t>(start % microsecondsInSecond);
    recording.trigTime = static_cast<uint32_t>(plan.trigger / microsecondsInSecond);
    recording.trigMicroseconds = static_cast<int32_t>(plan.trigger % microsecondsInSecond);
    recording.duration = static_cast<uint32_t>(plan.duration);
    recording.timeZone = ZoneHours;
    return recording;
}

} // namespace

std::vector<StartKind> PossibleStarts(const StationOptions& options)
{
    const auto analog = AnalogSignals(options);
    const auto discrete = DiscreteSignals(options);
    std::vector<StartKind> starts;
    for (const StartKind start : AllStarts)
        if (StartComment(start, analog, discrete, QString()))
            starts.push_back(start);
    return starts;
}

std::vector<Recording> MakeRecording(const StationOptions& options, StartKind start)
{
    const Plan plan = MakePlan(options, start);
    Network network(plan.scenario, options.sampleRate);
    std::vector<std::mt19937> noise; // one per channel, so that no channel depends on the others
    noise.reserve(plan.analog.size());
    for (size_t i = 0; i < plan.analog.size(); ++i)
        noise.emplace_back(options.seed * 65536u + static_cast<uint32_t>(start) * 4096u +
                           static_cast<uint32_t>(i));

    std::vector<Recording> segments;
    std::vector<Instant> instants(plan.points);
    for (int segment = 0; segment < options.segments; ++segment) {
        const int64_t timeBase = segment * plan.duration;
        std::generate(instants.begin(), instants.end(), [&] { return network.Next(); });
        Recording recording = MakeHeader(plan, timeBase);
        for (size_t i = 0; i < plan.analog.size(); ++i)
            recording.Add(MakeAnalog(plan.analog[i], plan, instants, noise[i]));
        for (const DiscreteSignal& signal : plan.discrete)
            recording.Add(MakeDiscrete(signal, plan, timeBase));
        segments.push_back(std::move(recording));
    }
    return segments;
}

std::vector<NamedFile> MakeFiles(const StationOptions& options, StartKind start)
{
    const QString firstFile = QStringLiteral("Vostochnaya_%1.ZU")
                                  .arg(FirstNumber + static_cast<int>(start), 6, 10, QLatin1Char('0'));
    std::vector<NamedFile> files;
    for (const Recording& segment : MakeRecording(options, start))
        files.push_back(
            {zu::ContinuationName(firstFile, static_cast<int>(files.size())), recorderfile::Encode(segment)});
    return files;
}

} // namespace station
