#include "verify/writtenparts.h"

#include "comtrade/datareader.h"
#include "verify/recordfiles.h"
#include "verify/source.h"

#include <QFile>
#include <QtEndian>

#include <algorithm>

namespace verify {

namespace {

// File systems write whole pages of at least this size.
constexpr qint64 Page = 4096;

// Pages are written in runs, so that real failures leave few holes.
constexpr size_t MostParts = 1024;

// Bytes that are written, with no hole between them.
struct Part
{
    qint64 begin = 0;
    qint64 end = 0;

    qint64 Size() const { return end - begin; }
};

// Finds the parts in bytes that are taken one block after the other.
class PartFinder
{
public:
    // So many zeros are values.
    PartFinder(qint64 begin_, qint64 longestZeros_)
        : begin(begin_), longestZeros(longestZeros_), position(begin_)
    {}

    void Take(const QByteArray& block)
    {
        const auto isZero = [](char byte) { return byte == 0; };
        for (const char* at = block.cbegin(); at != block.cend();) {
            const char* const first = std::find_if_not(at, block.cend(), isZero);
            const char* const last = std::find_if(first, block.cend(), isZero);
            if (first != last)
                TakeBytes({position + (first - block.cbegin()), position + (last - block.cbegin())});
            at = last;
        }
        position += block.size();
    }

    bool AreTooMany() const { return parts.size() > MostParts; }

    // None if there are too many.
    std::vector<Part> Parts() const { return AreTooMany() ? std::vector<Part>() : parts; }

    bool HasHoles() const { return parts.size() != 1 || parts[0].begin != begin || parts[0].end != position; }

private:
    void TakeBytes(const Part& bytes)
    {
        if (!parts.empty() && bytes.begin - parts.back().end <= longestZeros)
            parts.back().end = bytes.end;
        else if (!AreTooMany())
            parts.push_back(bytes);
    }

    const qint64 begin;
    const qint64 longestZeros;
    std::vector<Part> parts;
    qint64 position;
};

// So many zeros in a row may be values.
qint64 LongestZeros(comtrade::DataType type, const Source& source)
{
    return type == comtrade::DataType::Ascii ? 0 : std::min(source.BinaryRecordSize(), Page - 1);
}

// The parts of the data; stops when they are too many.
PartFinder PartsOf(QFile& file, const DataPlace& place, qint64 most, qint64 longestZeros)
{
    Seek(file, place.begin);
    PartFinder finder(place.begin, longestZeros);
    qint64 left = place.size >= 0 ? std::min(place.size, most) : most;
    while (left > 0 && !finder.AreTooMany()) {
        const QByteArray block = Read(file, std::min<qint64>(left, 1 << 20));
        if (block.isEmpty())
            break;
        finder.Take(block);
        left -= block.size();
    }
    return finder;
}

QByteArray ReadAt(QFile& file, qint64 position, qint64 most)
{
    Seek(file, position);
    return Read(file, most);
}

// The whole lines of a part; empty if there are none.
Part WholeLines(QFile& file, const Part& part, bool isFirst, qint64 longest)
{
    Part lines = part;
    if (!isFirst) {
        const int feed = ReadAt(file, part.begin, std::min(longest, part.Size())).indexOf('\n');
        if (feed < 0)
            return {};
        lines.begin += feed + 1;
    }
    const QByteArray last =
        ReadAt(file, std::max(part.begin, part.end - longest), std::min(longest, part.Size()));
    lines.end = part.end - (last.size() - last.lastIndexOf('\n') - 1);
    return lines;
}

// The whole records of a part of binary data that begin at the given place.
Part WholeRecords(const Part& part, qint64 begin, qint64 size)
{
    const auto down = [&](qint64 position) { return begin + (position - begin) / size * size; };
    return {down(part.begin + size - 1), down(part.end)};
}

// Whether the bytes are two records in a row.
bool AreRecords(const char* bytes, const Source& source)
{
    const auto first = qFromLittleEndian<quint32>(bytes);
    const auto second = qFromLittleEndian<quint32>(bytes + source.BinaryRecordSize());
    return first > 0 && first < source.TotalSamples() && second == first + 1;
}

// Where the data begin if the part holds binary data; -1 if it does not seem to. The end of a mark may come
// before the first record.
qint64 BeginOfRecords(QFile& file, const Part& part, const Source& source)
{
    constexpr qint64 longestMark = 256;
    const qint64 size = source.BinaryRecordSize();
    const QByteArray bytes = ReadAt(file, part.begin, std::min(part.Size(), longestMark + 3 * size));
    for (int at = 0; at + 2 * size <= bytes.size(); ++at) {
        const qint64 number = qFromLittleEndian<quint32>(bytes.constData() + at);
        const qint64 begin = part.begin + at - (number - 1) * size;
        if (begin > 0 && AreRecords(bytes.constData() + at, source))
            return begin;
    }
    return -1;
}

// Whether the first line can be read as a record of the recording.
bool StartsWithRecord(const DataPlace& place, const Source& source)
{
    const comtrade::Configuration channels = ChannelsOf(source, comtrade::DataType::Ascii);
    comtrade::Row row;
    try {
        return comtrade::DataReader(place.path, place.begin, place.size, channels).Next(row) &&
               row.number > 0 && row.number <= source.TotalSamples();
    } catch (const comtrade::Error&) {
        return false;
    }
}

} // namespace

qint64 LongestRecord(const Source& source)
{
    return 128 + 32 * static_cast<qint64>(source.AnalogCount() + source.StateCount());
}

WrittenData WrittenDataOf(const DataPlace& place, qint64 most, comtrade::DataType type, const Source& source)
{
    QFile file(place.path);
    Open(file);
    const PartFinder finder = PartsOf(file, place, most, LongestZeros(type, source));
    WrittenData written;
    written.hasHoles = finder.HasHoles();
    for (const Part& part : finder.Parts()) {
        const Part whole = type == comtrade::DataType::Ascii
                               ? WholeLines(file, part, part.begin == place.begin, LongestRecord(source))
                               : WholeRecords(part, place.begin, source.BinaryRecordSize());
        if (whole.Size() > 0)
            written.records.push_back({place.path, whole.begin, whole.Size()});
    }
    return written;
}

std::optional<DataPlace> FindRecords(const QString& path, qint64 most, comtrade::DataType type,
                                     const Source& source)
{
    QFile file(path);
    Open(file);
    const bool isText = type == comtrade::DataType::Ascii;
    for (const Part& part : PartsOf(file, {path, 0, -1}, most, LongestZeros(type, source)).Parts()) {
        if (!isText) {
            const qint64 begin = BeginOfRecords(file, part, source);
            if (begin > 0)
                return DataPlace{path, begin, -1};
            continue;
        }
        const Part lines = WholeLines(file, part, false, LongestRecord(source));
        if (lines.Size() > 0 && StartsWithRecord({path, lines.begin, lines.Size()}, source))
            return DataPlace{path, lines.begin, -1};
    }
    return std::nullopt;
}

} // namespace verify
