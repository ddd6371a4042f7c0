// Files that are exchanged, changed or added while a recording is put away, before any of the calls on files.
#include "scene.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QByteArray other = "another recording";

void Append(const QString& path)
{
    const int file = open(QFile::encodeName(path).constData(), O_WRONLY | O_APPEND);
    if (file < 0) // aside: nobody finds it
        return;
    ASSERT_EQ(write(file, other.constData(), static_cast<size_t>(other.size())), other.size());
    close(file);
}

// The same number of bytes as before, with the same time of the last change.
void Rewrite(const QString& path)
{
    const int file = open(QFile::encodeName(path).constData(), O_WRONLY);
    if (file < 0)
        return;
    struct stat status = {};
    fstat(file, &status);
    ASSERT_EQ(pwrite(file, other.constData(), static_cast<size_t>(other.size()), 0), other.size());
    const timespec times[2] = {status.st_atim, status.st_mtim};
    ASSERT_EQ(futimens(file, times), 0);
    close(file);
}

// Replaces a file by another one with the same time.
void Replace(const QString& path)
{
    struct stat status = {};
    const bool replaced = stat(QFile::encodeName(path).constData(), &status) == 0;
    QFile file(path + ".new");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(other) == other.size());
    file.close();
    const timespec times[2] = {status.st_atim, status.st_mtim};
    ASSERT_TRUE(!replaced ||
                utimensat(AT_FDCWD, QFile::encodeName(file.fileName()).constData(), times, 0) == 0);
    ASSERT_EQ(
        std::rename(QFile::encodeName(file.fileName()).constData(), QFile::encodeName(path).constData()), 0);
}

struct Exchange
{
    const char* name;
    void (*action)(const QString& path);
    const char* file;
};

void PrintTo(const Exchange& exchange, std::ostream* out)
{
    *out << exchange.name << ' ' << exchange.file;
}

const std::vector<Exchange> exchanges = {{"append to", Append, "a.ZU"},      {"append to", Append, "a.Z01"},
                                         {"rewrite", Rewrite, "a.ZU"},       {"rewrite", Rewrite, "a.Z01"},
                                         {"replace", Replace, "a.ZU"},       {"replace", Replace, "a.Z01"},
                                         {"continue with", Replace, "a.Z02"}};

// How many files of a directory hold bytes that were not in the recording.
int CountOther(const QString& directory, const QStringList& names)
{
    int count = 0;
    for (const QString& name : names)
        count += ReadBytes(directory + '/' + name).contains(other) ? 1 : 0;
    return count;
}

// With each way of moving a file aside and each way into the archive.
std::vector<Way> FourWays()
{
    return {Ways()[0], Ways()[1], Ways()[3], Ways()[4]};
}

class EveryExchange : public testing::TestWithParam<std::tuple<Way, Exchange>>
{};

} // namespace

