// Eight processes at once make the same catalogue as one.
#include "anycatalogue.h"

#include "support/childend.h"

#include <unistd.h>

#include <random>

namespace {

using catalogue::Catalogue;

constexpr int Processes = 8;
constexpr int Shared = 40;
constexpr int Own = 10;

class TogetherTest : public AnyCatalogue
{
protected:
    // Half of those that all put have names of channels that others put too, in other orders.
    catalogue::Entry SharedEntry(int number) const
    {
        catalogue::Entry entry =
            FaultAt(Path(QStringLiteral("shared/%1.ZU").arg(number)), QByteArray::number(number), number,
                    number % 2 == 0 ? "AG" : "BC", 0.125 * number);
        for (int i = 0; i < 6; ++i)
            entry.analog.push_back(
                {"", QStringLiteral("I%1").arg((number * 7 + i * 5) % 23), "", "A", -i, i});
        return entry;
    }
    catalogue::Entry OwnEntry(int process, int number) const
    {
        return RecordingAt(Path(QStringLiteral("own/%1-%2.ZU").arg(process).arg(number)),
                           QByteArray("own") + QByteArray::number(process * 100 + number), number);
    }
    std::vector<catalogue::Entry> EntriesOf(int process) const
    {
        std::vector<catalogue::Entry> entries;
        for (int i = 0; i < Shared; ++i)
            entries.push_back(SharedEntry(i));
        for (int i = 0; i < Own; ++i)
            entries.push_back(OwnEntry(process, i));
        return entries;
    }

    // In an order of its own, some at a time.
    static void Put(const QString& address, std::vector<catalogue::Entry> entries, unsigned int seed)
    {
        Catalogue one(address);
        std::mt19937 random(seed);
        std::shuffle(entries.begin(), entries.end(), random);
        for (size_t i = 0; i < entries.size(); i += 8)
            one.Put({entries.begin() + static_cast<std::ptrdiff_t>(i),
                     entries.begin() + static_cast<std::ptrdiff_t>(std::min(i + 8, entries.size()))});
    }

    // All that is in it, without ids and the times of the program.
    static QStringList Contents(const QString& address)
    {
        const auto database = sql::Open(address);
        QStringList contents;
        for (const char* command :
             {"SELECT path, kind, print, bytes, gone, reason, station, trigger_time, moment, circuit, "
              "analog, digital, events, "
              "fault_kind, fault_duration, trip_after FROM entries ORDER BY path",
              "SELECT e.path, p.name, p.bytes, p.modified, p.sha256 FROM pieces p JOIN entries e ON e.id = "
              "p.entry ORDER BY 1, 2",
              "SELECT path, circuit, name, phase, unit, least, greatest FROM named_extremes ORDER BY 1, 2, "
              "3, 4, 5",
              "SELECT path, place, time, circuit, name, kind, state, active FROM named_events ORDER BY 1, 2",
              "SELECT e.path, c.name, h.changes, h.first FROM changes h JOIN entries e ON e.id = h.entry "
              "JOIN channels c ON c.id = "
              "h.channel ORDER BY 1, 2",
              "SELECT kind, circuit, name, phase, unit FROM channels ORDER BY 1, 2, 3, 4, 5",
              "SELECT * FROM faults_by_line", "SELECT * FROM faults_by_kind",
              "SELECT path, copies FROM duplicates"})
            contents += RowsOf(*database, command);
        const char* words =
            database->Kind() == sql::Dialect::Postgres
                ? "SELECT path, words FROM search s JOIN entries e ON e.id = s.entry ORDER BY 1"
                : "SELECT path, s.words FROM words s JOIN entries e ON e.id = s.entry ORDER BY 1";
        return contents + RowsOf(*database, words);
    }
};

} // namespace

TEST_P(TogetherTest, EightProcessesMakeTheSameCatalogueAsOne)
{
    std::array<pid_t, Processes> children{};
    for (int i = 0; i < Processes; ++i) {
        children[static_cast<size_t>(i)] = fork();
        if (children[static_cast<size_t>(i)] == 0) {
            try {
                Put(address, EntriesOf(i), static_cast<unsigned int>(i));
            } catch (const std::exception& error) {
                std::fprintf(stderr, "%s\n", error.what());
                _exit(1);
            }
            _exit(0);
        }
    }
    for (const pid_t child : children)
        EXPECT_EQ(EndOf(child), 0);
    const QString alone = IsServer() ? PostgresServer::Own().FreshSchema() : Path("alone.db");
    for (int i = 0; i < Processes; ++i)
        Put(alone, EntriesOf(i), 99);
    const QStringList expected = Contents(alone);
    EXPECT_GT(expected.size(), Processes * Own + Shared);
    EXPECT_EQ(Contents(address), expected);
    if (!IsServer()) {
        EXPECT_EQ(Rows("PRAGMA integrity_check"), QStringList{"ok"});
        EXPECT_EQ(Rows("INSERT INTO search (search) VALUES ('integrity-check')"), QStringList());
    }
}

FOR_BOTH(TogetherTest);
