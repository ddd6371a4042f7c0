// Model of the network around the station, one instant at a time.
//
// A rigid 50 Hz system feeds the busbars. A short circuit at the trigger lowers the voltages of its phases
// and drives a current of 4 kA that lags by 80 degrees; as the current of an inductance cannot jump, it
// starts at the load current, with a DC component that decays with a time constant of 50 ms. The breaker of
// the line opens its contacts 80 to 120 ms after the trigger, every phase is interrupted at its next current
// zero, and half a second later the line is closed again onto the healthy network.
#pragma once

#include "station/bays.h"
#include "station/station.h"

#include <array>

namespace station {

// What happens at the trigger, and the moments of the recording, seconds from its first sample.
struct Scenario
{
    Fault fault = Fault::None;
    bool frequencyDip = false;
    bool harmonic = false;
    double trigger = 0;
    double dipStart = 0; // the frequency starts to fall
    double protectionStart = 0;
    double trip = 0;             // the protection's command
    double breakerOpen = 0;      // the contacts separate
    double recloseCommand = 0;   // of the automatic reclosing
    double breakerClosed = 0;    // the line is in service again
    double protectionReturn = 0; // start and trip drop out
};

// The course of events for a trigger at the given moment (seconds); the seed varies the operating time.
Scenario MakeScenario(const StationOptions& options, StartKind start, double trigger);

// The state of the network at one sample.
struct Instant
{
    std::array<double, 3> sine;          // of the phases a, b, c of the source
    std::array<double, 3> cosine;        // the same, a quarter period ahead
    std::array<double, 3> faultCurrent;  // what the fault adds to the load of the faulted line, A
    std::array<double, 3> faultVoltage;  // what the fault takes from the phase voltages, per unit of peak
    std::array<bool, 3> lineInService;   // phase of the faulted line carries current
    std::array<double, 3> harmonicShare; // fifth harmonic, per unit of the fundamental's peak
    double frequency;                    // Hz
};

// Steps through the recording sample by sample.
class Network
{
public:
    Network(const Scenario& scenario, double sampleRate);

    // The next instant; the first call gives that of the first sample.
    Instant Next();

private:
    double Turns(double time) const;
    void SetSource(Instant& instant, double time) const;
    void SetFault(Instant& instant, double time);
    void SwitchBreaker(const Instant& instant, double time);

    Scenario scenario;
    double rate;
    uint64_t sample = 0;
    Bay line;
    std::array<bool, 3> inService = {true, true, true};
    std::array<double, 3> lastCurrent = {}; // of the faulted line at the sample before, A
};

// Value of a signal at an instant, in its unit.
double ValueOf(const AnalogSignal& analog, const Instant& instant);

} // namespace station
