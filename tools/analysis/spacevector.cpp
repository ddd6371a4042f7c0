#include "analysis/spacevector.h"

#include "analysis/circuits.h"

#include <cmath>

namespace analysis {

SpaceVector::SpaceVector(const FrequencySource& source, size_t first, size_t end)
{
    const Wave& a = *source.front();
    for (size_t i = first; i < end; ++i) {
        if (source.size() < Phases) {
            real.push_back(a[i]);
            continue;
        }
        const double b = (*source[PhaseB])[i];
        const double c = (*source[PhaseC])[i];
        real.push_back((a[i] - (b + c) / 2) / 3);
        imaginary.push_back((b - c) * std::sqrt(3.0) / 6);
    }
}

std::vector<Phasor> SpaceVector::Track(const Fourier& filter, size_t first, size_t end) const
{
    const auto part = [&](const Wave& wave) {
        return filter.Track(Wave(wave.begin() + static_cast<std::ptrdiff_t>(first),
                                 wave.begin() + static_cast<std::ptrdiff_t>(end)));
    };
    std::vector<Phasor> phasors = part(real);
    if (imaginary.empty())
        return phasors;
    const std::vector<Phasor> others = part(imaginary);
    for (size_t i = 0; i < phasors.size(); ++i)
        phasors[i] += Phasor(-others[i].imag(), others[i].real());
    return phasors;
}

} // namespace analysis
