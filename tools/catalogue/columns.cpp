#include "catalogue/columns.h"

#include <QFileInfo>
#include <QSet>

#include <utility>

namespace catalogue {

namespace {

using sql::TextOrNull;
using sql::Value;
using sql::ValueOf;

using Column = std::pair<const char*, Value (*)(const Entry&)>;

Value OfFault(const Entry& entry, QString FaultFacts::* member)
{
    return entry.fault ? TextOrNull((*entry.fault).*member) : Value();
}

Value OfFault(const Entry& entry, std::optional<double> FaultFacts::* member)
{
    return entry.fault ? ValueOf((*entry.fault).*member) : Value();
}

Value FaultDuration(const Entry& entry)
{
    return entry.fault && entry.fault->clearing ? Value(*entry.fault->clearing - entry.fault->onset)
                                                : Value();
}

Value Reclosed(const Entry& entry)
{
    return entry.operating.reclosed ? Value(qint64{*entry.operating.reclosed}) : Value();
}

// Facts that only an entry has that could be read.
template <class Fact>
Value Read(const Entry& entry, Fact fact)
{
    return entry.reason.isEmpty() ? Value(fact) : Value();
}

qint64 BytesOf(const Entry& entry)
{
    qint64 bytes = 0;
    for (const Piece& piece : entry.pieces)
        bytes += piece.size;
    return bytes;
}

const std::vector<Column>& Columns()
{
    static const std::vector<Column> columns = {
        {"kind", [](const Entry& e) { return Value(QString::fromLatin1(NameOf(e.kind))); }},
        {"print", [](const Entry& e) { return Value(QString::fromLatin1(PrintOf(e.pieces))); }},
        {"bytes", [](const Entry& e) { return Value(BytesOf(e)); }},
        {"reason", [](const Entry& e) { return TextOrNull(e.reason); }},
        {"error", [](const Entry& e) { return TextOrNull(e.error); }},
        {"station", [](const Entry& e) { return Value(e.station); }},
        {"recorder", [](const Entry& e) { return Value(e.recorder); }},
        {"start_time", [](const Entry& e) { return TextOrNull(e.start); }},
        {"trigger_time", [](const Entry& e) { return TextOrNull(e.trigger); }},
        {"utc_offset", [](const Entry& e) { return e.utcOffset ? Value(qint64{*e.utcOffset}) : Value(); }},
        {"moment", [](const Entry& e) { return Read(e, e.moment); }},
        {"circuit", [](const Entry& e) { return TextOrNull(e.circuit); }},
        {"cause", [](const Entry& e) { return TextOrNull(e.cause); }},
        {"setting", [](const Entry& e) { return TextOrNull(e.setting); }},
        {"duration", [](const Entry& e) { return Read(e, e.duration); }},
        {"samples", [](const Entry& e) { return Read(e, e.samples); }},
        {"rates", [](const Entry& e) { return TextOrNull(e.rates); }},
        {"frequency", [](const Entry& e) { return Read(e, e.frequency); }},
        {"analog", [](const Entry& e) { return Value(static_cast<qint64>(e.analog.size())); }},
        {"digital", [](const Entry& e) { return Value(static_cast<qint64>(e.digital.size())); }},
        {"events", [](const Entry& e) { return Value(static_cast<qint64>(e.events.size())); }},
        {"greatest_current", [](const Entry& e) { return ValueOf(e.greatestCurrent); }},
        {"greatest_voltage", [](const Entry& e) { return ValueOf(e.greatestVoltage); }},
        {"fault_kind", [](const Entry& e) { return OfFault(e, &FaultFacts::kind); }},
        {"fault_circuit", [](const Entry& e) { return OfFault(e, &FaultFacts::circuit); }},
        {"fault_direction", [](const Entry& e) { return OfFault(e, &FaultFacts::direction); }},
        {"fault_onset", [](const Entry& e) { return e.fault ? Value(e.fault->onset) : Value(); }},
        {"fault_clearing", [](const Entry& e) { return OfFault(e, &FaultFacts::clearing); }},
        {"fault_duration", [](const Entry& e) { return FaultDuration(e); }},
        {"fault_current", [](const Entry& e) { return OfFault(e, &FaultFacts::current); }},
        {"distance_method", [](const Entry& e) { return OfFault(e, &FaultFacts::method); }},
        {"distance_percent", [](const Entry& e) { return OfFault(e, &FaultFacts::percent); }},
        {"distance_km", [](const Entry& e) { return OfFault(e, &FaultFacts::kilometres); }},
        {"fault_resistance", [](const Entry& e) { return OfFault(e, &FaultFacts::resistance); }},
        {"start_after", [](const Entry& e) { return ValueOf(e.operating.start); }},
        {"trip_after", [](const Entry& e) { return ValueOf(e.operating.trip); }},
        {"breaker_after", [](const Entry& e) { return ValueOf(e.operating.breaker); }},
        {"clearing_after", [](const Entry& e) { return ValueOf(e.operating.clearing); }},
        {"dead_time", [](const Entry& e) { return ValueOf(e.operating.deadTime); }},
        {"reclosed", [](const Entry& e) { return Reclosed(e); }},
        {"forgiven", [](const Entry& e) { return Value(e.forgiven); }},
    };
    return columns;
}

} // namespace

QString PlaceHolders(int count)
{
    return QStringList(QVector<QString>(count, QStringLiteral("?")).toList()).join(QLatin1String(", "));
}

const QStringList& EntryColumns()
{
    static const QStringList names = [] {
        QStringList list;
        for (const Column& column : Columns())
            list << QLatin1String(column.first);
        return list;
    }();
    return names;
}

sql::Values ValuesOf(const Entry& entry)
{
    sql::Values values;
    for (const Column& column : Columns())
        values.push_back(column.second(entry));
    return values;
}

QString WordsOf(const Entry& entry)
{
    QStringList words = {QFileInfo(entry.path).fileName(),
                         entry.station,
                         entry.recorder,
                         entry.circuit,
                         entry.cause,
                         entry.setting};
    if (entry.fault)
        words << entry.fault->circuit << entry.fault->kind;
    for (const DigitalFacts& channel : entry.digital) {
        if (channel.changes > 0)
            words << channel.circuit << channel.name;
    }
    words.removeAll(QString());
    words.removeDuplicates();
    return words.join(QLatin1Char('\n'));
}

} // namespace catalogue
