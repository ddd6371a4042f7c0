#include "view/shown.h"

#include "comtrade/moment.h"
#include "view/report.h"

#include <algorithm>

namespace view {

namespace {

// Bytes of samples that a page has for one record beside another: what that leaves, but at least half.
qint64 RoomBeside(const comtrade::Configuration& other)
{
    constexpr auto all = static_cast<double>(LargestSamples);
    return static_cast<qint64>(std::max(all - analysis::BytesAnnounced(other), all / 2));
}

} // namespace

analysis::Oscillogram Load(const QString& recordPath, const Options& options)
{
    analysis::Extent extent;
    if (!options.full)
        extent = {options.window, LargestSamples};
    extent.encoding = options.encoding;
    return analysis::Read(recordPath, extent);
}

std::pair<analysis::Oscillogram, analysis::Oscillogram> LoadBoth(const QString& recordPath,
                                                                 const Second& second, const Options& options)
{
    const comtrade::Configuration config = comtrade::Record(recordPath).Config();
    const comtrade::Configuration other = comtrade::Record(second.recordPath).Config();
    analysis::Extent extent;
    analysis::Extent otherExtent;
    if (!options.full) {
        extent = {options.window, RoomBeside(other)};
        otherExtent = {options.window, RoomBeside(config)};
        if (second.alignment == Alignment::Time)
            otherExtent.around = -comtrade::DistanceOfTriggers(config, other).seconds;
    }
    extent.encoding = options.encoding;
    otherExtent.encoding = second.options.encoding;
    return {analysis::Read(recordPath, extent), analysis::Read(second.recordPath, otherExtent)};
}

analysis::Summary SummaryOf(const QString& recordPath, const analysis::Oscillogram& oscillogram,
                            const Options& options)
{
    if (options.window > 0 || analysis::BytesOf(oscillogram) > analysis::LargestAnalysed)
        return analysis::Summarise(
            {recordPath, options.lines, options.lineFile, LargestSamples, options.encoding});
    return analysis::Summarise(oscillogram, options.lines, options.lineFile);
}

Held Holding(const analysis::Oscillogram& oscillogram)
{
    Held held;
    held.samples = oscillogram.Count();
    held.total = oscillogram.total;
    held.announced = oscillogram.config.SampleCount();
    held.hasTrigger = held.total == 0 || oscillogram.axis.HasTrigger(held.total);
    for (const analysis::Codes& codes : oscillogram.analog) {
        held.missing += codes.Missing();
        held.incomplete += codes.Missing() > 0 ? 1 : 0;
    }
    return held;
}

QString StartedCircuit(const analysis::Oscillogram& oscillogram)
{
    QStringList circuits;
    for (const comtrade::AnalogChannel& channel : oscillogram.config.analog)
        circuits << channel.circuit;
    return StartedCircuit(oscillogram.report, circuits);
}

} // namespace view
