// Plain lines with 256-bit integer instructions (AVX2), chosen at run time.
//
// First the commas are found, 64 bytes at a time. Then four numbers at once are brought to the right edge of
// the four lanes of a register: a load of the eight bytes that end at the comma, and two shifts that clear
// what precedes the number. Multiplications and additions of neighbours make pairs, fours and eights of the
// digits, as plainfields.h does for one number.
#include "comtrade/plainline.h"

#include "comtrade/plainfields.h"

#if defined(__x86_64__) && defined(__GNUC__)

#include <algorithm>
#include <cstring>
#include <immintrin.h>

#define ZU_WIDE __attribute__((target("avx2,bmi,popcnt")))

namespace comtrade {

namespace {

constexpr size_t LeastNumbers = 8;
constexpr size_t LeastStates = 16;
constexpr size_t Batch = 256; // fields whose ends are found before they are converted

ZU_WIDE inline __m256i Load(const void* from)
{
    return _mm256_loadu_si256(static_cast<const __m256i*>(from));
}

ZU_WIDE inline quint64 BitsOf(__m256i low, __m256i high)
{
    return static_cast<quint32>(_mm256_movemask_epi8(low)) |
           static_cast<quint64>(static_cast<quint32>(_mm256_movemask_epi8(high))) << 32U;
}

// What 64 bytes are, a bit for each.
struct Marks
{
    quint64 commas;
    quint64 minuses;
    quint64 others; // neither, nor digits
};

ZU_WIDE inline Marks MarksOf(const char* bytes)
{
    const __m256i low = Load(bytes);
    const __m256i high = Load(bytes + 32);
    const __m256i comma = _mm256_set1_epi8(',');
    const __m256i minus = _mm256_set1_epi8('-');
    const __m256i zero = _mm256_set1_epi8('0');
    const __m256i nine = _mm256_set1_epi8(9);
    const __m256i lowDigits = _mm256_sub_epi8(low, zero);
    const __m256i highDigits = _mm256_sub_epi8(high, zero);
    const quint64 digits = BitsOf(_mm256_cmpeq_epi8(_mm256_min_epu8(lowDigits, nine), lowDigits),
                                  _mm256_cmpeq_epi8(_mm256_min_epu8(highDigits, nine), highDigits));
    const quint64 commas = BitsOf(_mm256_cmpeq_epi8(low, comma), _mm256_cmpeq_epi8(high, comma));
    const quint64 minuses = BitsOf(_mm256_cmpeq_epi8(low, minus), _mm256_cmpeq_epi8(high, minus));
    return {commas, minuses, ~(digits | commas | minuses)};
}

// The ends of the next fields, as offsets from the first one.
class FieldEnds
{
public:
    // Finds those of `wanted` plain numbers, each with a comma after it; false if there are no such ones.
    ZU_WIDE bool Find(const char* fields, const char* limit, size_t wanted)
    {
        ends[0] = -1; // a comma precedes the first field
        size_t found = 0;
        quint64 afterComma = 1;
        quint64 afterMinus = 0;
        for (ptrdiff_t offset = 0;; offset += 64) {
            if (offset >= limit - fields)
                return false;
            const Marks marks = MarksOf(fields + offset);
            const quint64 starts = marks.commas << 1U | afterComma;
            // A field is empty, or a minus sign stands within it or alone.
            const quint64 wrong = marks.others | (marks.commas & starts) | (marks.minuses & ~starts) |
                                  (marks.commas & (marks.minuses << 1U | afterMinus));
            AddBits(marks.commas, static_cast<qint32>(offset), found, wanted);
            found += static_cast<size_t>(_mm_popcnt_u64(marks.commas));
            if (found >= wanted) {
                const auto last = static_cast<unsigned>(ends[wanted] - offset);
                return (wrong << (63U - last)) == 0 && ends[wanted] < limit - fields;
            }
            if (wrong != 0)
                return false;
            afterComma = marks.commas >> 63U;
            afterMinus = marks.minuses >> 63U;
        }
    }

    // The end of the field before the first one, then those of all.
    const qint32* Get() const { return ends; }

private:
    // Usually there are about ten commas: a fixed number of steps is faster than a test after each. What is
    // written beyond the last bit is overwritten, or never read.
    ZU_WIDE void AddBits(quint64 bits, qint32 offset, size_t found, size_t wanted)
    {
        qint32* at = ends + 1 + found;
        AddFour(bits, offset, at);
        AddFour(bits, offset, at);
        AddFour(bits, offset, at);
        while (bits != 0 && at <= ends + wanted)
            AddFour(bits, offset, at);
    }

    ZU_WIDE static void AddFour(quint64& bits, qint32 offset, qint32*& at)
    {
        at[0] = offset + TakeBit(bits);
        at[1] = offset + TakeBit(bits);
        at[2] = offset + TakeBit(bits);
        at[3] = offset + TakeBit(bits);
        at += 4;
    }

