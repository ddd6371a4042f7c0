// The fields of plain ASCII records, eight bytes at a time. Each function takes the position of a field and
// moves it past the byte that ends the field; false, or a null pointer, if the field has another form.
#pragma once

#include <QtEndian>

#include <limits>

namespace comtrade {

inline quint64 WordAt(const char* at)
{
    return qFromLittleEndian<quint64>(at);
}

// The value of eight digits, the first one in the lowest byte. Bytes of zero count as the digit 0.
inline quint64 ValueOfDigits(quint64 word)
{
    word = (word & 0x0F0F0F0F0F0F0F0FU) * 2561 >> 8U;            // 10 * 256 + 1: pairs of digits
    word = (word & 0x00FF00FF00FF00FFU) * 6553601 >> 16U;        // 100 * 65536 + 1: fours
    return (word & 0x0000FFFF0000FFFFU) * 42949672960001 >> 32U; // 10000 * 2^32 + 1
}

// How many digits the word starts with.
inline unsigned LeadingDigits(quint64 word)
{
    const quint64 digits = word ^ 0x3030303030303030U; // 0 to 9 for a digit
    const quint64 others = ((digits + 0x7676767676767676U) | digits) & 0x8080808080808080U;
    return others == 0 ? 8 : qCountTrailingZeroBits(others) / 8; // carries reach only later bytes
}

// A number of 1 to 16 digits.
inline bool TakeDigits(const char*& at, quint64& value)
{
    const quint64 word = WordAt(at);
    const unsigned count = LeadingDigits(word);
    if (count == 0)
        return false;
    value = ValueOfDigits(word << (64 - 8 * count));
    at += count;
    if (count < 8)
        return true;
    const quint64 rest = WordAt(at);
    const unsigned more = LeadingDigits(rest);
    static constexpr quint64 powers[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};
    value = value * powers[more] + (more > 0 ? ValueOfDigits(rest << (64 - 8 * more)) : 0);
    at += more;
    return true; // a 17th digit is not the byte that ends the field
}

inline bool TakeSigned(const char*& at, qint64& value)
{
    const bool isNegative = *at == '-';
    at += isNegative ? 1 : 0;
    quint64 digits = 0;
    if (!TakeDigits(at, digits))
        return false;
    value = isNegative ? -static_cast<qint64>(digits) : static_cast<qint64>(digits);
    return true;
}

inline bool TakeComma(const char*& at)
{
    return *at++ == ',';
}

// Sample number and time, each with its comma.
inline bool TakeHead(const char*& at, quint32& number, qint64& time)
{
    quint64 digits = 0;
    if (!TakeDigits(at, digits) || digits > std::numeric_limits<quint32>::max() || !TakeComma(at))
        return false;
    number = static_cast<quint32>(digits);
    return TakeSigned(at, time) && TakeComma(at);
}

// False if the target cannot hold the number.
inline bool PutCode(qint64 number, qint32 missing, double& code)
{
    code = number == missing ? std::numeric_limits<double>::quiet_NaN() : static_cast<double>(number);
    return true;
}

inline bool PutCode(qint64 number, qint32 missing, qint16& code)
{
    constexpr qint16 least = std::numeric_limits<qint16>::min(); // stands for a missing value
    code = number == missing ? least : static_cast<qint16>(number);
    return number == missing || (number > least && number <= std::numeric_limits<qint16>::max());
}

// States without the byte that ends the last one, four at a time.
inline bool TakeStates(const char*& at, size_t count, quint8* states)
{
    size_t i = 0;
    for (; i + 4 < count; i += 4) {
        quint64 word = WordAt(at) ^ 0x2C302C302C302C30U; // "0,0,0,0,"
        if ((word & ~quint64{0x0001000100010001U}) != 0)
            return false;
        word |= word >> 8U;
        word &= 0x0000FFFF0000FFFFU;
        word |= word >> 16U;
        qToLittleEndian(static_cast<quint32>(word), states + i);
        at += 8;
    }
    for (; i < count; ++i) {
        const auto state = static_cast<unsigned char>(*at++ - '0');
        if (state > 1 || (i + 1 < count && !TakeComma(at)))
            return false;
        states[i] = state;
    }
    return true;
}

// The line after the end of this one, which stands before the limit.
inline const char* AfterLineEnd(const char* at, const char* limit)
{
    if (*at == '\r')
        ++at;
    return at < limit && *at == '\n' ? at + 1 : nullptr;
}

} // namespace comtrade
