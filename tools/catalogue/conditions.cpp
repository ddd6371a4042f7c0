#include "catalogue/conditions.h"

#include "catalogue/columns.h"
#include "catalogue/names.h"
#include "catalogue/words.h"

#include <QSet>

#include <algorithm>

namespace catalogue {

namespace {

constexpr qint64 MostFew = 5000;       // entries that are sorted faster than others are passed over
constexpr qint64 MostSeveral = 100000; // entries whose set is made faster than each is asked for
constexpr qint64 MostOffset = 14LL * 3600 * 1000000; // us, of a zone from UTC

void AddMoment(Conditions& conditions, const char* comparison, const std::optional<Instant>& instant)
{
    if (!instant)
        return;
    const QString sign = QLatin1String(comparison);
    if (!instant->isOwnClock) {
        conditions.Add(QStringLiteral("e.moment %1 ?").arg(sign), {instant->at});
        return;
    }
    // The first one has an index and lets through a few too many.
    const bool isSince = comparison[0] == '>';
    conditions.Add(QStringLiteral("e.moment %1 ?").arg(sign),
                   {instant->at + (isSince ? -MostOffset : MostOffset)});
    conditions.Add(
        QStringLiteral("e.moment + coalesce(e.utc_offset, 0) * CAST(60000000 AS BIGINT) %1 ?").arg(sign),
        {instant->at});
}

void AddNames(Conditions& conditions, sql::Database& database, const char* column, const QStringList& parts,
              bool isGone)
{
    if (parts.isEmpty())
        return;
    QStringList names;
    for (const QString& name : NamesIn(database, QLatin1String(column), isGone)) {
        if (IsMeant(name, parts))
            names << name;
    }
    conditions.AddIn(QStringLiteral("e.") + QLatin1String(column), names);
}

// The stations of the recorders lead into the index.
void AddRecorders(Conditions& conditions, sql::Database& database, const QStringList& parts)
{
    if (parts.isEmpty())
        return;
    QStringList stations;
    QStringList names;
    for (const auto& [station, recorder] : Recorders(database)) {
        if (IsMeant(recorder, parts)) {
            stations << station;
            names << recorder;
        }
    }
    stations.removeDuplicates();
    names.removeDuplicates();
    conditions.AddIn(QStringLiteral("e.station"), stations);
    conditions.AddIn(QStringLiteral("e.recorder"), names);
    conditions.Add(QStringLiteral("e.reason IS NULL"));
}

void AddKinds(Conditions& conditions, const std::optional<QStringList>& kinds)
{
    if (!kinds)
        return;
    QStringList faults = *kinds;
    faults.removeAll(QString());
    if (faults.size() == kinds->size()) {
        conditions.AddIn(QStringLiteral("e.fault_kind"), faults);
        return;
    }
    sql::Values values(faults.begin(), faults.end());
    conditions.Add(faults.isEmpty()
                       ? QStringLiteral("e.fault_kind IS NULL AND e.reason IS NULL")
                       : QStringLiteral("(e.fault_kind IS NULL AND e.reason IS NULL OR e.fault_kind IN (%1))")
                             .arg(PlaceHolders(faults.size())),
                   values);
}

void AddRange(Conditions& conditions, const char* column, const Range& range)
{
    if (range.from)
        conditions.Add(QStringLiteral("e.%1 >= ?").arg(QLatin1String(column)), {*range.from});
    if (range.to)
        conditions.Add(QStringLiteral("e.%1 <= ?").arg(QLatin1String(column)), {*range.to});
}

// How many of them there are, up to a number.
qint64 CountOf(sql::Database& database, const QString& ids, sql::Values values, qint64 most)
{
    values.push_back(most);
    const sql::Value count =
        database.One(QStringLiteral("SELECT count(*) FROM (%1 LIMIT ?) AS some").arg(ids), values);
    return std::holds_alternative<qint64>(count) ? std::get<qint64>(count) : 0;
}

// SQLite does not know how many entries a word or a channel has. A few are the best way to the others'
// conditions; a
// "+" says that they are not. PostgreSQL counts for itself.
void AddText(Conditions& conditions, sql::Database& database, const QString& text)
{
    if (text.isEmpty())
        return;
    const bool isServer = database.Kind() == sql::Dialect::Postgres;
    const QString search = SearchFor(text, database.Kind());
    if (search.isEmpty()) {
        conditions.AddIn(QString(), {});
        return;
    }
    const sql::Values value = {search};
    if (isServer) {
        conditions.Add(QStringLiteral("e.id IN (SELECT entry FROM search WHERE words @@ CAST(? AS tsquery))"),
                       value);
        return;
    }
    const QString ids = QStringLiteral("SELECT rowid FROM search WHERE search MATCH ?");
    const qint64 count = CountOf(database, ids, value, MostSeveral);
    if (count < MostSeveral)
        conditions.Add(QStringLiteral("%1e.id IN (%2)").arg(QLatin1String(count < MostFew ? "" : "+"), ids),
                       value);
    else
        conditions.Add(QStringLiteral("EXISTS (%1 AND rowid = +e.id)").arg(ids), value);
}

void AddChanged(Conditions& conditions, sql::Database& database, const QStringList& parts)
{
    if (parts.isEmpty())
        return;
    sql::Values channels;
    database.Run(QStringLiteral("SELECT id, name FROM channels WHERE kind = 'digital' ORDER BY id"), {},
                 [&](const sql::Row& row) {
                     if (IsMeant(row.Text(1), parts))
                         channels.emplace_back(row.Integer(0));
                 });
    if (channels.empty()) {
        conditions.AddIn(QString(), {});
        return;
    }
    const QString those =
        QStringLiteral("channel IN (%1)").arg(PlaceHolders(static_cast<int>(channels.size())));
    const QString ids = QStringLiteral("SELECT entry FROM changes WHERE ") + those;
    if (database.Kind() == sql::Dialect::Postgres || CountOf(database, ids, channels, MostFew) < MostFew)
        conditions.Add(QStringLiteral("e.id IN (%1)").arg(ids), channels);
    else
        conditions.Add(QStringLiteral("EXISTS (SELECT 1 FROM changes WHERE entry = e.id AND +%1)").arg(those),
                       channels);
}

// As a range, since LIKE does not know the case of letters in SQLite; "0" comes after "/".
void AddBelow(Conditions& conditions, sql::Database& database, const QString& directory)
{
    const bool isServer = database.Kind() == sql::Dialect::Postgres;
    const QString path = isServer ? QStringLiteral("e.path COLLATE \"C\"") : QStringLiteral("e.path");
    const QString start = directory.endsWith(QLatin1Char('/')) ? directory.chopped(1) : directory;
    conditions.Add(path + QLatin1String(" > ?"), {start + QLatin1Char('/')});
    conditions.Add(path + QLatin1String(" < ?"), {start + QLatin1Char('0')});
}

} // namespace

void Conditions::Add(const QString& term, const sql::Values& more)
{
    terms << term;
    values.insert(values.end(), more.begin(), more.end());
}

void Conditions::AddIn(const QString& column, const QStringList& more)
{
    if (more.isEmpty())
        Add(QStringLiteral("1 = 0"));
    else
        Add(QStringLiteral("%1 IN (%2)").arg(column, PlaceHolders(more.size())),
            sql::Values(more.begin(), more.end()));
}

QString Conditions::Where() const
{
    return QStringLiteral("WHERE ") + terms.join(QLatin1String(" AND "));
}

Conditions ConditionsOf(sql::Database& database, const Wanted& wanted)
{
    Conditions conditions;
    conditions.Add(wanted.isGone ? QStringLiteral("e.gone IS NOT NULL") : QStringLiteral("e.gone IS NULL"));
    AddMoment(conditions, ">=", wanted.since);
    AddMoment(conditions, "<", wanted.until);
    AddNames(conditions, database, "station", wanted.stations, wanted.isGone);
    AddRecorders(conditions, database, wanted.recorders);
    AddNames(conditions, database, "line", wanted.circuits, wanted.isGone);
    AddKinds(conditions, wanted.kinds);
    if (wanted.minCurrent)
        conditions.Add(QStringLiteral("e.fault_kind IS NOT NULL AND e.fault_current >= ?"),
                       {*wanted.minCurrent});
    if (wanted.longerThan)
        conditions.Add(QStringLiteral("e.fault_kind IS NOT NULL AND e.fault_duration > ?"),
                       {*wanted.longerThan});
    if (wanted.isUncleared)
        conditions.Add(QStringLiteral("e.fault_kind IS NOT NULL AND e.fault_clearing IS NULL"));
    AddRange(conditions, "distance_km", wanted.kilometres);
    AddRange(conditions, "distance_percent", wanted.percent);
    AddText(conditions, database, wanted.text);
    AddChanged(conditions, database, wanted.changed);
    if (wanted.kind)
        conditions.Add(QStringLiteral("e.kind = ?"), {*wanted.kind});
    if (wanted.isUnread)
        conditions.Add(QStringLiteral("e.reason IS NOT NULL"));
    if (wanted.below)
        AddBelow(conditions, database, *wanted.below);
    return conditions;
}

} // namespace catalogue
