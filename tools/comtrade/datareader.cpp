#include "comtrade/datareader.h"

#include "comtrade/asciirecord.h"
#include "comtrade/binaryrecord.h"
#include "explain/system.h"
#include "text/texts.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace comtrade {

namespace {

constexpr size_t BufferSize = size_t{1} << 18U; // stays in the processor's cache
constexpr size_t BlockSize = size_t{1} << 18U;
constexpr size_t Margin = PlainLineMargin;

// An ASCII record may be this long: numbers of up to 30 characters.
size_t LongestLine(const Configuration& configuration)
{
    return 128 + 32 * (configuration.analog.size() + configuration.states.size());
}

size_t LongestRecord(const Configuration& configuration, DataType type)
{
    return type == DataType::Ascii ? LongestLine(configuration) : BinaryRecordSize(configuration, type);
}

LineShape ShapeOf(const Configuration& configuration)
{
    return {configuration.analog.size(), configuration.states.size(), MissingCode(configuration.revision)};
}

StoredForm Open(QFile& file, qint64 offset, qint64 length, const Configuration& configuration,
                Findings* forgiven)
{
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || !file.seek(offset))
        throw Error(Tr("comtrade", "%1: cannot be read: %2")
                        .arg(file.fileName(), explain::SystemText(file.errorString())));
    if (forgiven != nullptr)
        return FormOf(file, offset, length, configuration, *forgiven);
    StoredForm form;
    form.type = configuration.dataType;
    return form;
}

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
    : file(path), configuration(configuration_), forgiven(forgiven_),
      form(Open(file, offset, length, configuration_, forgiven_)), type(form.type),
      shape(ShapeOf(configuration_)), readPlainLine(BestPlainLineReader()),
      readNarrowLine(BestNarrowLineReader()), longest(LongestRecord(configuration_, type)),
      wanted(configuration_.rates.empty() ? 0 : configuration_.SampleCount()),
      left(length >= 0 ? length : file.size() - offset), begin(Margin), end(Margin)
{
    const size_t part = std::min(BufferSize, static_cast<size_t>(std::max<qint64>(left, 0)));
    buffer.resize(Margin + std::max(part, longest) + 2 + Margin); // room for a character of UTF-16
}

void DataReader::Fail(const QString& what) const
{
    throw Error(Tr("comtrade", "%1, record %2: %3").arg(file.fileName()).arg(record).arg(what), record);
}

// Makes sure that the buffer holds at least so many bytes; false if the part ends first.
bool DataReader::Fill(size_t bytes)
{
    if (Unread() >= bytes)
        return true;
    std::memmove(buffer.data() + Margin, buffer.data() + begin, Unread());
    end = Margin + Unread();
    begin = Margin;
    while (Unread() < bytes && left > 0) {
        const auto room = static_cast<qint64>(buffer.size() - Margin - end);
        const qint64 count = file.read(buffer.data() + end, std::min(room, left));
        if (count < 0) {
            ++record;
            Fail(Tr("comtrade", "reading fails: %1").arg(explain::SystemText(file.errorString())));
        }
        left = count == 0 ? 0 : left - count;
        end += static_cast<size_t>(count);
        if (form.bytesOfACharacter == 2)
            Narrow(end - static_cast<size_t>(count));
    }
    return Unread() >= bytes;
}

bool DataReader::Next(Row& row)
{
    row.analog.resize(shape.analog);
    row.states.resize(shape.states);
    if (Take({&row.number, &row.time, row.analog.data(), row.states.data()}, 1) == 0)
        return false;
    row.hasTime = row.time != Block::NoTime;
    row.time = row.hasTime ? row.time : 0;
    return true;
}

bool DataReader::Next(Block& block)
{
    if (failure)
        std::rethrow_exception(failure);
    const size_t most = RecordsOfBlock();
    block.Resize(most, configuration);
    block.count =
        Take({block.numbers.data(), block.times.data(), block.analog.data(), block.states.data()}, most);
    return block.count > 0;
}

size_t DataReader::RecordsOfBlock() const
{
    return std::max<size_t>(1, BlockSize / (16 + 8 * (shape.analog + shape.states)));
}

