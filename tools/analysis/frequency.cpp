#include "analysis/frequency.h"

#include "analysis/constants.h"
#include "analysis/spacevector.h"

#include <algorithm>
#include <cmath>

namespace analysis {

namespace {

constexpr double Farthest = 0.2; // from the nominal frequency, as a part of it
constexpr double Settled = 1e-6; // Hz
constexpr int MostRounds = 20;
constexpr double MostScatter = 0.1; // rad: of the angles about their line

bool IsNear(double hertz, double nominal)
{
    return std::abs(hertz - nominal) <= Farthest * nominal;
}

struct AngleLine
{
    double slope;   // rad per sample
    double scatter; // rad, root of the mean square
};

// The line through the angles of phasors, which turn by less than half a turn from one to the next; those
// that are missing are passed over.
AngleLine LineThroughAngles(const std::vector<Phasor>& phasors)
{
    double count = 0;
    double x = 0; // sums
    double y = 0;
    double xx = 0;
    double xy = 0;
    double yy = 0;
    double angle = 0;
    Phasor before = NoValue;
    const double middle = static_cast<double>(phasors.size()) / 2; // sums of small numbers are more exact
    for (size_t i = 0; i < phasors.size(); ++i) {
        if (!(std::abs(phasors[i]) > 0)) // missing, or nothing there
            continue;
        if (!std::isnan(before.real()))
            angle += std::arg(phasors[i] * std::conj(before));
        before = phasors[i];
        const double at = static_cast<double>(i) - middle;
        count += 1;
        x += at;
        y += angle;
        xx += at * at;
        xy += at * angle;
        yy += angle * angle;
    }
    const double spread = xx - x * x / count;
    const double slope = (xy - x * y / count) / spread;
    const double rest = (yy - y * y / count) - slope * slope * spread;
    return {slope, std::sqrt(std::max(0.0, rest) / count)};
}

} // namespace

double FrequencyOf(const FrequencySource& source, double rate, double nominal, size_t first, size_t end)
{
    const double shortest = 1.5 * rate / nominal;
    if (static_cast<double>(end) - static_cast<double>(first) < shortest)
        return NoValue;
    const SpaceVector vector(source, first, end);
    double hertz = nominal;
    for (int round = 0; round < MostRounds; ++round) {
        const AngleLine line = LineThroughAngles(vector.Track(Fourier(rate / hertz), 0, vector.Count()));
        const double change = line.slope * rate / (2 * Pi);
        if (!IsNear(hertz + change, nominal)) // NaN too
            return NoValue;
        hertz += change;
        if (std::abs(change) < Settled)
            return line.scatter <= MostScatter ? hertz : NoValue;
    }
    return NoValue;
}

} // namespace analysis
