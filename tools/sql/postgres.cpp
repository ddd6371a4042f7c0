#include "sql/postgres.h"

#include "sql/commandtext.h"
#include "sql/serveraddress.h"
#include "text/texts.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlRecord>
#include <QThread>
#include <QUuid>
#include <QVariant>

#include <cmath>

namespace sql {

namespace {

class PostgresRow : public Row
{
public:
    explicit PostgresRow(const QSqlQuery& query_) : query(query_), record(query_.record()) {}
    int Columns() const override { return record.count(); }
    QString NameOf(int column) const override { return record.fieldName(column); }
    bool IsNull(int column) const override { return query.isNull(column); }
    qint64 Integer(int column) const override { return query.value(column).toLongLong(); }
    double Real(int column) const override { return query.value(column).toDouble(); }
    // Qt makes "0" of a number that is NULL.
    QString Text(int column) const override
    {
        return query.isNull(column) ? QString() : query.value(column).toString();
    }
    QByteArray Bytes(int column) const override
    {
        return query.isNull(column) ? QByteArray() : query.value(column).toByteArray();
    }
    Value Of(int column) const override
    {
        const QVariant value = query.value(column);
        if (query.isNull(column))
            return {};
        switch (static_cast<QMetaType::Type>(value.userType())) {
        case QMetaType::Bool:
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
            return value.toLongLong();
        case QMetaType::Double:
            return value.toDouble();
        case QMetaType::QByteArray:
            return value.toByteArray();
        default:
            return value.toString();
        }
    }

private:
    const QSqlQuery& query;
    const QSqlRecord record;
};

constexpr int LongestOutage = 15000; // ms: a server starts again within that, after an update of its package
constexpr int BetweenTries = 100;    // ms
constexpr int AfterConflict = 20;    // ms
constexpr int MostStatements = 500;  // that the server is to remember

// As it stands in a command. The session understands backslashes as themselves.
QString Literal(const Value& value)
{
    struct Visitor
    {
        QString operator()(std::monostate) const { return QStringLiteral("NULL"); }
        QString operator()(qint64 number) const { return QString::number(number); }
        QString operator()(double number) const
        {
            if (std::isnan(number))
                return QStringLiteral("NULL");
            if (std::isinf(number))
                return number > 0 ? QStringLiteral("'Infinity'") : QStringLiteral("'-Infinity'");
            return QString::number(number, 'g', 17);
        }
        QString operator()(QString text) const
        {
            text.remove(QChar(0)).replace(QLatin1Char('\''), QLatin1String("''"));
            return QLatin1Char('\'') + text + QLatin1Char('\'');
        }
        QString operator()(const QByteArray& bytes) const
        {
            return QStringLiteral("'\\x%1'").arg(QString::fromLatin1(bytes.toHex()));
        }
    };
    return std::visit(Visitor(), value);
}

// By the classes of SQLSTATE (PostgreSQL documentation, appendix A). A failure to connect has none.
Trouble TroubleOf(const QString& state)
{
    const auto is = [&state](const char* begin) { return state.startsWith(QLatin1String(begin)); };
    if (is("40") || is("55P03") || is("57014") || is("53300"))
        return Trouble::Busy;
    if (is("53100"))
        return Trouble::NoRoom;
    if (is("42P01") || is("42703") || is("XX"))
        return Trouble::Damaged;
    if (state.isEmpty() || is("08") || is("57P") || is("25P03") || is("58030"))
        return Trouble::Gone;
    return Trouble::Other;
}

// Failures that a user can do something about, with the server's own words.
QString Explained(const QString& state, const QString& text, const QString& role)
{
    if (state.startsWith(QLatin1String("42501")))
        return Tr("sql", "the role '%1' lacks a permission on the server (%2); the owner of the tables or "
                         "the server's "
                         "administrator can give it with GRANT, or name another role in the address")
            .arg(role, text);
    if (state.startsWith(QLatin1String("25006")))
        return Tr("sql", "the server lets nobody write; it may be the copy of another (%1)").arg(text);
    if (state.startsWith(QLatin1String("53100")))
        return Tr("sql", "the server's disk is full (%1)").arg(text);
    return text;
}

// The server's texts begin with a word for their severity, in its own language, and have further lines.
[[noreturn]] void Fail(const QSqlError& error, const QString& role)
{
    static const QRegularExpression severity(QStringLiteral("\\b\\w+:  "),
                                             QRegularExpression::UseUnicodePropertiesOption);
    QString text = error.databaseText().trimmed();
    if (text.isEmpty())
        text = error.driverText();
    text = text.section(QLatin1Char('\n'), 0, 0).remove(severity);
    const QString state = error.nativeErrorCode();
    throw Failure(Explained(state, text, role), TroubleOf(state), state);
}

} // namespace

Postgres::Postgres(const QString& address) : name(QUuid::createUuid().toString())
{
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL")))
        throw Failure(Tr("sql", "Qt's driver for PostgreSQL is missing; install the package %1")
                          .arg(QStringLiteral("libqt%1sql%1-psql").arg(QT_VERSION_MAJOR)),
                      Trouble::Other);
    const ServerAddress parts = ParseServerAddress(address);
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), name);
    database.setUserName(parts.user);
    database.setPassword(parts.password);
    database.setDatabaseName(parts.database);
    // A machine that is gone says nothing: the connection counts as lost after 20 s to half a minute, and not
    // after the hours of the system. Of two options with the same name the last one counts.
    database.setConnectOptions(
        QStringLiteral("connect_timeout=10 tcp_user_timeout=20000 keepalives_idle=15 keepalives_interval=5 "
                       "keepalives_count=3 fallback_application_name=zucmtr ") +
        parts.more);
    try {
        Connect();
    } catch (...) {
        database = QSqlDatabase();
        QSqlDatabase::removeDatabase(name);
        throw;
    }
}

