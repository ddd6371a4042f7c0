#include "station/linecourse.h"

#include "station/linephasors.h"

#include <algorithm>
#include <cmath>

namespace station {

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr double KneeInFault = 3.0; // flux at the knee, in the amplitudes of the steady fault current
constexpr double VisibleDeviation = 0.02;
constexpr double AfterOpening = 0.25; // s of the recording
constexpr double AfterClosing = 0.40;
constexpr double AfterQuiet = 0.9;
constexpr double AfterSwing = 1.8;

// Adds actions at moments of the simulation's grid.
class CourseMaker
{
public:
    explicit CourseMaker(const LineScenario& plans) : scenario(plans), grid(plans.sampleRate) {}

    LineCourse Make();

private:
    void AddFault(const FaultPlan& plan);
    void AddReclosing(const FaultPlan& plan, double opening);
    void AddQuiet(const QuietPlan& plan);
    void AddLoads(const QuietPlan& plan, Source source);
    void AddSwitching(const QuietPlan& plan);
    void AddDip(const QuietPlan& plan);
    void AddInrush(const QuietPlan& plan);

    template <typename What>
    void Add(double time, const What& what)
    {
        moments.course.actions.push_back({grid.Snap(time), what});
    }

    const LineScenario& scenario;
    StepGrid grid;
    LineCourse moments = {};
    double onset = 0;
};

LineCourse CourseMaker::Make()
{
    onset = grid.Snap(scenario.beforeTrigger - scenario.triggerDelay);
    const double inception = scenario.fault ? scenario.fault->inception / 360.0 : 0.0;
    const size_t phase = scenario.fault ? ReferencePhase(scenario.fault->parts[0].fault.kind) : 0;
    const double turns = inception + static_cast<double>(phase) / 3.0 - scenario.model.frequency * onset;
    moments.course.turnsAtStart = turns - std::floor(turns);
    if (scenario.fault)
        AddFault(*scenario.fault);
    else if (scenario.quiet)
        AddQuiet(*scenario.quiet);
    if (scenario.seconds > 0)
        moments.end = scenario.seconds;
    std::stable_sort(moments.course.actions.begin(), moments.course.actions.end(),
                     [](const Action& one, const Action& other) { return one.time < other.time; });
    return moments;
}

void CourseMaker::AddFault(const FaultPlan& plan)
{
    for (const PlannedPart& part : plan.parts) {
        moments.partOnsets.push_back(grid.Snap(onset + part.delay));
        Add(onset + part.delay, FaultChange{part.fault});
    }
    Operation first = {};
    first.onset = onset;
    first.start = scenario.startedByProtection ? scenario.beforeTrigger : onset + plan.protection.start;
    first.trip = first.start + plan.protection.trip;
    first.opening = grid.Snap(first.trip + plan.protection.opening);
    moments.first = first;
    Add(first.opening, BreakerOrder{Terminal::Local, false});
    Add(onset + plan.remoteOpening, BreakerOrder{Terminal::Remote, false});
    moments.end = first.opening + AfterOpening;
    if (scenario.saturation) {
        double largest = 0;
        for (const Complex& current : SteadyState(scenario.model, plan.parts.back().fault).line)
            largest = std::max(largest, std::sqrt(2.0 * std::norm(current)));
        moments.course.kneeFlux = KneeInFault * largest / (2.0 * Pi * scenario.model.frequency);
    }
    if (plan.reclosing != Reclosing::None)
        AddReclosing(plan, first.opening);
}

// On a healthy line the other end follows. A line that is still faulted is not closed there: this end goes
// first.
void CourseMaker::AddReclosing(const FaultPlan& plan, double opening)
{
    const double closing = grid.Snap(opening + plan.deadTime);
    moments.closing = closing;
    Add(closing, BreakerOrder{Terminal::Local, true});
    moments.end = closing + AfterClosing;
    if (plan.reclosing == Reclosing::Success) {
        Add(closing - 0.05, FaultChange{std::nullopt}); // the arc is out
        Add(closing + plan.remoteClosing, BreakerOrder{Terminal::Remote, true});
        return;
    }
    Operation second = {};
    second.onset = closing;
    second.start = closing + plan.afterReclosing.start;
    second.trip = second.start + plan.afterReclosing.trip;
    second.opening = grid.Snap(second.trip + plan.afterReclosing.opening);
    moments.second = second;
    Add(second.opening, BreakerOrder{Terminal::Local, false});
    moments.end = second.opening + AfterOpening;
}

void CourseMaker::AddQuiet(const QuietPlan& plan)
{
    moments.end = onset + plan.moments.back() + AfterQuiet;
    switch (plan.cause) {
    case QuietCause::Noise:
        break;
    case QuietCause::LineLoad:
        AddLoads(plan, Source::Remote);
        break;
    case QuietCause::HealthyLineLoad:
        AddLoads(plan, Source::Healthy);
        break;
    case QuietCause::Switching:
        AddSwitching(plan);
        break;
    case QuietCause::TransformerInrush:
    case QuietCause::CapacitorInrush:
        AddInrush(plan);
        break;
    case QuietCause::PowerSwing:
        moments.course.swing = Swing{onset, plan.strength, plan.rhythm};
        moments.end = onset + AfterSwing;
        break;
    case QuietCause::DistantFault:
        AddDip(plan);
        break;
    case QuietCause::Frequency:
        moments.course.ramp = FrequencyRamp{onset, plan.strength, plan.rhythm};
        break;
    }
}

// The other end's EMF becomes what drives the load through the same impedances.
void CourseMaker::AddLoads(const QuietPlan& plan, Source source)
{
    LineModel model = scenario.model;
    for (size_t i = 0; i < plan.moments.size(); ++i) {
        (source == Source::Remote ? model.lineLoad : model.healthyLoad) = plan.loads[i];
        const SourceVoltages voltages = SourceVoltagesOf(model);
        Add(onset + plan.moments[i],
            SourceChange{source, source == Source::Remote ? voltages.remote : voltages.healthy});
    }
}

void CourseMaker::AddSwitching(const QuietPlan& plan)
{
    moments.manualOpening = onset;
    Add(onset, BreakerOrder{Terminal::Local, false});
    if (plan.moments.size() > 1) {
        moments.closing = grid.Snap(onset + plan.moments[1]);
        Add(*moments.closing, BreakerOrder{Terminal::Local, true});
    }
}

void CourseMaker::AddDip(const QuietPlan& plan)
{
    const Complex infeed = SourceVoltagesOf(scenario.model).infeed;
    Add(onset, SourceChange{Source::Infeed, infeed, {plan.parts[0], plan.parts[1], plan.parts[2]}});
    Add(onset + plan.moments[1], SourceChange{Source::Infeed, infeed});
}

// A capacitor swings with the inductance behind the bus.
void CourseMaker::AddInrush(const QuietPlan& plan)
{
    Inrush inrush = {};
    inrush.load =
        plan.cause == QuietCause::CapacitorInrush ? SwitchedLoad::Capacitor : SwitchedLoad::Transformer;
    inrush.bay = plan.onLine ? SwitchedBay::Line : SwitchedBay::Healthy;
    inrush.start = onset;
    inrush.peak = plan.strength;
    inrush.timeConstant = plan.rhythm;
    const double one = scenario.model.infeed.positive.imag();
    const double other = scenario.model.healthy.positive.imag();
    const double source = one * other / (one + other);
    const double capacitor = std::sqrt(2.0) * scenario.model.voltage / plan.strength;
    inrush.naturalFrequency = scenario.model.frequency * std::sqrt(capacitor / source);
    inrush.turnsAtStart = moments.course.turnsAtStart + scenario.model.frequency * onset;
    moments.course.inrush = inrush;
}

// The last interruption at the recorder's end between two moments, of all poles or of those of the phases.
std::optional<double> LastInterruption(const LineWaves& waves, double from, double until,
                                       const std::array<bool, 3>& phases)
{
    size_t missing = static_cast<size_t>(std::count(phases.begin(), phases.end(), true));
    std::optional<double> last;
    for (const Interruption& interruption : waves.interruptions)
        if (interruption.terminal == Terminal::Local && interruption.time >= from &&
            interruption.time < until && phases[interruption.phase]) {
            last = interruption.time;
            --missing;
        }
    return missing == 0 ? last : std::nullopt;
}

} // namespace