bool DataReader::Next(NarrowBlock& block)
{
    const bool isFor = type == DataType::Ascii && !failure;
    const size_t most = isFor ? RecordsOfBlock() : 0;
    block.numbers.resize(most);
    block.times.resize(most);
    block.analog.resize(most * shape.analog);
    block.states.resize(most * shape.states);
    NarrowTarget target{block.numbers.data(), block.times.data(), block.analog.data(), block.states.data()};
    for (block.count = 0; block.count < most && !hasEnded; ++block.count) {
        Fill(longest);
        const char* const after = readNarrowLine(At(), buffer.data() + end, shape, target);
        if (after == nullptr)
            break;
        ++record;
        begin = static_cast<size_t>(after - buffer.data());
        ++target.number;
        ++target.time;
        target.analog += shape.analog;
        target.states += shape.states;
    }
    return block.count > 0;
}

// Takes up to `most` records; less than one at the end.
size_t DataReader::Take(const Target& target, size_t most)
{
    return type == DataType::Ascii ? TakeLines(target, most) : TakeBinary(target, most);
}

size_t DataReader::TakeBinary(const Target& target, size_t most)
{
    const size_t count = FindBinary(most);
    ReadBinary(At(), count, configuration, type, target);
    PassBinary(count);
    return count;
}

bool DataReader::Next(StoredRecords& stored)
{
    stored.count = FindBinary(std::numeric_limits<size_t>::max());
    stored.size = longest;
    stored.bytes = At();
    PassBinary(stored.count);
    return stored.count > 0;
}

qint64 DataReader::MostRecords() const
{
    const size_t shortestLine = 3 + shape.analog + 2 * shape.states; // all values are missing, and the time
    const qint64 bytes = left + static_cast<qint64>(Unread());
    return bytes / static_cast<qint64>(type == DataType::Ascii ? shortestLine : longest);
}

void DataReader::PassBinary(size_t count)
{
    begin += count * longest;
    record += static_cast<qint64>(count);
}

// How many whole records stand in the buffer, from At() on; up to `most`.
size_t DataReader::FindBinary(size_t most)
{
    if (hasEnded)
        return 0;
    if (!Fill(longest) && forgiven != nullptr) {
        FinishBinary();
        return 0;
    }
    if (Unread() > 0 && Unread() < longest) {
        ++record;
        Fail(Tr("comtrade", "is cut off: %1 of %2 bytes").arg(Unread()).arg(longest));
    }
    size_t count = std::min(most, Unread() / longest);
    if (forgiven != nullptr && wanted > 0) { // what follows the last record is looked at one by one
        if (IsComplete() && count > 0 && IsZeroRecord()) {
            EndWithZeros();
            return 0;
        }
        const auto rest = static_cast<size_t>(std::max<qint64>(wanted - record, 1));
        count = std::min(count, rest);
    }
    return count;
}

bool DataReader::IsZeroRecord() const
{
    return std::all_of(At(), At() + longest, [](char byte) { return byte == 0; });
}

// What precedes a malformed line is delivered before its Error.
size_t DataReader::TakeLines(Target target, size_t most)
{
    size_t count = 0;
    try {
        while (count < most && !hasEnded && TakeLine(target)) {
            ++count;
            ++target.number;
            ++target.time;
            target.analog += shape.analog;
            target.states += shape.states;
        }
    } catch (const Error&) {
        failure = std::current_exception();
        if (count == 0)
            throw;
    }
    return count;
}

bool DataReader::TakeLine(const Target& target)
{
    Fill(longest);
    const char* const after = readPlainLine(At(), buffer.data() + end, shape, target);
    if (after == nullptr)
        return forgiven != nullptr ? TakeForgivingLine(target) : TakeStrictLine(target);
    ++record;
    begin = static_cast<size_t>(after - buffer.data());
    return true;
}

bool DataReader::TakeStrictLine(const Target& target)
{
    const char* const line = At();
    const char* const limit = buffer.data() + end;
    if (line == limit || *line == EndOfFile || (limit - line >= 3 && std::memcmp(line, "---", 3) == 0))
        return false;
    ++record;
    const auto* feed = static_cast<const char*>(std::memchr(line, '\n', Unread()));
    if (feed == nullptr && Unread() >= longest)
        Fail(Tr("comtrade", "has no end within %1 bytes").arg(longest));
    const char* stop = feed != nullptr ? feed : limit;
    begin = static_cast<size_t>((feed != nullptr ? feed + 1 : stop) - buffer.data());
    if (stop != line && stop[-1] == '\r')
        --stop;
    try {
        ReadLine(line, stop, configuration, {file.fileName(), record, nullptr}, target);
    } catch (const Error& error) {
        Fail(text::MessageOf(error));
    }
    return true;
}

} // namespace comtrade
