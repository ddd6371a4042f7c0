// When each sample of a record was taken, in seconds from the trigger.
#pragma once

#include "comtrade/record.h"

#include <vector>

namespace analysis {

/// Time over sample index (0 is the record's first sample). Times rise with the index.
class TimeAxis
{
public:
    /// From the rates of the configuration. At least one rate must be above zero.
    static TimeAxis FromRates(const comtrade::Configuration& config);

    /// From the time of each sample, in seconds from the record's first one.
    static TimeAxis FromStamps(const comtrade::Configuration& config, std::vector<double> seconds);

    /// Seconds from the trigger.
    double TimeOf(qint64 sample) const;

    /// The sample nearest to a time, within 0 and count - 1.
    qint64 SampleAt(double seconds, qint64 count) const;

    /// The sample of the trigger as the fault report takes it; not limited to the record.
    qint64 TriggerSample() const { return trigger; }

    /// Seconds that the first count samples last: each one step of its rate or, where only stamps are known,
    /// the time from the first to the last.
    double Duration(qint64 count) const;

    /// Whether the trigger is within the time of the first count samples, of which there is at least one. The
    /// last one lasts until the next would come.
    bool HasTrigger(qint64 count) const;

    /// Samples of one rate.
    struct Piece
    {
        qint64 from; ///< first sample
        double at;   ///< its time, s from the trigger
        double hertz;
        double step; ///< s
    };

    /// The pieces in their order; none where only stamps are known.
    const std::vector<Piece>& Pieces() const { return pieces; }

    /// Of the stamps, s.
    double Resolution() const { return resolution; }

private:
    const Piece& PieceOf(qint64 sample) const;

    std::vector<Piece> pieces;
    std::vector<double> stamps; // in place of the pieces
    double resolution = 0;      // of the stamps, s
    qint64 trigger = 0;
};

/// The line frequency of the configuration, Hz; 50 where it has none.
double MainsFrequency(const comtrade::Configuration& config);

/// Whether samples carry their own times because the configuration has no rate.
bool IsStamped(const comtrade::Configuration& config);

/// Seconds from the record's first sample to its trigger.
double TriggerOffset(const comtrade::Configuration& config);

} // namespace analysis
