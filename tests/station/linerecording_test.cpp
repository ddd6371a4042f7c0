// Recordings of the line model and the truth beside them.
#include "station/linerecording.h"
#include "station/linetruth.h"
#include "stationchannels.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <set>

using recorderfile::AnalogChannel;
using recorderfile::DiscreteChannel;
using recorderfile::Recording;
using station::FaultKind;
using station::LineFaultOptions;
using station::LineScenario;
using station::QuietCause;
using station::Reclosing;

namespace {

// A played scenario: what is recorded, and what is said to be true.
struct Played
{
    Recording recording;
    QJsonObject truth;
};

Played PlayedOf(const LineScenario& scenario)
{
    const station::LineOutcome outcome = Play(scenario);
    const auto histories = HistoriesOf(scenario, outcome);
    const QByteArray truth = MakeTruth(scenario, outcome, histories, "x.ZU");
    return {MakeLineRecording(scenario, outcome, histories), QJsonDocument::fromJson(truth).object()};
}

int64_t MicrosecondsToTrigger(const Recording& recording)
{
    return (int64_t{recording.trigTime} - recording.startTime) * 1000000 + recording.trigMicroseconds -
           recording.startMicroseconds;
}

double Value(const AnalogChannel& channel, size_t sample)
{
    return double{channel.primary} * double{channel.secondary} * double{channel.scale} *
           channel.samples.at(sample);
}

// Magnitude (RMS) over the period of so many samples.
double Magnitude(const AnalogChannel& channel, size_t first, size_t period)
{
    double sine = 0;
    double cosine = 0;
    for (size_t i = 0; i < period; ++i) {
        const double angle = 2 * M_PI * static_cast<double>(i) / static_cast<double>(period);
        sine += Value(channel, first + i) * std::sin(angle);
        cosine += Value(channel, first + i) * std::cos(angle);
    }
    return std::sqrt(2.0) * std::hypot(sine, cosine) / static_cast<double>(period);
}

LineFaultOptions Noiseless(FaultKind kind)
{
    LineFaultOptions options;
    options.kind = kind;
    options.noise = 0;
    return options;
}

QString Text(const QJsonObject& object, const char* key)
{
    return object[QLatin1String(key)].toString();
}

} // namespace

TEST(LineRecording, BytesAreTheSameOnEveryPlatform)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (const uint32_t seed : {1u, 16u, 152u, 1000000u})
        for (const LineScenario& scenario : {station::RandomFault(seed), station::RandomQuiet(seed)})
            hash.addData(station::MakeLineFiles(scenario).front().bytes);
    hash.addData(station::MakeLineFiles(station::ScenarioOf({})).front().bytes);
    EXPECT_EQ(hash.result().toHex(), QByteArray("8923f18aeec79bc5cf04bf2a4ebbb7898cc4141e"));
}

TEST(LineRecording, SeedIsInTheNamesOfBothFiles)
{
    const auto fault = station::MakeLineFiles(station::RandomFault(42));
    ASSERT_EQ(fault.size(), 2u);
    EXPECT_EQ(fault[0].name, "Vostochnaya_fault_0000042.ZU");
    EXPECT_EQ(fault[1].name, "Vostochnaya_fault_0000042.truth.json");
    EXPECT_EQ(station::RandomQuiet(42).stem, "Vostochnaya_quiet_0000042");
    EXPECT_EQ(station::ScenarioOf({}).stem, "Vostochnaya_fault");
}

TEST(LineRecording, EventsOfTheTruthAreTheChangesOfTheRecording)
{
    for (uint32_t seed = 1; seed <= 40; ++seed) {
        const Played played = PlayedOf(station::RandomFault(seed));
        const auto channels = ChannelsOf<DiscreteChannel>(played.recording);
        std::set<std::tuple<int64_t, int, int>> expected;
        for (size_t i = 0; i < channels.size(); ++i)
            for (size_t change = 1; change < channels[i].changes.size(); ++change)
                expected.insert({channels[i].changes[change].time, static_cast<int>(i) + 1,
                                 (channels[i].changes[change].value != 0) != (channels[i].inverted != 0)});
        std::set<std::tuple<int64_t, int, int>> found;
        double last = -10;
        const QJsonArray events = played.truth["events"].toArray();
        for (const auto& value : events) {
            const QJsonObject event = value.toObject();
            EXPECT_EQ(Text(event, "name"),
                      channels.at(static_cast<size_t>(event["channel"].toInt()) - 1).name);
            EXPECT_GE(event["time"].toDouble(), last);
            last = event["time"].toDouble();
            found.insert({std::llround(last * 1e6) + MicrosecondsToTrigger(played.recording),
                          event["channel"].toInt(), event["state"].toInt()});
        }
        EXPECT_EQ(found, expected) << seed;
    }
}

