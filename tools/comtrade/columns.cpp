#include "comtrade/columns.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace comtrade {

namespace {

// So few that they stay in the nearest cache while their channels are taken one after the other.
constexpr size_t RowsAtOnce = 64;

// One register on x86-64 and 64-bit ARM.
typedef qint16 Eight __attribute__((vector_size(16)));
typedef qint32 Four __attribute__((vector_size(16)));

inline Eight Low(Eight a, Eight b)
{
    return __builtin_shufflevector(a, b, 0, 8, 1, 9, 2, 10, 3, 11);
}

inline Eight High(Eight a, Eight b)
{
    return __builtin_shufflevector(a, b, 4, 12, 5, 13, 6, 14, 7, 15);
}

inline Four Low(Four a, Four b)
{
    return __builtin_shufflevector(a, b, 0, 4, 1, 5);
}

inline Four High(Four a, Four b)
{
    return __builtin_shufflevector(a, b, 2, 6, 3, 7);
}

// One of the steps, as many as there are halvings, that turn a square of numbers.
template <class Vector, size_t N>
inline void Interleave(Vector (&v)[N])
{
    Vector turned[N];
    for (size_t i = 0; i < N / 2; ++i) {
        turned[2 * i] = Low(v[i], v[i + N / 2]);
        turned[2 * i + 1] = High(v[i], v[i + N / 2]);
    }
    std::copy(turned, turned + N, v);
}

// lineAt(i) is where line i of the square is. They are written at a distance of `distance` numbers.
template <class Vector, size_t N, class Number, class LineAt>
inline void TurnTile(const LineAt& lineAt, Number* out, size_t distance)
{
    Vector v[N];
    for (size_t i = 0; i < N; ++i)
        std::memcpy(&v[i], lineAt(i), sizeof v[i]);
    for (size_t rest = N; rest > 1; rest /= 2)
        Interleave(v);
    for (size_t i = 0; i < N; ++i)
        std::memcpy(out + i * distance, &v[i], sizeof v[i]);
}

template <class Vector, class Number>
void Turn(const Rows& rows, size_t channels, Number* columns, size_t distance)
{
    constexpr size_t side = sizeof(Vector) / sizeof(Number);
    const size_t tiledRows = rows.count / side * side;
    const size_t tiledChannels = channels / side * side;
    for (size_t start = 0; start < tiledRows; start += RowsAtOnce)
        for (size_t channel = 0; channel < tiledChannels; channel += side)
            for (size_t row = start; row < std::min(tiledRows, start + RowsAtOnce); row += side)
                TurnTile<Vector, side>(
                    [&](size_t i) { return rows.bytes + (row + i) * rows.stride + channel * sizeof(Number); },
                    columns + channel * distance + row, distance);
    for (size_t channel = 0; channel < channels; ++channel)
        for (size_t row = channel < tiledChannels ? tiledRows : 0; row < rows.count; ++row)
            columns[channel * distance + row] =
                qFromLittleEndian<Number>(rows.bytes + row * rows.stride + channel * sizeof(Number));
}

template <class Number>
bool IsMissing(Number code)
{
    if constexpr (std::is_integral_v<Number>)
        return code == std::numeric_limits<Number>::min();
    else
        return code != code;
}

// Without branches, so that several are calculated at once.
template <class Number>
void Scaled(const Number* codes, size_t count, const Scale& scale, double* values)
{
    constexpr double missing = std::numeric_limits<double>::quiet_NaN();
    const Scale by = scale;
    for (size_t i = 0; i < count; ++i) {
        const double product = by.a * static_cast<double>(codes[i]);
        const double stored = product + by.b;
        const double value = stored * by.factor;
        values[i] = IsMissing(codes[i]) ? missing : value;
    }
}

} // namespace

void TurnRows(const Rows& rows, size_t channels, qint16* columns, size_t distance)
{
    Turn<Eight>(rows, channels, columns, distance);
}

void TurnRows(const Rows& rows, size_t channels, qint32* columns, size_t distance)
{
    Turn<Four>(rows, channels, columns, distance);
}

void TurnRows(const Rows& rows, size_t channels, float* columns, size_t distance)
{
    Turn<Four>(rows, channels, columns, distance);
    for (size_t channel = 0; channel < channels; ++channel)
        for (float* value = columns + channel * distance; value != columns + channel * distance + rows.count;
             ++value)
            *value = std::abs(*value) <= std::numeric_limits<float>::max()
                         ? *value
                         : std::numeric_limits<float>::quiet_NaN();
}

void TurnColumns(const std::vector<const qint16*>& columns, size_t from, size_t count, qint16* rows)
{
    constexpr size_t side = sizeof(Eight) / sizeof(qint16);
    const size_t width = columns.size();
    const size_t tiledColumns = width / side * side;
    const size_t tiledRows = count / side * side;
    for (size_t column = 0; column < tiledColumns; column += side)
        for (size_t row = 0; row < tiledRows; row += side)
            TurnTile<Eight, side>([&](size_t i) { return columns[column + i] + from + row; },
                                  rows + row * width + column, width);
    for (size_t column = 0; column < width; ++column)
        for (size_t row = column < tiledColumns ? tiledRows : 0; row < count; ++row)
            rows[row * width + column] = columns[column][from + row];
}

void ScaleCodes(const qint16* codes, size_t count, const Scale& scale, double* values)
{
    Scaled(codes, count, scale, values);
}

void ScaleCodes(const qint32* codes, size_t count, const Scale& scale, double* values)
{
    Scaled(codes, count, scale, values);
}

void ScaleCodes(const float* codes, size_t count, const Scale& scale, double* values)
{
    Scaled(codes, count, scale, values);
}

void ScaleCodes(const double* codes, size_t count, const Scale& scale, double* values)
{
    Scaled(codes, count, scale, values);
}

} // namespace comtrade
