#include "comtrade/codecolumns.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace comtrade {

namespace {

template <class Number>
constexpr Number MissingAs =
    std::numeric_limits<Number>::has_quiet_NaN ? std::numeric_limits<Number>::quiet_NaN()
                                               : std::numeric_limits<Number>::min();

// Whether the type has the code, as a number that is not the one for missing values.
template <class Number>
bool Holds(double code)
{
    if constexpr (std::is_integral_v<Number>)
        return code > std::numeric_limits<Number>::min() && code <= std::numeric_limits<Number>::max() &&
               code == std::trunc(code);
    else if constexpr (std::is_same_v<Number, float>)
        return std::abs(code) <= std::numeric_limits<float>::max() &&
               static_cast<double>(static_cast<float>(code)) == code;
    else
        return true;
}

// Appends a channel of a block; stops at the first code that the type does not hold, and returns how many it
// took.
template <class Number>
size_t Take(const Block& block, size_t channel, size_t channels, size_t taken, Number* codes)
{
    for (; taken < block.count; ++taken) {
        const double code = block.analog[taken * channels + channel];
        if (std::isnan(code))
            codes[taken] = MissingAs<Number>;
        else if (Holds<Number>(code))
            codes[taken] = static_cast<Number>(code);
        else
            break;
    }
    return taken;
}

template <class Wide, class Narrow>
void Copy(const Narrow* codes, size_t count, char* target)
{
    auto* const wide = reinterpret_cast<Wide*>(target);
    for (size_t i = 0; i < count; ++i) {
        const bool isMissing =
            std::is_integral_v<Narrow> ? codes[i] == MissingAs<Narrow> : codes[i] != codes[i];
        wide[i] = isMissing ? MissingAs<Wide> : static_cast<Wide>(codes[i]);
    }
}

} // namespace

CodeColumns::Kind CodeColumns::KindOf(DataType type)
{
    switch (type) {
    case DataType::Binary32:
        return Kind::Int32;
    case DataType::Float32:
        return Kind::Float;
    case DataType::Ascii:
    case DataType::Binary:
        break;
    }
    return Kind::Int16;
}

size_t CodeColumns::SizeOf(Kind kind)
{
    static constexpr size_t sizes[] = {sizeof(qint16), sizeof(qint32), sizeof(float), sizeof(double)};
    return sizes[static_cast<int>(kind)];
}

CodeColumns::CodeColumns(size_t channels, DataType type, size_t room_)
    : first(KindOf(type)), columns(channels), shared(channels * room_ * SizeOf(first)), room(room_)
{
    for (size_t i = 0; i < channels; ++i)
        columns[i] = {first, shared.Data() + i * room * SizeOf(first), Pages()};
}

template <class Number>
Number* CodeColumns::End(const Column& column) const
{
    return reinterpret_cast<Number*>(column.data) + count;
}

// Column by column, so that no more than one of them is there twice.
void CodeColumns::MakeRoom(size_t samples)
{
    if (samples <= room)
        return;
    const size_t larger = std::max(samples, 2 * room);
    Pages next(columns.size() * larger * SizeOf(first));
    for (size_t i = 0; i < columns.size(); ++i) {
        Column& column = columns[i];
        const size_t used = count * SizeOf(column.kind);
        const size_t start = i * SizeOf(first);
        if (column.kind == first) {
            std::copy(column.data, column.data + used, next.Data() + start * larger);
            column.data = next.Data() + start * larger;
            shared.Discard(start * room, room * SizeOf(first));
        } else {
            Pages own(larger * SizeOf(column.kind));
            std::copy(column.data, column.data + used, own.Data());
            column.own = std::move(own);
            column.data = column.own.Data();
        }
    }
    shared = std::move(next);
    room = larger;
}

