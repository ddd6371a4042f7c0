// The bays of the sample station and their signals: the one source of recordings and ini file.
#pragma once

#include <QString>

#include <vector>

namespace station {

struct StationOptions;

// A bay: a piece of equipment with its signals.
struct Bay
{
    QString name;          // as the recorder writes it, before the colon
    QString displayName;   // as people call it
    QString circuitName;   // the bay whose voltage transformers serve this one; may be empty
    unsigned kilovolts;    // a voltage level of the dictionary
    QString equipmentCode; // E_G code
    double ratedCurrent;   // A, primary; 0 without current transformers
    double load;           // load current as a fraction of the rated one
    double faultShare;     // fraction of the fault current that flows through the bay, signed
};

enum class Quantity {
    Current,
    Voltage,
    Frequency,
    Level // constant
};

// Phases 0 to 2 are a, b and c; this one is the sum of the three (3I0, 3U0).
constexpr int Residual = 3;

// A phase's value, or that sum.
template <typename Phases>
auto ValueOf(const Phases& phases, int phase)
{
    return phase == Residual ? phases[0] + phases[1] + phases[2] : phases[static_cast<size_t>(phase)];
}

// An analog signal of the recorder.
struct AnalogSignal
{
    Bay bay;
    QString name;      // "bay:signal"
    QString groupCode; // S_G code
    Quantity quantity;
    int phase;
    QString unit;
    double level; // of a constant quantity, in its unit
    // Scaling of the codes: physical value = code * primary * secondary * scale + offset.
    float primary;
    float secondary;
    float scale;
    float offset;
};

// What a value in volts or amperes is to be multiplied with for the signal's unit.
double UnitsPerVolt(const AnalogSignal& signal);

// What moves a discrete signal of the faulted bay; in all other bays the signal keeps its state at rest.
enum class Behaviour { Off, On, ProtectionStart, Trip, BreakerClosed, BreakerOpen, Reclosing };

// A discrete signal of the recorder.
struct DiscreteSignal
{
    Bay bay;
    QString name;       // "bay:signal"
    QString groupCode;  // D_G code
    QString statusCode; // S_T code
    Behaviour behaviour;
    bool inverted; // stored inverted
};

// The station's analog signals, as many as the options ask for; there is no upper limit.
std::vector<AnalogSignal> AnalogSignals(const StationOptions& options);

// The station's discrete signals, as many as the options ask for, but at least one for a chain of segments
// with analog channels: the segments of a chain are compared by their first discrete channel too.
std::vector<DiscreteSignal> DiscreteSignals(const StationOptions& options);

// The bays of the signals, each once, in order of appearance.
std::vector<Bay> BaysOf(const std::vector<AnalogSignal>& analog, const std::vector<DiscreteSignal>& discrete);

// The analog signals that a bay may have.
enum class BayQuantities { Currents, Voltages, Both };

// The signals of one bay, in the order of the recorder.
std::vector<AnalogSignal> AnalogSignalsOf(const Bay& bay, BayQuantities quantities);

// The first signals of those that every bay with current transformers has, in the order of the recorder.
std::vector<DiscreteSignal> DiscreteSignalsOf(const Bay& bay, size_t count);

// The line on which the faults are: the first bay.
Bay FaultedBay();

} // namespace station
