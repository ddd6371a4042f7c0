#include "sql/postgres.h"

#include "text/texts.h"

#include <QSqlError>
#include <QSqlRecord>
#include <QUrl>
#include <QUrlQuery>
#include <QUuid>
#include <QVariant>

namespace sql {

namespace {

class PostgresRow : public Row
{
public:
    explicit PostgresRow(const QSqlQuery& query_) : query(query_) {}
    int Columns() const override { return query.record().count(); }
    QString NameOf(int column) const override { return query.record().fieldName(column); }
    bool IsNull(int column) const override { return query.isNull(column); }
    qint64 Integer(int column) const override { return query.value(column).toLongLong(); }
    double Real(int column) const override { return query.value(column).toDouble(); }
    QString Text(int column) const override { return query.value(column).toString(); }
    QByteArray Bytes(int column) const override { return query.value(column).toByteArray(); }
    Value Of(int column) const override
    {
        const QVariant value = query.value(column);
        if (query.isNull(column))
            return {};
        switch (static_cast<QMetaType::Type>(value.type())) {
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
};

QVariant VariantOf(const Value& value)
{
    struct Visitor
    {
        QVariant operator()(std::monostate) const { return {}; }
        QVariant operator()(qint64 number) const { return number; }
        QVariant operator()(double number) const { return number; }
        QVariant operator()(const QString& text) const { return text.isNull() ? QStringLiteral("") : text; }
        QVariant operator()(const QByteArray& bytes) const { return bytes; }
    };
    return std::visit(Visitor(), value);
}

// By the classes of SQLSTATE (PostgreSQL documentation, appendix A).
Trouble TroubleOf(const QString& state)
{
    if (state.startsWith(QLatin1String("40")) || state == QLatin1String("55P03"))
        return Trouble::Busy;
    if (state == QLatin1String("53100"))
        return Trouble::NoRoom;
    if (state == QLatin1String("42P01") || state == QLatin1String("42703") || state.startsWith(QLatin1String("XX")))
        return Trouble::Damaged;
    if (state.isEmpty() || state.startsWith(QLatin1String("08")) || state.startsWith(QLatin1String("57P")))
        return Trouble::Gone;
    return Trouble::Other;
}

[[noreturn]] void Fail(const QSqlError& error)
{
    QString text = error.databaseText().trimmed();
    if (text.isEmpty())
        text = error.driverText();
    text.remove(QLatin1String("ERROR:  "));
    text.remove(QLatin1String("FATAL:  "));
    throw Failure(text.section(QLatin1Char('\n'), 0, 0), TroubleOf(error.nativeErrorCode()));
}

} // namespace

Postgres::Postgres(const QString& address) : name(QUuid::createUuid().toString())
{
    const QUrl url(address);
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), name);
    if (!database.isValid()) {
        database = QSqlDatabase();
        QSqlDatabase::removeDatabase(name);
        throw Failure(Tr("sql", "Qt's driver for PostgreSQL is missing; install the package libqt5sql5-psql"),
                      Trouble::Other);
    }
    QUrlQuery query(url);
    const QString host = query.queryItemValue(QStringLiteral("host"), QUrl::FullyDecoded);
    query.removeQueryItem(QStringLiteral("host"));
    database.setHostName(host.isEmpty() ? url.host() : host);
    database.setPort(url.port());
    database.setUserName(url.userName());
    database.setPassword(url.password());
    database.setDatabaseName(url.path().mid(1));
    QStringList options;
    const auto items = query.queryItems(QUrl::FullyDecoded);
    for (const auto& item : items)
        options << item.first + QLatin1Char('=') + item.second;
    database.setConnectOptions(options.join(QLatin1Char(';')));
    if (!database.open()) {
        const QSqlError error = database.lastError();
        database = QSqlDatabase();
        QSqlDatabase::removeDatabase(name);
        Fail(error);
    }
}

Postgres::~Postgres()
{
    statements.clear();
    QSqlDatabase::removeDatabase(name);
}

QSqlQuery& Postgres::Prepared(const QString& command)
{
    const auto known = statements.find(command);
    if (known != statements.end())
        return *known;
    QSqlQuery query(QSqlDatabase::database(name, false));
    query.setForwardOnly(true);
    if (!query.prepare(command))
        Fail(query.lastError());
    return *statements.insert(command, query);
}

void Postgres::Run(const QString& command, const Values& values, const RowFunction& row)
{
    // A transaction's own commands cannot be prepared.
    if (values.empty() && !row) {
        RunScript(command);
        return;
    }
    QSqlQuery& query = Prepared(command);
    int place = 0;
    for (const Value& value : values)
        query.bindValue(place++, VariantOf(value));
    if (!query.exec())
        Fail(query.lastError());
    const PostgresRow here(query);
    while (row && query.next())
        row(here);
    query.finish();
}

void Postgres::RunScript(const QString& commands)
{
    QSqlQuery query(QSqlDatabase::database(name, false));
    if (!query.exec(commands))
        Fail(query.lastError());
}

void Postgres::Undo() noexcept
{
    QSqlQuery query(QSqlDatabase::database(name, false));
    query.exec(QStringLiteral("ROLLBACK"));
}

} // namespace sql
