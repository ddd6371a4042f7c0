// A PostgreSQL server of Debian's for a test program, in a directory of its own, reached by a socket alone.
#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

class PostgresServer
{
public:
    /// The server of this program, started when it is asked for first. A failure ends the program.
    static PostgresServer& Own();

    PostgresServer();
    ~PostgresServer();

    /// A database that nobody has used yet, as an address. `more` are words of CREATE DATABASE.
    QString FreshDatabase(const QString& more = QString());

    /// The same for a schema, which is made faster.
    QString FreshSchema();

    /// The address of a database, for a user ("name" or "name:password", with percent signs) or its owner.
    QString AddressOf(const QString& database, const QString& user = QString()) const;

    /// Runs commands of psql in a database, by default in that of the server, and returns what they print:
    /// values separated by "|". A failure ends the program.
    QString Psql(const QString& commands, const QString& database = QStringLiteral("postgres")) const;

    void Start();
    void Stop();

    /// Ends every connection as a restart does.
    void Disconnect() const;

private:
    QStringList Privileges() const;
    QString Run(const QString& program, const QStringList& arguments, const QByteArray& input = {}) const;

    const QString user;
    QTemporaryDir directory;
    QProcess server;
    int databases = 0;
};