    ZU_WIDE static qint32 TakeBit(quint64& bits)
    {
        const auto place = static_cast<qint32>(_tzcnt_u64(bits));
        bits = _blsr_u64(bits);
        return place;
    }

    qint32 ends[1 + Batch + 64 + 12];
};

// The digits of four numbers in the four lanes, where their fields end.
ZU_WIDE inline __m256i FourFields(const char* fields, const qint32* ends)
{
    const auto word = [&](int i) {
        long long bytes = 0;
        std::memcpy(&bytes, fields + ends[i] - 8, sizeof bytes);
        return bytes;
    };
    return _mm256_setr_epi64x(word(0), word(1), word(2), word(3));
}

// Clears what precedes the numbers.
ZU_WIDE inline __m256i NumbersAlone(__m256i bytes, __m128i lengths)
{
    const __m256i bits =
        _mm256_slli_epi64(_mm256_cvtepi32_epi64(_mm_sub_epi32(_mm_set1_epi32(8), lengths)), 3);
    return _mm256_sllv_epi64(_mm256_srlv_epi64(bytes, bits), bits);
}

// Of each lane the numbers of its first and its last four digits. Saturation makes a minus sign, and what was
// cleared, the digit 0.
ZU_WIDE inline __m256i Fours(__m256i bytes)
{
    const __m256i digits = _mm256_subs_epu8(bytes, _mm256_set1_epi8('0'));
    const __m256i pairs = _mm256_maddubs_epi16(digits, _mm256_set1_epi16(0x010A)); // 10, 1
    return _mm256_madd_epi16(pairs, _mm256_set1_epi32(0x00010064));                // 100, 1
}

// Ones in the lanes without a minus sign.
ZU_WIDE inline __m256i PositiveLanes(__m256i bytes)
{
    const __m256i minuses = _mm256_cmpeq_epi8(bytes, _mm256_set1_epi8('-'));
    return _mm256_cmpeq_epi64(minuses, _mm256_setzero_si256());
}

// Eight numbers by the ends of their fields; longest collects their lengths.
ZU_WIDE inline __m256i EightNumbers(const char* fields, const qint32* ends, __m256i& longest)
{
    const __m256i lengths = // the distance of two ends less the comma
        _mm256_add_epi32(_mm256_sub_epi32(Load(ends + 1), Load(ends)), _mm256_set1_epi32(-1));
    longest = _mm256_max_epi32(longest, lengths);
    const __m256i first = NumbersAlone(FourFields(fields, ends + 1), _mm256_castsi256_si128(lengths));
    const __m256i second = NumbersAlone(FourFields(fields, ends + 5), _mm256_extracti128_si256(lengths, 1));
    const __m256i halves = _mm256_packus_epi32(Fours(first), Fours(second));
    const __m256i values = _mm256_madd_epi16(halves, _mm256_set1_epi32(0x00012710)); // 10000, 1
    const __m256i positive = _mm256_castps_si256(_mm256_shuffle_ps(
        _mm256_castsi256_ps(PositiveLanes(first)), _mm256_castsi256_ps(PositiveLanes(second)), 0x88));
    const __m256i sign = _mm256_xor_si256(positive, _mm256_set1_epi32(-1));
    const __m256i numbers = _mm256_sub_epi32(_mm256_xor_si256(values, sign), sign);
    return _mm256_permute4x64_epi64(numbers, 0xD8); // the numbers 0 1 4 5 2 3 6 7 in their order
}

// What they cannot hold becomes not zero in the result.
ZU_WIDE inline __m256i StoreCodes(__m256i numbers, qint32 missing, double* values)
{
    _mm256_storeu_pd(values, _mm256_cvtepi32_pd(_mm256_castsi256_si128(numbers)));
    _mm256_storeu_pd(values + 4, _mm256_cvtepi32_pd(_mm256_extracti128_si256(numbers, 1)));
    const __m256i isMissing = _mm256_cmpeq_epi32(numbers, _mm256_set1_epi32(missing));
    for (auto lanes = static_cast<quint32>(_mm256_movemask_ps(_mm256_castsi256_ps(isMissing)));
         Q_UNLIKELY(lanes != 0); lanes &= lanes - 1)
        values[qCountTrailingZeroBits(lanes)] = std::numeric_limits<double>::quiet_NaN();
    return _mm256_setzero_si256();
}

ZU_WIDE inline __m256i StoreCodes(__m256i numbers, qint32 missing, qint16* values)
{
    const __m256i least = _mm256_set1_epi32(std::numeric_limits<qint16>::min());
    const __m256i isMissing = _mm256_cmpeq_epi32(numbers, _mm256_set1_epi32(missing));
    const __m256i codes = _mm256_blendv_epi8(numbers, least, isMissing);
    const __m128i packed =
        _mm_packs_epi32(_mm256_castsi256_si128(codes), _mm256_extracti128_si256(codes, 1)); // saturates
    _mm_storeu_si128(reinterpret_cast<__m128i*>(values), packed);
    const __m256i differences = _mm256_xor_si256(_mm256_cvtepi16_epi32(packed), codes);
    return _mm256_or_si256(differences, _mm256_cmpeq_epi32(numbers, least));
}

// LeastNumbers or more of them, each with a comma after it; false if one is of another form, has more than
// eight characters or is not held.
template <class Code>
ZU_WIDE bool TakeNumbers(const char*& at, const char* limit, size_t count, qint32 missing, Code* values)
{
    FieldEnds ends;
    if (!ends.Find(at, limit, count))
        return false;
    __m256i longest = _mm256_setzero_si256();
    __m256i wrong = _mm256_setzero_si256();
    for (size_t i = 0; i + LeastNumbers <= count; i += LeastNumbers)
        wrong = _mm256_or_si256(wrong,
                                StoreCodes(EightNumbers(at, ends.Get() + i, longest), missing, values + i));
    if (count % LeastNumbers != 0) { // some of them once more
        const size_t last = count - LeastNumbers;
        wrong = _mm256_or_si256(
            wrong, StoreCodes(EightNumbers(at, ends.Get() + last, longest), missing, values + last));
    }
    at += ends.Get()[count] + 1;
    wrong = _mm256_or_si256(wrong, _mm256_cmpgt_epi32(longest, _mm256_set1_epi32(8)));
    return _mm256_testz_si256(wrong, wrong) != 0;
}

// 16 states with their commas; the byte after the last one may be any.
ZU_WIDE inline __m256i WrongOfStates(const char* at, quint8* states)
{
    const __m256i pattern = _mm256_set1_epi16(0x2C30); // "0,"
    const __m256i ones = _mm256_set1_epi16(1);
    const __m256i differences = _mm256_xor_si256(Load(at), pattern);
    const __m256i words = _mm256_and_si256(differences, ones);
    const __m128i packed =
        _mm_packus_epi16(_mm256_castsi256_si128(words), _mm256_extracti128_si256(words, 1));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(states), packed);
    return _mm256_andnot_si256(ones, differences);
}

// LeastStates or more, without the byte that ends the last one.
ZU_WIDE bool TakeManyStates(const char*& at, size_t count, quint8* states)
{
    __m256i wrong = _mm256_setzero_si256();
    for (size_t i = 0; i + 16 < count; i += 16)
        wrong = _mm256_or_si256(wrong, WrongOfStates(at + 2 * i, states + i));
    const __m256i allButLast = _mm256_setr_epi64x(-1, -1, -1, 0x00FFFFFFFFFFFFFF);
    const __m256i last = WrongOfStates(at + 2 * (count - 16), states + count - 16);
    wrong = _mm256_or_si256(wrong, _mm256_and_si256(last, allButLast));
    at += 2 * count - 1;
    return _mm256_testz_si256(wrong, wrong) != 0;
}

const char* ReadPortably(const char* line, const char* limit, const LineShape& shape, const Target& target)
{
    return ReadPlainLine(line, limit, shape, target);
}

const char* ReadPortably(const char* line, const char* limit, const LineShape& shape,
                         const NarrowTarget& target)
{
    return ReadNarrowLine(line, limit, shape, target);
}

template <class Code>
ZU_WIDE const char* ReadWideLine(const char* line, const char* limit, const LineShape& shape,
                                 const TargetOf<Code>& target)
{
    const size_t commas = shape.states > 0 ? shape.analog : 0; // after values
    if (commas < LeastNumbers || shape.states < LeastStates)
        return ReadPortably(line, limit, shape, target);
    const char* at = line;
    if (limit - line < 32 || !TakeHead(at, *target.number, *target.time))
        return nullptr;
    for (size_t done = 0; done < commas;) {
        const size_t rest = commas - done;
        const size_t count = rest <= Batch ? rest : Batch - LeastNumbers; // enough of them stay
        if (at >= limit || !TakeNumbers(at, limit, count, shape.missing, target.analog + done))
            return nullptr;
        done += count;
    }
    if (at >= limit || static_cast<size_t>(limit - at) < 2 * shape.states)
        return nullptr;
    return TakeManyStates(at, shape.states, target.states) ? AfterLineEnd(at, limit) : nullptr;
}

bool HasWide()
{
    return __builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("bmi") != 0 &&
           __builtin_cpu_supports("popcnt") != 0;
}

} // namespace

PlainLineReader WidePlainLineReader()
{
    return HasWide() ? ReadWideLine<double> : nullptr;
}

NarrowLineReader WideNarrowLineReader()
{
    return HasWide() ? ReadWideLine<qint16> : nullptr;
}

} // namespace comtrade

#else

comtrade::PlainLineReader comtrade::WidePlainLineReader()
{
    return nullptr;
}

comtrade::NarrowLineReader comtrade::WideNarrowLineReader()
{
    return nullptr;
}

#endif
