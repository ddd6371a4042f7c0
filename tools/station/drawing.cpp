#include "station/drawing.h"

#include <algorithm>
#include <cmath>

namespace station {

namespace {

constexpr double Draws = 4294967296.0; // different values of the generator
const double RootOfThree = std::sqrt(3.0);

} // namespace

double Drawing::Between(double low, double high)
{
    return low + (high - low) * (static_cast<double>(random()) / Draws);
}

// By halving the interval, as the logarithm of the standard library is not the same everywhere.
double Drawing::Logarithmic(double low, double high)
{
    double position = Between(0.0, 1.0);
    for (int i = 0; i < 40; ++i) {
        const double middle = std::sqrt(low * high);
        position *= 2.0;
        if (position >= 1.0) {
            low = middle;
            position -= 1.0;
        } else {
            high = middle;
        }
    }
    return low;
}

double Drawing::Rounded(double low, double high, double step)
{
    return std::round(Between(low, high) / step) * step;
}

int Drawing::Below(int count)
{
    return std::min(count - 1, static_cast<int>(Between(0.0, static_cast<double>(count))));
}

bool Drawing::Chance(double probability)
{
    return Between(0.0, 1.0) < probability;
}

// Each of the four draws between -0.5 and 0.5 has the variance 1/12.
double Drawing::Noise()
{
    double sum = -2.0;
    for (int i = 0; i < 4; ++i)
        sum += static_cast<double>(random()) / Draws;
    return sum * RootOfThree;
}

} // namespace station
