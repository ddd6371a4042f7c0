// The values of a record's columns against those of a recording's channels, whatever the form of the record.
#pragma once

#include "comtrade/record.h"

#include <QString>

#include <vector>

namespace verify {

class Source;

/// How the samples of a record lie in those of its recording.
struct Alignment
{
    qint64 first = 0; ///< sample of the recording that is the record's first, from 0
    qint64 every = 1; ///< the record has each so many-th sample
    qint64 count = 0; ///< of the record
};

/// Compares single values: equal to the precision of the record's form.
class ColumnValues
{
public:
    /// Both have to outlive the object.
    ColumnValues(const comtrade::Configuration& configuration_, const Source& source);

    /// code is the recording's; NaN stands for a missing one.
    bool IsSame(size_t column, size_t channel, double found, double code) const;

    /// The value that the record should have in place of this code, as the record would write it.
    double Expected(size_t column, size_t channel, double code) const;

private:
    struct Scale
    {
        double a, b;
    };

    const comtrade::Configuration& configuration;
    std::vector<Scale> channels; // of the recording, in primary values
};

/// Which channel of the recording each column of a record is.
struct ColumnChannels
{
    static constexpr int None = -1;

    std::vector<int> analog; ///< index in the order of the source, or None
    std::vector<int> states;

    /// Whether every column is the channel in the same place.
    bool IsIdentity() const;
};

/// Reads the record once. A column is the channel with its name if that has its values, or else the one with
/// its values, in doubt the one in the same place; where no channel has the values, as in a damaged record,
/// name and place decide. Data that cannot be read end it. Throws comtrade::Error if there is no record.
ColumnChannels MatchColumns(const QString& record, const Source& source, const Alignment& alignment);

} // namespace verify
