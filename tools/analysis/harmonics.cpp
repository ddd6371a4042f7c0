#include "analysis/harmonics.h"

#include "analysis/windowfit.h"

#include <cmath>
#include <limits>

namespace analysis {

double Spectrum::Thd() const
{
    double squares = 0;
    for (size_t i = 1; i < harmonics.size(); ++i)
        squares += std::norm(harmonics[i]);
    const double fundamental = harmonics.empty() ? 0 : std::abs(harmonics.front());
    return fundamental == 0 ? std::numeric_limits<double>::quiet_NaN() : std::sqrt(squares) / fundamental;
}

Harmonics::Harmonics(double samplesPerPeriod, size_t periods)
{
    const double length = samplesPerPeriod * static_cast<double>(periods);
    const size_t window = periods == 1 ? 0 : static_cast<size_t>(std::ceil(length - 1e-6));
    const WindowFit fit(samplesPerPeriod, window, {});
    for (int order = 0; order <= fit.Harmonics(); ++order)
        filters.emplace_back(fit, order);
}

Spectrum Harmonics::Of(const double* first) const
{
    Spectrum spectrum;
    spectrum.direct = filters.front().Of(first).real();
    for (size_t order = 1; order < filters.size(); ++order)
        spectrum.harmonics.push_back(filters[order].Of(first));
    return spectrum;
}

} // namespace analysis
