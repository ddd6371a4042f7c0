// Micro-benchmarks of the library's inner loops.
#include "deltadata.h"
#include "dictionarydata.h"
#include "prepared.h"
#include "resorter/ResorterZuCmtrConv.h"

#include <benchmark/benchmark.h>

#include <QDir>

#include <cstring>

namespace {

using benchmark::State;

constexpr size_t Points = 240000; // a channel of a segment of the large recording

// A loaded recording of the station with its device.
class Loaded
{
public:
    Loaded(const station::StationOptions& options, bench::Form form)
        : scratch(QDir::tempPath()), device(options, form, scratch),
          recording(device,
                    bench::WriteRecording(options, scratch.EmptyDirectory(QStringLiteral("in"))).first())
    {}

    bench::PreparedRecording& Recording() { return recording; }
    ZuFileFormat& First() { return recording.First(); }
    qint64 Records() { return device.Parameters().TotalSamples; }

private:
    const bench::Scratch scratch;
    bench::Device device;
    bench::PreparedRecording recording;
};

void CountBytes(State& state, size_t bytes)
{
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(bytes));
}

void Decode(State& state)
{
    const bench::DeltaData data = bench::MakeDeltaData(static_cast<int>(state.range(0)), Points);
    std::vector<int16_t> samples(Points);
    for (auto _ : state) {
        bench::Expand(data, samples);
        benchmark::ClobberMemory();
    }
    CountBytes(state, Points * sizeof(int16_t));
}
BENCHMARK(Decode)->DenseRange(1, 15);

void Memcpy(State& state)
{
    const std::vector<int16_t> source(Points, 1);
    std::vector<int16_t> samples(Points);
    for (auto _ : state) {
        std::memcpy(samples.data(), source.data(), Points * sizeof(int16_t));
        benchmark::ClobberMemory();
    }
    CountBytes(state, Points * sizeof(int16_t));
}
BENCHMARK(Memcpy);

// The state of a channel with this many changes at each of 480000 records.
void GetVal(State& state)
{
    constexpr unsigned int records = 480000;
    constexpr unsigned int step = 417; // microseconds
    const auto changes = static_cast<quint32>(state.range(0));
    DiChannelData channel;
    channel.ChangeCount = changes;
    channel.m_pData = new unsigned char[changes * sizeof(ZuDiChangeRecord)]; // the channel owns it
    for (quint32 i = 0; i < changes; ++i) {
        const ZuDiChangeRecord record = {static_cast<uint8_t>(i % 2), i * (records * step / changes)};
        std::memcpy(channel.m_pData + i * sizeof record, &record, sizeof record);
    }
    for (auto _ : state) {
        for (unsigned int i = 0; i < records; ++i)
            benchmark::DoNotOptimize(channel.GetVal(i * step));
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()) * records);
    channel.Clear();
}
BENCHMARK(GetVal)->Arg(2)->Arg(300)->Arg(30000);

// Writes the DAT records of a segment, to nowhere.
void WriteRecords(State& state, bench::Form form)
{
    station::StationOptions options = bench::LargeStation(true);
    options.segments = 1;
    Loaded loaded(options, form);
    for (auto _ : state)
        loaded.Recording().WriteDat(QStringLiteral("/dev/null"));
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()) * loaded.Records());
}
BENCHMARK_CAPTURE(WriteRecords, ascii, bench::Form::Ascii1999);
BENCHMARK_CAPTURE(WriteRecords, binary, bench::Form::Binary1999);

void CalcRms(State& state)
{
    Loaded loaded(bench::TypicalStation(), bench::Form::Ascii2013);
    QString module;
    QString angle;
    for (auto _ : state)
        loaded.First().CalcRMS(100, loaded.First().AnChannels.at(0), module, angle);
}
BENCHMARK(CalcRms);

void CalcSequences(State& state)
{
    Loaded loaded(bench::TypicalStation(), bench::Form::Ascii2013);
    QString modules[3];
    QString angles[3];
    for (auto _ : state)
        loaded.First().CalcSeq(100, loaded.First().AnChannels.data(), modules, angles);
}
BENCHMARK(CalcSequences);

// The extremes of the first bay over all segments.
void FindExtremes(State& state)
{
    Loaded loaded(bench::TypicalStation(), bench::Form::Ascii2013);
    const QString circuit = loaded.First().AnChannels.at(0)->CfgCircuit;
    QString lines[4];
    for (auto _ : state)
        loaded.First().FindExtremeRMS(circuit, loaded.Recording().Files(), lines[0], lines[1], lines[2],
                                      lines[3]);
}
BENCHMARK(FindExtremes)->Unit(benchmark::kMicrosecond);

void MatchDictionary(State& state)
{
    const auto entries = static_cast<int>(state.range(0));
    const bench::Scratch scratch(QDir::tempPath());
    bench::Device device(bench::LargeDictionary(entries), scratch);
    ZuFileFormat file;
    bench::AddChannelsInReverse(file, entries);
    ResorterZuCmtrConv& resorter = *device.Parameters().Resorter;
    for (auto _ : state) {
        resorter.ClearPrevFileAnIndexes();
        resorter.SortZuFile(&file);
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()) * entries);
}
BENCHMARK(MatchDictionary)->Arg(400)->Arg(4000)->Unit(benchmark::kMicrosecond);

} // namespace
