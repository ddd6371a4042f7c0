#include "catalogue/schema.h"

#include "text/texts.h"

#include <QDateTime>
#include <QMap>

namespace catalogue {

namespace {

// Names in braces differ between the databases. A comment after a column becomes its COMMENT in PostgreSQL.
const char* const Tables = R"sql(
CREATE TABLE catalogue (
    version INTEGER NOT NULL, -- of these tables
    made TEXT NOT NULL        -- when, in UTC
);
CREATE TABLE entries (
    id {id},
    kind TEXT NOT NULL,           -- recording, record
    path TEXT NOT NULL,           -- of the first file (.ZU), or the .cfg or .cff: from the catalogue's directory if it is below that, else absolute
    print TEXT NOT NULL,          -- SHA-256 of all its files
    bytes {big} NOT NULL,         -- of all its files
    noted TEXT NOT NULL,          -- when it came into the catalogue, in UTC
    looked TEXT NOT NULL,         -- when it was read, in UTC
    gone TEXT,                    -- when it was not there any more, in UTC; NULL: it is there
    reason TEXT,                  -- why it could not be read: a word for programs; NULL: it could
    error TEXT,                   -- the same for people
    station TEXT NOT NULL,
    recorder TEXT NOT NULL,
    start_time TEXT,              -- of the first sample, ISO 8601, with the offset from UTC if it is known
    trigger_time TEXT,            -- likewise
    utc_offset INTEGER,           -- minutes; NULL: not known
    moment {big},                 -- of the trigger: microseconds since 1970 in UTC; on its own clock if the offset is not known
    circuit TEXT,                 -- that started the recorder
    cause TEXT,                   -- of the start
    setting TEXT,                 -- that was exceeded
    duration {real},              -- s
    samples {big},
    rates TEXT,                   -- Hz; several as hertz:last sample
    frequency {real},             -- of the network, Hz
    analog INTEGER NOT NULL,      -- channels
    digital INTEGER NOT NULL,     -- channels
    events INTEGER NOT NULL,      -- changes of digital channels, bounce folded
    greatest_current {real},      -- greatest magnitude of all current channels, primary, A
    greatest_voltage {real},      -- of all voltage channels, primary, V
    fault_kind TEXT,              -- AG, BG, CG, AB, BC, CA, ABG, BCG, CAG, ABC, ABCG; NULL: no fault
    fault_circuit TEXT,
    fault_direction TEXT,         -- forward, reverse, unknown
    fault_onset {real},           -- s from the trigger
    fault_clearing {real},        -- likewise; NULL: it lasts to the end
    fault_duration {real},        -- s
    fault_current {real},         -- greatest RMS of a phase during the fault, primary, A
    distance_method TEXT,         -- reactance, takagi, modifiedTakagi
    distance_percent {real},      -- of the line
    distance_km {real},
    fault_resistance {real},      -- ohm
    start_after {real},           -- of the protection, s from the onset of the fault, or else the first start
    trip_after {real},            -- likewise
    breaker_after {real},         -- likewise
    clearing_after {real},        -- likewise
    dead_time {real},             -- of the reclosing, s
    reclosed INTEGER,             -- 1: successfully, 0: not; NULL: there was none
    forgiven INTEGER NOT NULL,    -- mistakes in the files of a record that was read all the same
    verified TEXT,                -- of a record: right, wrong; NULL: not compared
    verified_time TEXT,           -- when, in UTC
    recording {big}               -- the recording's id, of a record that was compared with it
);
CREATE UNIQUE INDEX entries_path ON entries (path) WHERE gone IS NULL;
CREATE INDEX entries_print ON entries (print);
CREATE INDEX entries_moment ON entries (moment);
CREATE INDEX entries_station ON entries (station, moment);
CREATE INDEX entries_circuit ON entries (circuit, moment);
CREATE INDEX entries_recorder ON entries (station, recorder, moment);
CREATE INDEX entries_fault ON entries (fault_circuit, moment) WHERE fault_kind IS NOT NULL;
CREATE INDEX entries_kind ON entries (fault_kind, moment) WHERE fault_kind IS NOT NULL;
CREATE INDEX entries_duration ON entries (fault_duration) WHERE fault_kind IS NOT NULL;
CREATE INDEX entries_current ON entries (fault_current) WHERE fault_kind IS NOT NULL;
CREATE INDEX entries_unread ON entries (reason) WHERE reason IS NOT NULL;
CREATE TABLE pieces (
    entry {big} NOT NULL REFERENCES entries (id) ON DELETE CASCADE,
    name TEXT NOT NULL,           -- of the file, without its directory
    bytes {big} NOT NULL,
    modified {big} NOT NULL,      -- ns since 1970
    sha256 TEXT NOT NULL,         -- of its contents
    PRIMARY KEY (entry, name)
) {rowless};
CREATE TABLE channels (
    id {id},
    kind TEXT NOT NULL,           -- analog, digital
    circuit TEXT NOT NULL,
    name TEXT NOT NULL,
    phase TEXT NOT NULL,
    unit TEXT NOT NULL,
    UNIQUE (kind, circuit, name, phase, unit)
);
CREATE TABLE extremes (
    entry {big} NOT NULL REFERENCES entries (id) ON DELETE CASCADE,
    channel {big} NOT NULL REFERENCES channels (id),
    least {real},                 -- primary, in the unit of the channel
    greatest {real},              -- likewise
    PRIMARY KEY (entry, channel)
) {rowless};
CREATE TABLE changes (
    channel {big} NOT NULL REFERENCES channels (id),
    entry {big} NOT NULL REFERENCES entries (id) ON DELETE CASCADE,
    changes {big} NOT NULL,       -- how many
    first {real},                 -- s from the trigger
    PRIMARY KEY (channel, entry)
) {rowless};
CREATE INDEX changes_entry ON changes (entry);
CREATE TABLE events (
    entry {big} NOT NULL REFERENCES entries (id) ON DELETE CASCADE,
    place INTEGER NOT NULL,       -- in the sequence, from 0
    time {real} NOT NULL,         -- s from the trigger
    channel {big} NOT NULL REFERENCES channels (id),
    kind TEXT NOT NULL,           -- start, trip, breaker, reclosing, other
    state INTEGER NOT NULL,       -- of the channel, from then on
    active INTEGER NOT NULL,      -- 1: the signal is there; of a breaker: it is closed
    PRIMARY KEY (entry, place)
) {rowless};
)sql";

// The words are stored once, beside the index.
const char* const SqliteSearch = R"sql(
CREATE TABLE words (
    entry INTEGER PRIMARY KEY REFERENCES entries (id) ON DELETE CASCADE,
    words TEXT NOT NULL           -- by which an entry is found: names and events
);
CREATE VIRTUAL TABLE search USING fts5 (words, content='words', content_rowid='entry');
)sql";