TEST(LineRecording, ChangesAreInOrderAndWithinTheRecording)
{
    for (uint32_t seed = 1; seed <= 40; ++seed) {
        const Played played = PlayedOf(station::RandomFault(seed));
        const auto analog = ChannelsOf<AnalogChannel>(played.recording);
        const double end = static_cast<double>(analog[0].samples.size()) / double{analog[0].rate} * 1e6;
        for (const DiscreteChannel& channel : ChannelsOf<DiscreteChannel>(played.recording))
            for (size_t i = 1; i < channel.changes.size(); ++i) {
                EXPECT_GT(channel.changes[i].time, channel.changes[i - 1].time);
                EXPECT_NE(channel.changes[i].value, channel.changes[i - 1].value);
                EXPECT_LT(channel.changes[i].time, end);
            }
    }
}

TEST(LineRecording, PhasorsBeforeAreThoseOfTheSamples)
{
    const Played played = PlayedOf(station::ScenarioOf(Noiseless(FaultKind::BCG)));
    const QJsonObject before = played.truth["phasors"].toObject()["before"].toObject();
    EXPECT_EQ(before.size(), 16);
    for (const AnalogChannel& channel : ChannelsOf<AnalogChannel>(played.recording)) {
        const double magnitude = before[channel.name].toObject()["magnitude"].toDouble();
        EXPECT_NEAR(Magnitude(channel, 480, 48), magnitude, 0.5 + magnitude * 1e-4)
            << channel.name.toStdString();
    }
    EXPECT_NEAR(before["ВЛ-110 Восточная:Ua"].toObject()["angle"].toDouble(), 0, 1e-9);
    EXPECT_NEAR(before["ВЛ-110 Восточная:Ub"].toObject()["angle"].toDouble(), -120, 1e-9);
}

TEST(LineRecording, FaultStartsAtTheOnsetWithTheAngleAskedFor)
{
    LineFaultOptions options = Noiseless(FaultKind::BG);
    options.inception = 90;
    options.sampleRate = 20000;
    const Played played = PlayedOf(station::ScenarioOf(options));
    const double onset = played.truth["fault"].toObject()["onset"].toDouble() +
                         static_cast<double>(MicrosecondsToTrigger(played.recording)) / 1e6;
    const auto voltage = Find<AnalogChannel>(played.recording, line + "Ub");
    const auto sample = static_cast<size_t>(std::floor(onset * 20000));
    const double peak = std::sqrt(2.0) * 115000 / std::sqrt(3.0);
    EXPECT_NEAR(Value(voltage, sample), peak, peak * 0.001);
    EXPECT_LT(Value(voltage, sample + 2), peak * 0.9);
    const auto current = Find<AnalogChannel>(played.recording, line + "Ib");
    const double slope = Value(current, sample - 1) - Value(current, sample - 2);
    EXPECT_NEAR(Value(current, sample) - Value(current, sample - 1), slope, 3);
    EXPECT_GT(Value(current, sample + 2) - Value(current, sample + 1), 30);
}

TEST(LineRecording, CurrentsOfTheFaultedPhasesFlowUntilTheClearing)
{
    for (const FaultKind kind : {FaultKind::CG, FaultKind::AB, FaultKind::ABC}) {
        const Played played = PlayedOf(station::ScenarioOf(Noiseless(kind)));
        const double cleared = played.truth["fault"].toObject()["clearing"].toDouble() +
                               static_cast<double>(MicrosecondsToTrigger(played.recording)) / 1e6;
        const auto sample = static_cast<size_t>(std::ceil(cleared * 2400 + 1e-6));
        double before = 0;
        for (const char* phase : {"Ia", "Ib", "Ic"}) {
            const auto current = Find<AnalogChannel>(played.recording, line + phase);
            before = std::max(before, std::fabs(Value(current, sample - 2)));
            if (station::PhasesOf(kind)[static_cast<size_t>(phase[1] - 'a')]) {
                for (size_t i = sample; i < current.samples.size(); ++i)
                    ASSERT_EQ(current.samples[i], 0) << phase << i;
            }
        }
        EXPECT_GT(before, 100);
    }
}

