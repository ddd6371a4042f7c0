// The frequency of a system, and phasors referred to it.
//
// Frequency is how fast the positive-sequence phasor of the voltages turns (A. G. Phadke, J. S. Thorp, M. G.
// Adamiak, "A new measurement technique for tracking voltage phasors, local system frequency, and rate of
// change of frequency", IEEE Trans. PAS-102, 1983). A filter for another frequency than that of the wave lets
// harmonics and the image of the phasor through; so the filter is made again for the frequency found until
// nothing changes any more. Then a steady wave gives its exact frequency, harmonics or not.
#pragma once

#include "analysis/phasor.h"
#include "analysis/signals.h"

#include <map>
#include <vector>

namespace analysis {

/// Three phase-to-earth voltages a, b, c, or a single wave, from which less than two periods say little.
using FrequencySource = std::vector<const Wave*>;

/// Hz, of samples first to end - 1, which need at least one and a half periods; the best straight line
/// through the angles of the phasor. NaN if there are fewer, if the angles do not lie on a line (a dead bus,
/// a fault), or farther than 20 % from the nominal frequency.
double FrequencyOf(const FrequencySource& source, double rate, double nominal, size_t first, size_t end);

struct FrequencyTrack
{
    Wave hertz;  ///< from the last two periods: the mean of the time half of it ago
    Wave change; ///< Hz/s, from the last six periods, likewise
};

/// For each sample. NaN without the periods before it, where the phasor is below a tenth of its largest
/// magnitude, and farther than 20 % from the nominal frequency. Steps of the voltage, as at the onset of a
/// fault, make it swing for two periods.
FrequencyTrack FrequencyOf(const FrequencySource& source, double rate, double nominal);

/// Filters of one period for any frequency, made when they are first needed: one for each 0.01 Hz. That far
/// off, a phasor is wrong by less than 0.01 %.
class FourierBank
{
public:
    FourierBank(double rate_, double nominal_) : rate(rate_), nominal(nominal_) {}

    /// The frequency whose filter serves: the nominal one for NaN, and within 20 % of it for others.
    double Nearest(double hertz) const;

    const Fourier& For(double hertz); ///< the filter for Nearest(hertz)

private:
    double rate;
    double nominal;
    std::map<double, Fourier> filters;
};

/// Phasors of each sample as Fourier::Track gives them, by the filter for the frequency at that sample, with
/// angles against a phasor that turns with the nominal frequency. hertz has one value for each of the wave.
std::vector<Phasor> TrackAt(const Wave& wave, const Wave& hertz, double rate, double nominal);

} // namespace analysis
