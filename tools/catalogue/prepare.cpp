// New catalogues, and those of older versions.
#include "catalogue/schema.h"
#include "text/texts.h"

#include <QDateTime>
#include <QRegularExpression>

namespace catalogue {

namespace {

using sql::Dialect;
using sql::Value;

// "ZUCA" in the file's header: another program's database has something else there.
constexpr qint64 ApplicationId = 0x5A554341;

// A migration may keep others waiting.
constexpr int Patience = 60000; // ms

// What is committed is on the disk: a recording may be deleted as soon as the catalogue knows it. (With a log
// EXTRA is one wait for each transaction, as FULL; without, it is also safe that a transaction does not come
// back.) A log that grew because somebody read for long is cut again.
const char* const FileSettings =
    "PRAGMA foreign_keys=ON; PRAGMA synchronous=EXTRA; PRAGMA journal_size_limit=67108864";

enum class State { Empty, Foreign, Ours };

// Another program may make the catalogue meanwhile, in one transaction: who sees its tables sees its mark as
// well.
State StateOfFile(sql::Database& database)
{
    const bool isEmpty = database.Number("SELECT count(*) FROM sqlite_master") == 0;
    const qint64 id = database.Number("PRAGMA application_id").value_or(0);
    if (id == ApplicationId)
        return State::Ours;
    return id == 0 && isEmpty ? State::Empty : State::Foreign;
}

// By one command, for the same reason: each sees the database as it was when it began.
State StateOfServer(sql::Database& database)
{
    const auto state = database.Number(
        "SELECT CASE WHEN count(*) FILTER (WHERE relname IN ('catalogue', 'entries', "
        "'pieces', 'channels')) = 4 THEN 2 "
        "WHEN count(*) FILTER (WHERE relkind IN ('r', 'p', 'v', 'm', 'f')) = 0 THEN 0 "
        "ELSE 1 END FROM pg_class "
        "WHERE relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = current_schema())");
    switch (state.value_or(1)) {
    case 0:
        return State::Empty;
    case 2:
        return State::Ours;
    default:
        return State::Foreign;
    }
}

State StateOf(sql::Database& database)
{
    return database.Kind() == Dialect::Sqlite ? StateOfFile(database) : StateOfServer(database);
}

QStringList NamesOfViews(const QString& script)
{
    static const QRegularExpression view(QStringLiteral("CREATE VIEW (\\w+)"));
    QStringList names;
    for (auto match = view.globalMatch(script); match.hasNext();)
        names.prepend(match.next().captured(1)); // those that use others first
    return names;
}

void Create(sql::Database& database, const Schema& schema)
{
    database.RunScript(ScriptOf(schema.tables, database.Kind()));
    if (database.Kind() == Dialect::Sqlite)
        database.RunScript(QStringLiteral("PRAGMA application_id=%1").arg(ApplicationId));
    database.Run(QStringLiteral("INSERT INTO catalogue (version, made) VALUES (?, ?)"),
                 {qint64{schema.Version()}, QDateTime::currentDateTimeUtc().toString(Qt::ISODate)});
}

void Migrate(sql::Database& database, const Schema& schema, qint64 version)
{
    for (const QString& name : NamesOfViews(ScriptOf(schema.views, database.Kind())))
        database.RunScript(QStringLiteral("DROP VIEW IF EXISTS ") + name);
    for (size_t i = static_cast<size_t>(version - 1); i < schema.migrations.size(); ++i)
        database.RunScript(ScriptOf(schema.migrations[i], database.Kind()));
    database.Run(QStringLiteral("UPDATE catalogue SET version = ?"), {qint64{schema.Version()}});
}

void CreateViewsAndComments(sql::Database& database, const Schema& schema)
{
    const QString tables = ScriptOf(schema.tables, database.Kind());
    const QString views = ScriptOf(schema.views, database.Kind());
    database.RunScript(views);
    if (database.Kind() == Dialect::Postgres) {
        for (const QString& command : CommentsOf(tables) + CommentsOf(views))
            database.RunScript(command);
    }
}

qint64 VersionOf(sql::Database& database)
{
    return database.Number("SELECT version FROM catalogue").value_or(0);
}

[[noreturn]] void RefuseForeign()
{
    throw text::Error(Tr("catalogue", "it is no catalogue"));
}

void RefuseOthers(qint64 version, const Schema& schema)
{
    if (version < 1) // the row is missing
        RefuseForeign();
    if (version > schema.Version())
        throw text::Error(Tr("catalogue", "it was made by a newer version of the program; install that"));
}

void CreateOrMigrate(sql::Database& database, const Schema& schema)
{
    if (database.Kind() == Dialect::Postgres) // until the end of the transaction: one program at a time
        database.Run(QStringLiteral("SELECT pg_advisory_xact_lock(?)"), {ApplicationId},
                     [](const sql::Row&) {});
    const State state = StateOf(database);
    if (state == State::Foreign)
        RefuseForeign();
    if (state == State::Empty) {
        Create(database, schema);
    } else {
        const qint64 version = VersionOf(database);
        RefuseOthers(version, schema);
        if (version == schema.Version()) // another program was faster
            return;
        Migrate(database, schema, version);
    }
    CreateViewsAndComments(database, schema);
}

// What fails for damage here may never have been a catalogue.
State FirstStateOf(sql::Database& database)
{
    try {
        return StateOf(database);
    } catch (const sql::Failure& failure) {
        if (failure.trouble != sql::Trouble::Damaged)
            throw;
        throw text::Error(
            Tr("catalogue", "it is no catalogue, or a damaged one (%1)").arg(failure.Message()));
    }
}

} // namespace

void CheckVersion(sql::Database& database, const Schema& schema)
{
    const State state = FirstStateOf(database);
    if (state == State::Empty) // its making was cut short
        throw text::Error(Tr("catalogue", "it is empty; 'zucmtr archive update' fills it"));
    if (state != State::Ours)
        RefuseForeign();
    const qint64 version = VersionOf(database);
    RefuseOthers(version, schema);
    if (version < schema.Version())
        throw text::Error(Tr(
            "catalogue",
            "it was made by an older version of the program; 'zucmtr archive update' brings it up to date"));
}

void Prepare(sql::Database& database, const Schema& schema)
{
    database.SetPatience(Patience);
    const State state = FirstStateOf(database);
    if (state == State::Foreign) // before anything in it is changed
        RefuseForeign();
    database.ChooseJournal(state == State::Empty);
    if (state == State::Empty || VersionOf(database) != schema.Version())
        database.Together([&] { CreateOrMigrate(database, schema); });
    if (database.Kind() == Dialect::Sqlite)
        database.RunScript(QLatin1String(FileSettings));
}

} // namespace catalogue
