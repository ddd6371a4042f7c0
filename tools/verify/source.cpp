#include "verify/source.h"

#include "device/zucmtrdevparam.h"
#include "explain/file.h"
#include "explain/library.h"
#include "recording/zufileformat.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "text/texts.h"
#include "verify/device.h"
#include "verify/mismatch.h"

namespace verify {

Source::Source(const Device& device_, const QString& firstFile) : device(device_), chain(device_.Param())
{
    ZuCmtrDevParam& param = device.Param();
    param.ClearLog();
    if (!chain.Load(firstFile) || !chain.Check())
        throw Unreadable(Tr("verify", "the recording cannot be read: %1")
                             .arg(explain::NotLoaded(firstFile, param.LastError)));
    segments = *chain.Files();
    sampleRate = param.SampleRate;
    totalSamples = param.TotalSamples;
    for (const QString& path : chain.Paths())
        files << path;
    chain.Prepare();
    while (!param.LogMessages.empty())
        notes << explain::LibraryText(param.PopLogMessages());
}

const QString& Source::RecordName() const
{
    return chain.First().OutName;
}

void Source::OrderAfresh()
{
    device.Param().Resorter->ClearPrevFileAnIndexes();
    device.Param().Resorter->ClearPrevFileDiIndexes();
    chain.Prepare();
}

qint64 Source::BinaryRecordSize() const
{
    return 8 + 2 * static_cast<qint64>(AnalogCount()) + 2 * ((static_cast<qint64>(StateCount()) + 15) / 16);
}

qint64 Source::MostRecordSize() const
{
    const ZuCmtrDevParam& param = device.Param();
    const auto analog = static_cast<qint64>(AnalogCount());
    const auto states = static_cast<qint64>(StateCount());
    // Number and time of ten digits each and a line end, codes of five digits and a sign, states; with
    // commas.
    const qint64 line = 24 + 7 * analog + 2 * states;
    const qint64 data = totalSamples * (param.ComtradeBin ? BinaryRecordSize() : line);
    const qint64 texts = (qint64{64} << 10) + 1024 * (analog + states);
    return (data + texts) * (param.ComtradeCff ? 2 : 1); // the pieces stay until the container is complete
}

const std::vector<unsigned int>& Source::AnalogOrder() const
{
    return device.Param().Resorter->PrevFileAnIndexes;
}

const std::vector<unsigned int>& Source::StateOrder() const
{
    return device.Param().Resorter->PrevFileDiIndexes;
}

const AnChannelData& Source::Analog(size_t channel) const
{
    return *First().AnChannels.at(AnalogOrder().at(channel));
}

const DiChannelData& Source::State(size_t channel) const
{
    return *First().DiChannels.at(StateOrder().at(channel));
}

size_t Source::AnalogCount() const
{
    return First().AnChannels.size();
}

size_t Source::StateCount() const
{
    return First().DiChannels.size();
}

} // namespace verify
