#include "station/currenttransformer.h"

namespace station {

// The 15th power stands for the bend of cold-rolled steel.
double CurrentTransformer::MagnetisingCurrent(double atFlux) const
{
    const double ratio = atFlux / kneeFlux;
    const double square = ratio * ratio;
    const double fourth = square * square;
    const double eighth = fourth * fourth;
    return currentAtKnee * eighth * fourth * square * ratio;
}

double CurrentTransformer::Next(double current, double step)
{
    // Backward Euler with Newton's method; the curve is monotonic, so a few iterations do.
    double next = flux;
    for (int iteration = 0; iteration < 6; ++iteration) {
        const double magnetising = MagnetisingCurrent(next);
        const double slope = next == 0.0 ? 0.0 : 15.0 * magnetising / next;
        next -= (next - flux - step * (current - magnetising)) / (1.0 + step * slope);
    }
    flux = next;
    return current - MagnetisingCurrent(flux);
}

} // namespace station
