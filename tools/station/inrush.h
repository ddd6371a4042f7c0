// Currents that flow when a transformer or a capacitor bank is switched on.
#pragma once

#include <array>

namespace station {

enum class SwitchedLoad { Transformer, Capacitor };

// The bay behind which it is connected.
enum class SwitchedBay { Line, Healthy };

struct Inrush
{
    SwitchedLoad load;
    SwitchedBay bay;
    double start;            // s from the first sample
    double peak;             // A: of a transformer's first half wave at most; of a capacitor's steady current
    double timeConstant;     // s
    double naturalFrequency; // Hz, of a capacitor's oscillation
    double turnsAtStart;     // angle of phase a of the voltage when it is switched on
};

// The currents (A) of the phases at a time, with the angle (turns) of phase a of the voltage then. A
// transformer's is what its flux has beyond saturation: half waves of one direction, rich in the second
// harmonic, which become smaller as the flux loses its offset; its neutral is not grounded. A capacitor's is
// that of a series resonant circuit.
std::array<double, 3> InrushCurrents(const Inrush& inrush, double time, double turns);

} // namespace station
