#include "catalogue/statistics.h"

#include "catalogue/conditions.h"
#include "catalogue/names.h"

#include <algorithm>

namespace catalogue {

namespace {

// Runs "command WHERE conditions rest".
void RunWanted(Catalogue& catalogue, const Wanted& wanted, const QString& command, const QString& rest,
               const sql::Database::RowFunction& row)
{
    catalogue.Guard([&] {
        const Conditions conditions = ConditionsOf(catalogue.Database(), wanted);
        catalogue.Database().Run(command + QLatin1Char(' ') + conditions.Where() + rest, conditions.values,
                                 row);
    });
}

QString TriggerAt(Catalogue& catalogue, const Wanted& wanted, const char* way)
{
    QString trigger;
    RunWanted(
        catalogue, wanted, QStringLiteral("SELECT e.trigger_time FROM entries e"),
        QStringLiteral(" AND e.moment IS NOT NULL ORDER BY e.moment %1 LIMIT 1").arg(QLatin1String(way)),
        [&](const sql::Row& row) { trigger = row.Text(0); });
    return trigger;
}

const char* ColumnOf(By by)
{
    switch (by) {
    case By::Month:
        return "month";
    case By::Kind:
        return "fault_kind";
    case By::Circuit:
        break;
    }
    return "line";
}

} // namespace

Overview OverviewOf(Catalogue& catalogue, const Wanted& wanted)
{
    Overview overview;
    RunWanted(catalogue, wanted,
              QStringLiteral(
                  "SELECT e.kind, count(*), count(e.reason), CAST(sum(e.bytes) AS BIGINT) FROM entries e"),
              QStringLiteral(" GROUP BY e.kind"), [&](const sql::Row& row) {
                  (row.Text(0) == QLatin1String(NameOf(Kind::Record)) ? overview.records
                                                                      : overview.recordings) = row.Integer(1);
                  overview.unread += row.Integer(2);
                  overview.bytes += row.Integer(3);
              });
    overview.first = TriggerAt(catalogue, wanted, "ASC");
    overview.last = TriggerAt(catalogue, wanted, "DESC");
    return overview;
}

qint64 GoneCount(Catalogue& catalogue, Wanted wanted)
{
    wanted.isGone = true;
    qint64 count = 0;
    RunWanted(catalogue, wanted, QStringLiteral("SELECT count(*) FROM entries e"), QString(),
              [&](const sql::Row& row) { count = row.Integer(0); });
    return count;
}

std::vector<FaultCount> FaultCounts(Catalogue& catalogue, const Wanted& wanted, By by)
{
    std::vector<FaultCount> counts;
    const QLatin1String column(ColumnOf(by));
    RunWanted(catalogue, wanted,
              QStringLiteral("SELECT e.%1, count(DISTINCT e.moment) FROM entries e").arg(column),
              QStringLiteral(" AND e.fault_kind IS NOT NULL GROUP BY e.%1").arg(column),
              [&](const sql::Row& row) { counts.push_back({row.Text(0), row.Integer(1)}); });
    std::sort(counts.begin(), counts.end(), [by](const FaultCount& a, const FaultCount& b) {
        return by == By::Circuit && a.count != b.count ? a.count > b.count : a.of < b.of;
    });
    return counts;
}

std::vector<Recorder> RecordersOf(Catalogue& catalogue, const Wanted& wanted,
                                  const std::optional<qint64>& silentSince)
{
    std::vector<Recorder> recorders;
    const auto isWanted = [](const QString& name, const QStringList& parts) {
        return parts.isEmpty() || IsMeant(name, parts);
    };
    const auto add = [&](const sql::Row& row) {
        if ((!silentSince || row.Integer(2) < *silentSince) && isWanted(row.Text(0), wanted.stations) &&
            isWanted(row.Text(1), wanted.recorders))
            recorders.push_back({row.Text(0), row.Text(1), row.Text(3)});
    };
    catalogue.Guard([&] {
        catalogue.Database().Run(QStringLiteral("SELECT station, recorder, last, last_time FROM recorders"),
                                 {}, add);
    });
    std::sort(recorders.begin(), recorders.end(), [](const Recorder& a, const Recorder& b) {
        return std::tie(a.station, a.name) < std::tie(b.station, b.name);
    });
    return recorders;
}

Duplicates DuplicatesOf(Catalogue& catalogue, const Wanted& wanted)
{
    Duplicates duplicates;
    RunWanted(catalogue, wanted,
              QStringLiteral("SELECT CAST(sum(more) AS BIGINT), CAST(sum(more * bytes) AS BIGINT) FROM "
                             "(SELECT count(*) - 1 AS "
                             "more, max(e.bytes) AS bytes FROM entries e"),
              QStringLiteral(" GROUP BY e.print HAVING count(*) > 1) AS groups"),
              [&](const sql::Row& row) { duplicates = {row.Integer(0), row.Integer(1)}; });
    return duplicates;
}

} // namespace catalogue
