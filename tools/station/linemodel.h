// A transmission line between two sources, in sequence values and as coupled phases.
//
//     infeed ---Z---+                                   fault
//                   | bus (recorder) ---[breaker]--- m ---+--- 1 - m ---[breaker]---Z--- remote source
//     healthy --Z---+
//
// The bays of the bus are the line, an infeed and a healthy line; each is an EMF behind an impedance. All
// currents of the bus flow from it into the bay. Impedances are in ohms at 50 Hz, voltages and currents in V
// and A, RMS, primary. Angles are against the positive-sequence voltage of the bus before the fault.
#pragma once

#include <Eigen/Core>

#include <complex>

namespace station {

using Complex = std::complex<double>;

// The positive-sequence impedance, which is the negative-sequence one too, and the zero-sequence one.
struct SequenceImpedance
{
    Complex positive;
    Complex zero;
};

struct LineData
{
    double length; // km
    double r1;     // ohm per km, as all that follow
    double x1;
    double r0;
    double x0;
};

struct LineModel
{
    LineData line;
    SequenceImpedance infeed;
    SequenceImpedance healthy;
    SequenceImpedance remote;
    double voltage;      // of the bus, phase to ground, before the fault
    Complex lineLoad;    // current of the line before the fault
    Complex healthyLoad; // current of the healthy line before the fault
    double frequency;    // Hz
    double fraction;     // of the line's length, from the bus to the fault
};

constexpr double RatedFrequency = 50.0; // Hz

// Quotient by additions, multiplications and one division each, whose rounding is the same everywhere.
Complex Quotient(Complex dividend, Complex divisor);

// Impedance of a part of the line.
SequenceImpedance LineImpedance(const LineData& line, double part);

SequenceImpedance InSeries(const SequenceImpedance& one, const SequenceImpedance& other);

// The impedance at another frequency (Hz), the inductances being what they are.
SequenceImpedance AtFrequency(const SequenceImpedance& impedance, double frequency);

// EMFs of the positive sequence that give the model's voltage and loads before the fault.
struct SourceVoltages
{
    Complex infeed;
    Complex healthy;
    Complex remote;
};

SourceVoltages SourceVoltagesOf(const LineModel& model);

// Resistances (ohm) and inductances (H) of three coupled phases.
struct PhaseImpedance
{
    Eigen::Matrix3d resistance;
    Eigen::Matrix3d inductance;
};

PhaseImpedance InPhases(const SequenceImpedance& impedance);

} // namespace station