TEST_P(EveryExchange, AtAnyCallLosesNothingAndArchivesNothingUnread)
{
    const Way& way = std::get<0>(GetParam());
    const Exchange& exchange = std::get<1>(GetParam());
    bool struck = true;
    for (long nth = 1; struck; ++nth) {
        const Scene scene(1);
        long count = 0;
        bool applied = false;
        const QString text = scene.TextOfPutAway(way, [&](const calls::Call& call) {
            // Nothing happens between two checks in a row that an exchange could disturb.
            if (call.name != "statx" && ++count == nth) {
                const QString path = scene.Source(exchange.file);
                applied = exchange.action == Replace || QFile::exists(path);
                exchange.action(path);
            }
            return 0;
        });
        struck = count >= nth;
        const QString where = QStringLiteral("%1: %2").arg(nth).arg(text);
        for (const QString& name : systemfile::NamesIn(scene.Source()))
            EXPECT_FALSE(name.startsWith('.')) << where;
        EXPECT_EQ(CountOther(scene.Source(), scene.Sources()), applied ? 1 : 0) << where;
        EXPECT_EQ(CountOther(scene.Archive(), scene.Archived()), 0) << where;
        if (text.isEmpty()) {
            EXPECT_EQ(scene.Sources().size(), applied ? 1 : 0);
            EXPECT_EQ(scene.Archived().size(), way.archive ? 2 : 0);
        } else {
            EXPECT_TRUE(text.contains("the recording is kept, convert it again")) << where;
            EXPECT_EQ(scene.Archived(), QStringList()) << where;
            EXPECT_GE(scene.Sources().size(), 2) << where;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, EveryExchange,
                         testing::Combine(testing::ValuesIn(FourWays()), testing::ValuesIn(exchanges)));

TEST(Exchange, BeforeThePuttingAwayIsNamed)
{
    const Scene scene(1);
    const ChainFiles chain(scene.Source("a.ZU"));
    Replace(scene.Source("a.Z01"));
    EXPECT_EQ(
        TextOf([&] { sourcefiles::Remove(chain); }),
        QStringLiteral("'%1' is another file than the one that was read; the recording is kept, convert it "
                       "again")
            .arg(scene.Source("a.Z01")));
    EXPECT_EQ(scene.Sources(), (QStringList{"a.Z01", "a.ZU"}));
}

TEST(Exchange, RecordingWithAGapIsKept)
{
    const Scene scene(3);
    ASSERT_TRUE(QFile::remove(scene.Source("a.Z01")));
    const ChainFiles chain(scene.Source("a.ZU"));
    EXPECT_EQ(
        TextOf([&] { sourcefiles::Remove(chain); }),
        QStringLiteral("'%1' is there, but not the file before it; the recording is kept, convert it again")
            .arg(scene.Source("a.Z02")));
    EXPECT_EQ(scene.Sources(), (QStringList{"a.Z02", "a.Z03", "a.ZU"}));
}

TEST(Exchange, NameThatIsTakenMeanwhileGivesTheRecordingAnother)
{
    const Scene scene(1);
    const QString text = scene.TextOfPutAway({"removal", false, {}}, [&](const calls::Call& call) {
        // After the first file has been moved aside, another one arrives, with a continuation.
        if (call.name == "renameat2" && call.path == scene.Source("a.Z01").toStdString()) {
            Replace(scene.Source("a.ZU"));
            Replace(scene.Source("a.Z02"));
        }
        return 0;
    });
    EXPECT_EQ(text,
              QStringLiteral(
                  "'%1/a.Z02' came after the recording was read; the recording is kept, convert it "
                  "again; '%1/a.Z01' is now called '%1/a-2.Z01', because another file has taken its name; "
                  "'%1/a.ZU' is now called '%1/a-2.ZU', because another file has taken its name")
                  .arg(scene.Source()));
    EXPECT_EQ(scene.Sources(), (QStringList{"a-2.Z01", "a-2.ZU", "a.Z02", "a.ZU"}));
    EXPECT_EQ(ReadBytes(scene.Source("a.ZU")), other);
    EXPECT_EQ(ReadBytes(scene.Source("a-2.ZU")), Scene::Content("a.ZU"));
    EXPECT_EQ(ReadBytes(scene.Source("a-2.Z01")), Scene::Content("a.Z01"));
}

TEST(Exchange, FileThatIsOpenForWritingIsKept)
{
    const Scene scene(1);
    const int writer = open(QFile::encodeName(scene.Source("a.Z01")).constData(), O_WRONLY | O_APPEND);
    ASSERT_GE(writer, 0);
    EXPECT_EQ(
        scene.TextOfPutAway({"removal", false, {}}),
        QStringLiteral("'%1' is still open for writing in another program; the recording is kept, convert it "
                       "again")
            .arg(scene.Source("a.Z01")));
    close(writer);
    EXPECT_TRUE(scene.IsComplete("in"));
    EXPECT_EQ(scene.TextOfPutAway({"removal", false, {}}), QString());
    EXPECT_EQ(scene.Sources(), QStringList());
}

// Copying a recording to the archive may take so long that the recorder comes back to its file.
TEST(Exchange, WriterThatComesAfterTheCopyKeepsTheRecording)
{
    const Scene scene(1);
    const QString archive = scene.Archive();
    QString text = scene.TextOfPutAway(
        {"archive on another file system", true, {{"linkat", EXDEV}}}, [&](const calls::Call& call) {
            if (call.name != "fsync" || QString::fromStdString(call.path) != archive)
                return 0;
            for (const QString& name : systemfile::NamesIn(scene.Source()))
                EXPECT_EQ(open(QFile::encodeName(scene.Source(name)).constData(), O_WRONLY | O_NONBLOCK), -1);
            return 0;
        });
    EXPECT_EQ(text, QStringLiteral("'%1' is still open for writing in another program; the recording is "
                                   "kept, convert it again")
                        .arg(scene.Source("a.ZU")));
    EXPECT_TRUE(scene.IsComplete("in"));
    EXPECT_EQ(scene.Archived(), QStringList());
}

TEST(Exchange, NameTooLongToGoAsideIsNamed)
{
    const TestDirectory here;
    const QString path = here.Write(QString(245, 'n') + ".ZU", "x");
    EXPECT_EQ(
        TextOf([&] { sourcefiles::Remove(ChainFiles(path)); }),
        QStringLiteral("'%1' could not be put away: the name is too long; give it a shorter one").arg(path));
    EXPECT_EQ(here.Names().size(), 1);
}

// The name that a continuation file has just before it is removed is the longest.
TEST(Exchange, NameOfAContinuationTooLongToBeRemovedIsNamed)
{
    for (const int length : {234, 235, 240}) {
        const TestDirectory here;
        const QString first = here.Write(QString(length - 3, 'n') + ".ZU", "x");
        const QString second = here.Write(QString(length - 3, 'n') + ".Z01", "y");
        const QString text = TextOf([&] { sourcefiles::Remove(ChainFiles(first)); });
        EXPECT_EQ(text, length == 234 ? QString()
                                      : QStringLiteral("'%1' could not be put away: the name is too long; "
                                                       "give it a shorter one")
                                            .arg(second));
        EXPECT_EQ(here.Names().size(), length == 234 ? 0 : 2);
    }
}

TEST(Exchange, DirectoryWithoutPermissionIsNamed)
{
    const Scene scene(1);
    EXPECT_EQ(
        scene.TextOfPutAway({"removal", false, {}},
                            [](const calls::Call& call) { return call.name == "renameat2" ? EACCES : 0; }),
        QStringLiteral(
            "'%1' could not be put away: Permission denied; it is where it was; give this user the "
            "permission to change its directory, or put it away yourself, its record is verified")
            .arg(scene.Source("a.ZU")));
    EXPECT_TRUE(scene.IsComplete("in"));
}
