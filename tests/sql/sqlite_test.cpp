// What only a file does.
#include "sql/sqlite.h"

#include "process.h"
#include "support/files.h"

#include <QFile>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using sql::Sqlite;
using sql::Trouble;
using sql::Value;

// A user other than root may mount only in a namespace of users. There he keeps his number: a user without
// one can make no file.
bool OwnUsers()
{
    const QByteArray user = QByteArray::number(getuid());
    const QByteArray group = QByteArray::number(getgid());
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return false;
    const auto write = [](const char* name, const QByteArray& text) {
        QFile file(QLatin1String("/proc/self/") + QLatin1String(name));
        return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(text) == text.size();
    };
    return write("setgroups", "deny") && write("uid_map", user + ' ' + user + " 1") &&
           write("gid_map", group + ' ' + group + " 1");
}

// File systems of this process's own.
void OwnFileSystems()
{
    if ((unshare(CLONE_NEWNS) != 0 && !OwnUsers()) ||
        mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        _exit(1);
}

void Mount(const QString& place, const char* type, unsigned long flags = 0)
{
    if (mount("none", QFile::encodeName(place).constData(), type, flags, nullptr) != 0)
        _exit(1);
}

void Make(const QString& path)
{
    Sqlite database(path, Sqlite::Access::Create);
    database.ChooseJournal(true);
    database.RunScript("CREATE TABLE t (n); INSERT INTO t VALUES (1)");
}

QString NumberOf(sql::Database& database)
{
    return QString::number(std::get<qint64>(database.One("SELECT max(n) FROM t")));
}

QString NumberIn(const QString& path)
{
    Sqlite database(path, Sqlite::Access::ReadOnly);
    return NumberOf(database);
}

QString JournalOf(Sqlite& database)
{
    return std::get<QString>(database.One("PRAGMA journal_mode"));
}

QString FailureOf(const std::function<void()>& work)
{
    try {
        work();
    } catch (const sql::Failure& failure) {
        return failure.Message();
    }
    return "none";
}

} // namespace

TEST(Sqlite, SpecialFilesAreRefused)
{
    const TestDirectory directory;
    const QString pipe = directory.Path("pipe");
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(FailureOf([&] { Sqlite database(pipe, Sqlite::Access::Create); }), "it is no regular file");
    EXPECT_EQ(FailureOf([&] { Sqlite database(directory.Path()); }), "it is no regular file");
}

TEST(Sqlite, MissingFileIsReportedAsMissing)
{
    const TestDirectory directory;
    const QString path = directory.Path("missing.db");
    EXPECT_EQ(FailureOf([&] { Sqlite database(path, Sqlite::Access::ReadOnly); }),
              "No such file or directory");
    EXPECT_EQ(
        InAProcess([&] {
            BecomeNobody();
            Sqlite database(path, Sqlite::Access::ReadOnly);
            return QString();
        }),
        geteuid() == 0
            ? QString("user 'nobody' may not enter the directory '%1'; its owner 'root' can permit that, "
                      "as by a group and chmod g+x")
                  .arg(directory.Path())
            : QString("No such file or directory"));
    EXPECT_FALSE(QFile::exists(path));
}

TEST(Sqlite, JournalIsALogUnlessOtherMachinesMayHaveTheFile)
{
    const TestDirectory directory;
    const QString local = directory.Path("local.db");
    Make(local);
    Sqlite database(local);
    EXPECT_EQ(JournalOf(database), "wal");
    EXPECT_EQ(InAProcess([&] {
                  OwnFileSystems();
                  Mount(directory.Path(), "ramfs"); // of no known kind
                  const QString path = directory.Path("other.db");
                  Make(path);
                  Sqlite other(path);
                  return JournalOf(other) + NumberOf(other);
              }),
              "delete1");
}

TEST(Sqlite, LogOfAFileThatCameToAnotherFileSystemIsGivenUp)
{
    const TestDirectory directory;
    Make(directory.Path("local.db"));
    const QByteArray bytes = ReadBytes(directory.Path("local.db"));
    EXPECT_EQ(InAProcess([&] {
                  OwnFileSystems();
                  Mount(directory.Path(), "ramfs");
                  Sqlite other(directory.Write("other.db", bytes));
                  other.ChooseJournal(false);
                  return JournalOf(other) + NumberOf(other);
              }),
              "delete1");
}

