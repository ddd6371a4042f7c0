#include "comtrade/samples.h"

#include "comtrade/binaryrecord.h"
#include "text/texts.h"

#include <algorithm>
#include <numeric>

namespace comtrade {

namespace {

// Lines may lack values at their end, which take memory all the same: up to so many times what whole lines of
// the same bytes would take.
constexpr qint64 MostGrowth = 16;

StateColumns::Form FormOfStates(const Record& record)
{
    return record.HasStoredRecords() ? StateColumns::Form::Bits : StateColumns::Form::Bytes;
}

} // namespace

Samples::Samples(Record& record)
    : analog(record.Config().analog.size(), record.StoredType(),
             static_cast<size_t>(record.ExpectedRecords())),
      states(record.Config().states.size(), FormOfStates(record)),
      room(static_cast<size_t>(record.ExpectedRecords()))
{
    const std::vector<SampleRate>& rates = record.Config().rates;
    hasStamps =
        std::all_of(rates.begin(), rates.end(), [](const SampleRate& rate) { return rate.hertz <= 0; });
    if (hasStamps)
        stamps.Reserve(room);
    if (record.HasStoredRecords())
        ReadStored(record);
    else
        ReadBlocks(record);
    analog.Finish();
}

void Samples::ReadStored(Record& record)
{
    const Configuration& configuration = record.Config();
    const size_t states_ = BinaryStatesOffset(configuration, record.StoredType());
    StoredRecords stored;
    std::vector<quint32> some;
    std::vector<qint64> times;
    while (record.Next(stored)) {
        some.resize(stored.count);
        times.resize(stored.count);
        ReadBinaryHeads(stored, some.data(), times.data());
        AddHeads(some.data(), times.data(), stored.count);
        analog.Add({stored.bytes + BinaryValuesOffset, stored.size, stored.count});
        states.Add({stored.bytes + states_, stored.size, stored.count});
        count += static_cast<qint64>(stored.count);
    }
}

void Samples::ReadBlocks(Record& record)
{
    const qint64 most = MostGrowth * (record.MostRecords() + 1);
    NarrowBlock narrow;
    Block block;
    for (;;) {
        while (analog.AreNarrow() && record.Next(narrow)) {
            analog.Add(RowsIn(narrow.analog, record.Config().analog.size(), narrow.count));
            AddOthers(narrow, record.Config().states.size());
        }
        if (!record.Next(block))
            return;
        if (count + static_cast<qint64>(block.count) > most)
            throw Error(Tr("comtrade", "%1: the samples lack so many values that they are not read")
                            .arg(record.Places().file));
        analog.Add(block);
        AddOthers(block, record.Config().states.size());
    }
}

// All but the codes of a block.
template <class SomeBlock>
void Samples::AddOthers(const SomeBlock& block, size_t stateCount)
{
    AddHeads(block.numbers.data(), block.times.data(), block.count);
    states.Add(RowsIn(block.states, stateCount, block.count));
    count += static_cast<qint64>(block.count);
}

// Numbers and times of the records that follow.
void Samples::AddHeads(const quint32* some, const qint64* times, size_t more)
{
    if (hasStamps)
        stamps.Append(times, more);
    const auto expected = [this](size_t i) { return count + static_cast<qint64>(i) + 1; };
    for (size_t i = 0; i < more && numbersCount; ++i)
        numbersCount = some[i] == expected(i);
    if (numbersCount)
        return;
    if (numbers.size() == 0 && count > 0) {
        std::vector<quint32> counted(static_cast<size_t>(count));
        std::iota(counted.begin(), counted.end(), 1U);
        numbers.Reserve(std::max(room, counted.size()));
        numbers.Append(counted.data(), counted.size());
    }
    numbers.Append(some, more);
}

void Samples::Values(size_t channel, const Scale& scale, double* values) const
{
    std::visit([&](const auto& codes) { ScaleCodes(codes.data(), codes.size(), scale, values); },
               Analog(channel));
}

qint64 Samples::MemorySize() const
{
    const size_t heads = numbers.size() * sizeof(quint32) + stamps.size() * sizeof(qint64);
    const size_t bytes = analog.MemorySize() + states.MemorySize() + heads;
    return static_cast<qint64>(bytes);
}

} // namespace comtrade
