#include "comtrade/datareader.h"

#include "explain/system.h"
#include "text/texts.h"

#include <QtEndian>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace comtrade {

namespace {

constexpr size_t BlockSize = size_t{1} << 20;
constexpr double Missing = std::numeric_limits<double>::quiet_NaN();

size_t AnalogSize(DataType type)
{
    return type == DataType::Binary ? 2 : 4;
}

size_t BinaryRecordSize(const Configuration& configuration)
{
    return 8 + AnalogSize(configuration.dataType) * configuration.analog.size() +
           (configuration.states.size() + 15) / 16 * 2;
}

// An ASCII record may be this long: numbers of up to 30 characters.
size_t LongestLine(const Configuration& configuration)
{
    return 128 + 32 * (configuration.analog.size() + configuration.states.size());
}

// ASCII codes go from -99999 to 99998; 99999 stands for a missing value, as an empty field does.
double AsciiCode(double number)
{
    constexpr double missing = 99999;
    return number == missing || !std::isfinite(number) ? Missing : number;
}

double AnalogCode(DataType type, const char* bytes)
{
    if (type == DataType::Binary) {
        const auto code = qFromLittleEndian<qint16>(bytes);
        return code == std::numeric_limits<qint16>::min() ? Missing : code;
    }
    if (type == DataType::Binary32) {
        const auto code = qFromLittleEndian<qint32>(bytes);
        return code == std::numeric_limits<qint32>::min() ? Missing : code;
    }
    const auto word = qFromLittleEndian<quint32>(bytes);
    float value = 0;
    std::memcpy(&value, &word, sizeof value);
    return std::isfinite(value) ? static_cast<double>(value) : Missing;
}

// The fields of an ASCII record, one by one.
class Fields
{
public:
    Fields(const char* begin, const char* end_) : next(begin), end(end_) {}

    // Moves to the next field; false if there is none.
    bool Take()
    {
        if (next == nullptr)
            return false;
        const auto* comma = static_cast<const char*>(std::memchr(next, ',', static_cast<size_t>(end - next)));
        first = next;
        last = comma != nullptr ? comma : end;
        next = comma != nullptr ? comma + 1 : nullptr;
        while (first != last && *first == ' ')
            ++first;
        while (first != last && last[-1] == ' ')
            --last;
        return true;
    }

    // Takes a plain number of up to 18 digits, which nearly every field is: this halves the time to
    // read a record. If false, the field is left to Take.
    bool TakePlain(qint64& number)
    {
        if (next == nullptr)
            return false;
        const bool negative = next != end && *next == '-';
        const char* const digits = next + (negative ? 1 : 0);
        const char* at = digits;
        qint64 value = 0;
        while (at != end && *at >= '0' && *at <= '9' && at - digits < 18)
            value = value * 10 + (*at++ - '0');
        if (at == digits || (at != end && *at != ','))
            return false;
        next = at != end ? at + 1 : nullptr;
        number = negative ? -value : value;
        return true;
    }

    // The same for the state of a channel that is not the last.
    bool TakeState(quint8& state)
    {
        if (next == nullptr || end - next < 2 || next[1] != ',' || (*next != '0' && *next != '1'))
            return false;
        state = static_cast<quint8>(*next - '0');
        next += 2;
        return true;
    }

    bool IsEmpty() const { return first == last; }
    bool AtEnd() const { return next == nullptr; }
    QString Text() const
    {
        return QString::fromLatin1(first, static_cast<int>(std::min<ptrdiff_t>(last - first, 40)));
    }

    template <class Number>
    bool To(Number& number) const
    {
        const auto result = std::from_chars(first, last, number);
        return result.ec == std::errc() && result.ptr == last;
    }

private:
    const char* next;
    const char* end;
    const char* first = nullptr;
    const char* last = nullptr;
};

} // namespace

void Block::Resize(size_t records, const Configuration& configuration)
{
    count = records;
    numbers.resize(records);
    times.resize(records);
    analog.resize(records * configuration.analog.size());
    states.resize(records * configuration.states.size());
}

DataReader::DataReader(const QString& path, qint64 offset, qint64 length, const Configuration& configuration_,
                       Findings* forgiven_)
    : file(path), configuration(configuration_), forgiven(forgiven_)
{
    if (!file.open(QIODevice::ReadOnly) || !file.seek(offset))
        throw Error(
            Tr("comtrade", "%1: cannot be read: %2").arg(path, explain::SystemText(file.errorString())));
    left = length >= 0 ? length : file.size() - offset;
    const size_t longest = configuration.dataType == DataType::Ascii ? LongestLine(configuration)
                                                                     : BinaryRecordSize(configuration);
    buffer.resize(std::max(std::min(BlockSize, static_cast<size_t>(std::max<qint64>(left, 0))), longest));
}

void DataReader::Fail(const QString& what) const
{
    throw Error(Tr("comtrade", "%1, record %2: %3").arg(file.fileName()).arg(record).arg(what));
}

// Makes sure that the buffer holds at least `wanted` bytes; false if the part ends first.
bool DataReader::Fill(size_t wanted)
{
    if (end - begin >= wanted)
        return true;
    std::memmove(buffer.data(), buffer.data() + begin, end - begin);
    end -= begin;
    begin = 0;
    while (end < wanted && left > 0) {
        const qint64 room = static_cast<qint64>(buffer.size() - end);
        const qint64 count = file.read(buffer.data() + end, std::min(room, left));
        if (count < 0)
            Fail(Tr("comtrade", "reading fails: %1").arg(explain::SystemText(file.errorString())));
        left = count == 0 ? 0 : left - count;
        end += static_cast<size_t>(count);
    }
    return end >= wanted;
}

