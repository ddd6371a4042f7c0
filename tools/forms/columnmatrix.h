// Records turned into columns.
#pragma once

#include <QtGlobal>

#include <algorithm>
#include <cstring>
#include <memory>

namespace forms {

/// A matrix with a column for each channel, one after the other, that grows by rows. Memory that no row has
/// reached yet costs nothing.
template <class Number>
class ColumnMatrix
{
public:
    /// expectedRows: how many rows there will probably be. The matrix takes mostBytes at most.
    ColumnMatrix(size_t columns_, qint64 expectedRows, size_t mostBytes)
        : columns(columns_), mostRows(mostBytes / (std::max<size_t>(columns, 1) * sizeof(Number)))
    {
        Grow(static_cast<size_t>(std::max<qint64>(expectedRows, 1)));
    }

    /// Adds rows that stand one after the other; false if they do not fit.
    bool Append(const Number* values, size_t count)
    {
        if (count > mostRows - rows)
            return false;
        if (count > capacity - rows)
            Grow(std::max(2 * capacity, rows + count));
        for (size_t column = 0; column < columns; ++column) {
            Number* to = numbers.get() + column * capacity + rows;
            for (size_t i = 0; i < count; ++i)
                to[i] = values[i * columns + column];
        }
        rows += count;
        return true;
    }

    size_t Rows() const { return rows; }
    size_t Columns() const { return columns; }

    /// The numbers without room between the columns. To be called when all rows are there.
    const Number* Packed()
    {
        for (size_t column = 1; column < columns; ++column)
            std::memmove(numbers.get() + column * rows, numbers.get() + column * capacity,
                         rows * sizeof(Number));
        capacity = rows;
        return numbers.get();
    }

private:
    void Grow(size_t wanted)
    {
        const size_t larger = std::min(wanted, mostRows);
        // Not a vector, which would write to all of it.
        std::unique_ptr<Number[]> grown(new Number[larger * columns]);
        for (size_t column = 0; column < columns; ++column)
            std::copy_n(numbers.get() + column * capacity, rows, grown.get() + column * larger);
        numbers = std::move(grown);
        capacity = larger;
    }

    const size_t columns;
    const size_t mostRows;
    std::unique_ptr<Number[]> numbers;
    size_t capacity = 0; // rows
    size_t rows = 0;
};

} // namespace forms
