#include "analysis/summary.h"

#include "analysis/linematch.h"
#include "text/texts.h"

namespace analysis {

const Circuit* Summary::FaultedCircuit() const
{
    return findings.fault ? &circuits[findings.fault->circuit] : nullptr;
}

Summary Summarise(const Question& question)
{
    Extent extent;
    extent.mostBytes = question.mostBytes;
    extent.encoding = question.encoding;
    return Summarise(Read(question.record, extent), question.lines, question.lineFile);
}

Summary Summarise(const Oscillogram& oscillogram, const Lines& lines, const QString& lineFile,
                  WantedPhasors phasors)
{
    Summary summary;
    summary.config = oscillogram.config;
    summary.circuits = CircuitsOf(summary.config);
    const ChannelKinds kinds(oscillogram.config, oscillogram.information);
    summary.lines = LinesOf(lines, summary.circuits, kinds);
    summary.lineFile = lineFile;
    summary.samples = oscillogram.Count();
    summary.total = oscillogram.total;
    summary.hasTrigger = oscillogram.total > 0 && oscillogram.axis.HasTrigger(oscillogram.total);
    if (summary.samples > 0) {
        const Signals signals(oscillogram);
        summary.rate = signals.Rate();
        summary.findings = FindFault(signals, summary.circuits, summary.lines, phasors);
    } else {
        summary.findings.hasWaves = false;
    }
    summary.events = EventsOf(oscillogram, kinds);
    summary.operating =
        OperatingOf(summary.events.events, summary.config, summary.circuits, summary.findings.fault);
    return summary;
}

QString Decimal(double number, int decimals)
{
    QString text = QString::number(number, 'f', decimals);
    if (text.startsWith(QLatin1Char('-')) && text.toDouble() == 0)
        text.remove(0, 1);
    return text.replace(QLatin1Char('.'), Tr("summary", "."));
}

} // namespace analysis
