// Moving recordings into an archive: what the copies keep, the order of events, and obstacles.
#include "scene.h"

#include "zucmtr/files/archivecopies.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const Way sameFileSystem = {"archive", true, {}};
const Way otherFileSystem = {"archive on another file system", true, {{"linkat", EXDEV}}};

struct stat StatusOf(const QString& path)
{
    struct stat status = {};
    EXPECT_EQ(stat(QFile::encodeName(path).constData(), &status), 0);
    return status;
}

void SetTimes(const QString& path, const timespec& accessed, const timespec& modified)
{
    const timespec times[2] = {accessed, modified};
    ASSERT_EQ(utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0), 0);
}

// As the program marks its own copies until they have their names.
void MarkAsCopy(const QString& path)
{
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), S_ISVTX | S_IRUSR | S_IWUSR), 0);
}

// The watched calls that change something, as "name file".
calls::Hook Note(QStringList& log)
{
    return [&log](const calls::Call& call) {
        if (call.Writes())
            log << QString::fromStdString(call.name + ' ' + call.path.substr(call.path.rfind('/') + 1));
        return 0;
    };
}

} // namespace

TEST(Archive, OnAFileSystemThatReallyIsAnotherTakesAllFiles)
{
    const TestDirectory here;
    // In memory on most machines; if it is not, the call between the directories shows that.
    const QTemporaryDir there(QStringLiteral("/dev/shm/zucmtr-test-XXXXXX"));
    const QByteArray large(1 << 20, 'x');
    const ChainFiles chain(here.Write("a.ZU", large));
    const bool same = StatusOf(here.Path()).st_dev == StatusOf(there.path()).st_dev;
    const calls::Watch watch(
        [&](const calls::Call& call) { return same && call.name == "linkat" ? EXDEV : 0; });
    sourcefiles::Archive(chain, there.filePath("2024"));
    EXPECT_EQ(here.Names(), QStringList());
    EXPECT_EQ(QDir(there.filePath("2024")).entryList(QDir::Files), QStringList{"a.ZU"});
    EXPECT_TRUE(ReadBytes(there.filePath("2024/a.ZU")) == large);
}

TEST(Archive, OnTheSameFileSystemHasTheVeryFile)
{
    const Scene scene(1);
    const ino_t inode = StatusOf(scene.Source("a.Z01")).st_ino;
    scene.PutAway(sameFileSystem);
    EXPECT_EQ(StatusOf(scene.Archive("a.Z01")).st_ino, inode);
}

TEST(Archive, OfOneFileKeepsTheVeryFileWithoutLinks)
{
    const Scene scene(0);
    const ino_t inode = StatusOf(scene.Source("a.ZU")).st_ino;
    scene.PutAway({"archive without links", true, {{"linkat", EPERM}}});
    EXPECT_EQ(StatusOf(scene.Archive("a.ZU")).st_ino, inode);
}

TEST(Archive, FileThatIsMovedWithoutLinksIsOnTheDiskUnderItsNewName)
{
    const Scene scene(0);
    QStringList log;
    scene.PutAway({"archive without links", true, {{"linkat", EPERM}}}, Note(log));
    log.replaceInStrings(QRegularExpression("zucmtr-.*$"), "zucmtr-X");
    EXPECT_EQ(log, (QStringList{"mkdir done", "fsync a.ZU", "renameat2 a.ZU", "fsync done",
                                "renameat2 .a.ZU.zucmtr-X", "fsync a.ZU", "fsync done", "fsync in"}));
}

TEST(Archive, FileThatIsMovedWithoutLinksComesBackIfTheDiskFails)
{
    const Scene scene(0);
    const std::string moved = scene.Archive("a.ZU").toStdString();
    const QString text = scene.TextOfPutAway(
        {"archive without links", true, {{"linkat", EPERM}}},
        [&](const calls::Call& call) { return call.name == "fsync" && call.path == moved ? EIO : 0; });
    EXPECT_EQ(text, QStringLiteral("'%1' could not be moved to '%2': Input/output error; it is where it was")
                        .arg(scene.Source("a.ZU"), scene.Archive("a.ZU")));
    EXPECT_TRUE(scene.IsComplete("in"));
    EXPECT_EQ(scene.Archived(), QStringList());
}

TEST(Archive, DirectoriesThatAKilledRunHasMadeAreOnTheDiskBeforeTheFirstRecording)
{
    const TestDirectory here;
    here.MakeDirectory("done/2024/05");
    QStringList log;
    const calls::Watch watch(Note(log));
    sourcefiles::PrepareArchive(here.Path("done/2024/05"), here.Path("done"));
    EXPECT_EQ(log, (QStringList{"mkdir 05", "fsync 05", "fsync 2024", "fsync done"}));
}

