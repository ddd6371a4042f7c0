#include "catalogue/schema.h"

#include "catalogue/views.h"

#include <QMap>
#include <QRegularExpression>

namespace catalogue {

namespace {

// Names in braces differ between the databases. The comment after a name becomes its COMMENT in PostgreSQL.
const char* const Tables = R"sql(
CREATE TABLE catalogue ( -- this database: one row
    version INTEGER NOT NULL, -- of these tables
    made TEXT NOT NULL        -- when, in UTC
);
CREATE TABLE entries ( -- a recording or a record, also one that could not be read or is gone
    id {id},                      -- by which the other tables name it
    kind TEXT NOT NULL,           -- recording, record
    path TEXT NOT NULL,           -- of the first file (.ZU), or the .cfg or .cff: from the catalogue's directory if it is below that, else absolute
    print TEXT NOT NULL,          -- SHA-256 of all its files
    bytes {big} NOT NULL,         -- of all its files
    noted TEXT NOT NULL,          -- when it came into the catalogue, in UTC
    looked TEXT NOT NULL,         -- when it was read, in UTC
    gone TEXT,                    -- when it was not there any more, in UTC; NULL: it is there
    reason TEXT,                  -- why it could not be read: a word for programs; NULL: it could
    error TEXT,                   -- the same for people; without a reason: why it was read without its ini file or lines.ini
    station TEXT NOT NULL,        -- empty: it could not be read, or has no ini file that says it
    recorder TEXT NOT NULL,       -- its name or number; empty: it could not be read, or does not say
    start_time TEXT,              -- of the first sample, ISO 8601, with the offset from UTC if it is known
    trigger_time TEXT,            -- of the trigger, in the same form
    utc_offset INTEGER,           -- minutes; NULL: not known
    moment {big},                 -- of the trigger: microseconds since 1970 in UTC; on its own clock if the offset is not known
    circuit TEXT,                 -- that started the recorder
    cause TEXT,                   -- of the start
    setting TEXT,                 -- that was exceeded
    duration {real},              -- s
    samples {big},                -- of each channel
    rates TEXT,                   -- Hz; several as hertz:last sample
    frequency {real},             -- of the network, Hz
    analog INTEGER NOT NULL,      -- channels
    digital INTEGER NOT NULL,     -- channels
    events INTEGER NOT NULL,      -- changes of digital channels, bounce folded
    greatest_current {real},      -- greatest magnitude of all current channels, primary, A
    greatest_voltage {real},      -- of all voltage channels, primary, V
    fault_kind TEXT,              -- AG, BG, CG, AB, BC, CA, ABG, BCG, CAG, ABC, ABCG; NULL: no fault
    fault_circuit TEXT,           -- line on which the fault was seen
    fault_direction TEXT,         -- forward, reverse, unknown
    fault_onset {real},           -- s from the trigger
    fault_clearing {real},        -- s from the trigger; NULL: it lasts to the end
    fault_duration {real},        -- s from onset to clearing
    fault_current {real},         -- greatest RMS of a phase during the fault, primary, A
    distance_method TEXT,         -- reactance, takagi, modifiedTakagi
    distance_percent {real},      -- of the line
    distance_km {real},           -- from the station
    fault_resistance {real},      -- ohm
    start_after {real},           -- of the protection, s from the onset of the fault, or else the first start
    trip_after {real},            -- first trip, s from the same
    breaker_after {real},         -- first breaker that opened, s from the same
    clearing_after {real},        -- end of the fault, s from the same
    dead_time {real},             -- of the reclosing, s
    reclosed INTEGER,             -- 1: successfully, 0: not; NULL: there was none
    forgiven INTEGER NOT NULL,    -- mistakes in the files of a record that was read all the same
    verified TEXT,                -- of a record: right, wrong; NULL: not compared
    verified_time TEXT,           -- when, in UTC
    recording {big},              -- the recording's id, of a record that was compared with it
    line TEXT GENERATED ALWAYS AS (coalesce(fault_circuit, circuit)) STORED, -- circuit of the fault, or else the one that started the recorder
    month TEXT GENERATED ALWAYS AS (substr(trigger_time, 1, 7)) STORED       -- of the trigger on the recorder's clock, as 2024-03
);
CREATE UNIQUE INDEX entries_path ON entries (path) WHERE gone IS NULL;
CREATE INDEX entries_print ON entries (print);
CREATE INDEX entries_moment ON entries (moment) WHERE gone IS NULL;
CREATE INDEX entries_station ON entries (station, moment) WHERE gone IS NULL;
CREATE INDEX entries_recorder ON entries (station, recorder, moment) WHERE reason IS NULL;
CREATE INDEX entries_line ON entries (line, moment) WHERE gone IS NULL;
CREATE INDEX entries_fault ON entries (moment) WHERE gone IS NULL AND fault_kind IS NOT NULL;
CREATE INDEX entries_kind ON entries (fault_kind, moment) WHERE gone IS NULL AND fault_kind IS NOT NULL;
CREATE INDEX entries_faulted ON entries (line, moment) WHERE gone IS NULL AND fault_kind IS NOT NULL;
CREATE INDEX entries_month ON entries (month, moment) WHERE gone IS NULL AND fault_kind IS NOT NULL;
CREATE INDEX entries_duration ON entries (fault_duration) WHERE gone IS NULL AND fault_kind IS NOT NULL;
CREATE INDEX entries_current ON entries (fault_current) WHERE gone IS NULL AND fault_kind IS NOT NULL;
CREATE INDEX entries_unread ON entries (reason) WHERE reason IS NOT NULL;
CREATE INDEX entries_gone ON entries (gone) WHERE gone IS NOT NULL;
CREATE TABLE pieces ( -- a file of an entry
    entry {big} NOT NULL REFERENCES entries (id) ON DELETE CASCADE, -- id of the entry
    name TEXT NOT NULL,           -- of the file, without its directory
    bytes {big} NOT NULL,         -- its size
    modified {big} NOT NULL,      -- ns since 1970
    sha256 TEXT NOT NULL,         -- of its contents
    PRIMARY KEY (entry, name)
) {rowless};
CREATE TABLE channels ( -- a name of a channel, whichever entries have it
    id {id},                      -- by which the other tables name it
    kind TEXT NOT NULL,           -- analog, digital
    circuit TEXT NOT NULL,        -- line or other equipment; empty: none
    name TEXT NOT NULL,           -- of the signal
    phase TEXT NOT NULL,          -- A, B, C, N ...; empty: none
    unit TEXT NOT NULL,           -- of an analog channel; empty: none
    UNIQUE (kind, circuit, name, phase, unit)
);
CREATE TABLE extremes ( -- an analog channel of an entry
    entry {big} NOT NULL REFERENCES entries (id) ON DELETE CASCADE, -- id of the entry
    channel {big} NOT NULL REFERENCES channels (id), -- id of the channel
    least {real},                 -- primary, in the unit of the channel
    greatest {real},              -- primary, in the unit of the channel
    PRIMARY KEY (entry, channel)
) {rowless};
CREATE TABLE changes ( -- a digital channel of an entry that changed in it
    channel {big} NOT NULL REFERENCES channels (id), -- id of the channel
    entry {big} NOT NULL REFERENCES entries (id) ON DELETE CASCADE, -- id of the entry
    changes {big} NOT NULL,       -- how many
    first {real},                 -- s from the trigger
    PRIMARY KEY (channel, entry)
) {rowless};
CREATE INDEX changes_entry ON changes (entry);
CREATE TABLE events ( -- a change of a digital channel, bounce folded
    entry {big} NOT NULL REFERENCES entries (id) ON DELETE CASCADE, -- id of the entry
    place INTEGER NOT NULL,       -- in the sequence, from 0
    time {real} NOT NULL,         -- s from the trigger
    channel {big} NOT NULL REFERENCES channels (id), -- id of the channel
    kind TEXT NOT NULL,           -- start, trip, breaker, reclosing, other
    state INTEGER NOT NULL,       -- of the channel, from then on
    active INTEGER NOT NULL,      -- 1: the signal is there; of a breaker: it is closed
    PRIMARY KEY (entry, place)
) {rowless};
CREATE TABLE pictures ( -- waves of an entry's fault, so small that a list can show them
    entry {big} PRIMARY KEY REFERENCES entries (id) ON DELETE CASCADE, -- id of the entry
    from_time {real} NOT NULL,    -- s from the trigger
    to_time {real} NOT NULL,      -- s from the trigger
    peak_current {real},          -- greatest magnitude in it, primary, A
    peak_voltage {real},          -- greatest magnitude in it, primary, V
    waves TEXT NOT NULL           -- Ia Ib Ic Ua Ub Uc of the faulted circuit, a letter for each of 128 columns, see docs/archivepage.md
);
)sql";

// Of version 2. A journal has a number, as several of them are in one database.
const char* const Journals = R"sql(
CREATE TABLE journals ( -- the journal of a recorder of 'zucmtr watch', whose copy is here
    id {id},                      -- by which the other tables name it
    host TEXT NOT NULL,           -- machine that it is on
    file TEXT NOT NULL,           -- absolute path of its own file there
    directory TEXT NOT NULL,      -- absolute path of that of the records
    recorder TEXT NOT NULL,       -- the name that the watch gives it
    process {big} NOT NULL,       -- of the watch that copies it, or was the last
    since TEXT NOT NULL,          -- when that began, in UTC
    copied TEXT,                  -- when the copy was last the same as the journal, in UTC; NULL: never yet
    UNIQUE (host, file)
);
CREATE TABLE journal_recordings ( -- what became of a recording
    journal {big} NOT NULL REFERENCES journals (id) ON DELETE CASCADE, -- id of the journal
    file TEXT NOT NULL,           -- absolute path of the recording's first file
    fingerprint TEXT NOT NULL,    -- of names, sizes and times of its files
    state TEXT NOT NULL,          -- begun, failed, killed, withdrawn, converted, given up
    record TEXT NOT NULL,         -- name of the record of a converted one
    access TEXT NOT NULL,         -- permissions with which the state holds; empty: with any
    unended INTEGER NOT NULL,     -- how often the program came to no end of it
    failures INTEGER NOT NULL,    -- how often it failed
    kills INTEGER NOT NULL,       -- how often its own process was ended from outside
    noted TEXT NOT NULL,          -- when, in UTC
    PRIMARY KEY (journal, file)
) {rowless};
CREATE TABLE journal_commands ( -- a command after a record that is not done
    journal {big} NOT NULL REFERENCES journals (id) ON DELETE CASCADE, -- id of the journal
    number {big} NOT NULL,        -- in the order of the records
    file TEXT NOT NULL,           -- first file of the recording whose record the command is for
    state TEXT NOT NULL,          -- waiting, given up
    input TEXT NOT NULL,          -- what the command gets, as JSON
    failures INTEGER NOT NULL,    -- how often it failed
    noted TEXT NOT NULL,          -- when, in UTC
    PRIMARY KEY (journal, number)
) {rowless};
)sql";

