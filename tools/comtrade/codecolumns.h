// The codes of analog channels in memory, in the narrowest types that hold them exactly.
#pragma once

#include "comtrade/columns.h"
#include "comtrade/pages.h"
#include "comtrade/record.h"

#include <variant>
#include <vector>

namespace comtrade {

/// Numbers that somebody else owns.
template <class Number>
class View
{
public:
    using value_type = Number;
    View(const Number* first_, size_t count_) : first(first_), count(count_) {}
    const Number* data() const { return first; }
    size_t size() const { return count; }
    bool empty() const { return count == 0; }
    const Number* begin() const { return first; }
    const Number* end() const { return first + count; }
    const Number& operator[](size_t place) const { return first[place]; }

private:
    const Number* first;
    size_t count;
};

/// The codes of one analog channel. What is missing is the least number of an integer type, NaN otherwise.
using Codes = std::variant<View<qint16>, View<qint32>, View<float>, View<double>>;

/// Columns that start in the type of the data and become wider, each for itself, when a code asks for it.
class CodeColumns
{
public:
    /// Room for so many samples is made at once, for others when they come.
    CodeColumns(size_t channels, DataType type, size_t room_);

    /// Adds rows of values of the data's type, while no column is wider; in ASCII that is 16-bit integers.
    void Add(const Rows& rows);

    /// Adds a block of ASCII records, or of others.
    void Add(const Block& block);

    /// Whether all columns are of 16-bit integers still.
    bool AreNarrow() const;

    /// Gives back room for samples that have not come.
    void Finish();

    Codes Of(size_t channel) const;

    size_t MemorySize() const;

private:
    enum class Kind { Int16, Int32, Float, Double };

    struct Column
    {
        Kind kind;
        char* data;
        Pages own; // once the column is wider than the first type
    };

    static Kind KindOf(DataType type);
    static size_t SizeOf(Kind kind);

    void MakeRoom(size_t samples);
    void Append(const Block& block, size_t channel);
    void Widen(size_t channel, double code, size_t taken);
    template <class Number>
    Number* End(const Column& column) const;

    const Kind first;
    std::vector<Column> columns;
    Pages shared; // by the columns of the first type, `room` codes for each channel
    size_t room;
    size_t count = 0;
};

} // namespace comtrade