TEST(Archive, CopyKeepsTimesModeAndOwner)
{
    const Scene scene(0);
    const QByteArray path = QFile::encodeName(scene.Source("a.ZU"));
    if (geteuid() == 0) {
        ASSERT_EQ(chown(path.constData(), 12345, 12346), 0);
    }
    ASSERT_EQ(chmod(path.constData(), 0642), 0);
    SetTimes(scene.Source("a.ZU"), {1500000000, 987654321}, {1400000000, 123456789});
    const struct stat before = StatusOf(scene.Source("a.ZU"));
    scene.PutAway(otherFileSystem);
    const struct stat after = StatusOf(scene.Archive("a.ZU"));
    EXPECT_EQ(after.st_mtim.tv_sec, before.st_mtim.tv_sec);
    EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_NE(after.st_ino, before.st_ino);
}

TEST(Archive, CopyThatMayNotHaveTheOwnerIsMadeAllTheSame)
{
    const Scene scene(1);
    EXPECT_EQ(scene.TextOfPutAway(otherFileSystem,
                                  [](const calls::Call& call) { return call.name == "fchown" ? EPERM : 0; }),
              QString());
    EXPECT_TRUE(scene.IsPutAway(otherFileSystem));
}

TEST(Archive, CopyIsOnTheDiskBeforeTheSourceIsTouched)
{
    const Scene scene(0);
    QStringList log;
    scene.PutAway(otherFileSystem, Note(log));
    log.replaceInStrings(QRegularExpression("zucmtr-.*$"), "zucmtr-X");
    EXPECT_EQ(log, (QStringList{"mkdir done", "create a.ZU.part", "write a.ZU.part", "fchown a.ZU.part",
                                "fchmod a.ZU.part", "futimens a.ZU.part", "fsync a.ZU.part",
                                "fsync a.ZU.part", "renameat2 a.ZU", "renameat2 a.ZU.part", "fchmod a.ZU",
                                "fsync done", "unlink .a.ZU.zucmtr-X"}));
}

TEST(Archive, CopyThatIsThereAlreadyIsOnTheDiskBeforeTheSourceGoes)
{
    const Scene scene(0);
    QFile copy(scene.Archive("a.ZU"));
    ASSERT_TRUE(copy.open(QIODevice::WriteOnly) && copy.write(Scene::Content("a.ZU")) > 0);
    copy.close();
    QStringList log;
    scene.PutAway(otherFileSystem, Note(log));
    log.replaceInStrings(QRegularExpression("zucmtr-.*$"), "zucmtr-X");
    EXPECT_EQ(log, (QStringList{"mkdir done", "fsync a.ZU", "renameat2 a.ZU", "fsync done",
                                "unlink .a.ZU.zucmtr-X"}));
    EXPECT_TRUE(scene.IsPutAway(otherFileSystem));
}

TEST(Archive, NewDirectoriesAreOnTheDisk)
{
    const Scene scene(0);
    const ChainFiles chain(scene.Source("a.ZU"));
    QStringList log;
    const calls::Watch watch(Note(log));
    sourcefiles::Archive(chain, scene.Archive("2024/05"));
    EXPECT_EQ(log.mid(0, 5), (QStringList{"mkdir 05", "mkdir 2024", "fsync done", "mkdir 05", "fsync 2024"}));
    EXPECT_EQ(ReadBytes(scene.Archive("2024/05/a.ZU")), Scene::Content("a.ZU"));
}

TEST(Archive, PartOfAKilledRunIsReplaced)
{
    for (const Way& way : {sameFileSystem, otherFileSystem}) {
        const Scene scene(1);
        for (const char* name : {"a.ZU.part", "a.Z01.part"}) {
            QFile part(scene.Archive(name));
            ASSERT_TRUE(part.open(QIODevice::WriteOnly) && part.write("par") == 3);
            MarkAsCopy(scene.Archive(name));
        }
        EXPECT_EQ(scene.TextOfPutAway(way), QString());
        EXPECT_TRUE(scene.IsPutAway(way)) << way.name;
    }
}

// On a file system that does not store the mark.
TEST(Archive, PartWithoutAMarkIsReplacedIfTheRecordingHasItsContent)
{
    for (const int size : {0, 100, static_cast<int>(Scene::Content("a.ZU").size())}) {
        const Scene scene(0);
        QFile part(scene.Archive("a.ZU.part"));
        ASSERT_TRUE(part.open(QIODevice::WriteOnly) && part.write(Scene::Content("a.ZU").left(size)) == size);
        part.close();
        EXPECT_EQ(scene.TextOfPutAway(otherFileSystem), QString());
        EXPECT_TRUE(scene.IsPutAway(otherFileSystem)) << size;
    }
}