TEST(Sqlite, JournalThatSomebodyChoseStays)
{
    const TestDirectory directory;
    const QString path = directory.Path("local.db");
    Make(path);
    Sqlite database(path);
    database.Run("PRAGMA journal_mode=DELETE");
    database.ChooseJournal(false);
    EXPECT_EQ(JournalOf(database), "delete");
}

TEST(Sqlite, LogIsReadWhereNothingCanBeWritten)
{
    const TestDirectory directory;
    const QString path = directory.Path("a %20?#b.db"); // names that an address would change
    Make(path);
    EXPECT_EQ(directory.Names(), QStringList{"a %20?#b.db"});
    EXPECT_EQ(InAProcess([&] {
                  OwnFileSystems();
                  const QByteArray place = QFile::encodeName(directory.Path());
                  if (mount(place.constData(), place.constData(), nullptr, MS_BIND, nullptr) != 0 ||
                      mount(nullptr, place.constData(), nullptr, MS_BIND | MS_REMOUNT | MS_RDONLY, nullptr) !=
                          0)
                      _exit(1);
                  return NumberIn(path);
              }),
              "1");
}

TEST(Sqlite, UserWhoMayOnlyReadReads)
{
    const TestDirectory directory;
    const QString path = directory.Path("x.db");
    Make(path);
    ASSERT_EQ(chmod(QFile::encodeName(directory.Path()).constData(), 0755), 0);
    const auto read = [&] {
        return InAProcess([&] {
            BecomeNobody();
            return NumberIn(path);
        });
    };
    EXPECT_EQ(read(), "1");
    Sqlite writer(path);
    writer.Run("INSERT INTO t VALUES (2)"); // stays in the log while the writer is at work
    EXPECT_EQ(read(), "2");
}

TEST(Sqlite, LogThatCannotBeReadIsNotIgnored)
{
    const TestDirectory directory;
    const QString path = directory.Path("x.db");
    Make(path);
    const QString copy = directory.MakeDirectory("copy") + "/x.db";
    {
        Sqlite writer(path);
        writer.Run("INSERT INTO t VALUES (2)");
        ASSERT_TRUE(QFile::copy(path, copy));
        ASSERT_TRUE(QFile::copy(path + "-wal", copy + "-wal"));
    }
    ASSERT_EQ(chmod(QFile::encodeName(directory.Path()).constData(), 0755), 0);
    const QString said = InAProcess([&] {
        BecomeNobody();
        return NumberIn(copy);
    });
    if (geteuid() == 0) { // else it is the same user
        EXPECT_EQ(said, "part of it is in 'x.db-wal', which can only be read where files can be written: "
                        "copy both, or ask "
                        "somebody who may write there to open it once");
    }
    EXPECT_EQ(NumberIn(copy), "2");
}

TEST(Sqlite, ReadersSeeAWholeStateWhileAnotherWrites)
{
    const TestDirectory directory;
    const QString path = directory.Path("x.db");
    Make(path);
    Sqlite writer(path);
    Sqlite reader(path, Sqlite::Access::ReadOnly);
    writer.Together([&] {
        writer.Run("INSERT INTO t VALUES (2)");
        EXPECT_EQ(NumberOf(reader), "1");
    });
    EXPECT_EQ(NumberOf(reader), "2");
}

TEST(Sqlite, FullDiskIsReported)
{
    const TestDirectory directory;
    const QString path = directory.Path("x.db");
    Make(path);
    Sqlite database(path);
    database.Run("PRAGMA max_page_count=3");
    try {
        database.Together([&] { database.Run("INSERT INTO t VALUES (?)", {QByteArray(100000, 'x')}); });
        ADD_FAILURE();
    } catch (const sql::Failure& failure) {
        EXPECT_EQ(failure.trouble, Trouble::NoRoom);
    }
    EXPECT_EQ(NumberOf(database), "1");
}
