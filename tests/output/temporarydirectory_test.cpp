// Temporary directories, and what killed programs have left of them.
#include "output/temporarydirectory.h"
#include "support/childend.h"
#include "support/files.h"

#include <QDir>

#include <gtest/gtest.h>

#include <csignal>
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

using output::TemporaryDirectory;

namespace {

QStringList In(const TestDirectory& place)
{
    return QDir(place.Path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
}

void KillThis()
{
    if (!testing::Test::HasFailure())
        kill(getpid(), SIGKILL);
}

// Runs it in a process, which it has to kill.
template <class Work>
void InAnotherProcess(const Work& work)
{
    const pid_t process = fork();
    if (process == 0) {
        work();
        _exit(1);
    }
    ASSERT_EQ(EndOf(process), SIGKILL);
}

// What the first temporary directory of a program does in the place, again and again without its pauses.
[[noreturn]] void KeepRemovingUnlocked(const char* place)
{
    DIR* const directory = opendir(place);
    while (true) {
        rewinddir(directory);
        while (const dirent* entry = readdir(directory)) {
            if (entry->d_name[0] == '.')
                continue;
            const int file = openat(dirfd(directory), entry->d_name, O_RDONLY | O_DIRECTORY);
            if (file >= 0 && flock(file, LOCK_EX | LOCK_NB) == 0)
                unlinkat(dirfd(directory), entry->d_name, AT_REMOVEDIR);
            close(file);
        }
    }
}

} // namespace

TEST(TemporaryDirectory, IsThereWithWhatIsInItWhileItLives)
{
    const TestDirectory place;
    {
        const TemporaryDirectory directory(place.Path());
        EXPECT_EQ(directory.Error(), 0);
        EXPECT_EQ(In(place).size(), 1);
        EXPECT_TRUE(QDir(directory.Path()).mkpath("a/b"));
    }
    EXPECT_EQ(In(place), QStringList());
}

TEST(TemporaryDirectory, OfAKilledProgramIsRemovedByTheNextOne)
{
    const TestDirectory place;
    InAnotherProcess([&] {
        const TemporaryDirectory directory(place.Path());
        QDir(directory.Path()).mkpath("a/b");
        KillThis();
    });
    InAnotherProcess([&] {
        const TemporaryDirectory alive(place.Path());
        EXPECT_EQ(In(place).size(), 1);
        KillThis();
    });
    ASSERT_EQ(In(place).size(), 1);
    const TemporaryDirectory own(place.Path());
    EXPECT_EQ(In(place), QStringList{QFileInfo(own.Path()).fileName()});
}

TEST(TemporaryDirectory, OfAnotherProgramThatRunsIsLeftAlone)
{
    const TestDirectory place;
    const TemporaryDirectory own(place.Path());
    InAnotherProcess([&] {
        const TemporaryDirectory other(place.Path(".")); // by a name for which it has not looked yet
        EXPECT_EQ(In(place).size(), 2);
        KillThis();
    });
    EXPECT_TRUE(QFileInfo(own.Path()).isDir());
}

TEST(TemporaryDirectory, IsThereAlthoughAnotherProgramRemovesWhatIsNotLocked)
{
    const TestDirectory place;
    const pid_t remover = fork();
    ASSERT_NE(remover, -1);
    if (remover == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL); // should this be killed, too
        KeepRemovingUnlocked(QFile::encodeName(place.Path()).constData());
    }
    for (int round = 0; round < 5000; ++round) {
        const TemporaryDirectory own(place.Path());
        EXPECT_EQ(own.Error(), 0);
        EXPECT_TRUE(QDir(own.Path()).mkdir(QStringLiteral("a"))) << round;
    }
    kill(remover, SIGKILL);
    EXPECT_EQ(EndOf(remover), SIGKILL);
    EXPECT_EQ(In(place), QStringList());
}

TEST(TemporaryDirectory, ThatCannotBeOpenedIsReportedAndNotLeft)
{
    const TestDirectory place;
    rlimit before = {};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none = {0, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    {
        const TemporaryDirectory directory(place.Path());
        EXPECT_EQ(directory.Error(), EMFILE);
    }
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(In(place), QStringList());
}

TEST(TemporaryDirectory, DirectoriesOfOtherNamesAreLeftAlone)
{
    const TestDirectory place;
    const QStringList others{"other-Abcdef", "zucmtr-Abcdefg", "zucmtr-reports"};
    for (const QString& name : others)
        place.MakeDirectory(name);
    place.MakeDirectory("zucmtr-Abcdef");
    {
        const TemporaryDirectory own(place.Path());
    }
    EXPECT_EQ(In(place), others);
}

TEST(TemporaryDirectory, PlaceThatIsNotThereIsReported)
{
    const TestDirectory place;
    const TemporaryDirectory directory(place.Path("none"));
    EXPECT_EQ(directory.Error(), ENOENT);
    const TemporaryDirectory nowhere((QString()));
    EXPECT_EQ(nowhere.Error(), ENOENT);
}

TEST(TemporaryFile, HasItsBytesAndGoes)
{
    QString path;
    {
        const output::TemporaryFile file("bytes");
        EXPECT_EQ(file.ErrorText(), "");
        path = file.Path();
        EXPECT_EQ(ReadBytes(path), "bytes");
    }
    EXPECT_FALSE(QFileInfo::exists(QFileInfo(path).path()));
}
