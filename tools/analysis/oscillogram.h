// A record, or a part of it, in memory.
#pragma once

#include "analysis/timeaxis.h"
#include "comtrade/record.h"

#include <limits>
#include <vector>

namespace analysis {

/// The codes of one analog channel: 16-bit integers while all of them are, otherwise single precision.
class Codes
{
public:
    /// Adds so many codes, each `stride` after the one before.
    void Add(const double* code, size_t count, size_t stride);
    void Add(double code) { Add(&code, 1, 1); }

    /// Adds 16-bit codes, none of them missing.
    void Add(const qint16* code, size_t count);
    double At(size_t index) const { return wide.empty() ? small[index] : static_cast<double>(wide[index]); }
    size_t Size() const { return wide.empty() ? small.size() : wide.size(); }
    bool IsWide() const { return !wide.empty(); }
    qint64 Missing() const { return missing; }   ///< how many are no numbers
    double Least() const { return least; }       ///< of the codes that are numbers; NaN if there are none
    double Greatest() const { return greatest; } ///< likewise
    const std::vector<qint16>& Small() const { return small; } ///< all of them, unless IsWide()
    const std::vector<float>& Wide() const { return wide; }    ///< all of them if IsWide()

private:
    size_t AddSmall(const double* code, size_t count, size_t stride);
    void AddWide(double code);
    void Limit(const qint16* code, const qint16* end);

    std::vector<qint16> small;
    std::vector<float> wide;
    qint64 missing = 0;
    double least = std::numeric_limits<double>::quiet_NaN();
    double greatest = std::numeric_limits<double>::quiet_NaN();
};

/// The states of one discrete channel, one bit per sample, so that a busy one takes no more than in the DAT
/// file.
class States
{
public:
    /// Adds so many samples of one state.
    void Add(bool state, size_t times = 1);
    bool At(size_t index) const { return (bits[index / 8] >> (index % 8) & 1u) != 0; }
    size_t Size() const { return count; }
    qint64 Changes() const { return changes; }
    std::vector<quint8> Bits() const { return bits; }
    std::vector<qint32> ChangePositions() const; ///< the samples with a state other than the one before
    /// The first of them from a sample on, which is not 0; Size() if there is none.
    size_t NextChange(size_t from) const;

private:
    void SetBit(size_t index);

    std::vector<quint8> bits;
    size_t count = 0;
    qint64 changes = 0;
    bool last = false; // of them
};

struct Oscillogram
{
    comtrade::Configuration config;
    TimeAxis axis;
    QString report;             ///< the text of the HDR file, empty if there is none
    QString information;        ///< the text of the INF file, empty if there is none
    qint64 first = 0;           ///< of the samples held
    qint64 total = 0;           ///< samples of the record
    std::vector<Codes> analog;  ///< one for each analog channel of the configuration
    std::vector<States> states; ///< one for each discrete channel

    qint64 Count() const;
    /// The trigger among the samples held; not limited to them.
    qint64 Trigger() const { return axis.TriggerSample() - first; }
};

/// What of a record to read.
struct Extent
{
    double window = 0;    ///< seconds around the trigger; 0: all, or what fits
    qint64 mostBytes = 0; ///< of samples beyond which a window around the trigger is read; 0: no limit
    /// Seconds from the trigger to the moment that the window is around instead. It is around the trigger
    /// after all where that moment is farther from the samples than the record is long.
    double around = 0;
    QString encoding = {}; ///< of the record's texts; empty: found out
};

/// Reads a record. Throws comtrade::Error.
Oscillogram Read(const QString& recordPath, const Extent& extent);

/// What the samples held take in a DAT file of 16-bit codes.
qint64 BytesOf(const Oscillogram& oscillogram);

/// Likewise what the samples take that a configuration announces.
double BytesAnnounced(const comtrade::Configuration& config);

/// Factor from the values of a channel to primary ones.
double PrimaryFactor(const comtrade::AnalogChannel& channel);

} // namespace analysis
