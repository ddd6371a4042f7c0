// Scenarios drawn from a seed. Each value is drawn in a statement of its own, as the order decides what comes
// out.
#include "station/drawing.h"
#include "station/linescenario.h"
#include "station/waveform.h"

#include <algorithm>
#include <cmath>

namespace station {

namespace {

constexpr double HighestLoadDrop = 0.5;     // of the voltage, over the line and the remote source
constexpr int64_t SecondsBetweenSeeds = 60; // so that no two recordings have the same name
constexpr uint32_t SeedsBeforeRepeat = 20000000;

const std::vector<double> Rates = {600,  800,  1000, 1200, 1600,  1800,  2000, 2400,
                                   3200, 4000, 4800, 6400, 10000, 12000, 20000};
const std::vector<int16_t> Zones = {3, 3, 3, 2, 4, 5, 7, 9, 10, 12, 330};

const std::vector<FaultKind> SinglePhaseKinds = {FaultKind::AG, FaultKind::BG, FaultKind::CG};
const std::vector<FaultKind> TwoPhaseKinds = {FaultKind::AB, FaultKind::BC, FaultKind::CA};
const std::vector<FaultKind> TwoPhaseGroundKinds = {FaultKind::ABG, FaultKind::BCG, FaultKind::CAG};

// A current or EMF of that magnitude, ahead of the voltage by degrees.
Complex Polar(double magnitude, double degrees)
{
    return {magnitude * SineOfTurns(degrees / 360.0 + 0.25), magnitude * SineOfTurns(degrees / 360.0)};
}

// A load that lags by up to 30 degrees, in either direction.
Complex DrawLoad(Drawing& draw, double low, double high)
{
    const double magnitude = draw.Between(low, high);
    const double lag = draw.Between(-5, 30);
    const Complex load = Polar(magnitude, -lag);
    return draw.Chance(0.5) ? load : -load;
}

SequenceImpedance DrawSource(Drawing& draw, double reactance, double lowestZero, double highestZero)
{
    SequenceImpedance source;
    source.positive = {reactance * draw.Between(0.06, 0.2), reactance};
    const double zero = reactance * draw.Between(lowestZero, highestZero);
    source.zero = {zero * draw.Between(0.06, 0.3), zero};
    return source;
}

LineModel DrawModel(Drawing& draw, const StationLine& line)
{
    LineModel model = {};
    model.line = line.data;
    model.voltage = line.kilovolts * 1000.0 / std::sqrt(3.0) * draw.Between(0.98, 1.08);
    const double reactance = draw.Logarithmic(line.kilovolts == 110 ? 6.5 : 11.0, 40.0);
    const double infeedShare = draw.Between(0.6, 0.85);
    model.infeed = DrawSource(draw, reactance / infeedShare, 0.5, 1.2);
    model.healthy = DrawSource(draw, reactance / (1.0 - infeedShare), 1.5, 3.0);
    const double remoteReactance = draw.Logarithmic(line.kilovolts == 110 ? 6.5 : 11.0, 110.0);
    model.remote = DrawSource(draw, remoteReactance, 0.6, 2.5);
    model.frequency = draw.Chance(0.6) ? draw.Between(49.8, 50.2) : draw.Between(47.0, 53.0);
    model.fraction = draw.Between(0.03, 0.97);
    model.lineLoad = DrawLoad(draw, 30, 500);
    model.healthyLoad = DrawLoad(draw, 50, 400);
    const Complex through = InSeries(LineImpedance(model.line, 1.0), model.remote).positive;
    const double drop = std::sqrt(std::norm(through * model.lineLoad)) / model.voltage;
    if (drop > HighestLoadDrop)
        model.lineLoad *= HighestLoadDrop / drop;
    return model;
}

FaultKind DrawKind(Drawing& draw)
{
    const double place = draw.Between(0, 1);
    if (place < 0.5)
        return draw.OneOf(SinglePhaseKinds);
    if (place < 0.68)
        return draw.OneOf(TwoPhaseKinds);
    return place < 0.88 ? draw.OneOf(TwoPhaseGroundKinds) : FaultKind::ABC;
}

double DrawResistance(Drawing& draw)
{
    return draw.Chance(0.5) ? draw.Between(0, 5) : draw.Between(5, 20);
}

// What the fault turns into, once or twice.
void DrawFurtherParts(Drawing& draw, FaultPlan& plan)
{
    do {
        const PlannedPart& last = plan.parts.back();
        std::vector<FaultKind> kinds;
        for (const FaultKind kind : AllFaultKinds())
            if (Evolves(last.fault.kind, kind))
                kinds.push_back(kind);
        if (kinds.empty())
            return;
        const double delay = last.delay + draw.Between(0.02, 0.06);
        const FaultKind kind = draw.OneOf(kinds);
        plan.parts.push_back({delay, {kind, last.fault.resistance}});
    } while (plan.parts.size() < 3 && draw.Chance(0.3));
}

FaultPlan DrawFault(Drawing& draw, const LineModel& model)
{
    FaultPlan plan = {};
    const FaultKind kind = DrawKind(draw);
    plan.parts.push_back({0.0, {kind, DrawResistance(draw)}});
    if (draw.Chance(0.15))
        DrawFurtherParts(draw, plan);
    plan.inception = draw.Between(0, 360);
    plan.protection.start = draw.Between(0.006, 0.020);
    const bool delayed = model.fraction > 0.85 && draw.Chance(0.5); // the second zone
    plan.protection.trip = delayed ? draw.Between(0.3, 0.45) : draw.Between(0.012, 0.050);
    plan.protection.opening = draw.Between(0.025, 0.055);
    // An evolving fault is cleared in its last form.
    const double tripped = plan.protection.start + plan.protection.trip;
    plan.protection.trip += std::max(0.0, plan.parts.back().delay + 0.02 - tripped);
    plan.remoteOpening = plan.protection.start + plan.protection.trip + plan.protection.opening +
                         draw.Between(delayed ? -0.3 : -0.015, 0.06);
    plan.remoteOpening = std::max(plan.remoteOpening, plan.parts.back().delay + 0.04);
    if (draw.Chance(0.2))
        plan.reclosing = draw.Chance(0.6) ? Reclosing::Success : Reclosing::Fault;
    plan.deadTime = draw.Between(0.3, 0.6);
    plan.remoteClosing = draw.Between(0.02, 0.1);
    plan.afterReclosing.start = draw.Between(0.006, 0.015);
    plan.afterReclosing.trip = draw.Between(0.010, 0.040);
    plan.afterReclosing.opening = plan.protection.opening;
    plan.healthyLineStarts = draw.Chance(0.15);
    return plan;
}

// Identity, rate, noise and clock, which faults and quiet recordings share.
LineScenario DrawFrame(Drawing& draw, uint32_t seed, const std::vector<StationLine>& lines, const char* stem)
{
    LineScenario scenario = {};
    scenario.stem =
        QStringLiteral("Vostochnaya_%1_%2").arg(QLatin1String(stem)).arg(seed, 7, 10, QLatin1Char('0'));
    scenario.line = draw.OneOf(lines);
    scenario.model = DrawModel(draw, scenario.line);
    scenario.sampleRate = draw.OneOf(Rates);
    scenario.beforeTrigger = draw.Between(0.2, 0.5);
    scenario.triggerDelay = draw.Between(0, 0.010);
    const double noise = draw.Between(0, 0.3);
    scenario.noise = draw.Chance(0.2) ? 0.0 : noise;
    scenario.zone = draw.OneOf(Zones);
    scenario.startSecond = SecondsBetweenSeeds * (seed % SeedsBeforeRepeat);
    scenario.seed = seed;
    scenario.compressed = draw.Chance(0.7);
    scenario.codePage = draw.Chance(0.7) ? recorderfile::CodePage::Cp866 : recorderfile::CodePage::Cp1251;
    return scenario;
}

void DrawMoments(Drawing& draw, QuietPlan& plan, int count)
{
    plan.moments = {0.0};
    while (static_cast<int>(plan.moments.size()) < count) {
        const double gap = draw.Between(0.15, 0.4);
        plan.moments.push_back(plan.moments.back() + gap);
    }
}

void DrawLoadSteps(Drawing& draw, QuietPlan& plan, const Complex& present)
{
    DrawMoments(draw, plan, 1 + draw.Below(3));
    Complex load = present;
    for (size_t i = 0; i < plan.moments.size(); ++i) {
        // More or less of the same load, or another one.
        if (draw.Chance(0.7))
            load *= draw.Between(0.4, 1.8);
        else
            load = DrawLoad(draw, 30, 400);
        const double magnitude = std::sqrt(std::norm(load));
        if (magnitude > 600.0)
            load *= 600.0 / magnitude;
        plan.loads.push_back(load);
    }
}

void DrawDip(Drawing& draw, QuietPlan& plan)
{
    plan.moments = {0.0, draw.Between(0.06, 0.2)};
    const int phases = 1 + draw.Below(3);
    const int first = draw.Below(3);
    const double part = draw.Between(0.91, 0.98);
    plan.parts.assign(3, 1.0);
    for (int i = 0; i < phases; ++i)
        plan.parts[static_cast<size_t>((first + i) % 3)] = part;
}

QuietPlan DrawQuiet(Drawing& draw, const LineModel& model)
{
    QuietPlan plan = {};
    plan.cause = static_cast<QuietCause>(draw.Below(static_cast<int>(QuietCause::Frequency) + 1));
    plan.moments = {0.0};
    switch (plan.cause) {
    case QuietCause::Noise:
        break;
    case QuietCause::LineLoad:
        DrawLoadSteps(draw, plan, model.lineLoad);
        break;
    case QuietCause::HealthyLineLoad:
        DrawLoadSteps(draw, plan, model.healthyLoad);
        break;
    case QuietCause::Switching:
        DrawMoments(draw, plan, 1 + draw.Below(2));
        break;
    case QuietCause::TransformerInrush:
        plan.onLine = draw.Chance(0.5);
        plan.strength = draw.Between(200, 1500);
        plan.rhythm = draw.Between(0.1, 0.5);
        break;
    case QuietCause::CapacitorInrush:
        plan.strength = draw.Between(60, 250);
        plan.rhythm = draw.Between(0.008, 0.03);
        break;
    case QuietCause::PowerSwing: {
        const double swing = draw.Between(8, 45) / 360.0;
        plan.strength = draw.Chance(0.5) ? swing : -swing;
        plan.rhythm = draw.Between(0.3, 1.5);
        break;
    }
    case QuietCause::DistantFault:
        DrawDip(draw, plan);
        break;
    case QuietCause::Frequency: {
        const double slope = draw.Between(0.2, 2);
        plan.strength = draw.Chance(0.5) ? slope : -slope;
        plan.rhythm = draw.Between(0.2, 0.8);
        break;
    }
    }
    return plan;
}

} // namespace

LineScenario RandomFault(uint32_t seed, const std::vector<StationLine>& lines)
{
    Drawing draw(seed);
    LineScenario scenario = DrawFrame(draw, seed, lines, "fault");
    FaultPlan plan = DrawFault(draw, scenario.model);
    scenario.saturation = draw.Chance(0.1);
    if (scenario.saturation) { // needs a direct component: the fault is near a zero of the voltage
        plan.inception = draw.Between(-25, 25);
        plan.inception += draw.Chance(0.5) ? 180.0 : 0.0;
    }
    scenario.startedByProtection = draw.Chance(0.5);
    if (scenario.startedByProtection)
        scenario.triggerDelay = plan.protection.start;
    scenario.bounce = draw.Chance(0.3);
    const bool endsBeforeClearing = draw.Chance(0.04);
    const double opening = plan.protection.start + plan.protection.trip + plan.protection.opening;
    if (endsBeforeClearing)
        scenario.seconds = scenario.beforeTrigger - scenario.triggerDelay + std::max(opening - 0.005, 0.06);
    scenario.fault = plan;
    return scenario;
}

LineScenario RandomQuiet(uint32_t seed, const std::vector<StationLine>& lines)
{
    Drawing draw(seed ^ 0x5a5a5a5au); // other networks than those of the faults
    LineScenario scenario = DrawFrame(draw, seed, lines, "quiet");
    scenario.quiet = DrawQuiet(draw, scenario.model);
    scenario.startSecond += SecondsBetweenSeeds / 2;
    return scenario;
}

} // namespace station
