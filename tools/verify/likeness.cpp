// Two passes: the first finds out which column of the record is which channel of the recording, the second
// counts the values that differ.
#include "verify/likeness.h"

#include "comtrade/datareader.h"
#include "verify/source.h"
#include "verify/walk.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>

namespace verify {

namespace {

// A channel with at most this part of its values different is damaged, not another recording's: two
// recordings differ nearly everywhere, while damaged bits are few. To take another's record for a damaged one
// would lose it; to take a damaged one for another's costs a question.
constexpr qint64 SmallPart = 1000; // one in so many

// So many unreadable lines in a row end the data.
constexpr int MostBadLines = 16;

bool IsTooMuch(qint64 differing, qint64 values)
{
    return differing > (values + SmallPart / 2) / SmallPart;
}

// A code in one form for both forms of data, each of which has its own way to write a missing one.
qint32 CodeOf(double found)
{
    constexpr qint32 NoCode = 1 << 20;
    if (std::isnan(found))
        return MissingCode;
    return found >= -32768 && found <= 32767 && found == std::floor(found) ? static_cast<qint32>(found)
                                                                           : NoCode;
}

// The places of data, and how they are to be read.
struct Places
{
    DataPlaces places;
    comtrade::DataType type;
    bool torn; // there is a hole before each place, and nothing but whole records in it
};

// The readable records of the data, each with the record of the recording that has its number.
class Pairs
{
public:
    Pairs(const Places& data_, const Source& source)
        : data(data_), configuration(ChannelsOf(source, data_.type)), total(source.TotalSamples()),
          rows(source)
    {}

    bool Next()
    {
        while (Read()) {
            if (!Follow()) {
                isLonger = row.number > total;
                return false;
            }
            if (IsInItsPlace())
                return true;
            hasOthers = true;
        }
        return false;
    }

    // Whether there were bytes that are no record, or not one of the recording.
    bool HasOthers() const { return hasOthers; }

    const comtrade::Row& Found() const { return row; }
    const SourceRows& Expected() const { return rows; }
    qint64 Number() const { return rows.At().Number(); }
    bool IsLonger() const { return isLonger; }

    bool HasNumber() const { return row.number == static_cast<quint32>(Number()); }
    bool HasTime() const
    {
        const quint32 found = row.hasTime ? static_cast<quint32>(row.time) : UnknownTime;
        return found == static_cast<quint32>(rows.At().Time());
    }
    qint32 ExpectedCode(size_t channel) const
    {
        return rows.HasSample(channel) ? rows.Code(channel) : MissingCode;
    }

private:
    // The next record that can be read at all.
    bool Read()
    {
        while (!reader || !ReadHere()) {
            if (place == data.places.size())
                return false;
            const DataPlace& next = data.places[place++];
            reader = std::make_unique<comtrade::DataReader>(next.path, next.begin, next.size, configuration);
            isAfterHole = data.torn;
        }
        return true;
    }

    bool ReadHere()
    {
        for (badLines = 0; badLines <= MostBadLines; ++badLines) {
            try {
                return reader->Next(row);
            } catch (const comtrade::Error&) {
                hasOthers = true;
                if (data.type != comtrade::DataType::Ascii) // the rest is less than a record
                    return false;
            }
        }
        return false;
    }

    // Moves the recording to the record that was found: one line may have become two, or two one, and a hole
    // takes any number of records.
    bool Follow()
    {
        qint64 skipped = qint64{row.number} - Number() - 1;
        if (skipped < 0 || skipped > (isAfterHole ? total : qint64{2} * badLines))
            skipped = badLines;
        isAfterHole = false;
        for (qint64 i = 0; i <= skipped; ++i) {
            if (!rows.Next())
                return false;
        }
        return true;
    }

    // True for a record that is damaged at worst; false for other bytes that happen to be readable as
    // numbers.
    bool IsInItsPlace() const { return HasNumber() || (HasTime() && row.number != 0 && row.time != 0); }

    const Places data;
    const comtrade::Configuration configuration;
    const qint64 total;
    SourceRows rows;
    std::unique_ptr<comtrade::DataReader> reader;
    size_t place = 0; // the next one
    comtrade::Row row;
    int badLines = 0; // just before the row
    bool isAfterHole = false;
    bool hasOthers = false;
    bool isLonger = false;
};

constexpr qint64 MostBlocks = 64;

// Finds the channel of each column: the columns and the channels are hashed block by block, and those of
// equal hashes belong together. A block with damaged values in it, where the hashes of the columns are not
// those of the channels, is ignored.
class Matching
{
public:
    Matching(size_t channels_, qint64 total)
        : channels(channels_), blockSize(std::max<qint64>(1, (total + MostBlocks - 1) / MostBlocks)),
          columnHashes(channels * MostBlocks), channelHashes(channels * MostBlocks)
    {}

    void Add(qint64 number, size_t channel, qint32 found, qint32 expected)
    {
        const size_t at = static_cast<size_t>((number - 1) / blockSize) * channels + channel;
        Mix(columnHashes[at], static_cast<quint32>(found));
        Mix(channelHashes[at], static_cast<quint32>(expected));
    }

