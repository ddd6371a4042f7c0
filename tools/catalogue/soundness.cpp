#include "catalogue/soundness.h"

#include "text/reasons.h"
#include "text/texts.h"

namespace catalogue {

namespace {

// A query for the paths of the entries that break a rule.
struct Rule
{
    const char* reason;
    QString text;
    const char* both;
    const char* sqlite; // of one database alone
    const char* postgres;
};

// A channel's name may be in a recording twice, and has one row then.
std::vector<Rule> EntryRules()
{
    return {
        {reason::EntryInconsistent, Tr("catalogue", "the catalogue has no file of it"),
         "SELECT path FROM entries e WHERE NOT EXISTS (SELECT 1 FROM pieces p WHERE p.entry = e.id)", nullptr,
         nullptr},
        {reason::EntryInconsistent,
         Tr("catalogue", "its size in the catalogue is not the sum of those of its files"),
         "SELECT path FROM entries e WHERE EXISTS (SELECT 1 FROM pieces p WHERE p.entry = e.id) AND bytes <> "
         "(SELECT sum(p.bytes) FROM pieces p WHERE p.entry = e.id)",
         nullptr, nullptr},
        {reason::EntryInconsistent,
         Tr("catalogue", "the catalogue does not have as many of its events as it says"),
         "SELECT path FROM entries e LEFT JOIN (SELECT entry, count(*) AS number, max(place) AS last FROM "
         "events GROUP BY entry) v ON v.entry = e.id WHERE e.events <> coalesce(v.number, 0) OR e.events <> "
         "coalesce(v.last, -1) + 1",
         nullptr, nullptr},
        {reason::EntryInconsistent,
         Tr("catalogue", "the catalogue does not have as many of its channels as it says"),
         "SELECT path FROM entries e LEFT JOIN (SELECT entry, count(*) AS number FROM extremes GROUP BY "
         "entry) "
         "x ON x.entry = e.id LEFT JOIN (SELECT entry, count(*) AS number FROM changes GROUP BY entry) c ON "
         "c.entry = e.id WHERE e.analog < coalesce(x.number, 0) OR (e.analog > 0 AND x.number IS NULL) OR "
         "e.digital < coalesce(c.number, 0)",
         nullptr, nullptr},
        {reason::EntryInconsistent, Tr("catalogue", "it could be read, but the catalogue has no time of it"),
         "SELECT path FROM entries WHERE reason IS NULL AND (moment IS NULL OR trigger_time IS NULL)",
         nullptr, nullptr},
        {reason::EntryInconsistent, Tr("catalogue", "the search does not find it: its words are missing"),
         nullptr,
         "SELECT path FROM entries e WHERE NOT EXISTS (SELECT 1 FROM words w WHERE w.entry = e.id) OR NOT "
         "EXISTS (SELECT 1 FROM search_docsize d WHERE d.id = e.id)",
         "SELECT path FROM entries e WHERE NOT EXISTS (SELECT 1 FROM search w WHERE w.entry = e.id)"},
    };
}

std::vector<Rule> LinkRules()
{
    return {
        {reason::LinkBroken, Tr("catalogue", "it is no record, but the catalogue says that it was compared"),
         "SELECT path FROM entries WHERE kind <> 'record' AND (verified IS NOT NULL OR recording IS NOT "
         "NULL)",
         nullptr, nullptr},
        {reason::LinkBroken,
         Tr("catalogue", "its state of verification is neither right nor wrong, or has no time"),
         "SELECT path FROM entries WHERE verified NOT IN ('right', 'wrong') OR (verified IS NULL) <> "
         "(verified_time IS NULL)",
         nullptr, nullptr},
        {reason::LinkBroken,
         Tr("catalogue", "the catalogue has no entry of the recording that it was compared with"),
         "SELECT path FROM entries e WHERE recording IS NOT NULL AND NOT EXISTS (SELECT 1 FROM entries r "
         "WHERE r.id = e.recording AND r.kind = 'recording')",
         nullptr, nullptr},
    };
}

void Apply(sql::Database& database, const std::vector<Rule>& rules, std::vector<Flaw>& flaws)
{
    const bool isFile = database.Kind() == sql::Dialect::Sqlite;
    for (const Rule& rule : rules) {
        const char* own = isFile ? rule.sqlite : rule.postgres;
        const QString query =
            QLatin1String(own != nullptr ? own : rule.both) + QLatin1String(" ORDER BY path");
        database.Run(query, {},
                     [&](const sql::Row& row) { flaws.push_back({rule.reason, row.Text(0), rule.text}); });
    }
}

// A server looks after its pages and references itself.
void CheckFile(sql::Database& database, Thoroughness thoroughness, std::vector<Flaw>& flaws)
{
    const char* check = thoroughness == Thoroughness::Whole ? "PRAGMA integrity_check" : "PRAGMA quick_check";
    database.Run(QLatin1String(check), {}, [&](const sql::Row& row) {
        if (row.Text(0) != QLatin1String("ok"))
            flaws.push_back({reason::DatabaseDamaged, QString(), row.Text(0)});
    });
    database.Run(QStringLiteral("PRAGMA foreign_key_check"), {}, [&](const sql::Row& row) {
        flaws.push_back({reason::DatabaseDamaged, QString(),
                         Tr("catalogue", "a row of the table '%1' belongs to none of '%2'")
                             .arg(row.Text(0), row.Text(2))});
    });
}

} // namespace

std::vector<Flaw> FlawsOf(sql::Database& database, Thoroughness thoroughness)
{
    std::vector<Flaw> flaws;
    try {
        if (database.Kind() == sql::Dialect::Sqlite)
            CheckFile(database, thoroughness, flaws);
        Apply(database, EntryRules(), flaws);
        Apply(database, LinkRules(), flaws);
    } catch (const sql::Failure& failure) {
        if (failure.trouble != sql::Trouble::Damaged)
            throw;
        flaws.push_back({reason::DatabaseDamaged, QString(), failure.Message()});
    }
    return flaws;
}

} // namespace catalogue
