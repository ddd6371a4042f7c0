// The samples of a record from one to another.
#pragma once

#include "forms/comtradetext.h"
#include "forms/export.h"
#include "forms/stream.h"

namespace forms {

/// Samples of a record, the first one counted from 0.
struct Extent
{
    qint64 first = 0;
    qint64 count = 0;
};

/// A span without a sample.
class NoSamples : public FormError
{
public:
    using FormError::FormError;
};

/// The samples that a span covers. Where the record has no rate they are found by a pass through `stamps`,
/// the record's stream, which is not needed otherwise. Throws NoSamples, or FormError for stamps that are
/// missing.
Extent ExtentOf(const Span& span, const comtrade::Configuration& config, Stream* stamps);

/// Delivers the samples of an extent, counted from 1 unless it starts with the first one. The record starts
/// with the first of them; times and rates are those of the extent. The trigger stays what it is.
class TimeWindow : public Stream
{
public:
    /// The source must outlive it.
    TimeWindow(Stream& source_, const Extent& extent_);

    const comtrade::Configuration& Config() const override { return config; }
    bool Next(comtrade::Block& block) override;

private:
    void Start();
    void MoveStart(qint64 firstStamp);
    bool Deliver(comtrade::Block& block);

    Stream& source;
    const Extent extent;
    comtrade::Configuration config;
    comtrade::Block held;  // the block with the first sample
    qint64 delivered = 0;  // samples
    qint64 stampShift = 0; // taken off each time stamp
    bool holds = false;
};

} // namespace forms
