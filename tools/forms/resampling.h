// A record at another rate.
#pragma once

#include "forms/lowpass.h"
#include "forms/stream.h"

#include <vector>

namespace forms {

/// Delivers the values that the band-limited signal has at evenly spaced times, from the first sample on and
/// up to the last one. Their filter (lowpass.h) has no delay: the value for an instant is a sum over the
/// samples around it, as many before it as after.
///
/// - At both ends of a record the signal is continued by its point reflection, so that it has no jump and no
///   kink there; so it is where the rate of the source changes, as each of its rates has its own filter.
/// - A value is missing if one of the samples around its instant is.
/// - A discrete channel has the state of the last sample at or before the instant.
///
/// The codes are real numbers in single precision, with a, b and skew of the source; dataType says so.
/// Memory is as for the samples around one instant.
class Resampling : public Stream
{
public:
    /// rate: Hz. The source must outlive it. Throws FormError for a source without rates, and a rate that is
    /// too far from the source's.
    Resampling(Stream& source_, double rate_);

    const comtrade::Configuration& Config() const override { return configuration; }
    bool Next(comtrade::Block& block) override;

private:
    /// Samples of one rate.
    struct Section
    {
        qint64 from; // first sample
        qint64 end;  // the sample after the last one, as announced
        double at;   // time of the first sample, s from the record's first
        double hertz;
    };

    /// An instant among the samples of a section.
    struct Place
    {
        qint64 sample; // the last one at or before the instant, from the first of the section; -1: none
        double phase;  // from it to the instant, in parts of a sample
        size_t turn;   // which of the phases, if the rates have a ratio of whole numbers
    };

    void FindSections();
    void FindRatio();
    void SetConfiguration();
    Place PlaceOf(qint64 output, const Section& section) const;
    size_t SectionOf(qint64 output) const;
    bool IsWithin(qint64 output, qint64 samples) const;
    void Enter(size_t section);
    void ReadUntil(qint64 sample);
    void DropOld();
    const std::vector<double>& FactorsAt(const Place& place);
    void Compute(const Place& place, double* values);
    void AddOutside(double factor, qint64 sample, const Section& within, double* sums) const;
    const double* Row(qint64 sample) const;
    bool Deliver(comtrade::Block& block);

    Stream& source;
    const double rate;
    comtrade::Configuration configuration;
    std::vector<Section> sections;
    qint64 steps = 0; // of the source in `turns` steps of the output; 0: no ratio of whole numbers
    qint64 turns = 1;

    size_t current = 0;                             // section
    LowPass filter;                                 // of the current section
    std::vector<std::vector<double>> factorsOfTurn; // none: they are computed each time
    std::vector<double> factors;

    comtrade::Block read;
    std::vector<double> analog; // of the samples that are held
    std::vector<quint8> states;
    qint64 firstHeld = 0;
    qint64 endHeld = 0;
    bool isAtEnd = false; // of the source
    qint64 firstStamp = 0;
    qint64 output = 0; // the next one
    std::vector<double> sums;
};

/// What was done to the record, for its report.
QString ResamplingText(const comtrade::Configuration& source, double rate);
QString EveryNthText(const comtrade::Configuration& source, int n);

} // namespace forms