// The words are stored once, beside the index.
const char* const SqliteSearch = R"sql(
CREATE TABLE words ( -- words of an entry, for a search with MATCH in the table search
    entry INTEGER PRIMARY KEY REFERENCES entries (id) ON DELETE CASCADE, -- id of the entry
    words TEXT NOT NULL           -- by which an entry is found: names and events
);
CREATE VIRTUAL TABLE search USING fts5 (words, content='words', content_rowid='entry', tokenize='unicode61 remove_diacritics 0');
)sql";

const char* const PostgresSearch = R"sql(
CREATE TABLE search ( -- words of an entry, for a search with @@
    entry BIGINT PRIMARY KEY REFERENCES entries (id) ON DELETE CASCADE, -- id of the entry
    words TSVECTOR NOT NULL       -- by which an entry is found: names and events
);
CREATE INDEX search_words ON search USING GIN (words);
)sql";

} // namespace

const Schema& ThisSchema()
{
    static const QByteArray tables = QByteArray(Tables) + Journals;
    static const Schema schema = {
        {tables.constData(), SqliteSearch, PostgresSearch}, Views, {{Journals, "", ""}}};
    return schema;
}

// Texts of PostgreSQL are ordered as those of SQLite are, whatever the language of the server.
QString ScriptOf(const Commands& commands, sql::Dialect dialect)
{
    const bool isServer = dialect == sql::Dialect::Postgres;
    static const QRegularExpression text(QStringLiteral("\\bTEXT\\b"));
    const QMap<QString, const char*> words = {
        {QStringLiteral("{id}"), isServer ? "BIGINT GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY"
                                          : "INTEGER PRIMARY KEY AUTOINCREMENT"},
        {QStringLiteral("{big}"), isServer ? "BIGINT" : "INTEGER"},
        {QStringLiteral("{real}"), isServer ? "DOUBLE PRECISION" : "REAL"},
        {QStringLiteral("{rowless}"), isServer ? "" : "WITHOUT ROWID"},
        {QStringLiteral("{today}"), isServer ? "(extract(epoch FROM now())::double precision / 86400)"
                                             : "(julianday('now') - 2440587.5)"},
    };
    QString script =
        QString::fromUtf8(commands.both) + QString::fromUtf8(isServer ? commands.postgres : commands.sqlite);
    for (auto word = words.begin(); word != words.end(); ++word)
        script.replace(word.key(), QLatin1String(word.value()));
    return isServer ? script.replace(text, QStringLiteral("TEXT COLLATE \"C\"")) : script;
}

QStringList CommentsOf(const QString& script)
{
    static const QRegularExpression whole(QStringLiteral("^CREATE (TABLE|VIEW) (\\w+).* -- (.*)$"));
    static const QRegularExpression column(QStringLiteral("^ {4}([a-z]\\w*) .* -- (.*)$"));
    QStringList commands;
    QString table;
    const auto add = [&commands](const QString& of, QString comment) {
        comment.replace(QLatin1Char('\''), QLatin1String("''"));
        commands << QStringLiteral("COMMENT ON %1 IS '%2'").arg(of, comment);
    };
    for (const QString& line : script.split(QLatin1Char('\n'))) {
        const QRegularExpressionMatch start = whole.match(line);
        const QRegularExpressionMatch part = column.match(line);
        if (start.hasMatch()) {
            table = start.captured(1) == QLatin1String("TABLE") ? start.captured(2) : QString();
            add(start.captured(1) + QLatin1Char(' ') + start.captured(2), start.captured(3));
        } else if (part.hasMatch() && !table.isEmpty()) {
            add(QStringLiteral("COLUMN %1.%2").arg(table, part.captured(1)), part.captured(2));
        }
    }
    return commands;
}

} // namespace catalogue
