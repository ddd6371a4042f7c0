#include "catalogue/foundcolumns.h"

#include <QStringList>

#include <algorithm>

namespace catalogue {

namespace {

QJsonValue ValueOf(const sql::Row& row, int column, bool isFlag)
{
    struct Visitor
    {
        bool isFlag;
        QJsonValue operator()(std::monostate) const { return QJsonValue::Null; }
        QJsonValue operator()(qint64 number) const
        {
            return isFlag ? QJsonValue(number != 0) : QJsonValue(number);
        }
        QJsonValue operator()(double number) const { return number; }
        QJsonValue operator()(const QString& text) const { return text; }
        QJsonValue operator()(const QByteArray& bytes) const { return QString::fromUtf8(bytes); }
    };
    return std::visit(Visitor{isFlag}, row.Of(column));
}

} // namespace

const std::vector<FoundColumn>& FoundColumns()
{
    static const std::vector<FoundColumn> columns = {
        {"path", "", "path", false},
        {"kind", "", "kind", false},
        {"station", "", "station", false},
        {"recorder", "", "recorder", false},
        {"start_time", "", "start", false},
        {"trigger_time", "", "trigger", false},
        {"circuit", "", "circuit", false},
        {"cause", "", "cause", false},
        {"setting", "", "setting", false},
        {"fault_kind", "fault", "kind", false},
        {"fault_circuit", "fault", "circuit", false},
        {"fault_direction", "fault", "direction", false},
        {"fault_onset", "fault", "onset", false},
        {"fault_clearing", "fault", "clearing", false},
        {"fault_duration", "fault", "duration", false},
        {"fault_current", "fault", "current", false},
        {"distance_method", "fault", "method", false},
        {"distance_percent", "fault", "percent", false},
        {"distance_km", "fault", "km", false},
        {"fault_resistance", "fault", "resistance", false},
        {"start_after", "operating", "start", false},
        {"trip_after", "operating", "trip", false},
        {"breaker_after", "operating", "breaker", false},
        {"clearing_after", "operating", "clearing", false},
        {"dead_time", "operating", "deadTime", false},
        {"reclosed", "operating", "reclosed", true},
        {"duration", "", "duration", false},
        {"samples", "", "samples", false},
        {"rates", "", "rates", false},
        {"frequency", "", "frequency", false},
        {"analog", "", "analog", false},
        {"digital", "", "digital", false},
        {"events", "", "events", false},
        {"greatest_current", "", "greatestCurrent", false},
        {"greatest_voltage", "", "greatestVoltage", false},
        {"bytes", "", "bytes", false},
        {"print", "", "sha256", false},
        {"verified", "", "verified", false},
        {"forgiven", "", "forgiven", false},
        {"reason", "", "reason", false},
        {"error", "", "error", false},
        {"gone", "", "gone", false},
    };
    return columns;
}

const QString& FoundList()
{
    static const QString list = [] {
        QStringList names;
        for (const FoundColumn& column : FoundColumns())
            names << QStringLiteral("e.") + QLatin1String(column.name);
        return names.join(QLatin1String(", "));
    }();
    return list;
}

int FoundPlace(const char* name)
{
    const std::vector<FoundColumn>& columns = FoundColumns();
    const auto found = std::find_if(columns.begin(), columns.end(), [name](const FoundColumn& column) {
        return QLatin1String(column.name) == QLatin1String(name);
    });
    return static_cast<int>(found - columns.begin());
}

QJsonObject FoundObject(const sql::Row& row, const QString& path)
{
    QJsonObject object;
    QJsonObject fault;
    QJsonObject operating;
    int place = 0;
    for (const FoundColumn& column : FoundColumns()) {
        const QLatin1String group(column.group);
        QJsonObject& of = group.isEmpty() ? object : group == QLatin1String("fault") ? fault : operating;
        of[QLatin1String(column.key)] = ValueOf(row, place++, column.isFlag);
    }
    object[QLatin1String("path")] = path;
    object[QLatin1String("fault")] =
        fault[QLatin1String("kind")].isNull() ? QJsonValue(QJsonValue::Null) : fault;
    object[QLatin1String("operating")] = operating;
    return object;
}

} // namespace catalogue
