// Superimposed quantities: what a wave differs by from itself a period before, which is nothing but noise
// until something happens (A. T. Johns, S. K. Salman, "Digital Protection for Power Systems", 1995, 8.2).
#pragma once

#include "analysis/signals.h"

#include <optional>

namespace analysis {

/// wave[n] - wave[n - period] for a period of samples that need not be whole; the value between two samples
/// by a cubic through four, or by 16 under a window where a period has few. NaN for the first period and
/// where a value is missing.
Wave Superimposed(const Wave& wave, double period);

/// The size of the noise in a stretch: 1.4826 times the median of the absolute values, which is the standard
/// deviation of a normal distribution (P. J. Rousseeuw, C. Croux, JASA 88, 1993). 0 without any value.
double NoiseOf(const Wave& wave, size_t begin, size_t end);

/// The noise of such a stretch or that of the whole wave, whichever is less: in most waves the latter is seen
/// to be more without being computed.
double LesserNoise(const Wave& wave, size_t begin, size_t end);

/// The largest magnitude among samples begin to end - 1; 0 without any value.
double LargestOf(const Wave& wave, size_t begin, size_t end);

/// A moment at which a wave leaves its course, in samples. Between two samples it is where the growth of the
/// first two differences starts.
struct Departure
{
    size_t sample = 0; ///< the first one that is beyond the limit
    double moment = 0; ///< from sample - 1 to sample
};

/// The first departure from `begin` on: a difference beyond the limit that another one follows within the
/// next three samples.
std::optional<Departure> FirstBeyond(const Wave& differences, double limit, size_t begin, size_t end);

} // namespace analysis
