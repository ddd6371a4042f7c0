#include "comtrade/binaryrecord.h"

#include <QtEndian>

#include <cmath>
#include <cstring>
#include <limits>

namespace comtrade {

namespace {

constexpr double Missing = std::numeric_limits<double>::quiet_NaN();

// The lowest integer of each type stands for a missing value.
template <class Integer>
double CodeAt(const char* bytes)
{
    const auto code = qFromLittleEndian<Integer>(bytes);
    return code == std::numeric_limits<Integer>::min() ? Missing : static_cast<double>(code);
}

template <>
double CodeAt<float>(const char* bytes)
{
    const auto word = qFromLittleEndian<quint32>(bytes);
    float value = 0;
    std::memcpy(&value, &word, sizeof value);
    return std::abs(value) <= std::numeric_limits<float>::max() ? static_cast<double>(value) : Missing;
}

// Eight states at a time: the byte is repeated, one bit of each copy stays and is moved to the lowest place.
quint64 StatesOf(unsigned char byte)
{
    const quint64 bits = byte * 0x0101010101010101U & 0x8040201008040201U;
    return (bits + 0x7F7F7F7F7F7F7F7FU) >> 7U & 0x0101010101010101U;
}

void ReadStates(const char* bytes, size_t count, quint8* states)
{
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(bytes[i]); };
    size_t i = 0;
    for (; i + 8 <= count; i += 8)
        qToLittleEndian(StatesOf(byte(i / 8)), states + i);
    for (; i < count; ++i)
        states[i] = byte(i / 8) >> (i % 8) & 1U;
}

qint64 TimeAt(const char* bytes)
{
    const auto time = qFromLittleEndian<quint32>(bytes);
    return time != std::numeric_limits<quint32>::max() ? qint64{time} : Block::NoTime;
}

template <class Value>
void ReadRecords(const char* bytes, size_t count, size_t size, size_t analog, size_t states, Target target)
{
    for (; count > 0; --count, bytes += size) {
        *target.number++ = qFromLittleEndian<quint32>(bytes);
        *target.time++ = TimeAt(bytes + 4);
        const char* const values = bytes + BinaryValuesOffset;
        for (size_t i = 0; i < analog; ++i)
            target.analog[i] = CodeAt<Value>(values + i * sizeof(Value));
        ReadStates(values + analog * sizeof(Value), states, target.states);
        target.analog += analog;
        target.states += states;
    }
}

// Revision 1991 has FFFFh for a missing value. Where the limits of a channel say that there are no negative
// values, that is what it means; beyond 32767 they are integers without a sign. Otherwise FFFFh is -1.
void Read1991(const char* bytes, size_t count, size_t size, const std::vector<AnalogChannel>& channels,
              double* codes)
{
    for (size_t record = 0; record < count; ++record)
        for (size_t i = 0; i < channels.size(); ++i) {
            const auto word = qFromLittleEndian<quint16>(bytes + record * size + 8 + 2 * i);
            const bool hasNoSign = channels[i].min >= 0 && channels[i].max > 0;
            const bool isLarge = hasNoSign && channels[i].max > std::numeric_limits<qint16>::max();
            *codes++ = hasNoSign && word == 0xFFFF ? Missing
                       : isLarge                   ? static_cast<double>(word)
                                                   : static_cast<double>(static_cast<qint16>(word));
        }
}

} // namespace

size_t BinaryValueSize(DataType type)
{
    return type == DataType::Binary ? 2 : 4;
}

size_t BinaryRecordSize(const Configuration& configuration, DataType type)
{
    return BinaryStatesOffset(configuration, type) + (configuration.states.size() + 15) / 16 * 2;
}

size_t BinaryStatesOffset(const Configuration& configuration, DataType type)
{
    return BinaryValuesOffset + BinaryValueSize(type) * configuration.analog.size();
}

void ReadBinaryHeads(const StoredRecords& records, quint32* numbers, qint64* times)
{
    const char* bytes = records.bytes;
    for (size_t i = 0; i < records.count; ++i, bytes += records.size) {
        numbers[i] = qFromLittleEndian<quint32>(bytes);
        times[i] = TimeAt(bytes + 4);
    }
}

void ReadBinary(const char* bytes, size_t count, const Configuration& configuration, DataType type,
                Target target)
{
    const size_t size = BinaryRecordSize(configuration, type);
    const auto read = type == DataType::Binary     ? ReadRecords<qint16>
                      : type == DataType::Binary32 ? ReadRecords<qint32>
                                                   : ReadRecords<float>;
    read(bytes, count, size, configuration.analog.size(), configuration.states.size(), target);
    if (configuration.revision == Revision::R1991 && type == DataType::Binary)
        Read1991(bytes, count, size, configuration.analog, target.analog);
}

} // namespace comtrade