LineCourse CourseOf(const LineScenario& scenario)
{
    return CourseMaker(scenario).Make();
}

LineOutcome Play(const LineScenario& scenario)
{
    LineOutcome outcome = {};
    outcome.moments = CourseOf(scenario);
    const LineCourse& moments = outcome.moments;
    outcome.samples = static_cast<size_t>(std::max(1LL, std::llround(moments.end * scenario.sampleRate)));
    outcome.waves = Simulate(scenario.model, moments.course, scenario.sampleRate, outcome.samples);
    outcome.saturated = outcome.waves.largestDeviation > VisibleDeviation * outcome.waves.largestCurrent;
    if (!moments.first || !scenario.fault)
        return outcome;
    const std::array<bool, 3> all = {true, true, true};
    const std::array<bool, 3> faulted = PhasesOf(scenario.fault->parts.back().fault.kind);
    const double closing = moments.closing.value_or(moments.end + 1.0);
    outcome.opened = LastInterruption(outcome.waves, 0.0, closing, all);
    outcome.cleared = LastInterruption(outcome.waves, 0.0, closing, faulted);
    if (moments.second) {
        outcome.openedAgain = LastInterruption(outcome.waves, closing, moments.end + 1.0, all);
        outcome.clearedAgain = LastInterruption(outcome.waves, closing, moments.end + 1.0, faulted);
    }
    return outcome;
}

} // namespace station
