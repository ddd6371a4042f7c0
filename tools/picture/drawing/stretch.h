// The stretch of an oscillogram that the still picture shows, and where its times stand in a drawing.
#pragma once

#include "view/shown.h"

#include <QRectF>

namespace picture {

class Stretch
{
public:
    /// Three periods before the trigger and nine after it, as far as there are samples.
    explicit Stretch(const analysis::Oscillogram& oscillogram_);

    /// Three periods before the onset of a fault to three after its clearing, twelve at least and thirty at
    /// most, as far as there are samples.
    Stretch(const analysis::Oscillogram& oscillogram_, const analysis::Fault& fault);

    double From() const { return from; } ///< s from the trigger
    double To() const { return to; }     ///< likewise
    size_t Begin() const { return SampleAt(from); }
    size_t End() const { return SampleAt(to) + 1; } ///< the sample after the last
    double TimeOf(size_t sample) const;
    double XOf(const QRectF& plot, double time) const;

private:
    void Take(double wantedFrom, double length);
    double Period() const { return 1 / analysis::MainsFrequency(oscillogram.config); }
    size_t SampleAt(double time) const;

    const analysis::Oscillogram& oscillogram;
    double from = 0;
    double to = 0;
};

/// A step of 1, 2 or 5 times a power of ten, so that a range has at most so many of them.
double NiceStep(double range, int most);

} // namespace picture