    std::vector<size_t> Channels() const
    {
        std::vector<quint64> columnKeys(channels);
        std::vector<quint64> channelKeys(channels);
        for (size_t block = 0; block < MostBlocks; ++block) {
            if (!IsSound(block))
                continue;
            for (size_t i = 0; i < channels; ++i) {
                Mix(columnKeys[i], columnHashes[block * channels + i]);
                Mix(channelKeys[i], channelHashes[block * channels + i]);
            }
        }
        const std::vector<size_t> columnOrder = OrderOf(columnKeys);
        const std::vector<size_t> channelOrder = OrderOf(channelKeys);
        std::vector<size_t> result(channels);
        for (size_t i = 0; i < channels; ++i)
            result[columnOrder[i]] = channelOrder[i];
        return result;
    }

private:
    static void Mix(quint64& hash, quint64 value)
    {
        hash = (hash ^ (value + 1)) * 0x9E3779B97F4A7C15U;
        hash ^= hash >> 29U;
    }

    std::vector<quint64> Sorted(const std::vector<quint64>& hashes, size_t block) const
    {
        const auto begin = hashes.begin() + static_cast<ptrdiff_t>(block * channels);
        std::vector<quint64> sorted(begin, begin + static_cast<ptrdiff_t>(channels));
        std::sort(sorted.begin(), sorted.end());
        return sorted;
    }

    bool IsSound(size_t block) const { return Sorted(columnHashes, block) == Sorted(channelHashes, block); }

    // Equal channels keep their order, which is usually that of the record.
    static std::vector<size_t> OrderOf(const std::vector<quint64>& keys)
    {
        std::vector<size_t> order(keys.size());
        std::iota(order.begin(), order.end(), size_t{0});
        std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) { return keys[a] < keys[b]; });
        return order;
    }

    const size_t channels;
    const qint64 blockSize; // records
    std::vector<quint64> columnHashes;
    std::vector<quint64> channelHashes;
};

// Which channel each column is.
struct Assignment
{
    std::vector<size_t> analog;
    std::vector<size_t> states;
};

Assignment Assign(const Places& places, const Source& source)
{
    Pairs pairs(places, source);
    Matching analog(source.AnalogCount(), source.TotalSamples());
    Matching states(source.StateCount(), source.TotalSamples());
    while (pairs.Next()) {
        for (size_t i = 0; i < source.AnalogCount(); ++i)
            analog.Add(pairs.Number(), i, CodeOf(pairs.Found().analog[i]), pairs.ExpectedCode(i));
        for (size_t i = 0; i < source.StateCount(); ++i)
            states.Add(pairs.Number(), i, pairs.Found().states[i], pairs.Expected().State(i) ? 1 : 0);
    }
    return {analog.Channels(), states.Channels()};
}

// Counts the values that differ, in total and per column.
class Counts
{
public:
    explicit Counts(const Source& source) : columns(2 + source.AnalogCount() + source.StateCount()) {}

    void Count(const Pairs& pairs, const Assignment& assignment)
    {
        size_t column = 0;
        columns[column++] += pairs.HasNumber() ? 0 : 1;
        columns[column++] += pairs.HasTime() ? 0 : 1;
        for (size_t i = 0; i < assignment.analog.size(); ++i) {
            const qint32 expected = pairs.ExpectedCode(assignment.analog[i]);
            columns[column++] += CodeOf(pairs.Found().analog[i]) == expected ? 0 : 1;
        }
        for (size_t i = 0; i < assignment.states.size(); ++i) {
            const quint8 expected = pairs.Expected().State(assignment.states[i]) ? 1 : 0;
            columns[column++] += pairs.Found().states[i] == expected ? 0 : 1;
        }
        ++records;
    }

    // The values that differ.
    qint64 All() const { return std::accumulate(columns.begin(), columns.end(), qint64{0}); }

    // If a whole channel differs, it is not just damaged.
    bool Differ() const
    {
        return IsTooMuch(All(), records * static_cast<qint64>(columns.size())) ||
               std::any_of(columns.begin(), columns.end(),
                           [this](qint64 differing) { return IsTooMuch(differing, records); });
    }

    qint64 Records() const { return records; }

private:
    std::vector<qint64> columns; // number, time, analog, states
    qint64 records = 0;
};

Likeness Compare(const Places& places, const Source& source)
{
    const Assignment assignment = Assign(places, source);
    Pairs pairs(places, source);
    Counts counts(source);
    Likeness likeness;
    while (pairs.Next()) {
        counts.Count(pairs, assignment);
        likeness.last = pairs.Number();
    }
    likeness.compared = counts.Records();
    likeness.others = pairs.HasOthers();
    likeness.differs = places.torn ? likeness.others || counts.All() > 0 : counts.Differ();
    likeness.longer = pairs.IsLonger();
    likeness.torn = places.torn;
    return likeness;
}

} // namespace

comtrade::Configuration ChannelsOf(const Source& source, comtrade::DataType type)
{
    comtrade::Configuration configuration;
    configuration.analog.resize(source.AnalogCount());
    configuration.states.resize(source.StateCount());
    configuration.dataType = type;
    return configuration;
}

Likeness Compare(const DataPlace& place, comtrade::DataType type, const Source& source)
{
    return Compare(Places{{place}, type, false}, source);
}

Likeness CompareTorn(const DataPlaces& places, comtrade::DataType type, const Source& source)
{
    return Compare(Places{places, type, true}, source);
}

} // namespace verify