bool DataReader::Next(Row& row)
{
    ++record;
    row.analog.resize(configuration.analog.size());
    row.states.resize(configuration.states.size());
    return configuration.dataType == DataType::Ascii ? NextAscii(row) : NextBinary(row);
}

bool DataReader::Next(Block& block)
{
    if (failure)
        std::rethrow_exception(failure);
    const size_t channels = configuration.analog.size() + configuration.states.size();
    const size_t wanted = std::max<size_t>(1, (size_t{256} << 10U) / (16 + 8 * channels));
    block.Resize(wanted, configuration);
    block.count = 0;
    try {
        while (block.count < wanted && Next(one)) {
            const size_t i = block.count++;
            block.numbers[i] = one.number;
            block.times[i] = one.hasTime ? one.time : Block::NoTime;
            std::copy(one.analog.begin(), one.analog.end(), block.analog.begin() + i * one.analog.size());
            std::copy(one.states.begin(), one.states.end(), block.states.begin() + i * one.states.size());
        }
    } catch (const Error&) {
        failure = std::current_exception();
        if (block.count == 0)
            throw;
    }
    return block.count > 0;
}

bool DataReader::NextBinary(Row& row)
{
    const size_t size = BinaryRecordSize(configuration);
    if (!Fill(size)) {
        if (begin == end)
            return false;
        Fail(Tr("comtrade", "is cut off: %1 of %2 bytes").arg(end - begin).arg(size));
    }
    const char* bytes = buffer.data() + begin;
    begin += size;
    row.number = qFromLittleEndian<quint32>(bytes);
    const auto time = qFromLittleEndian<quint32>(bytes + 4);
    row.hasTime = time != std::numeric_limits<quint32>::max();
    row.time = row.hasTime ? qint64{time} : 0;
    bytes += 8;
    for (double& code : row.analog) {
        code = AnalogCode(configuration.dataType, bytes);
        bytes += AnalogSize(configuration.dataType);
    }
    for (size_t i = 0; i < row.states.size(); ++i)
        row.states[i] = (static_cast<unsigned char>(bytes[i / 8]) >> (i % 8)) & 1U;
    return true;
}

bool DataReader::NextAscii(Row& row)
{
    const size_t longest = LongestLine(configuration);
    Fill(std::min(longest, buffer.size()));
    const char* line = buffer.data() + begin;
    constexpr char EndOfFile = 0x1A; // closes the files of some writers
    const auto available = static_cast<size_t>(end - begin);
    const bool container = available >= 3 && std::memcmp(line, "---", 3) == 0;
    if (available == 0 || *line == EndOfFile || container)
        return false;
    const auto* feed = static_cast<const char*>(std::memchr(line, '\n', available));
    if (feed == nullptr && available >= longest)
        Fail(Tr("comtrade", "has no end within %1 bytes").arg(longest));
    const char* stop = feed != nullptr ? feed : line + available;
    begin = static_cast<size_t>((feed != nullptr ? feed + 1 : stop) - buffer.data());
    if (stop != line && stop[-1] == '\r')
        --stop;
    ParseLine(line, stop, row);
    return true;
}

void DataReader::ParseLine(const char* line, const char* stop, Row& row) const
{
    Fields fields(line, stop);
    const auto next = [&](const QString& what) {
        if (!fields.Take())
            Fail(Tr("comtrade", "ends before %1").arg(what));
    };
    const auto bad = [&](const QString& what) {
        Fail(Tr("comtrade", "%1 is '%2', which is no number").arg(what, fields.Text()));
    };
    next(QStringLiteral("n"));
    if (!fields.To(row.number))
        bad(QStringLiteral("n"));
    next(QStringLiteral("timestamp"));
    row.hasTime = !fields.IsEmpty();
    row.time = 0;
    if (row.hasTime && !fields.To(row.time))
        bad(QStringLiteral("timestamp"));
    for (size_t i = 0; i < row.analog.size(); ++i) {
        qint64 code = 0;
        if (fields.TakePlain(code)) {
            row.analog[i] = AsciiCode(static_cast<double>(code));
            continue;
        }
        if (!fields.Take())
            Fail(Tr("comtrade", "ends before analog channel %1").arg(i + 1));
        if (fields.IsEmpty())
            row.analog[i] = Missing;
        else if (fields.To(row.analog[i]))
            row.analog[i] = AsciiCode(row.analog[i]);
        else
            bad(Tr("comtrade", "analog channel %1").arg(i + 1));
    }
    for (size_t i = 0; i < row.states.size(); ++i) {
        if (fields.TakeState(row.states[i]))
            continue;
        if (!fields.Take())
            Fail(Tr("comtrade", "ends before status channel %1").arg(i + 1));
        if (!fields.To(row.states[i]) || row.states[i] > 1)
            bad(Tr("comtrade", "status channel %1").arg(i + 1));
    }
    if (!fields.AtEnd())
        Fail(Tr("comtrade", "has more fields than channels"));
}

} // namespace comtrade
