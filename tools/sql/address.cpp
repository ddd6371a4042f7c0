#include "sql/address.h"

#include "sql/postgres.h"
#include "sql/sqlite.h"

#include <QUrl>

namespace sql {

bool IsServer(const QString& address)
{
    return address.startsWith(QLatin1String("postgresql://")) || address.startsWith(QLatin1String("postgres://"));
}

QString Shown(const QString& address)
{
    return IsServer(address) ? QUrl(address).toDisplayString(QUrl::RemovePassword) : address;
}

std::unique_ptr<Database> Open(const QString& address, bool isReadOnly)
{
    if (IsServer(address))
        return std::make_unique<Postgres>(address);
    return std::make_unique<Sqlite>(address, isReadOnly ? Sqlite::Access::ReadOnly : Sqlite::Access::Create);
}

} // namespace sql