void CodeColumns::Add(const Rows& rows)
{
    MakeRoom(count + rows.count);
    if (columns.empty()) {
    } else if (first == Kind::Int16) {
        TurnRows(rows, columns.size(), End<qint16>(columns[0]), room);
    } else if (first == Kind::Int32) {
        TurnRows(rows, columns.size(), End<qint32>(columns[0]), room);
    } else {
        TurnRows(rows, columns.size(), End<float>(columns[0]), room);
    }
    count += rows.count;
}

void CodeColumns::Add(const Block& block)
{
    MakeRoom(count + block.count);
    for (size_t i = 0; i < columns.size(); ++i)
        Append(block, i);
    count += block.count;
}

bool CodeColumns::AreNarrow() const
{
    return std::all_of(columns.begin(), columns.end(),
                       [](const Column& column) { return column.kind == Kind::Int16; });
}

void CodeColumns::Append(const Block& block, size_t channel)
{
    Column& column = columns[channel];
    const size_t channels = columns.size();
    size_t taken = 0;
    for (;;) {
        switch (column.kind) {
        case Kind::Int16:
            taken = Take(block, channel, channels, taken, End<qint16>(column));
            break;
        case Kind::Int32:
            taken = Take(block, channel, channels, taken, End<qint32>(column));
            break;
        case Kind::Float:
            taken = Take(block, channel, channels, taken, End<float>(column));
            break;
        case Kind::Double:
            taken = Take(block, channel, channels, taken, End<double>(column));
            break;
        }
        if (taken == block.count)
            return;
        Widen(channel, block.analog[taken * channels + channel], taken);
    }
}

// Moves a column to the narrowest wider type that has this code too; `taken` codes of a block are in it
// already.
void CodeColumns::Widen(size_t channel, double code, size_t taken)
{
    Column& column = columns[channel];
    const Kind kind = column.kind == Kind::Int16 && Holds<qint32>(code) ? Kind::Int32 : Kind::Double;
    Pages wide(room * SizeOf(kind));
    const size_t used = count + taken;
    if (kind == Kind::Int32)
        Copy<qint32>(reinterpret_cast<const qint16*>(column.data), used, wide.Data());
    else if (column.kind == Kind::Int16)
        Copy<double>(reinterpret_cast<const qint16*>(column.data), used, wide.Data());
    else if (column.kind == Kind::Int32)
        Copy<double>(reinterpret_cast<const qint32*>(column.data), used, wide.Data());
    else
        Copy<double>(reinterpret_cast<const float*>(column.data), used, wide.Data());
    if (column.kind == first)
        shared.Discard(channel * room * SizeOf(first), room * SizeOf(first));
    column.kind = kind;
    column.own = std::move(wide);
    column.data = column.own.Data();
}

// Only if it is worth moving what is there.
void CodeColumns::Finish()
{
    if (room - count <= room / 32)
        return;
    size_t used = 0;
    for (Column& column : columns) {
        const size_t bytes = count * SizeOf(column.kind);
        if (column.kind == first) {
            column.data = static_cast<char*>(std::memmove(shared.Data() + used, column.data, bytes));
            used += bytes;
        } else {
            column.own.Shorten(bytes);
        }
    }
    shared.Shorten(used);
    room = count;
}

Codes CodeColumns::Of(size_t channel) const
{
    const Column& column = columns[channel];
    switch (column.kind) {
    case Kind::Int16:
        return View<qint16>(reinterpret_cast<const qint16*>(column.data), count);
    case Kind::Int32:
        return View<qint32>(reinterpret_cast<const qint32*>(column.data), count);
    case Kind::Float:
        return View<float>(reinterpret_cast<const float*>(column.data), count);
    case Kind::Double:
        break;
    }
    return View<double>(reinterpret_cast<const double*>(column.data), count);
}

size_t CodeColumns::MemorySize() const
{
    size_t bytes = 0;
    for (const Column& column : columns)
        bytes += count * SizeOf(column.kind);
    return bytes;
}

} // namespace comtrade
