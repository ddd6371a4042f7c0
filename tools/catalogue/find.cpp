#include "catalogue/find.h"

#include "catalogue/conditions.h"
#include "catalogue/foundcolumns.h"

namespace catalogue {

namespace {

struct Order
{
    Sort sort;
    const char* term;
    bool isFalling; // as people expect it
    bool isText;
};

const Order Orders[] = {
    {Sort::Newest, "e.moment", true, false},
    {Sort::Oldest, "e.moment", false, false},
    {Sort::Slowest, "e.fault_duration", true, false},
    {Sort::Current, "e.fault_current", true, false},
    {Sort::Distance, "e.distance_km", false, false},
    {Sort::Size, "e.bytes", true, false},
    {Sort::Station, "e.station", false, true},
    {Sort::Circuit, "e.line", false, true},
    {Sort::Path, "e.path", false, true},
};

// "ORDER BY ...". What has no value comes last; what is equal, the newest first; texts by their letters'
// numbers.
QString OrderBy(const Wanted& wanted, sql::Dialect dialect)
{
    for (const Order& order : Orders) {
        if (order.sort != wanted.sort)
            continue;
        const bool isFalling = order.isFalling != wanted.isReverse;
        const QString collation =
            order.isText && dialect == sql::Dialect::Postgres ? QStringLiteral(" COLLATE \"C\"") : QString();
        const QString way = isFalling ? QStringLiteral("DESC") : QStringLiteral("ASC");
        const QString main =
            QStringLiteral("ORDER BY %1%2 %3 NULLS LAST, ").arg(QLatin1String(order.term), collation, way);
        return main + (order.isText ? QStringLiteral("e.moment DESC NULLS LAST, e.id DESC")
                                    : QStringLiteral("e.id ") + way);
    }
    return QString();
}

} // namespace

// The rows are chosen before they are read, so that an index may be enough to choose them.
void Find(Catalogue& catalogue, const Wanted& wanted, const sql::Database::RowFunction& row)
{
    catalogue.Guard([&] {
        sql::Database& database = catalogue.Database();
        const Conditions conditions = ConditionsOf(database, wanted);
        const QString order = OrderBy(wanted, database.Kind());
        sql::Values values = conditions.values;
        QString command = QStringLiteral("SELECT e.id FROM entries e %1 %2").arg(conditions.Where(), order);
        if (wanted.limit) {
            command += QLatin1String(" LIMIT ?");
            values.emplace_back(*wanted.limit);
        }
        database.Run(QStringLiteral("SELECT %1 FROM (%2) AS chosen JOIN entries e ON e.id = chosen.id %3")
                         .arg(FoundList(), command, order),
                     values, row);
    });
}

} // namespace catalogue
