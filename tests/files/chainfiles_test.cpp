// Which files a recording has, whether they can be read, and whether they are still the same.
#include "calls.h"

#include "support/files.h"
#include "zucmtr/files/chainfiles.h"

#include <gtest/gtest.h>

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Kind = ChainFiles::Unreadable::Kind;

struct Failure
{
    Kind kind = Kind::Unreliable;
    QString path;
    int code = -1;
    QString text;
};

// What opening the recording throws; code -1 if it throws nothing.
Failure FailureOf(const QString& path)
{
    try {
        const ChainFiles chain(path);
    } catch (const ChainFiles::Unreadable& error) {
        return {error.kind, error.path, error.code, error.Message()};
    }
    return {};
}

void WriteOver(const QString& path, const QByteArray& bytes, const timespec* modified = nullptr)
{
    const int file = open(QFile::encodeName(path).constData(), O_WRONLY);
    ASSERT_EQ(write(file, bytes.constData(), static_cast<size_t>(bytes.size())), bytes.size());
    if (modified != nullptr) {
        const timespec times[2] = {*modified, *modified};
        ASSERT_EQ(futimens(file, times), 0);
    }
    close(file);
}

timespec ModifiedOf(const QString& path)
{
    struct stat status = {};
    stat(QFile::encodeName(path).constData(), &status);
    return status.st_mtim;
}

QString Happened(const ChainFiles& chain)
{
    QString what;
    const bool unchanged = chain.IsUnchanged(&what);
    EXPECT_EQ(unchanged, what.isEmpty());
    return what;
}

} // namespace

TEST(ChainFiles, AreTheFirstAndItsContinuationsUpToAGap)
{
    const TestDirectory here;
    for (const char* name : {"a.ZU", "a.Z01", "a.Z02", "a.Z04", "a.z03", "a.Z0f", "b.Z03"})
        here.Write(name, "x");
    const ChainFiles chain(here.Path("a.ZU"));
    EXPECT_EQ(chain.Paths(), (QStringList{here.Path("a.ZU"), here.Path("a.Z01"), here.Path("a.Z02")}));
    EXPECT_EQ(chain.Beyond(), (QStringList{here.Path("a.Z04"), here.Path("a.Z0f")}));
    EXPECT_EQ(chain.Of(1).size, 1);
    EXPECT_EQ(Happened(chain), QString());
}

TEST(ChainFiles, AreSixteenAtMost)
{
    const TestDirectory here;
    here.Write("a.zu", "x");
    for (int number = 1; number <= 16; ++number)
        here.Write(QStringLiteral("a.z%1").arg(number, 2, 16, QLatin1Char('0')), "x");
    const ChainFiles chain(here.Path("a.zu"));
    EXPECT_EQ(chain.Count(), 16u);
    EXPECT_EQ(chain.Paths().last(), here.Path("a.z0f"));
    EXPECT_TRUE(chain.IsUnchanged());
}

TEST(ChainFiles, FirstFileHasToBeThere)
{
    const TestDirectory here;
    const Failure failure = FailureOf(here.Path("a.ZU"));
    EXPECT_EQ(failure.kind, Kind::Gone);
    EXPECT_EQ(failure.text, QStringLiteral("'%1' is not there").arg(here.Path("a.ZU")));
}

TEST(ChainFiles, ContinuationThatCannotBeOpenedIsAnError)
{
    const TestDirectory here;
    here.Write("a.ZU", "x");
    const QString continuation = here.Write("a.Z01", "y");
    const std::vector<std::pair<int, Kind>> errors = {
        {EACCES, Kind::NoPermission}, {EIO, Kind::Unreliable},     {ESTALE, Kind::Unreliable},
        {EMFILE, Kind::NoResources},  {ENFILE, Kind::NoResources}, {ENOMEM, Kind::NoResources}};
    for (const auto& [code, kind] : errors) {
        const int error = code;
        const calls::Watch watch([&](const calls::Call& call) {
            return call.name == "open" && call.path == continuation.toStdString() ? error : 0;
        });
        const Failure failure = FailureOf(here.Path("a.ZU"));
        EXPECT_EQ(failure.kind, kind);
        EXPECT_EQ(failure.path, continuation);
        EXPECT_EQ(failure.code, error);
        EXPECT_TRUE(failure.text.startsWith(QStringLiteral("'%1' could not be read: ").arg(continuation)));
    }
}

