#include "station/network.h"

#include "station/waveform.h"

#include <cmath>
#include <random>

namespace station {

namespace {

constexpr double NominalFrequency = 50.0;         // Hz
constexpr double LoadLag = 0.07;                  // turns, current behind voltage
constexpr double FaultLag = 80.0 / 360.0;         // turns
constexpr double FaultCurrentPeak = 5656.8542495; // A, 4 kA RMS
constexpr double TimeConstant = 0.05;             // s, of the DC component
constexpr double RemainingVoltage = 0.35;         // of the faulted phases, at the voltage level of the fault
constexpr double FarDip = 0.2;                    // fraction of the dip that other voltage levels see
constexpr double FrequencySlope = -0.5;           // Hz per second
constexpr double TimeToPickUp = 0.2;              // s, from 50 Hz to the pick-up value of the start
constexpr double FrequencyDipLength = 1.5;        // s
constexpr double HarmonicLevel = 0.2;             // of the fundamental

const double SquareRootOfTwo = std::sqrt(2.0);
const double SquareRootOfThree = std::sqrt(3.0);

// Angle of a phase against phase a, turns.
double PhaseAngle(size_t phase)
{
    return -static_cast<double>(phase) / 3.0;
}

bool IsFaulted(Fault fault, size_t phase)
{
    switch (fault) {
    case Fault::None:
        return false;
    case Fault::SinglePhase:
        return phase == 0;
    case Fault::TwoPhase:
        return phase != 0;
    case Fault::ThreePhase:
        break;
    }
    return true;
}

double LoadPeak(const Bay& bay)
{
    return SquareRootOfTwo * bay.ratedCurrent * bay.load;
}

double LoadCurrent(const Bay& bay, size_t phase, double turns)
{
    return LoadPeak(bay) * SineOfTurns(turns + PhaseAngle(phase) - LoadLag);
}

// Steady current of a faulted phase of the line, A. Between two phases the voltage Ubc drives it, which lags
// Ua by a quarter turn, through both phases' impedances; the two also return the load of the healthy phase,
// so that the sum of all three stays zero.
double SteadyFaultCurrent(Fault fault, const Bay& line, size_t phase, double turns)
{
    if (fault != Fault::TwoPhase)
        return FaultCurrentPeak * SineOfTurns(turns + PhaseAngle(phase) - FaultLag);
    const double current = FaultCurrentPeak * SquareRootOfThree / 2.0 * SineOfTurns(turns - 0.25 - FaultLag);
    return (phase == 1 ? current : -current) - LoadCurrent(line, 0, turns) / 2.0;
}

// Load current from the angles at an instant, which saves computing a sine for each bay.
double LoadCurrent(const Bay& bay, size_t phase, const Instant& instant)
{
    static const double lagSine = SineOfTurns(LoadLag);
    static const double lagCosine = SineOfTurns(LoadLag + 0.25);
    const double fundamental = instant.sine[phase] * lagCosine - instant.cosine[phase] * lagSine;
    return LoadPeak(bay) * (fundamental + instant.harmonicShare[phase]);
}

double CurrentOf(const Bay& bay, size_t phase, const Instant& instant)
{
    static const QString faultedName = FaultedBay().name;
    if (bay.name == faultedName && !instant.lineInService[phase])
        return 0.0;
    return LoadCurrent(bay, phase, instant) + bay.faultShare * instant.faultCurrent[phase];
}

double VoltageOf(const Bay& bay, size_t phase, const Instant& instant)
{
    static const unsigned faultedLevel = FaultedBay().kilovolts;
    const double peak = bay.kilovolts * 1000.0 * SquareRootOfTwo / SquareRootOfThree; // V
    const double part = bay.kilovolts == faultedLevel ? 1.0 : FarDip;
    return peak * (instant.sine[phase] - part * instant.faultVoltage[phase]);
}

template <typename PhaseValue>
double PhaseOrResidual(int phase, PhaseValue value)
{
    return phase == Residual ? value(0) + value(1) + value(2) : value(static_cast<size_t>(phase));
}

} // namespace

Scenario MakeScenario(const StationOptions& options, StartKind start, double trigger)
{
    std::mt19937 random(options.seed);
    const double operatingTime = 0.080 + 0.001 * static_cast<double>(random() % 41u);
    const bool isFault =
        start != StartKind::Frequency && start != StartKind::Harmonic && start != StartKind::External;
    Scenario scenario;
    scenario.fault = isFault ? options.fault : Fault::None;
    scenario.frequencyDip = start == StartKind::Frequency;
    scenario.harmonic = start == StartKind::Harmonic;
    scenario.trigger = trigger;
    scenario.dipStart = std::fmax(0.0, trigger - TimeToPickUp);
    scenario.protectionStart = trigger + 0.012;
    scenario.breakerOpen = trigger + operatingTime;
    scenario.trip = scenario.breakerOpen - 0.045;
    scenario.protectionReturn = scenario.breakerOpen + 0.030;
    scenario.recloseCommand = scenario.breakerOpen + 0.500;
    scenario.breakerClosed = scenario.recloseCommand + 0.060;
    return scenario;
}

Network::Network(const Scenario& events, double sampleRate)
    : scenario(events), rate(sampleRate), line(FaultedBay())
{}

Instant Network::Next()
{
    const double time = static_cast<double>(sample++) / rate;
    Instant instant = {};
    SetSource(instant, time);
    SetFault(instant, time);
    SwitchBreaker(instant, time);
    instant.lineInService = inService;
    for (size_t phase = 0; phase < 3; ++phase)
        if (!inService[phase])
            instant.faultCurrent[phase] = instant.faultVoltage[phase] = 0.0;
    return instant;
}

// Angle of the source: the integral of its frequency.
double Network::Turns(double time) const
{
    if (!scenario.frequencyDip || time <= scenario.dipStart)
        return NominalFrequency * time;
    const double since = time - scenario.dipStart;
    const double dip = std::fmin(since, FrequencyDipLength);
    return NominalFrequency * time + FrequencySlope * dip * (since - dip / 2.0);
}

void Network::SetSource(Instant& instant, double time) const
{
    const double turns = Turns(time);
    const bool triggered = time >= scenario.trigger;
    for (size_t phase = 0; phase < 3; ++phase) {
        instant.sine[phase] = SineOfTurns(turns + PhaseAngle(phase));
        instant.cosine[phase] = SineOfTurns(turns + PhaseAngle(phase) + 0.25);
        if (scenario.harmonic && triggered)
            instant.harmonicShare[phase] = HarmonicLevel * SineOfTurns(5.0 * (turns + PhaseAngle(phase)));
    }
    instant.frequency = NominalFrequency;
    if (scenario.frequencyDip && time >= scenario.dipStart)
        instant.frequency += FrequencySlope * std::fmin(time - scenario.dipStart, FrequencyDipLength);
}

void Network::SetFault(Instant& instant, double time)
{
    if (scenario.fault == Fault::None || time < scenario.trigger || time >= scenario.breakerClosed)
        return;
    const double turns = Turns(time);
    const double atTrigger = Turns(scenario.trigger);
    const double decay = DecayAfter((time - scenario.trigger) / TimeConstant);
    // Between two phases the dip leaves the mean of their voltages as it was.
    const double mean = scenario.fault == Fault::TwoPhase ? (instant.sine[1] + instant.sine[2]) / 2.0 : 0.0;
    for (size_t phase = 0; phase < 3; ++phase)
        if (IsFaulted(scenario.fault, phase)) {
            const double direct = LoadCurrent(line, phase, atTrigger) -
                                  SteadyFaultCurrent(scenario.fault, line, phase, atTrigger);
            instant.faultCurrent[phase] = SteadyFaultCurrent(scenario.fault, line, phase, turns) +
                                          direct * decay - LoadCurrent(line, phase, turns);
            instant.faultVoltage[phase] = (1.0 - RemainingVoltage) * (instant.sine[phase] - mean);
        }
}

// A phase of the faulted line is interrupted at the first zero of its current after the contacts separate.
void Network::SwitchBreaker(const Instant& instant, double time)
{
    if (scenario.fault == Fault::None)
        return;
    const bool isOpen = time >= scenario.breakerOpen && time < scenario.breakerClosed;
    for (size_t phase = 0; phase < 3; ++phase) {
        const double current = LoadCurrent(line, phase, instant) + instant.faultCurrent[phase];
        if (!isOpen)
            inService[phase] = true;
        else if (current * lastCurrent[phase] <= 0.0)
            inService[phase] = false;
        lastCurrent[phase] = current;
    }
}

double ValueOf(const AnalogSignal& analog, const Instant& instant)
{
    switch (analog.quantity) {
    case Quantity::Current:
        return PhaseOrResidual(analog.phase,
                               [&](size_t phase) { return CurrentOf(analog.bay, phase, instant); });
    case Quantity::Voltage:
        return PhaseOrResidual(analog.phase,
                               [&](size_t phase) { return VoltageOf(analog.bay, phase, instant); }) /
               (analog.unit == QStringLiteral("кВ") ? 1000.0 : 1.0);
    case Quantity::Frequency:
        return instant.frequency;
    case Quantity::Level:
        break;
    }
    return analog.level;
}

} // namespace station
