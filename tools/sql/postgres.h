// A PostgreSQL database on a server, by Qt's driver (libqt5sql5-psql, libqt6sql6-psql).
#pragma once

#include "sql/database.h"

#include <QHash>
#include <QSqlDatabase>
#include <QSqlQuery>

namespace sql {

/// A connection that is lost is made again by the next Together or, outside it, by the next reading command.
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
    void SetPatience(int milliseconds) override;
    Dialect Kind() const override { return Dialect::Postgres; }

protected:
    const char* Begin() const override { return "BEGIN"; }
    void Undo() noexcept override;
    bool MayRepeat(const Failure& failure) override;

private:
    void Connect();
    void ConnectAgain();
    QString Prepared(const QString& command);
    QSqlQuery Executed(const QString& text);
    QSqlQuery Result(const QString& command, const Values& values);

    const QString name; // of the connection among those of the process
    QString role;       // as whom the server has us
    int patience = UsualPatience;
    QHash<QString, QString> statements; // names of those that the server knows, by command
};

} // namespace sql