TEST(LineRecording, ReclosedFaultHasASecondPart)
{
    LineFaultOptions options = Noiseless(FaultKind::AG);
    options.reclosing = Reclosing::Fault;
    const QJsonObject truth = PlayedOf(station::ScenarioOf(options)).truth;
    const QJsonArray parts = truth["fault"].toObject()["parts"].toArray();
    ASSERT_EQ(parts.size(), 2);
    EXPECT_EQ(truth["fault"].toObject()["clearing"], parts[0].toObject()["clearing"]);
    const double onset = parts[1].toObject()["onset"].toDouble();
    EXPECT_GT(onset, parts[0].toObject()["clearing"].toDouble() + 0.4);
    EXPECT_GT(parts[1].toObject()["clearing"].toDouble(), onset + 0.06);
    const QJsonObject operating = truth["operating"].toObject();
    EXPECT_EQ(Text(operating, "reclosed"), "fault");
    EXPECT_NEAR(operating["interruption"].toDouble(), onset - parts[0].toObject()["clearing"].toDouble(),
                0.012);
    EXPECT_NEAR(operating["deadTime"].toDouble(), 0.45, 0.005);
}

TEST(LineRecording, EvolvingFaultHasItsPartsOneAfterTheOther)
{
    LineFaultOptions options = Noiseless(FaultKind::AG);
    options.evolving = FaultKind::ABG;
    options.reclosing = Reclosing::Success;
    const QJsonObject truth = PlayedOf(station::ScenarioOf(options)).truth;
    const QJsonObject fault = truth["fault"].toObject();
    const QJsonArray parts = fault["parts"].toArray();
    ASSERT_EQ(parts.size(), 2);
    EXPECT_EQ(Text(fault, "kind"), "ABG");
    EXPECT_EQ(Text(parts[0].toObject(), "kind"), "AG");
    EXPECT_EQ(parts[0].toObject()["clearing"], parts[1].toObject()["onset"]);
    EXPECT_NEAR(parts[1].toObject()["onset"].toDouble() - fault["onset"].toDouble(), 0.035, 1e-4);
    EXPECT_EQ(Text(truth["operating"].toObject(), "reclosed"), "success");
}

TEST(LineRecording, RecordingThatEndsBeforeTheClearingHasNone)
{
    LineFaultOptions options = Noiseless(FaultKind::BC);
    options.reclosing = Reclosing::Success;
    LineScenario scenario = station::ScenarioOf(options);
    scenario.seconds = 0.36;
    const QJsonObject truth = PlayedOf(scenario).truth;
    EXPECT_TRUE(truth["fault"].toObject()["clearing"].isNull());
    EXPECT_TRUE(truth["fault"].toObject()["parts"].toArray()[0].toObject()["clearing"].isNull());
    EXPECT_TRUE(truth["operating"].toObject()["reclosed"].isNull());
    EXPECT_TRUE(truth["operating"].toObject()["breaker"].isNull());
    EXPECT_FALSE(truth["operating"].toObject()["trip"].isNull());
}

TEST(LineRecording, ProtectionThatStartsTheRecorderStartsAtTheTrigger)
{
    const QJsonObject truth = PlayedOf(station::ScenarioOf({})).truth;
    EXPECT_EQ(truth["operating"].toObject()["start"].toDouble(), 0.0);
    EXPECT_EQ(Text(truth, "trigger"), "2024-01-31T12:00:00.050000+03:00");
    EXPECT_EQ(Text(truth, "file"), "x.ZU");
    EXPECT_TRUE(truth["cause"].isNull());
}

