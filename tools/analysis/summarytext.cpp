// The summary in sentences.
#include "analysis/summary.h"
#include "comtrade/moment.h"
#include "text/texts.h"

#include <array>
#include <cmath>

namespace analysis {

namespace {

QString Name(FaultKind kind)
{
    constexpr std::array<const char*, 11> names = {
        QT_TRANSLATE_NOOP("summary", "A to earth"),
        QT_TRANSLATE_NOOP("summary", "B to earth"),
        QT_TRANSLATE_NOOP("summary", "C to earth"),
        QT_TRANSLATE_NOOP("summary", "A-B"),
        QT_TRANSLATE_NOOP("summary", "B-C"),
        QT_TRANSLATE_NOOP("summary", "C-A"),
        QT_TRANSLATE_NOOP("summary", "A-B to earth"),
        QT_TRANSLATE_NOOP("summary", "B-C to earth"),
        QT_TRANSLATE_NOOP("summary", "C-A to earth"),
        QT_TRANSLATE_NOOP("summary", "A-B-C"),
        QT_TRANSLATE_NOOP("summary", "A-B-C to earth"),
    };
    return Tr("summary", names[static_cast<size_t>(kind)]);
}

// The time of day to the millisecond.
QString Clock(const Summary& summary, double time)
{
    comtrade::TimeStamp moment = comtrade::After(summary.config.trigger, time + 0.0005);
    moment.decimals = 3; // cut off; half a millisecond was added
    return comtrade::ClockText(moment).replace(QLatin1Char('.'), Tr("summary", "."));
}

QString FirstSentence(const Summary& summary, const Fault& fault)
{
    const FaultPart& first = fault.parts.front();
    const QString& circuit = summary.FaultedCircuit()->name;
    const QString kind = Name(first.kind);
    const QString clock = Clock(summary, first.onset);
    const QString what = circuit.isEmpty()
                             ? Tr("summary", "Short circuit %1 at %2").arg(kind, clock)
                             : Tr("summary", "Short circuit %1 on %2 at %3").arg(kind, circuit, clock);
    if (const auto& clearing = fault.Clearing())
        return Tr("summary", "%1; cleared after %2.").arg(what, DurationText(*clearing - fault.Onset()));
    return Tr("summary", "%1; it lasts to the end of the record.").arg(what);
}

void AddFurtherParts(QStringList& sentences, const Summary& summary, const Fault& fault)
{
    for (size_t i = 1; i < fault.parts.size(); ++i) {
        const FaultPart& part = fault.parts[i];
        if (!part.afterReclosing)
            sentences << Tr("summary", "After %1 it became %2.")
                             .arg(DurationText(part.onset - fault.Onset()), Name(part.kind));
        else if (part.clearing)
            sentences << Tr("summary", "Short circuit %1 again at %2, for %3.")
                             .arg(Name(part.kind), Clock(summary, part.onset),
                                  DurationText(*part.clearing - part.onset));
        else
            sentences << Tr("summary", "Short circuit %1 again at %2, to the end of the record.")
                             .arg(Name(part.kind), Clock(summary, part.onset));
    }
}

QString DirectionText(Direction direction)
{
    if (direction == Direction::Forward)
        return Tr("summary", "It is ahead, in the direction of the circuit.");
    if (direction == Direction::Reverse)
        return Tr("summary", "It is behind the recorder, not on this circuit.");
    return QString();
}

QString LackText(Lack lack, const Summary& summary)
{
    switch (lack) {
    case Lack::LineData:
        return summary.lineFile.isEmpty()
                   ? Tr("summary", "No distance: there is no lines.ini with the data of the line.")
                   : Tr("summary", "No distance: '%1' has no data of the line [%2].")
                         .arg(summary.lineFile, summary.FaultedCircuit()->name);
    case Lack::Voltages:
        return Tr("summary", "No distance: the record has no voltages of this circuit; 'voltages' in "
                             "lines.ini names the circuit whose voltages serve it.");
    case Lack::TooShort:
        return Tr("summary", "No distance: the fault is too short for it.");
    case Lack::None:
        break;
    }
    return QString();
}

QString DistanceText(const FaultPart& part)
{
    QString range;
    if (part.range)
        range = Tr("summary", "between %1 and %2 %")
                    .arg(Decimal(part.range->fromPercent, 1), Decimal(part.range->toPercent, 1));
    if (!part.best)
        return Tr("summary", "Distance %1.").arg(range);
    const Distance& best = part.distances[*part.best];
    QStringList parts = {Tr("summary", "%1 % (%2 km)").arg(Decimal(best.percent, 1), Decimal(best.km, 1))};
    if (part.range)
        parts << range;
    if (std::isfinite(best.resistance))
        parts << Tr("summary", "fault resistance %1 ohm").arg(Decimal(best.resistance, 1));
    return Tr("summary", "Distance %1 (%2).").arg(parts.join(QLatin1String(", ")), MethodText(best.method));
}

QString OperatingText(const Operating& operating)
{
    QStringList parts;
    const auto add = [&parts](const std::optional<double>& time, const QString& text) {
        if (time)
            parts << text.arg(DurationText(*time));
    };
    if (operating.isFromOnset)
        add(operating.start, Tr("summary", "start of the protection %1"));
    add(operating.trip, Tr("summary", "trip %1"));
    add(operating.breaker, Tr("summary", "breaker open %1"));
    if (parts.isEmpty())
        return QString();
    const QString all = parts.join(QLatin1String(", "));
    return operating.isFromOnset ? Tr("summary", "From the onset: %1.").arg(all)
                                 : Tr("summary", "From the start of the protection: %1.").arg(all);
}

QString ReclosingText(const Operating& operating)
{
    if (!operating.reclosed || !operating.deadTime)
        return QString();
    const QString pause = DurationText(*operating.deadTime);
    return *operating.reclosed ? Tr("summary", "Closed again after %1, with success.").arg(pause)
                               : Tr("summary", "Closed again after %1, without success.").arg(pause);
}

void AddFault(QStringList& sentences, const Summary& summary, const Fault& fault)
{
    sentences << FirstSentence(summary, fault);
    AddFurtherParts(sentences, summary, fault);
    sentences << DirectionText(fault.direction);
    const FaultPart& located = fault.Located();
    sentences << (located.best || located.range ? DistanceText(located) : LackText(located.lack, summary));
}

} // namespace

QString MethodText(DistanceMethod method)
{
    constexpr std::array<const char*, 3> names = {
        QT_TRANSLATE_NOOP("summary", "reactance method"),
        QT_TRANSLATE_NOOP("summary", "Takagi method"),
        QT_TRANSLATE_NOOP("summary", "modified Takagi method"),
    };
    return Tr("summary", names[static_cast<size_t>(method)]);
}

QString DurationText(double seconds)
{
    if (std::abs(seconds) >= 1)
        return Tr("summary", "%1 s").arg(Decimal(seconds, 2));
    const double milliseconds = seconds * 1e3;
    const bool isWhole = std::abs(milliseconds - std::round(milliseconds)) < 0.05;
    return Tr("summary", "%1 ms").arg(Decimal(milliseconds, isWhole ? 0 : 1));
}

QStringList SentencesOf(const Summary& summary)
{
    QStringList sentences;
    if (summary.findings.fault)
        AddFault(sentences, summary, *summary.findings.fault);
    else if (summary.findings.hasWaves)
        sentences << Tr("summary", "No short circuit was found.");
    else
        sentences << Tr("summary", "The record has no circuit with the currents of three phases, so that no "
                                   "short circuit can be found in it.");
    sentences << OperatingText(summary.operating) << ReclosingText(summary.operating);
    if (summary.events.events.empty())
        sentences << Tr("summary", "No discrete signal changes.");
    if (!summary.hasTrigger)
        sentences << Tr("summary", "The trigger time is outside the record's samples.");
    if (summary.samples < summary.total)
        sentences << Tr("summary", "Only %1 of %2 samples, around the trigger, were looked at.")
                         .arg(summary.samples)
                         .arg(summary.total);
    sentences.removeAll(QString());
    return sentences;
}

} // namespace analysis
