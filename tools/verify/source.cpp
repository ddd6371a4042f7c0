#include "verify/source.h"

#include "explain/file.h"
#include "explain/library.h"
#include "recording/zufileformat.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "service/zucmtrconverter.h"
#include "text/texts.h"
#include "verify/device.h"
#include "verify/mismatch.h"

namespace verify {

Source::Source(const Device& device_, const QString& firstFile) : device(device_), chain(device_.Param())
{
    ZuCmtrDevParam& param = device.Param();
    param.ClearLog();
    bool fits = chain.Load(firstFile);
    if (fits) {
        chain.CutAtDifference();
        fits = chain.CheckChannels() && chain.SumTotals();
    }
    if (!fits)
        throw Unreadable(Tr("verify", "the recording cannot be read: %1")
                             .arg(explain::NotLoaded(firstFile, param.LastError)));
    segments = *chain.Files();
    sampleRate = param.SampleRate;
    totalSamples = param.TotalSamples;
    files << firstFile;
    for (size_t i = 1; i < segments.size(); ++i)
        files << firstFile.left(firstFile.size() - 1) + QLatin1String(ZuCmtrConverter::ZuExtensions[i - 1]);
    Order();
    while (!param.LogMessages.empty())
        notes << explain::LibraryText(param.PopLogMessages());
}

void Source::Order()
{
    ZuFileFormat& first = chain.First();
    ZuCmtrDevParam& param = device.Param();
    first.RenameAllChannelsName(&param);
    first.ParseComment(&param);
    param.Resorter->SortZuFile(&first);
    recordName = first.DoOutName(&param);
}

void Source::OrderAfresh()
{
    device.Param().Resorter->ClearPrevFileAnIndexes();
    device.Param().Resorter->ClearPrevFileDiIndexes();
    Order();
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
