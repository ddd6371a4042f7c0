// A current transformer that may saturate.
#pragma once

namespace station {

// One phase. The burden's voltage is proportional to the current that the transformer passes on, its integral
// is the flux, and beyond the knee a magnetising current flows that is missing on the secondary side. All
// currents are primary ones; flux is the integral of the passed current (A s), so that the burden drops out.
// The sinusoid of amplitude I has the flux amplitude I / (2 pi f).
class CurrentTransformer
{
public:
    // `knee`: flux at which the magnetising current is `kneeCurrent` (A).
    CurrentTransformer(double knee, double kneeCurrent) : kneeFlux(knee), currentAtKnee(kneeCurrent) {}

    // The current that it passes on, a step (seconds) later, of the current that flows.
    double Next(double current, double step);

private:
    double MagnetisingCurrent(double atFlux) const;

    double kneeFlux;
    double currentAtKnee;
    double flux = 0;
};

} // namespace station
