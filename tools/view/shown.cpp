#include "view/shown.h"

#include "view/report.h"

namespace view {

analysis::Oscillogram Load(const QString& recordPath, const Options& options)
{
    const analysis::Extent whole;
    return analysis::Read(recordPath,
                          options.full ? whole : analysis::Extent{options.window, LargestSamples});
}

analysis::Summary SummaryOf(const QString& recordPath, const analysis::Oscillogram& oscillogram,
                            const Options& options)
{
    if (options.window > 0 || analysis::BytesOf(oscillogram) > analysis::LargestAnalysed)
        return analysis::Summarise({recordPath, options.lines, options.lineFile, LargestSamples});
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
