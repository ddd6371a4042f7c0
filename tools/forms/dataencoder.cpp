// Codes come as double precision. A record whose codes all fit is encoded in a loop without branches; one
// that does not, or lacks a value, is gone through code by code.
#include "forms/dataencoder.h"

#include "forms/recoding.h"
#include "text/texts.h"
#include "writers/codetexts.h"

#include <QtEndian>

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

using comtrade::Block;
using comtrade::Configuration;
using comtrade::DataType;
using comtrade::Revision;

namespace forms {

namespace {

constexpr int LongestText = 13; // of a code in ASCII data of 2013
constexpr size_t TextRoom = 32; // of a number, with its comma

// Added to a number of at most 51 bits, it leaves the whole number in the lowest bits of the sum.
constexpr double Shift = 6755399441055744.0; // 1.5 * 2^52

template <class Int>
Int LowBits(double sum)
{
    quint64 bits = 0;
    std::memcpy(&bits, &sum, sizeof bits);
    return static_cast<Int>(bits);
}

// Writes whole codes as Int; false if one does not fit, or is missing.
template <class Int>
bool AppendWhole(const double* codes, size_t count, char* out)
{
    constexpr double most = std::numeric_limits<Int>::max();
    bool fits = true;
    for (size_t i = 0; i < count; ++i) {
        const double sum = codes[i] + Shift;
        fits &= (sum - Shift == codes[i]) & (codes[i] >= -most) & (codes[i] <= most);
        const Int code = qToLittleEndian(LowBits<Int>(sum));
        std::memcpy(out + i * sizeof code, &code, sizeof code);
    }
    return fits;
}

// The same with missing values; the place of the first code that does not fit, or count.
template <class Int>
size_t AppendWithGaps(const double* codes, size_t count, char* out)
{
    for (size_t i = 0; i < count; ++i) {
        const bool isMissing = std::isnan(codes[i]);
        const double code = isMissing ? 0 : codes[i];
        if (!AppendWhole<Int>(&code, 1, out + i * sizeof(Int)))
            return i;
        const Int missing = qToLittleEndian(std::numeric_limits<Int>::min());
        if (isMissing)
            std::memcpy(out + i * sizeof missing, &missing, sizeof missing);
    }
    return count;
}

// Likewise in single precision.
size_t AppendSingle(const double* codes, size_t count, char* out)
{
    for (size_t i = 0; i < count; ++i) {
        const bool isMissing = std::isnan(codes[i]);
        if (!isMissing && !(std::fabs(codes[i]) <= static_cast<double>(std::numeric_limits<float>::max())))
            return i;
        const float code = isMissing ? std::numeric_limits<float>::quiet_NaN() : static_cast<float>(codes[i]);
        if (!isMissing && static_cast<double>(code) != codes[i])
            return i;
        quint32 word = 0;
        std::memcpy(&word, &code, sizeof word);
        qToLittleEndian(word, out + i * sizeof word);
    }
    return count;
}

size_t CodeSize(DataType type)
{
    return type == DataType::Binary ? 2 : 4;
}

qint64 RecordSizeOf(const Configuration& configuration)
{
    const size_t words = (configuration.states.size() + 15) / 16;
    const size_t codes = CodeSize(configuration.dataType) * configuration.analog.size();
    return configuration.dataType == DataType::Ascii ? 0 : static_cast<qint64>(8 + codes + 2 * words);
}

// The shortest text of a real code: one in single precision needs fewer digits.
char* AppendReal(double code, char* out, char* end)
{
    const auto single = static_cast<float>(code);
    return static_cast<double>(single) == code ? std::to_chars(out, end, single).ptr
                                               : std::to_chars(out, end, code).ptr;
}

// "1e-07" as "1e-7".
char* WithoutZero(char* begin, char* end)
{
    if (end - begin < 4 || end[-4] != 'e' || end[-2] != '0')
        return end;
    end[-2] = end[-1];
    return end - 1;
}

char* AppendCode(double code, char* out)
{
    constexpr double exact = 9007199254740992.0; // 2^53
    char* const end = out + TextRoom;
    if (code == std::floor(code) && std::fabs(code) < exact)
        return std::to_chars(out, end, static_cast<qint64>(code)).ptr;
    return WithoutZero(out, AppendReal(code, out, end));
}

} // namespace

bool FitsText(double code)
{
    std::array<char, TextRoom> text{};
    return std::fabs(code) <= static_cast<double>(std::numeric_limits<float>::max()) &&
           AppendCode(code, text.data()) - text.data() <= LongestText;
}

DataEncoder::DataEncoder(const Configuration& configuration_)
    : configuration(configuration_), isAscii(configuration.dataType == DataType::Ascii),
      isOld(configuration.revision == Revision::R1999), recordSize(RecordSizeOf(configuration))
{}

void DataEncoder::Refuse(size_t channel, double code) const
{
    const CodeLimits limits = LimitsOf(configuration.dataType, configuration.revision);
    const QString form = comtrade::NameOf(configuration.dataType);
    const QString place = Tr("export", "A%1 (%2), sample %3")
                              .arg(channel + 1)
                              .arg(configuration.analog[channel].name)
                              .arg(sample);
    const QString value = QString::number(code, 'g', 17);
    if (limits.isWhole && code != std::floor(code))
        throw NotWhole(Tr("export", "%1: %2 has whole codes, and %3 is none").arg(place, form, value));
    const bool isTooFar = std::fabs(code) > limits.most;
    const bool fits32 = std::fabs(code) <= std::numeric_limits<qint32>::max() && code == std::floor(code);
    const QString better =
        fits32 ? QStringLiteral("--data binary32") : QStringLiteral("--form csv, --form mat");
    if (isTooFar)
        throw FormError(Tr("export", "%1: the code %2 is beyond the %3 of %4; %5 holds it")
                            .arg(place, value, NumberText(limits.most), form, better));
    if (code == limits.missing)
        throw FormError(Tr("export", "%1: %2 would be read as a missing value in %3; %4 holds it")
                            .arg(place, value, form, better));
    throw FormError(
        Tr("export", "%1: %2 has more digits than %3 can hold; %4 holds it").arg(place, value, form, better));
}

void DataEncoder::RefuseTime(qint64 time) const
{
    throw FormError(isAscii ? Tr("export", "sample %1: the time stamp %2 has more digits than ASCII data of "
                                           "revision %3 can hold; --form csv holds it")
                                  .arg(sample)
                                  .arg(time)
                                  .arg(static_cast<int>(configuration.revision))
                            : Tr("export", "sample %1: the time stamp %2 does not fit the 32 bits of binary "
                                           "data; --data ascii holds it")
                                  .arg(sample)
                                  .arg(time));
}

char* DataEncoder::AppendHead(const Block& block, size_t row, char* out) const
{
    constexpr qint64 most = std::numeric_limits<quint32>::max();
    const qint64 time = block.times[row];
    const bool hasTime = time != Block::NoTime;
    if (!isAscii) {
        if (hasTime && (time < 0 || time >= most))
            RefuseTime(time);
        qToLittleEndian(block.numbers[row], out);
        qToLittleEndian(static_cast<quint32>(hasTime ? time : most), out + 4);
        return out + 8;
    }
    const qint64 longest = isOld ? 9999999999 : 9999999999999; // 10 or 13 digits
    if (hasTime && (time < -longest / 10 || time > longest))
        RefuseTime(time);
    out = std::to_chars(out, out + TextRoom, block.numbers[row]).ptr;
    *out++ = ',';
    return hasTime ? std::to_chars(out, out + TextRoom, time).ptr : out;
}

char* DataEncoder::AppendCodes(const double* codes, char* out) const
{
    const size_t count = configuration.analog.size();
    size_t good = count;
    if (configuration.dataType == DataType::Binary) {
        if (!AppendWhole<qint16>(codes, count, out))
            good = AppendWithGaps<qint16>(codes, count, out);
    } else if (configuration.dataType == DataType::Binary32) {
        if (!AppendWhole<qint32>(codes, count, out))
            good = AppendWithGaps<qint32>(codes, count, out);
    } else {
        good = AppendSingle(codes, count, out);
    }
    if (good < count)
        Refuse(good, codes[good]);
    return out + count * CodeSize(configuration.dataType);
}

char* DataEncoder::AppendTexts(const double* codes, char* out) const
{
    constexpr double least = std::numeric_limits<qint16>::min();
    constexpr double most = std::numeric_limits<qint16>::max();
    const CodeTexts& texts = CodeTexts::Get();
    for (size_t i = 0; i < configuration.analog.size(); ++i) {
        const double sum = codes[i] + Shift;
        const bool isShort = (sum - Shift == codes[i]) & (codes[i] >= least) & (codes[i] <= most);
        out = isShort ? texts.Append(LowBits<qint16>(sum), out) : AppendText(codes[i], i, out);
    }
    return out;
}

char* DataEncoder::AppendText(double code, size_t channel, char* out) const
{
    *out++ = ',';
    if (std::isnan(code)) {
        const char* const missing = "99999"; // in revision 2013 the field is empty
        return isOld ? std::copy_n(missing, 5, out) : out;
    }
    const CodeLimits limits = LimitsOf(DataType::Ascii, configuration.revision);
    const bool isWrong = (limits.isWhole && code != std::floor(code)) || std::fabs(code) > limits.most ||
                         code == limits.missing;
    if (isWrong)
        Refuse(channel, code);
    char* const end = AppendCode(code, out);
    if (end - out > LongestText)
        Refuse(channel, code);
    return end;
}

char* DataEncoder::AppendStates(const quint8* states, char* out) const
{
    const size_t count = configuration.states.size();
    if (isAscii) {
        for (size_t i = 0; i < count; ++i) {
            out[2 * i] = ',';
            out[2 * i + 1] = static_cast<char>('0' + states[i]);
        }
        return out + 2 * count;
    }
    // Eight states of a byte each become one byte: the product adds up their bits in its highest one.
    constexpr quint64 gather = 0x0102040810204080;
    const size_t bytesOut = (count + 15) / 16 * 2;
    std::memset(out, 0, bytesOut);
    for (size_t i = 0; i < count; i += 8) {
        quint64 eight = 0;
        std::memcpy(&eight, states + i, std::min<size_t>(8, count - i));
        out[i / 8] = static_cast<char>(qFromLittleEndian(eight) * gather >> 56U);
    }
    return out + bytesOut;
}

QByteArray DataEncoder::Encode(const Block& block)
{
    const size_t analog = configuration.analog.size();
    const size_t states = configuration.states.size();
    const size_t longest = 2 * TextRoom + analog * TextRoom + 2 * states;
    const size_t room = isAscii ? longest : static_cast<size_t>(recordSize);
    if (bytes.size() < block.count * room)
        bytes.resize(block.count * room);
    char* out = bytes.data();
    for (size_t row = 0; row < block.count; ++row) {
        ++sample;
        const double* const codes = block.analog.data() + row * analog;
        out = AppendHead(block, row, out);
        out = isAscii ? AppendTexts(codes, out) : AppendCodes(codes, out);
        out = AppendStates(block.states.data() + row * states, out);
        if (isAscii) {
            *out++ = '\r';
            *out++ = '\n';
        }
    }
    return QByteArray::fromRawData(bytes.data(), static_cast<int>(out - bytes.data()));
}

} // namespace forms
