// Values of sampled waves between their samples.
#pragma once

#include "analysis/timeaxis.h"

#include <array>
#include <vector>

namespace analysis {

/// Samples of an oscillogram that lie on a time axis, and their stretches of equal distances.
class SampleTimes
{
public:
    struct Stretch
    {
        qint64 begin, end;
    };

    /// `samples` samples from `first` of the axis on; they are counted from 0 here. The axis must outlive
    /// this.
    SampleTimes(const TimeAxis& axis_, qint64 first_, qint64 samples_);

    qint64 Count() const { return samples; }
    bool HasRates() const { return !pieces.empty(); }
    double At(qint64 sample) const { return axis.TimeOf(first + sample); }

    /// The samples at the same distances as `before` and the one after it; of stamps, at distances between
    /// half and double of theirs.
    Stretch Around(qint64 before) const;

private:
    const TimeAxis& axis;
    qint64 first;
    qint64 samples;
    std::vector<Stretch> pieces; // none for stamps
};

/// How to compute the values at equidistant moments from the samples around each; the same for all channels.
///
/// Within a piece of constant rate this is windowed-sinc interpolation (J. O. Smith, "Digital Audio
/// Resampling", CCRMA) of 16 samples under a Kaiser window: accurate to 0.02 % up to two thirds of half the
/// rate. Samples of another rate do not take part, as they are not at equal distances. Within 8 samples of
/// the end of a piece, between samples with stamps, and next to missing values it is the polynomial through
/// the nearest samples, at most 8 (Lagrange), which needs 10 samples in a period of what it shall follow to
/// 0.05 %.
class Interpolation
{
public:
    /// `count` moments from `start` on at intervals of `interval`, in seconds of the axis.
    Interpolation(SampleTimes times_, double start, double interval, size_t count);

    /// Values at the moments from those of the samples. A moment at a sample has its very value. NaN for
    /// moments outside the samples and where one of the two neighbours is missing.
    std::vector<double> Of(const std::vector<double>& values) const;

private:
    static constexpr qint64 Half = 8; // samples on either side of a moment
    using Kernel = std::array<double, 2 * Half>;

    enum class Way { Outside, Sample, Kernel, Polynomial };

    struct Moment
    {
        Way way;
        qint64 before; // the sample at it or before it
        double time;
        size_t kernel; // place among the kernels, whose first sample is before - Half + 1
    };

    Moment Placed(double time, qint64 before);
    double KernelSum(const std::vector<double>& values, const Moment& moment) const;
    double Polynomial(const std::vector<double>& values, const Moment& moment) const;

    SampleTimes times;
    std::vector<Moment> moments;
    std::vector<Kernel> kernels;
    double part = -1; // of a step, of the last kernel
};

} // namespace analysis