const char* const PostgresSearch = R"sql(
CREATE TABLE search (
    entry BIGINT PRIMARY KEY REFERENCES entries (id) ON DELETE CASCADE,
    words TSVECTOR NOT NULL
);
CREATE INDEX search_words ON search USING GIN (words);
)sql";

// "ZUCA" in the file's header: another program's database has something else there.
constexpr qint64 ApplicationId = 0x5A554341;

QString Worded(const char* script, sql::Dialect dialect)
{
    const bool isServer = dialect == sql::Dialect::Postgres;
    const QMap<QString, const char*> words = {
        {QStringLiteral("{id}"), isServer ? "BIGINT GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY"
                                          : "INTEGER PRIMARY KEY AUTOINCREMENT"},
        {QStringLiteral("{big}"), isServer ? "BIGINT" : "INTEGER"},
        {QStringLiteral("{real}"), isServer ? "DOUBLE PRECISION" : "REAL"},
        {QStringLiteral("{rowless}"), isServer ? "" : "WITHOUT ROWID"},
    };
    QString text = QString::fromUtf8(script);
    for (auto word = words.begin(); word != words.end(); ++word)
        text.replace(word.key(), QLatin1String(word.value()));
    return text;
}

bool IsEmpty(sql::Database& database)
{
    const char* command =
        database.Kind() == sql::Dialect::Sqlite
            ? "SELECT count(*) FROM sqlite_master"
            : "SELECT count(*) FROM information_schema.tables WHERE table_schema = current_schema()";
    return database.One(QLatin1String(command)) == sql::Value(qint64{0});
}

void Create(sql::Database& database)
{
    const sql::Dialect dialect = database.Kind();
    database.RunScript(Worded(Tables, dialect));
    if (dialect == sql::Dialect::Sqlite) {
        database.RunScript(QLatin1String(SqliteSearch));
        database.RunScript(QStringLiteral("PRAGMA application_id=%1").arg(ApplicationId));
    } else {
        database.RunScript(QLatin1String(PostgresSearch));
    }
    database.Run(QStringLiteral("INSERT INTO catalogue (version, made) VALUES (?, ?)"),
                 {qint64{SchemaVersion}, QDateTime::currentDateTimeUtc().toString(Qt::ISODate)});
}

// 0 if the database has no version.
qint64 VersionOf(sql::Database& database)
{
    if (database.Kind() == sql::Dialect::Sqlite &&
        database.One(QStringLiteral("PRAGMA application_id")) != sql::Value(ApplicationId))
        return 0;
    try {
        const sql::Value version = database.One(QStringLiteral("SELECT version FROM catalogue"));
        return std::holds_alternative<qint64>(version) ? std::get<qint64>(version) : 0;
    } catch (const sql::Failure& failure) {
        if (failure.trouble != sql::Trouble::Damaged)
            throw;
        return 0;
    }
}

} // namespace

void CheckVersion(sql::Database& database)
{
    const qint64 version = VersionOf(database);
    if (version == 0)
        throw text::Error(Tr("catalogue", "it is no catalogue"));
    if (version > SchemaVersion)
        throw text::Error(Tr("catalogue", "it was made by a newer version of the program; install that"));
}

void Prepare(sql::Database& database)
{
    const bool isServer = database.Kind() == sql::Dialect::Postgres;
    if (!isServer)
        database.Run(QStringLiteral("PRAGMA journal_mode=WAL"), {}, [](const sql::Row&) {});
    database.Together([&] {
        if (isServer) // until the end of the transaction: one program at a time makes tables
            database.Run(QStringLiteral("SELECT pg_advisory_xact_lock(?)"), {ApplicationId}, [](const sql::Row&) {});
        if (IsEmpty(database))
            Create(database);
        else
            CheckVersion(database);
    });
}

} // namespace catalogue
