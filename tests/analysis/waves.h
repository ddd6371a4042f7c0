// Waves whose phasors are known, for the tests and for bench/analysis.
#pragma once

#include "analysis/circuits.h"
#include "analysis/frequency.h"

#include <array>
#include <cmath>
#include <vector>

namespace waves {

constexpr double Pi = 3.14159265358979323846;

struct Part
{
    int order = 1;        // 0: direct component
    double magnitude = 1; // RMS
    double angle = 0;     // rad, of a cosine at sample 0
};

struct Steady
{
    double rate = 2400;
    double hertz = 50;
    std::vector<Part> parts = std::vector<Part>(1);

    double SamplesPerPeriod() const { return rate / hertz; }

    /// The phasor of a part at a sample.
    analysis::Phasor PhasorAt(const Part& part, size_t sample) const
    {
        const double turns = std::remainder(part.order * hertz * static_cast<double>(sample) / rate, 1);
        return std::polar(part.magnitude, 2 * Pi * turns + part.angle);
    }

    /// A phase lags by `lag` parts of a period; each harmonic by that time.
    analysis::Wave Samples(size_t count, double lag = 0) const
    {
        analysis::Wave wave(count, 0);
        for (const Part& part : parts) {
            const double root = part.order == 0 ? 1 : std::sqrt(2.0);
            const analysis::Phasor shift = std::polar(root, -2 * Pi * lag * part.order);
            for (size_t i = 0; i < count; ++i)
                wave[i] += (PhasorAt(part, i) * shift).real();
        }
        return wave;
    }

    std::array<analysis::Wave, analysis::Phases> ThreePhases(size_t count) const
    {
        return {Samples(count), Samples(count, 1.0 / 3), Samples(count, 2.0 / 3)};
    }
};

inline analysis::FrequencySource SourceOf(const std::array<analysis::Wave, analysis::Phases>& phases)
{
    return {&phases[0], &phases[1], &phases[2]};
}

/// The highest harmonic that the filters promise to tell apart.
inline int HighestOrder(const Steady& steady)
{
    return std::min(50, static_cast<int>(std::ceil(steady.SamplesPerPeriod() / 2 - 0.25)) - 1);
}

} // namespace waves
