// The line model (linemodel.h) integrated in time: voltages of the bus and currents of its bays, sample by
// sample.
//
// Nodal analysis with a companion model for each branch: trapezoidal rule, and after each discontinuity two
// half steps of the backward Euler method, which have the same conductances and leave no oscillation behind
// (critical damping adjustment: Lin and Marti, "Implementation of the CDA procedure in the EMTP", IEEE Trans.
// Power Systems 5 (2), 1990). Lines and sources are resistances and inductances of three coupled phases,
// without capacitances. A pole of a breaker that has been told to open interrupts at the next zero of its own
// current.
#pragma once

#include "station/currenttransformer.h"
#include "station/inrush.h"
#include "station/linefault.h"
#include "station/linemodel.h"

#include <array>
#include <optional>
#include <variant>
#include <vector>

namespace station {

enum class Terminal { Local, Remote };
enum class Source { Infeed, Healthy, Remote };

// A fault, another one in its place, or none.
struct FaultChange
{
    std::optional<FaultState> fault;
};

// Closing is at once; opening means that the contacts separate.
struct BreakerOrder
{
    Terminal terminal;
    bool closed;
};

// A source's EMF (positive sequence, V, RMS), and the part of it that each phase keeps.
struct SourceChange
{
    Source source;
    Complex voltage;
    std::array<double, 3> part = {1.0, 1.0, 1.0};
};

// What happens at a moment (seconds from the first sample).
struct Action
{
    double time;
    std::variant<FaultChange, BreakerOrder, SourceChange> what;
};

// The angle of the remote source swings about its value.
struct Swing
{
    double start;     // s
    double amplitude; // turns
    double frequency; // Hz
};

// The frequency of all sources changes for a while, and stays.
struct FrequencyRamp
{
    double start;  // s
    double slope;  // Hz per second
    double length; // s
};

// What happens in a recording.
struct Course
{
    double turnsAtStart = 0;     // angle of phase a of the bus voltage at the first sample
    std::vector<Action> actions; // in the order of time
    std::optional<Swing> swing;
    std::optional<FrequencyRamp> ramp;
    std::optional<Inrush> inrush;
    std::optional<double> kneeFlux; // of the line's current transformers (currenttransformer.h)
};

// The steps of the integration: as many to the interval of two samples that none is longer than 20
// microseconds.
class StepGrid
{
public:
    explicit StepGrid(double sampleRate);

    int PerSample() const { return perSample; }
    double Length() const { return 1.0 / rate; }
    double TimeOf(int64_t step) const { return static_cast<double>(step) / rate; }

    // The first step that does not come before the time (seconds).
    int64_t StepAt(double time) const;

    // Its time.
    double Snap(double time) const { return TimeOf(StepAt(time)); }

private:
    int perSample;
    double rate; // steps per second
};

using PhaseValues = std::array<double, 3>;

// A pole has interrupted its current.
struct Interruption
{
    Terminal terminal;
    size_t phase;
    double time; // s from the first sample
};

// Instantaneous values, V and A, for each sample.
struct LineWaves
{
    std::vector<PhaseValues> bus;
    std::vector<PhaseValues> line;   // as its current transformers see them
    std::vector<PhaseValues> infeed; // from the bus into the bay, as all bays
    std::vector<PhaseValues> healthy;
    std::vector<Interruption> interruptions; // in the order of time
    double largestCurrent = 0;               // of the line, A
    double largestDeviation = 0;             // of what its current transformers see, A
};

// Simulates so many samples, from the steady state before everything.
LineWaves Simulate(const LineModel& model, const Course& course, double sampleRate, size_t samples);

} // namespace station
