// A PostgreSQL database on a server, by Qt's driver (libqt5sql5-psql).
#pragma once

#include "sql/database.h"

#include <QHash>
#include <QSqlDatabase>
#include <QSqlQuery>

namespace sql {

class Postgres : public Database
{
public:
    /// Connects. Throws Failure, also if Qt's driver is not installed.
    explicit Postgres(const QString& address);
    ~Postgres() override;
    Postgres(const Postgres&) = delete;
    Postgres& operator=(const Postgres&) = delete;

    using Database::Run;
    void Run(const QString& command, const Values& values, const RowFunction& row) override;
    void RunScript(const QString& commands) override;
    Dialect Kind() const override { return Dialect::Postgres; }

protected:
    const char* Begin() const override { return "BEGIN"; }
    void Undo() noexcept override;

private:
    QSqlQuery& Prepared(const QString& command);

    const QString name; // of the connection among those of the process
    QHash<QString, QSqlQuery> statements;
};

} // namespace sql
