// The analog codes of a segment, turned from columns (the samples of a channel together) into rows (the
// values of a record together).
//
// The columns of a segment often start at the same offset of a page, so that going from column to column for
// each record evicts their cache lines from each other. A block of rows is turned at once instead, which
// saves a third of the time of a large binary record.
#pragma once

#include "writers/codetiles.h"

#include <QtGlobal>

#include <memory>
#include <vector>

class ZuFileFormat;

class CodeRows
{
public:
    explicit CodeRows(size_t channels);

    /// With another way to turn tiles than the best for this processor.
    CodeRows(size_t channels, zu::TileTurner turner);

    /// Takes the channels of segment in the given order (indexes into its analog channels). Throws
    /// std::out_of_range for an order that does not fit.
    void Enter(const ZuFileFormat& segment, const std::vector<unsigned int>& order);

    /// The codes of one sample in output order, until the next call. MissingData where a channel has no such
    /// sample. Rising samples are cheap.
    const qint16* Row(size_t sample)
    {
        if (sample - firstSample >= rowCount)
            Turn(sample);
        return rows.get() + (sample - firstSample) * columns.size();
    }

    size_t Count() const { return columns.size(); }
    bool AllHave(size_t sample) const { return sample < shortest; }
    bool Has(size_t channel, size_t sample) const { return sample < columns[channel].points; }

    static constexpr qint16 MissingData = -0x8000;

private:
    void Turn(size_t sample);
    void TurnColumn(size_t channel, size_t row);

    zu::TileTurner turnTiles;
    std::vector<zu::CodeColumn> columns;
    size_t rowsInBlock;
    std::unique_ptr<qint16[]> rows; // rowsInBlock rows
    size_t firstSample = 0;
    size_t rowCount = 0; // rows that are turned
    size_t shortest = 0; // points that every channel has
    size_t longest = 0;  // points that some channel has
};
