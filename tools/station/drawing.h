// Random values that are the same everywhere: the distributions of the standard library are not.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

namespace station {

class Drawing
{
public:
    explicit Drawing(uint32_t seed) : random(seed) {}

    // Evenly between two values.
    double Between(double low, double high);

    // Evenly on the logarithmic scale, for positive values.
    double Logarithmic(double low, double high);

    // Evenly, and rounded to a multiple of the step.
    double Rounded(double low, double high, double step);

    // 0 to count - 1.
    int Below(int count);

    // Whether something of that probability happens.
    bool Chance(double probability);

    // Of mean 0 and standard deviation 1, nearly Gaussian: the sum of four even draws.
    double Noise();

    template <typename Value>
    Value OneOf(const std::vector<Value>& values)
    {
        return values[static_cast<size_t>(Below(static_cast<int>(values.size())))];
    }

private:
    std::mt19937 random;
};

} // namespace station
