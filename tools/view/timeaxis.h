// When each sample of a record was taken, in seconds from the trigger.
#pragma once

#include "comtrade/record.h"

#include <QJsonObject>

#include <vector>

namespace view {

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

    /// Samples in a period of the mains at the trigger; 0 if there is no telling.
    qint64 SamplesPerPeriod() const { return perPeriod; }

    /// The axis of count samples from first, for the page: {"pieces": [[from, at, step] ...]} or
    /// {"stamps": base64 of little-endian 64-bit floating point}. Times in milliseconds.
    QJsonObject ToJson(qint64 first, qint64 count) const;

private:
    struct Piece
    {
        qint64 from; // first sample
        double at;   // its time, s from the trigger
        double hertz;
        double step; // s
    };

    const Piece& PieceOf(qint64 sample) const;

    std::vector<Piece> pieces;
    std::vector<double> stamps; // in place of the pieces
    qint64 trigger = 0;
    qint64 perPeriod = 0;
};

/// Whether samples carry their own times because the configuration has no rate.
bool IsStamped(const comtrade::Configuration& config);

/// Seconds from the record's first sample to its trigger.
double TriggerOffset(const comtrade::Configuration& config);

} // namespace view
