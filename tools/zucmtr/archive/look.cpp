#include "zucmtr/archive/look.h"

#include "analysis/channelrole.h"
#include "analysis/oscillogram.h"
#include "analysis/summary.h"
#include "comtrade/moment.h"
#include "explain/file.h"
#include "recording/zufileformat.h"
#include "text/reasons.h"
#include "view/report.h"
#include "zucmtr/archive/faultpicture.h"
#include "zucmtr/terminal/command.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <malloc.h>
#include <utility>

namespace archive {

namespace {

using catalogue::Entry;

std::optional<double> Finite(double number)
{
    return std::isfinite(number) ? std::optional<double>(number) : std::nullopt;
}

void AddStart(Entry& entry, const QString& report)
{
    entry.circuit = view::ReportValue(report, QStringLiteral("Наименование ЛЭП и/или оборудования №1:"));
    entry.cause = view::ReportValue(report, QStringLiteral("Условие пуска №1:"));
    entry.setting = view::ReportValue(report, QStringLiteral("Уставка пуска:"));
}

QString RatesText(const comtrade::Configuration& config)
{
    if (config.rates.empty())
        return QStringLiteral("0");
    if (config.rates.size() == 1)
        return QString::number(config.rates[0].hertz, 'g', 10);
    QStringList texts;
    for (const comtrade::SampleRate& rate : config.rates)
        texts << QStringLiteral("%1:%2").arg(rate.hertz, 0, 'g', 10).arg(rate.lastSample);
    return texts.join(QLatin1Char(' '));
}

void AddTimes(Entry& entry, const comtrade::Configuration& config)
{
    entry.utcOffset = comtrade::UtcOffset(config);
    entry.start = comtrade::MomentText(config.start, entry.utcOffset);
    entry.trigger = comtrade::MomentText(config.trigger, entry.utcOffset);
    const QDateTime midnight(config.trigger.date, QTime(0, 0), Qt::UTC);
    entry.moment = midnight.toMSecsSinceEpoch() * 1000 + config.trigger.nanoseconds / 1000 -
                   qint64{entry.utcOffset.value_or(0)} * 60000000;
}

void Widen(std::optional<double>& greatest, double value)
{
    if (!greatest || value > *greatest)
        greatest = value;
}

void AddAnalog(Entry& entry, const analysis::Oscillogram& oscillogram)
{
    for (size_t i = 0; i < oscillogram.analog.size(); ++i) {
        const comtrade::AnalogChannel& channel = oscillogram.config.analog[i];
        const analysis::Codes& codes = oscillogram.analog[i];
        const double factor = analysis::PrimaryFactor(channel);
        const double one = factor * (channel.a * codes.Least() + channel.b);
        const double other = factor * (channel.a * codes.Greatest() + channel.b);
        entry.analog.push_back({channel.circuit, channel.name, channel.phase, channel.unit,
                                Finite(std::min(one, other)), Finite(std::max(one, other))});
        const double magnitude =
            std::max(std::abs(one), std::abs(other)) * analysis::BaseFactor(channel.unit);
        if (!std::isfinite(magnitude))
            continue;
        const analysis::Quantity quantity = analysis::RoleOf(channel).quantity;
        if (quantity == analysis::Quantity::Current)
            Widen(entry.greatestCurrent, magnitude);
        if (quantity == analysis::Quantity::Voltage)
            Widen(entry.greatestVoltage, magnitude);
    }
}

void AddDigital(Entry& entry, const analysis::Oscillogram& oscillogram)
{
    for (size_t i = 0; i < oscillogram.states.size(); ++i) {
        const comtrade::StateChannel& channel = oscillogram.config.states[i];
        catalogue::DigitalFacts facts{channel.circuit, channel.name, channel.phase,
                                      oscillogram.states[i].Changes(), std::nullopt};
        if (facts.changes > 0)
            facts.first = oscillogram.axis.TimeOf(oscillogram.first +
                                                  static_cast<qint64>(oscillogram.states[i].NextChange(1)));
        entry.digital.push_back(facts);
    }
}

std::optional<double> FaultCurrent(const analysis::Fault& fault, const analysis::Circuit& circuit)
{
    std::optional<double> greatest;
    for (const analysis::ChannelPhasors& one : fault.phasors) {
        for (size_t phase = 0; phase < analysis::Phases; ++phase) {
            if (circuit.currents[phase] == static_cast<int>(one.channel) &&
                std::isfinite(std::abs(one.during)))
                Widen(greatest, std::abs(one.during));
        }
    }
    return greatest;
}

void AddFault(Entry& entry, const analysis::Summary& summary)
{
    if (!summary.findings.fault)
        return;
    const analysis::Fault& fault = *summary.findings.fault;
    const analysis::Circuit& circuit = *summary.FaultedCircuit();
    catalogue::FaultFacts facts;
    facts.circuit = circuit.name;
    facts.kind = QLatin1String(analysis::NameOf(fault.Kind()));
    facts.direction = QLatin1String(analysis::NameOf(fault.direction));
    facts.onset = fault.Onset();
    facts.clearing = fault.Clearing();
    facts.current = FaultCurrent(fault, circuit);
    const analysis::FaultPart& located = fault.Located();
    if (located.best) {
        const analysis::Distance& distance = located.distances[*located.best];
        facts.method = QLatin1String(analysis::NameOf(distance.method));
        facts.percent = Finite(distance.percent);
        facts.kilometres = Finite(distance.km);
        facts.resistance = Finite(distance.resistance);
    }
    entry.fault = facts;
}

void AddEvents(Entry& entry, const analysis::Summary& summary)
{
    for (const analysis::Event& event : summary.events.events)
        entry.events.push_back({event.time, event.channel, QLatin1String(analysis::NameOf(event.use.kind)),
                                event.IsActive(), event.state});
    const analysis::Operating& operating = summary.operating;
    entry.operating = {operating.start,    operating.trip,     operating.breaker,
                       operating.clearing, operating.deadTime, operating.reclosed};
}

void Fill(Entry& entry, const analysis::Oscillogram& oscillogram, const analysis::Summary& summary)
{
    const comtrade::Configuration& config = oscillogram.config;
    entry.station = config.station;
    entry.recorder = config.device;
    entry.samples = oscillogram.total;
    entry.duration = oscillogram.axis.Duration(oscillogram.total);
    entry.rates = RatesText(config);
    entry.frequency = config.lineFrequency;
    AddTimes(entry, config);
    AddStart(entry, oscillogram.report);
    AddAnalog(entry, oscillogram);
    AddDigital(entry, oscillogram);
    AddFault(entry, summary);
    entry.picture = PictureOf(oscillogram, summary);
    AddEvents(entry, summary);
}

// Only an ini file says which station it is. The recorder may say who it is itself.
void NameByItself(Entry& entry)
{
    entry.station.clear();
    entry.recorder.clear();
    ZuFileFormat file;
    if (file.LoadHeader(entry.path))
        entry.recorder = file.Identity.trimmed();
}

Entry Failed(const QString& path, catalogue::Kind kind, const char* reason, const QString& text)
{
    Entry entry;
    entry.kind = kind;
    entry.path = path;
    entry.reason = QLatin1String(explain::WordOf(path, reason));
    entry.error = text;
    return entry;
}

} // namespace

// Each recording takes as much memory as the one before: the system need not clear it anew, which is a tenth
// of the work.
Looker::Looker(Reading reading_) : reading(std::move(reading_))
{
    constexpr int kept = 256 << 20;
    constexpr int largest = 32 << 20; // of one piece that is kept
    mallopt(M_TRIM_THRESHOLD, kept);
    mallopt(M_MMAP_THRESHOLD, largest);
    mallopt(M_TOP_PAD, 1 << 20);
}

// The lines of a directory's recordings are read once. A mistake in a file that was found costs the distances
// alone.
const LineData& Looker::LinesFor(const QString& ini, Entry& entry)
{
    const QString key = ini + QLatin1Char('\n') + QFileInfo(entry.path).path();
    if (key != linesFor) {
        linesWhy.clear();
        try {
            lines = LoadLines(reading.lines, ini, entry.path);
        } catch (const ConfigurationError& error) {
            if (!reading.lines.isEmpty())
                throw;
            lines = LineData();
            linesWhy = error.Message();
        }
        linesFor = key;
    }
    if (entry.error.isEmpty())
        entry.error = linesWhy;
    return lines;
}

// The record of a recording. An ini file that describes several recorders, or has a mistake, is no reason to
// have no entry: the fault is found without it.
RecordMaker::Made Looker::Make(Entry& entry)
{
    const bool isChosen = !(reading.choice == DeviceChoice());
    const QString directory = QFileInfo(entry.path).path();
    if (isChosen || reading.isPlain || directory != plainFor) {
        try {
            return maker.Make(entry.path, reading.choice, reading.isPlain);
        } catch (const ConfigurationError& error) {
            if (isChosen || reading.isPlain)
                throw;
            plainFor = directory;
            plainWhy = error.Message();
        }
    }
    entry.error = plainWhy;
    return maker.Make(entry.path, {}, true);
}

void Looker::LookInto(Entry& entry)
{
    const bool isRecord = entry.kind == catalogue::Kind::Record;
    analysis::Extent extent;
    extent.mostBytes = analysis::LargestAnalysed;
    RecordMaker::Made made{entry.path, reading.choice.ini};
    if (!isRecord) {
        made = Make(entry);
        extent.encoding = QStringLiteral("UTF-8"); // as it was made
    }
    const LineData& data = LinesFor(made.ini, entry);
    const analysis::Oscillogram oscillogram = analysis::Read(made.record, extent);
    Fill(entry, oscillogram,
         analysis::Summarise(oscillogram, data.lines, data.path, analysis::WantedPhasors::FaultedCircuit));
    if (!isRecord && made.ini.isEmpty())
        NameByItself(entry);
}

Entry Looker::Look(const QString& path, catalogue::Kind kind)
{
    const bool isRecord = kind == catalogue::Kind::Record;
    const char* unreadable = isRecord ? reason::RecordUnreadable : reason::RecordingUnreadable;
    Entry entry;
    entry.kind = kind;
    entry.path = path;
    try {
        LookInto(entry);
        return entry;
    } catch (const comtrade::Error& error) {
        return Failed(path, kind, unreadable, text::MessageOf(error));
    } catch (const SourceError& error) {
        const QString message = text::MessageOf(error);
        return Failed(path, kind, reason::OfLibrary(message, unreadable), message);
    }
}

} // namespace archive
