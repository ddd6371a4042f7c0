// The samples of a record, each with that of the recording which it is.
#pragma once

#include "comtrade/record.h"
#include "verify/columns.h"
#include "verify/walk.h"

#include <limits>

namespace verify {

class AlignedRows
{
public:
    AlignedRows(const QString& path, const Source& source, const Alignment& alignment_)
        : record(path), rows(source), alignment(alignment_)
    {}

    const comtrade::Configuration& Config() const { return record.Config(); }

    /// Moves to the next sample; false where one of the two ends.
    bool Next()
    {
        if (sample + 1 >= alignment.count || !record.Next(found))
            return false;
        for (qint64 skip = ++sample == 0 ? alignment.first : alignment.every - 1; skip > 0; --skip) {
            if (!rows.Next())
                return false;
        }
        return rows.Next();
    }

    /// Whether the record has samples after those of the alignment.
    bool GoesOn() { return record.Next(found); }

    const comtrade::Findings& Forgiven() const { return record.Forgiven(); }

    qint64 Sample() const { return sample; } // of the record, from 0
    const comtrade::Row& Found() const { return found; }
    const Walk& At() const { return rows.At(); }

    /// The recording's; NaN if it has none.
    double Code(size_t channel) const
    {
        return rows.HasSample(channel) ? rows.Code(channel) : std::numeric_limits<double>::quiet_NaN();
    }

    bool State(size_t channel) const { return rows.State(channel); }

private:
    comtrade::Record record;
    SourceRows rows;
    const Alignment alignment;
    comtrade::Row found;
    qint64 sample = -1;
};

} // namespace verify
