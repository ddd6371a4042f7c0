// Rows of numbers turned into columns, block by block while they are in the cache.
#pragma once

#include <QtGlobal>

#include <cstddef>
#include <vector>

namespace comtrade {

/// Rows that follow each other at a distance of `stride` bytes. Their numbers have their lowest byte first,
/// and need not be aligned.
struct Rows
{
    const char* bytes;
    size_t stride;
    size_t count;
};

/// The same of rows in memory.
template <class Number>
Rows RowsIn(const std::vector<Number>& numbers, size_t channels, size_t count)
{
    return {reinterpret_cast<const char*>(numbers.data()), channels * sizeof(Number), count};
}

/// Writes number `i` of row `j` to columns[i * distance + j].
void TurnRows(const Rows& rows, size_t channels, qint16* columns, size_t distance);
void TurnRows(const Rows& rows, size_t channels, qint32* columns, size_t distance);

/// The same of FLOAT32 values; what is not finite becomes NaN.
void TurnRows(const Rows& rows, size_t channels, float* columns, size_t distance);

/// The other way round, of columns that lie anywhere: writes number `from` + j of column `i` to
/// rows[j * columns.size() + i], for j below `count`.
void TurnColumns(const std::vector<const qint16*>& columns, size_t from, size_t count, qint16* rows);

/// a * code + b for each code, the result times `factor`; NaN for a missing one. Each step is rounded to a
/// double.
struct Scale
{
    double a;
    double b;
    double factor;
};
void ScaleCodes(const qint16* codes, size_t count, const Scale& scale, double* values);
void ScaleCodes(const qint32* codes, size_t count, const Scale& scale, double* values);
void ScaleCodes(const float* codes, size_t count, const Scale& scale, double* values);
void ScaleCodes(const double* codes, size_t count, const Scale& scale, double* values);

} // namespace comtrade
