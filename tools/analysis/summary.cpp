#include "analysis/summary.h"

#include "analysis/linematch.h"
#include "text/texts.h"

#include <algorithm>

namespace analysis {

namespace {

// A line whose section names nothing but its voltages gives no distance.
void DropDistances(Fault& fault, const std::vector<Circuit>& circuits, const Lines& lines)
{
    const auto line = std::find_if(lines.begin(), lines.end(), [&](const Line& one) {
        return one.circuit == circuits[fault.circuit].name;
    });
    if (line != lines.end() && line->IsKnown())
        return;
    for (FaultPart& part : fault.parts) {
        part.distances.clear();
        part.best.reset();
        part.range.reset();
        part.lack = Lack::LineData;
    }
}

double LengthOf(const FaultPart& part)
{
    constexpr double endless = 1e18;
    return part.clearing ? *part.clearing - part.onset : endless;
}

} // namespace

const Circuit* Summary::FaultedCircuit() const
{
    return findings.fault ? &circuits[findings.fault->circuit] : nullptr;
}

Summary Summarise(const Question& question)
{
    Extent extent;
    extent.mostBytes = question.mostBytes;
    return Summarise(Read(question.record, extent), question.lines, question.lineFile);
}

Summary Summarise(const Oscillogram& oscillogram, const Lines& lines, const QString& lineFile)
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
        summary.findings = FindFault(signals, summary.circuits, summary.lines);
    } else {
        summary.findings.hasWaves = false;
    }
    if (summary.findings.fault)
        DropDistances(*summary.findings.fault, summary.circuits, summary.lines);
    summary.events = EventsOf(oscillogram, kinds);
    summary.operating =
        OperatingOf(summary.events.events, summary.config, summary.circuits, summary.findings.fault);
    return summary;
}

const FaultPart* LocatedPart(const Fault& fault)
{
    const FaultPart* longest = nullptr;
    for (const FaultPart& part : fault.parts) {
        const bool isLocated = part.best || part.range;
        if (isLocated && (longest == nullptr || LengthOf(part) > LengthOf(*longest)))
            longest = &part;
    }
    return longest;
}

QString Decimal(double number, int decimals)
{
    QString text = QString::number(number, 'f', decimals);
    if (text.startsWith(QLatin1Char('-')) && text.toDouble() == 0)
        text.remove(0, 1);
    return text.replace(QLatin1Char('.'), Tr("summary", "."));
}

} // namespace analysis
