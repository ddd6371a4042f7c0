#include "catalogue/names.h"

#include <algorithm>

namespace catalogue {

namespace {

QString Folded(const QString& text)
{
    return text.toCaseFolded().replace(QChar(0x451), QChar(0x435)); // ё, е
}

} // namespace

bool IsMeant(const QString& name, const QStringList& parts)
{
    return std::any_of(parts.begin(), parts.end(), [&](const QString& part) {
        return part.startsWith(QLatin1Char('=')) ? name == part.mid(1) : Folded(name).contains(Folded(part));
    });
}

QStringList NamesIn(sql::Database& database, const QString& column, bool isGone)
{
    // From each name one step in the index leads to the next.
    const QString command =
        QStringLiteral(
            "WITH RECURSIVE names (name) AS (SELECT min(%1) FROM entries WHERE gone IS NULL UNION ALL "
            "SELECT (SELECT min(%1) FROM entries WHERE gone IS NULL AND %1 > name) FROM names "
            "WHERE name IS NOT NULL) SELECT name FROM names WHERE name IS NOT NULL")
            .arg(column);
    const QString ofGone =
        QStringLiteral(
            "SELECT DISTINCT %1 FROM entries WHERE gone IS NOT NULL AND %1 IS NOT NULL ORDER BY %1")
            .arg(column);
    QStringList names;
    database.Run(isGone ? ofGone : command, {}, [&](const sql::Row& row) { names << row.Text(0); });
    return names;
}

QVector<QPair<QString, QString>> Recorders(sql::Database& database)
{
    QVector<QPair<QString, QString>> recorders;
    database.Run(QStringLiteral("SELECT station, recorder FROM recorders ORDER BY station, recorder"), {},
                 [&](const sql::Row& row) { recorders.append({row.Text(0), row.Text(1)}); });
    return recorders;
}

} // namespace catalogue
