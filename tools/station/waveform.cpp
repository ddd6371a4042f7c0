#include "station/waveform.h"

#include <cmath>

namespace station {

double SineOfTurns(double turns)
{
    double x = turns - std::floor(turns);
    if (x > 0.75)
        x -= 1.0;
    else if (x > 0.25)
        x = 0.5 - x;
    const double radians = x * 6.283185307179586;
    const double square = radians * radians;
    double sum = 0.0; // Taylor series up to the 17th power, from its last term on
    for (int n = 17; n >= 3; n -= 2)
        sum = (1.0 + sum) * -square / ((n - 1) * n);
    return radians * (1.0 + sum);
}

double DecayAfter(double x)
{
    int halvings = 0;
    for (; x > 0.5; x /= 2.0)
        ++halvings;
    double sum = 0.0; // Taylor series up to the 12th power, from its last term on
    for (int n = 12; n >= 1; --n)
        sum = (1.0 + sum) * -x / n;
    double result = 1.0 + sum;
    for (; halvings > 0; --halvings)
        result *= result;
    return result;
}

} // namespace station