TEST(ChainFiles, ContinuationThatCannotBeReadIsAnError)
{
    const TestDirectory here;
    here.Write("a.ZU", "x");
    const QString continuation = here.Write("a.Z01", "y");
    const calls::Watch watch([&](const calls::Call& call) {
        return call.name == "pread" && call.path == continuation.toStdString() ? EIO : 0;
    });
    EXPECT_EQ(FailureOf(here.Path("a.ZU")).text,
              QStringLiteral(
                  "'%1' could not be read: Input/output error; check the disk or the network, then convert "
                  "again")
                  .arg(continuation));
}

TEST(ChainFiles, FileWithoutPermissionIsAnErrorForAnOrdinaryUser)
{
    const TestDirectory here;
    const QString first = here.Write("a.ZU", "x");
    const QString continuation = here.Write("a.Z01", "y");
    ASSERT_EQ(chmod(QFile::encodeName(here.Path()).constData(), 0755), 0);
    ASSERT_EQ(chmod(QFile::encodeName(first).constData(), 0644), 0);
    ASSERT_EQ(chmod(QFile::encodeName(continuation).constData(), 0000), 0);
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && setuid(65534) != 0)
            _exit(2);
        const Failure failure = FailureOf(first);
        _exit(failure.kind == Kind::NoPermission && failure.path == continuation && failure.code == EACCES
                  ? 0
                  : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

TEST(ChainFiles, PipesAndDirectoriesAreErrorsAndNotWaitedFor)
{
    const TestDirectory here;
    here.Write("a.ZU", "x");
    ASSERT_EQ(mkfifo(QFile::encodeName(here.Path("a.Z01")).constData(), 0600), 0);
    EXPECT_EQ(FailureOf(here.Path("a.ZU")).kind, Kind::NotAFile);
    here.MakeDirectory("b.ZU");
    EXPECT_EQ(FailureOf(here.Path("b.ZU")).text,
              QStringLiteral(
                  "'%1' has the name of a recording, but is not a file; move it away, then convert again")
                  .arg(here.Path("b.ZU")));
}

TEST(ChainFiles, ThatGrowWhileTheyAreReadAreAnError)
{
    const TestDirectory here;
    const QString path = here.Write("a.ZU", QByteArray(100000, 'x'));
    bool grown = false;
    const calls::Watch watch([&](const calls::Call& call) {
        if (call.name == "pread" && !grown) {
            QFile file(path);
            grown = file.open(QIODevice::Append) && file.write("more") == 4;
        }
        return 0;
    });
    EXPECT_EQ(FailureOf(path).kind, Kind::Changing);
    EXPECT_TRUE(grown);
}

TEST(ChainFiles, NoticeWhatHappensAfterwards)
{
    const TestDirectory here;
    const QString path = here.Write("a.ZU", "first");
    const QString second = here.Write("a.Z01", "second");
    const QString changed = QStringLiteral("'%1' changed after it was read");
    {
        const ChainFiles chain(path);
        WriteOver(second, "SECOND", nullptr); // at once: in a clock tick of its own
        EXPECT_EQ(Happened(chain), changed.arg(second));
    }
    {
        const ChainFiles chain(path);
        const timespec before = ModifiedOf(path);
        WriteOver(path, "FIRST", &before);
        EXPECT_EQ(ModifiedOf(path).tv_nsec, before.tv_nsec);
        EXPECT_EQ(Happened(chain), changed.arg(path));
    }
    {
        const ChainFiles chain(path);
        ASSERT_TRUE(QFile::rename(here.Write("b", "FIRST"), here.Path("b2")));
        ASSERT_EQ(rename(QFile::encodeName(here.Path("b2")).constData(), QFile::encodeName(path).constData()),
                  0);
        EXPECT_EQ(Happened(chain),
                  QStringLiteral("'%1' is another file than the one that was read").arg(path));
    }
    {
        const ChainFiles chain(path);
        const QString third = here.Write("a.Z02", "third");
        EXPECT_EQ(Happened(chain), QStringLiteral("'%1' came after the recording was read").arg(third));
    }
    {
        const ChainFiles chain(path);
        here.Write("a.Z0f", "last");
        EXPECT_EQ(chain.Arrived(), here.Path("a.Z0f"));
    }
    const ChainFiles chain(path);
    ASSERT_TRUE(QFile::remove(second));
    EXPECT_EQ(Happened(chain), QStringLiteral("'%1' is gone since it was read").arg(second));
}

TEST(ChainFiles, ThatWereLeftInPeaceForAWhileAreKnownByTheirTimesAlone)
{
    const TestDirectory here;
    const QString path = here.Write("a.ZU", "first");
    const calls::Ahead aWhile(4);
    const ChainFiles chain(path);
    bool read = false;
    const calls::Watch watch([&](const calls::Call& call) {
        read = read || call.name == "pread";
        return 0;
    });
    EXPECT_EQ(Happened(chain), QString());
    while (ModifiedOf(path).tv_nsec == chain.Of(0).modified % 1000000000) // until the clock goes on
        WriteOver(path, "first");
    EXPECT_EQ(Happened(chain), QStringLiteral("'%1' changed after it was read").arg(path));
    EXPECT_FALSE(read);
}

TEST(ChainFiles, ThatCannotBeCheckedAgainCountAsChanged)
{
    const TestDirectory here;
    const ChainFiles chain(here.Write("a.ZU", "first"));
    const calls::Watch watch([](const calls::Call& call) { return call.name == "statx" ? EIO : 0; });
    EXPECT_EQ(Happened(chain),
              QStringLiteral("'%1' could not be checked again: Input/output error").arg(here.Path("a.ZU")));
}

TEST(ChainFiles, OnAFileSystemThatCountsSecondsAreReadAgain)
{
    const calls::WholeSeconds wholeSeconds;
    const TestDirectory here;
    const QString path = here.Write("a.ZU", "first");
    for (int attempt = 0; attempt < 3; ++attempt) { // a second may end between the two
        const ChainFiles chain(path);
        EXPECT_EQ(Happened(chain), QString());
        WriteOver(path, attempt % 2 == 0 ? "FIRST" : "first");
        EXPECT_EQ(Happened(chain), QStringLiteral("'%1' changed after it was read").arg(path));
    }
}

TEST(ChainFiles, LinksAreFollowedAndNoticedWhenTheyLeadElsewhere)
{
    const TestDirectory here;
    const QString target = here.Write("target", "x");
    ASSERT_TRUE(QFile::link(target, here.Path("a.ZU")));
    const ChainFiles chain(here.Path("a.ZU"));
    EXPECT_EQ(chain.Count(), 1u);
    EXPECT_TRUE(chain.NameOf(0).IsLink());
    EXPECT_TRUE(chain.Of(0).IsRegular());
    EXPECT_EQ(Happened(chain), QString());
    WriteOver(target, "y");
    EXPECT_EQ(Happened(chain), QStringLiteral("'%1' changed after it was read").arg(here.Path("a.ZU")));
}

TEST(ChainFiles, ContinuationThatIsALinkToNowhereCannotBeRead)
{
    const TestDirectory here;
    here.Write("a.ZU", "x");
    ASSERT_TRUE(QFile::link(here.Path("nowhere"), here.Path("a.Z01")));
    EXPECT_EQ(FailureOf(here.Path("a.ZU")).path, here.Path("a.Z01"));
}

TEST(ChainFiles, OrphansAreContinuationsWithoutAFirstFile)
{
    const TestDirectory here;
    for (const char* name : {"a.ZU", "a.Z01", "b.Z01", "b.Z03", "c.z01", "c.ZU", ".d.ZU.zucmtr-Ab3xYz",
                             "d.Z01", "e.txt", "e.Z10"})
        here.Write(name, "x");
    EXPECT_EQ(OrphansIn(here.Path()),
              (QStringList{here.Path("b.Z01"), here.Path("b.Z03"), here.Path("c.z01")}));
    EXPECT_EQ(OrphansIn(here.Path("nowhere")), QStringList());
}
