#include "sql/address.h"

#include "sql/postgres.h"
#include "sql/serveraddress.h"
#include "sql/sqlite.h"

namespace sql {

bool IsServer(const QString& address)
{
    return IsServerAddress(address);
}

QString Shown(const QString& address)
{
    return IsServer(address) ? WithoutPassword(address) : address;
}

std::unique_ptr<Database> Open(const QString& address, bool isReadOnly)
{
    if (IsServer(address))
        return std::make_unique<Postgres>(address);
    return std::make_unique<Sqlite>(address, isReadOnly ? Sqlite::Access::ReadOnly : Sqlite::Access::Create);
}

} // namespace sql
