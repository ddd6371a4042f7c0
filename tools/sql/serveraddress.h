// The address of a PostgreSQL database, in the form that its own programs take:
// postgresql://[user[:password]@][host[:port]][/database][?option=value&...]
#pragma once

#include <QString>

namespace sql {

struct ServerAddress
{
    QString user;
    QString password;
    QString database;
    QString more; ///< hosts, ports and options as text of a connection: "host='a,b' port='5432,5433'"
};

bool IsServerAddress(const QString& address);

/// Its parts, decoded from percent signs. Several hosts are separated by commas; a host that is a path is the
/// directory of a socket.
ServerAddress ParseServerAddress(const QString& address);

/// The address without passwords.
QString WithoutPassword(const QString& address);

} // namespace sql
