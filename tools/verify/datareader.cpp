#include "verify/datareader.h"

#include "verify/mismatch.h"
#include "zucmtr/texts.h"

#include <QFile>

#include <charconv>
#include <cstring>

namespace verify {

namespace {

constexpr int BlockSize = 1 << 18;
constexpr int LongestLine = 1 << 17; // 4096 channels of 8 characters, and more

template <class Int>
Int FromLittleEndian(const char* bytes)
{
    Int value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

// The fields of one line.
class Fields
{
public:
    Fields(const char* begin_, const char* end_) : next(begin_), end(end_) {}

    // The field as a whole number; false if it is none, or there is no further field.
    template <class Int>
    bool Take(Int& value)
    {
        if (AtEnd() || IsEmpty())
            return false;
        const auto result = std::from_chars(next, end, value);
        return result.ec == std::errc() && StepOver(result.ptr);
    }

    // True if there is a field without a character, which is then taken.
    bool TakeEmpty() { return !AtEnd() && IsEmpty() && StepOver(next); }

    bool AtEnd() const { return next > end; }

private:
    bool IsEmpty() const { return next == end || *next == ','; }

    // Steps over the comma at the end of a field.
    bool StepOver(const char* fieldEnd)
    {
        if (fieldEnd != end && *fieldEnd != ',')
            return false;
        next = fieldEnd + 1;
        return true;
    }

    const char* next;
    const char* end;
};

} // namespace

DataReader::DataReader(QFile& file_, bool binary_, size_t analog, size_t states)
    : file(file_), binary(binary_), recordSize(static_cast<int>(8 + 2 * analog + 2 * ((states + 15) / 16))),
      analogCount(analog), stateCount(states)
{}

void DataReader::Fail(const QString& text) const
{
    throw Mismatch(Tr("verify", "'%1', record %2: ").arg(file.fileName()).arg(taken + 1) + text);
}

// Has the block hold at least so many bytes from the position on, if the file has them.
bool DataReader::Fill(int size)
{
    if (block.size() - position >= size)
        return true;
    block.remove(0, position);
    position = 0;
    block += file.read(std::max(BlockSize, size));
    return block.size() >= size;
}

bool DataReader::Next(Row& row)
{
    row.codes.resize(analogCount);
    row.states.resize(stateCount);
    if (!(binary ? NextBinary(row) : NextAscii(row)))
        return false;
    ++taken;
    return true;
}

bool DataReader::NextBinary(Row& row)
{
    if (!Fill(recordSize)) {
        if (block.isEmpty())
            return false;
        Fail(Tr("verify", "it is cut after %1 of %2 bytes; free the disk, then convert again")
                 .arg(block.size())
                 .arg(recordSize));
    }
    const char* bytes = block.constData() + position;
    position += recordSize;
    row.number = FromLittleEndian<quint32>(bytes);
    row.time = FromLittleEndian<quint32>(bytes + 4);
    bytes += 8;
    for (qint32& code : row.codes) {
        const auto stored = FromLittleEndian<qint16>(bytes);
        code = stored == -32768 ? Row::Missing : stored;
        bytes += 2;
    }
    for (size_t i = 0; i < stateCount; ++i)
        row.states[i] = FromLittleEndian<quint16>(bytes + i / 16 * 2) >> (i % 16) & 1;
    for (size_t i = stateCount; i % 16 != 0; ++i) {
        if ((FromLittleEndian<quint16>(bytes + i / 16 * 2) >> (i % 16) & 1) != 0)
            Fail(Tr("verify", "a bit is set behind the last state"));
    }
    return true;
}

bool DataReader::NextAscii(Row& row)
{
    int end = block.indexOf('\n', position);
    if (end < 0) {
        Fill(LongestLine);
        end = block.indexOf('\n', position);
    }
    if (end < 0) {
        if (position == block.size())
            return false;
        Fail(Tr("verify", "it is cut before its line end; free the disk, then convert again"));
    }
    Fields fields(block.constData() + position, block.constData() + end);
    position = end + 1;
    bool good = fields.Take(row.number) && fields.Take(row.time);
    for (qint32& code : row.codes) {
        if (good && fields.TakeEmpty())
            code = Row::Missing;
        else
            good = good && fields.Take(code);
    }
    for (quint8& state : row.states)
        good = good && fields.Take(state);
    if (!good || !fields.AtEnd())
        Fail(
            Tr("verify", "it does not have the %1 numbers that it should").arg(2 + analogCount + stateCount));
    return true;
}

} // namespace verify