TEST(Archive, PartOfAnotherProgramStaysAndKeepsTheRecordingWhereItIs)
{
    const QByteArray content = Scene::Content("a.ZU");
    for (const QByteArray& other : {content + 'x', 'x' + content.mid(1), QByteArray("x")}) {
        for (const Way& way : {sameFileSystem, otherFileSystem}) {
            const Scene scene(0);
            QFile part(scene.Archive("a.ZU.part"));
            ASSERT_TRUE(part.open(QIODevice::WriteOnly) && part.write(other) == other.size());
            part.close();
            EXPECT_EQ(sourcefiles::RemoveParts(scene.Archive()), QStringList());
            EXPECT_EQ(scene.TextOfPutAway(way),
                      QStringLiteral("'%1' is there and was not made by this program; move it away")
                          .arg(part.fileName()));
            EXPECT_EQ(ReadBytes(part.fileName()), other);
            EXPECT_TRUE(scene.IsComplete("in"));
        }
    }
}

TEST(Archive, PartThatCannotGoOrBeIsReportedWithTheReason)
{
    for (const auto& [name, error] : {std::pair("statx", ENAMETOOLONG), std::pair("unlink", EPERM)}) {
        const Scene scene(0);
        QFile part(scene.Archive("a.ZU.part"));
        ASSERT_TRUE(part.open(QIODevice::WriteOnly));
        const std::string call = name;
        const int failure = error;
        const QString text = scene.TextOfPutAway(sameFileSystem, [&](const calls::Call& made) {
            const bool isPart = QString::fromStdString(made.path).endsWith("a.ZU.part");
            return made.name == call && isPart ? failure : 0;
        });
        EXPECT_EQ(text, QStringLiteral("'%1' could not be moved to '%2': %3; it is where it was")
                            .arg(scene.Source("a.ZU"), scene.Archive("a.ZU"),
                                 QString::fromLocal8Bit(std::strerror(error))));
        EXPECT_TRUE(scene.IsComplete("in"));
    }
}

TEST(Archive, CopyOfARunThatWasKilledBeforeItClearedTheMarkLosesIt)
{
    const Scene scene(0);
    QFile copy(scene.Archive("a.ZU"));
    ASSERT_TRUE(copy.open(QIODevice::WriteOnly) && copy.write(Scene::Content("a.ZU")) > 0);
    copy.close();
    MarkAsCopy(copy.fileName());
    EXPECT_EQ(scene.TextOfPutAway(otherFileSystem), QString());
    EXPECT_EQ(StatusOf(copy.fileName()).st_mode, static_cast<mode_t>(S_IFREG | S_IRUSR | S_IWUSR));
}