Postgres::~Postgres()
{
    QSqlDatabase::removeDatabase(name);
}

// Whoever holds a lock and does nothing for a minute has lost the network: others need not wait for the
// system to notice.
void Postgres::Connect()
{
    QSqlDatabase database = QSqlDatabase::database(name, false);
    if (!database.open())
        Fail(database.lastError(), role);
    Executed(QStringLiteral("SET client_min_messages = error")); // less would go to standard error
    Executed(QStringLiteral("SET standard_conforming_strings = on"));
    Executed(QStringLiteral("SET idle_in_transaction_session_timeout = '1min'"));
    SetPatience(patience);
    QSqlQuery server = Executed(QStringLiteral("SELECT current_setting('server_encoding'), current_user"));
    if (!server.next())
        return;
    role = server.value(1).toString();
    if (server.value(0).toString() != QLatin1String("UTF8"))
        throw Failure(Tr("sql", "its encoding is %1; make a database with ENCODING 'UTF8' TEMPLATE template0")
                          .arg(server.value(0).toString()),
                      Trouble::Other);
}

void Postgres::ConnectAgain()
{
    statements.clear();
    QSqlDatabase::database(name, false).close();
    QElapsedTimer timer;
    timer.start();
    while (true) {
        try {
            Connect();
            return;
        } catch (const Failure&) {
            if (timer.elapsed() > LongestOutage)
                throw;
        }
        QThread::msleep(BetweenTries);
    }
}

QSqlQuery Postgres::Executed(const QString& text)
{
    const QSqlDatabase database = QSqlDatabase::database(name, false);
    if (!database.isOpen()) // it could not be opened again
        throw Failure(Tr("sql", "the connection to the server is lost"), Trouble::Gone);
    QSqlQuery query(database);
    if (!query.exec(text))
        Fail(query.lastError(), role);
    return query;
}

// Not by QSqlQuery::prepare: that frees statements with a warning where the connection is lost, and has rules
// of its own for what a place holder is. What was prepared stays when a transaction is undone.
QString Postgres::Prepared(const QString& command)
{
    const auto known = statements.constFind(command);
    if (known != statements.constEnd())
        return *known;
    if (statements.size() == MostStatements) {
        Executed(QStringLiteral("DEALLOCATE ALL"));
        statements.clear();
    }
    const QString statement = QStringLiteral("zucmtr%1").arg(statements.size());
    Executed(QStringLiteral("PREPARE %1 AS ").arg(statement) + Numbered(command));
    return *statements.insert(command, statement);
}

QSqlQuery Postgres::Result(const QString& command, const Values& values)
{
    QStringList literals;
    for (const Value& value : values)
        literals << Literal(value);
    QString text = QStringLiteral("EXECUTE ") + Prepared(command);
    if (!literals.isEmpty())
        text += QLatin1Char('(') + literals.join(QLatin1String(", ")) + QLatin1Char(')');
    return Executed(text);
}

void Postgres::Run(const QString& command, const Values& values, const RowFunction& row)
{
    // A transaction's own commands cannot be prepared.
    if (values.empty() && !row) {
        Executed(command);
        return;
    }
    QSqlQuery query;
    try {
        query = Result(command, values);
    } catch (const Failure& failure) {
        if (failure.trouble != Trouble::Gone || IsTogether() || !command.startsWith(QLatin1String("SELECT")))
            throw;
        ConnectAgain();
        query = Result(command, values);
    }
    // The whole result is here, so that `row` may use the connection.
    const PostgresRow here(query);
    while (row && query.next())
        row(here);
}

// One by one: of several at once, Qt reports only the first one's failure.
void Postgres::RunScript(const QString& commands)
{
    for (const QString& command : CommandsOf(commands))
        Executed(command);
}

void Postgres::SetPatience(int milliseconds)
{
    patience = milliseconds;
    Executed(QStringLiteral("SET lock_timeout = %1").arg(patience));
}

void Postgres::Undo() noexcept
{
    const QSqlDatabase database = QSqlDatabase::database(name, false);
    if (database.isOpen())
        QSqlQuery(database).exec(QStringLiteral("ROLLBACK"));
}

bool Postgres::MayRepeat(const Failure& failure)
{
    if (failure.trouble == Trouble::Gone) {
        ConnectAgain();
        return true;
    }
    if (!failure.state.startsWith(QLatin1String("40")))
        return false;
    QThread::msleep(AfterConflict); // the other one goes first
    return true;
}

} // namespace sql
