#include "forms/lowpass.h"

#include <algorithm>
#include <cmath>

namespace forms {

namespace {

// The modified Bessel function of the first kind and order 0, by its series.
double BesselI0(double x)
{
    double term = 1;
    double sum = 1;
    for (int k = 1; term > sum * 1e-17; ++k) {
        term *= (x / 2 / k) * (x / 2 / k);
        sum += term;
    }
    return sum;
}

double Sinc(double x)
{
    constexpr double pi = 3.14159265358979323846;
    return x == 0 ? 1 : std::sin(pi * x) / (pi * x);
}

// Kaiser's formulas for windows of 50 dB and more.
constexpr double Beta = 0.1102 * (LowPass::Attenuation - 8.7);

double LengthFor(double transition)
{
    return (LowPass::Attenuation - 7.95) / (14.36 * transition);
}

} // namespace

LowPass::LowPass(double sourceRate, double newRate)
{
    const double band = std::min(sourceRate, newRate) / sourceRate;
    cutoff = band * (PassBand + StopBand) / 2;
    halfLength = LengthFor(band * (StopBand - PassBand)) / 2;
    reach = static_cast<int>(std::ceil(std::min(halfLength, 1e9)));
}

void LowPass::FactorsAt(double phase, std::vector<double>& factors) const
{
    factors.resize(2 * static_cast<size_t>(reach));
    double sum = 0;
    double distance = phase + reach - 1; // from a sample to the instant
    for (double& factor : factors) {
        const double place = distance / halfLength;
        factor = std::fabs(place) < 1
                     ? Sinc(2 * cutoff * distance) * BesselI0(Beta * std::sqrt(1 - place * place))
                     : 0;
        sum += factor;
        distance -= 1;
    }
    for (double& factor : factors)
        factor /= sum;
}

} // namespace forms