TEST(LineRecording, QuietRecordingsSayWhatHappenedAndHaveNoFault)
{
    std::set<QString> causes;
    for (uint32_t seed = 1; seed <= 60; ++seed) {
        const LineScenario scenario = station::RandomQuiet(seed);
        causes.insert(WordOf(scenario.quiet->cause));
        if (seed > 10)
            continue;
        const Played played = PlayedOf(scenario);
        EXPECT_TRUE(played.truth["fault"].isNull());
        EXPECT_EQ(Text(played.truth, "cause"), WordOf(scenario.quiet->cause));
        EXPECT_FALSE(played.truth["phasors"].toObject().contains("during"));
    }
    EXPECT_EQ(causes.size(), static_cast<size_t>(QuietCause::Frequency) + 1);
}

TEST(LineRecording, SeedsDrawTheWholeRangeOfFaults)
{
    constexpr uint32_t count = 600;
    std::set<FaultKind> kinds;
    std::set<double> rates;
    std::set<QString> lines;
    int low = 0;
    int saturated = 0;
    int evolving = 0;
    int reclosed = 0;
    int towards = 0;
    for (uint32_t seed = 1; seed <= count; ++seed) {
        const LineScenario scenario = station::RandomFault(seed);
        const station::FaultState fault = scenario.fault->parts.front().fault;
        kinds.insert(fault.kind);
        rates.insert(scenario.sampleRate);
        lines.insert(scenario.line.name);
        low += fault.resistance <= 5;
        saturated += scenario.saturation;
        evolving += scenario.fault->parts.size() > 1;
        reclosed += scenario.fault->reclosing != Reclosing::None;
        towards += scenario.model.lineLoad.real() < 0;
        EXPECT_GE(fault.resistance, 0);
        EXPECT_LE(fault.resistance, 20);
        EXPECT_GE(scenario.model.fraction, 0.03);
        EXPECT_LE(scenario.model.fraction, 0.97);
        EXPECT_GE(scenario.model.frequency, 47);
        EXPECT_LE(scenario.model.frequency, 53);
        EXPECT_LE(scenario.noise, 0.3);
    }
    EXPECT_EQ(kinds.size(), 10u);
    EXPECT_EQ(rates.size(), 15u);
    EXPECT_EQ(lines.size(), 40u);
    EXPECT_NEAR(low, 0.5 * count, 40);
    EXPECT_NEAR(towards, 0.5 * count, 40);
    EXPECT_NEAR(saturated, 0.1 * count, 20);
    EXPECT_NEAR(evolving, 0.15 * count, 24);
    EXPECT_NEAR(reclosed, 0.2 * count, 24);
}

TEST(LineRecording, ContactsBounceInSomeRecordings)
{
    int bounced = 0;
    for (uint32_t seed = 1; seed <= 20; ++seed) {
        const Played played = PlayedOf(station::RandomFault(seed));
        bool close = false;
        for (const DiscreteChannel& channel : ChannelsOf<DiscreteChannel>(played.recording))
            for (size_t i = 2; i < channel.changes.size(); ++i)
                close = close || channel.changes[i].time - channel.changes[i - 1].time <= 2000;
        bounced += close;
        EXPECT_EQ(close, station::RandomFault(seed).bounce) << seed;
    }
    EXPECT_GT(bounced, 2);
}

TEST(LineRecording, IniFileKnowsEveryChannelAndLinesIniEveryLine)
{
    std::vector<station::StationLine> lines;
    for (const int index : {0, 1, 2, 3, 30})
        lines.push_back(station::CatalogueLine(index));
    const QString ini = MakeLinesStationIni(lines, {});
    const QString data = MakeLinesIni(lines);
    bool shared = false;
    for (const station::StationLine& of : lines) {
        for (const station::AnalogSignal& signal : AnalogSignalsAround(of))
            EXPECT_EQ(ini.count("=" + signal.name + ","), 1) << signal.name.toStdString();
        for (const station::DiscreteSignal& signal : DiscreteSignalsAround(of))
            EXPECT_EQ(ini.count("=" + signal.name + ","), 1) << signal.name.toStdString();
        EXPECT_EQ(data.count("[" + of.name + "]\nlength="), 1);
        shared = shared || !of.ownVoltages;
    }
    EXPECT_TRUE(shared);
    EXPECT_EQ(data.contains("\nvoltages=ТН 1СШ-110\n"), shared);
    EXPECT_EQ(station::MakeLinesIni({station::UsualLine()}),
              "[ВЛ-110 Восточная]\nlength=60\nr1=0.16\nx1=0.41\nr0=0.31\nx0=1.25\n");
}
