#include "comtrade/columns.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace comtrade {

namespace {

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

template <class Vector, size_t N, class Number>
inline void TurnTile(const char* bytes, size_t stride, Number* columns, size_t distance)
{
    Vector v[N];
    for (size_t i = 0; i < N; ++i)
        std::memcpy(&v[i], bytes + i * stride, sizeof v[i]);
    for (size_t rest = N; rest > 1; rest /= 2)
        Interleave(v);
    for (size_t i = 0; i < N; ++i)
        std::memcpy(columns + i * distance, &v[i], sizeof v[i]);
}

template <class Vector, class Number>
void Turn(const Rows& rows, size_t channels, Number* columns, size_t distance)
{
    constexpr size_t side = sizeof(Vector) / sizeof(Number);
    constexpr bool hasTiles = Q_BYTE_ORDER == Q_LITTLE_ENDIAN;
    const size_t tiledRows = hasTiles ? rows.count / side * side : 0;
    const size_t tiledChannels = hasTiles ? channels / side * side : 0;
    for (size_t channel = 0; channel < tiledChannels; channel += side)
        for (size_t row = 0; row < tiledRows; row += side)
            TurnTile<Vector, side>(rows.bytes + row * rows.stride + channel * sizeof(Number), rows.stride,
                                   columns + channel * distance + row, distance);
    for (size_t channel = 0; channel < channels; ++channel)
        for (size_t row = channel < tiledChannels ? tiledRows : 0; row < rows.count; ++row)
            columns[channel * distance + row] = qFromLittleEndian<Number>(
                rows.bytes + row * rows.stride + channel * sizeof(Number));
}

constexpr qint16 Missing16 = std::numeric_limits<qint16>::min();

bool NarrowSome(const double* codes, size_t count, qint16* narrow)
{
    for (size_t i = 0; i < count; ++i) {
        const bool isMissing = codes[i] != codes[i];
        if (!isMissing && !(codes[i] > Missing16 && codes[i] <= std::numeric_limits<qint16>::max()))
            return false;
        const qint16 code = isMissing ? Missing16 : static_cast<qint16>(codes[i]);
        narrow[i] = qToLittleEndian(code);
        if (!isMissing && code != codes[i])
            return false;
    }
    return true;
}

#ifdef __SSE2__

// Four integers of 32 bits; what is none, or does not fit, becomes the least of them.
inline __m128i FourIntegers(const double* codes)
{
    return _mm_unpacklo_epi64(_mm_cvttpd_epi32(_mm_loadu_pd(codes)), _mm_cvttpd_epi32(_mm_loadu_pd(codes + 2)));
}

// Not zero if four codes are not these integers.
inline __m128d DifferencesOfFour(const double* codes, __m128i integers)
{
    const __m128d low = _mm_cmpneq_pd(_mm_cvtepi32_pd(integers), _mm_loadu_pd(codes));
    const __m128i rest = _mm_unpackhi_epi64(integers, integers);
    return _mm_or_pd(low, _mm_cmpneq_pd(_mm_cvtepi32_pd(rest), _mm_loadu_pd(codes + 2)));
}

// False if one of eight codes is missing, or is not held.
inline bool NarrowEight(const double* codes, qint16* narrow)
{
    const __m128i packed = _mm_packs_epi32(FourIntegers(codes), FourIntegers(codes + 4)); // saturates
    _mm_storeu_si128(reinterpret_cast<__m128i*>(narrow), packed);
    const __m128i low = _mm_srai_epi32(_mm_unpacklo_epi16(packed, packed), 16);
    const __m128i high = _mm_srai_epi32(_mm_unpackhi_epi16(packed, packed), 16);
    const __m128i isLeast = _mm_cmpeq_epi16(packed, _mm_set1_epi16(Missing16));
    const __m128d differ = _mm_or_pd(DifferencesOfFour(codes, low), DifferencesOfFour(codes + 4, high));
    return (_mm_movemask_epi8(isLeast) | _mm_movemask_pd(differ)) == 0;
}

#else

inline bool NarrowEight(const double* codes, qint16* narrow)
{
    return NarrowSome(codes, 8, narrow);
}

#endif

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
        for (float* value = columns + channel * distance; value != columns + channel * distance + rows.count; ++value)
            *value = std::abs(*value) <= std::numeric_limits<float>::max() ? *value
                                                                           : std::numeric_limits<float>::quiet_NaN();
}

bool NarrowCodes(const double* codes, size_t count, qint16* narrow)
{
    size_t i = 0;
    for (; i + 8 <= count; i += 8)
        if (Q_UNLIKELY(!NarrowEight(codes + i, narrow + i)) && !NarrowSome(codes + i, 8, narrow + i))
            return false;
    return NarrowSome(codes + i, count - i, narrow + i);
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