TEST(Archive, PartThatAnotherProgramWritesIsLeftToIt)
{
    const Scene scene(0);
    const QString path = scene.Archive("a.ZU.part");
    const systemfile::Descriptor part(
        open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    ASSERT_EQ(flock(part.Number(), LOCK_SH), 0);
    EXPECT_EQ(scene.TextOfPutAway(otherFileSystem),
              QStringLiteral("another program is writing '%1'; the recording is where it was").arg(path));
    EXPECT_EQ(sourcefiles::RemoveParts(scene.Archive()), QStringList());
    EXPECT_EQ(scene.Archived(), QStringList{"a.ZU.part"});
    EXPECT_TRUE(scene.IsComplete("in"));
}

TEST(Archive, PartsOfKilledRunsAreRemovedAndNoOtherFiles)
{
    const TestDirectory archive;
    for (const char* name : {"a.ZU.part", "a.Z0f.part", "b.txt.part", "c.ZU", ".part"})
        MarkAsCopy(archive.Write(name, "x"));
    archive.Write("d.ZU.part", "of another program, and all there is of it");
    const QString source = archive.Write("source", "x");
    ASSERT_TRUE(QFile::link(source, archive.Path("e.ZU.part")));
    ASSERT_EQ(
        link(QFile::encodeName(source).constData(), QFile::encodeName(archive.Path("b.zu.part")).constData()),
        0);
    EXPECT_EQ(
        sourcefiles::RemoveParts(archive.Path()),
        (QStringList{archive.Path("a.Z0f.part"), archive.Path("a.ZU.part"), archive.Path("b.zu.part")}));
    EXPECT_EQ(archive.Names(),
              (QStringList{".part", "b.txt.part", "c.ZU", "d.ZU.part", "e.ZU.part", "source"}));
}

TEST(Archive, FullDiskIsNamedAndLeavesNothing)
{
    const Scene scene(1);
    int writes = 0;
    const QString text = scene.TextOfPutAway(otherFileSystem, [&](const calls::Call& call) {
        return call.name == "write" && ++writes == 2 ? ENOSPC : 0;
    });
    EXPECT_EQ(text, QStringLiteral("'%1' could not be moved to '%2': no room left on the disk of %3; it is "
                                   "where it was")
                        .arg(scene.Source("a.Z01"), scene.Archive("a.Z01"), scene.Archive()));
    EXPECT_TRUE(scene.IsComplete("in"));
    EXPECT_EQ(scene.Archived(), QStringList());
}

TEST(Archive, TroubleSaysWhoseItIs)
{
    using sourcefiles::Trouble;
    const std::vector<std::tuple<const char*, int, Trouble>> cases = {
        {"write", EDQUOT, Trouble::NoRoom},          {"write", EIO, Trouble::Archive},
        {"create", EROFS, Trouble::Archive},         {"mkdir", EACCES, Trouble::Archive},
        {"create", ENAMETOOLONG, Trouble::Conflict}, {"renameat2", EACCES, Trouble::File}};
    for (const auto& [name, error, trouble] : cases) {
        const Scene scene(0);
        const ChainFiles chain(scene.Source("a.ZU"));
        const std::string call = name;
        const int failure = error;
        const calls::Watch watch([&](const calls::Call& made) {
            return made.name == "linkat" ? EXDEV : made.name == call ? failure : 0;
        });
        try {
            sourcefiles::Archive(chain, scene.Archive(call == "mkdir" ? "new" : ""));
            ADD_FAILURE() << call;
        } catch (const sourcefiles::Error& thrown) {
            EXPECT_EQ(thrown.trouble, trouble) << call << ' ' << thrown.what();
        }
        EXPECT_TRUE(scene.IsComplete("in"));
    }
}

TEST(Archive, DamagedCopyIsNoticed)
{
    const Scene scene(0);
    const QString part = scene.Archive("a.ZU.part");
    const QString text = scene.TextOfPutAway(otherFileSystem, [&](const calls::Call& call) {
        if (call.name == "fsync") {
            QFile copy(part);
            EXPECT_TRUE(copy.open(QIODevice::ReadWrite) && copy.write("C") == 1);
        }
        return 0;
    });
    EXPECT_EQ(text,
              QStringLiteral("the copy of '%1' in the archive is not the same; check the archive's disk")
                  .arg(scene.Source("a.ZU")));
    EXPECT_TRUE(scene.IsComplete("in"));
    EXPECT_EQ(scene.Archived(), QStringList());
}

TEST(Archive, NeverReplacesAFileThatComesAtTheLastMoment)
{
    for (const Way& way : Ways()) {
        if (!way.archive)
            continue;
        const Scene scene(0);
        const QString target = scene.Archive("a.ZU");
        scene.TextOfPutAway(way, [&](const calls::Call& call) {
            if (call.name == "renameat2" && QString::fromStdString(call.target).startsWith(scene.Archive())) {
                QFile other(target);
                EXPECT_TRUE(other.open(QIODevice::WriteOnly) && other.write("other") == 5);
            }
            return 0;
        });
        if (scene.IsPutAway(way)) // a file system without that call
            continue;
        EXPECT_TRUE(scene.IsComplete("in")) << way.name;
        EXPECT_EQ(scene.Archived(), QStringList{"a.ZU"});
        EXPECT_EQ(ReadBytes(target), QByteArray("other"));
    }
}

TEST(Archive, LinkToARecordingIsReplacedByACopyOfIt)
{
    const Scene scene(0);
    const TestDirectory elsewhere;
    const QString target = elsewhere.Write("a.ZU", "elsewhere");
    ASSERT_TRUE(QFile::remove(scene.Source("a.ZU")));
    ASSERT_TRUE(QFile::link(target, scene.Source("a.ZU")));
    EXPECT_EQ(scene.TextOfPutAway(sameFileSystem), QString());
    EXPECT_EQ(scene.Sources(), QStringList());
    EXPECT_FALSE(QFileInfo(scene.Archive("a.ZU")).isSymLink());
    EXPECT_EQ(ReadBytes(scene.Archive("a.ZU")), QByteArray("elsewhere"));
    EXPECT_EQ(ReadBytes(target), QByteArray("elsewhere"));
}

TEST(Archive, UnderAFileCannotBeMade)
{
    const Scene scene(0);
    const ChainFiles chain(scene.Source("a.ZU"));
    EXPECT_EQ(
        TextOf([&] { sourcefiles::Archive(chain, scene.Source("a.ZU/below")); }),
        QStringLiteral("the directory '%1' cannot be made: Not a directory; the recording is where it was")
            .arg(scene.Source("a.ZU/below")));
    EXPECT_TRUE(scene.IsComplete("in"));
}

TEST(Sync, OfAFileThatIsGoneIsAnError)
{
    const TestDirectory here;
    EXPECT_EQ(
        TextOf([&] { sourcefiles::Sync({here.Path("no.cfg")}, here.Path()); }),
        QStringLiteral("'%1' could not be written to the disk: No such file or directory; the recording is "
                       "kept; check the disk, then convert again")
            .arg(here.Path("no.cfg")));
}
