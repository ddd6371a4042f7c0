// Files that options name: what is replaced, and what is only written to.
#include "output/outputfile.h"
#include "output/scratchfile.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

struct stat StatusOf(const QString& path)
{
    struct stat status = {};
    EXPECT_EQ(lstat(QFile::encodeName(path).constData(), &status), 0) << path;
    return status;
}

QString MakePipe(const TestDirectory& directory)
{
    EXPECT_EQ(mkfifo(QFile::encodeName(directory.Path("pipe")).constData(), 0640), 0);
    return directory.Path("pipe");
}

int OpenToRead(const QString& path)
{
    return open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
}

QString ErrorOf(const QString& path, const QByteArray& bytes = "text")
{
    QString error;
    EXPECT_FALSE(output::WriteOutput(path, bytes, error));
    return error;
}

void ExpectWritten(const QString& path, const QByteArray& bytes = "text")
{
    QString error;
    EXPECT_TRUE(output::WriteOutput(path, bytes, error)) << error;
}

} // namespace

TEST(OutputFile, FileIsReplacedOnlyWhenTheNewOneIsWhole)
{
    const TestDirectory directory;
    const QString path = directory.Write("file", "old");
    {
        output::OutputFile file(path);
        ASSERT_TRUE(file.Open());
        ASSERT_TRUE(file.Write("new"));
        EXPECT_EQ(ReadBytes(path), "old");
    }
    EXPECT_EQ(ReadBytes(path), "old");
    ExpectWritten(path, "new");
    EXPECT_EQ(ReadBytes(path), "new");
    EXPECT_EQ(directory.Names(), QStringList{"file"});
}

TEST(OutputFile, ReplacedFileKeepsItsPermissionsAndLinks)
{
    const TestDirectory directory;
    const QString path = directory.Write("file", "old");
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), 0640), 0);
    QFile::link("file", directory.Path("first"));
    QFile::link("first", directory.Path("second"));
    ExpectWritten(directory.Path("second"), "new");
    EXPECT_EQ(ReadBytes(path), "new");
    EXPECT_EQ(StatusOf(path).st_mode, mode_t{S_IFREG | 0640});
    for (const char* link : {"first", "second"})
        EXPECT_TRUE(QFileInfo(directory.Path(link)).isSymLink()) << link;
}

TEST(OutputFile, LinkToNothingGetsItsFile)
{
    const TestDirectory directory;
    QFile::link("file", directory.Path("link"));
    ExpectWritten(directory.Path("link"));
    EXPECT_TRUE(QFileInfo(directory.Path("link")).isSymLink());
    EXPECT_EQ(ReadBytes(directory.Path("file")), "text");
}

TEST(OutputFile, RootKeepsTheOwnerOfWhatItReplaces)
{
    const TestDirectory directory;
    const QString path = directory.Write("file", "old");
    const uid_t owner = geteuid() == 0 ? 4711 : geteuid(); // nobody else may give files away
    ASSERT_EQ(chown(QFile::encodeName(path).constData(), owner, getegid()), 0);
    ExpectWritten(path);
    EXPECT_EQ(StatusOf(path).st_uid, owner);
}

TEST(OutputFile, PipeIsWrittenToAndStays)
{
    const TestDirectory directory;
    const QString path = MakePipe(directory);
    const int reader = OpenToRead(path);
    ASSERT_GE(reader, 0);
    ExpectWritten(path);
    char bytes[16] = {};
    EXPECT_EQ(read(reader, bytes, sizeof bytes), 4);
    EXPECT_STREQ(bytes, "text");
    close(reader);
    EXPECT_EQ(StatusOf(path).st_mode, mode_t{S_IFIFO | 0640});
}

TEST(OutputFile, MoreThanAPipeHoldsWaitsForItsReader)
{
    const TestDirectory directory;
    const QString path = MakePipe(directory);
    const int reader = OpenToRead(path);
    fcntl(reader, F_SETFL, 0);
    const QByteArray large(1 << 20, 'x');
    ssize_t total = 0;
    std::thread reading([&] {
        QByteArray block(4096, '\0');
        while (total < large.size())
            total += read(reader, block.data(), 4096);
    });
    ExpectWritten(path, large);
    reading.join();
    close(reader);
    EXPECT_EQ(total, large.size());
}

TEST(OutputFile, PipeThatNobodyReadsIsAnErrorAndNotAWait)
{
    const TestDirectory directory;
    EXPECT_EQ(ErrorOf(MakePipe(directory)), "nobody reads this pipe; start its reader first");
}

TEST(OutputFile, ReaderThatGoesAwayIsAnErrorAndNoSignal)
{
    const TestDirectory directory;
    const QString path = MakePipe(directory);
    const int reader = OpenToRead(path);
    output::OutputFile file(path);
    ASSERT_TRUE(file.Open());
    close(reader);
    EXPECT_FALSE(file.Write("text")); // SIGPIPE would have ended this test
    EXPECT_EQ(file.ErrorText(), "Broken pipe");
}

TEST(OutputFile, DescriptorIsWrittenWhereItStands)
{
    const TestDirectory directory;
    const QString path = directory.Write("file", "old line\n");
    const int file =
        open(QFile::encodeName(path).constData(), O_WRONLY | O_APPEND); // inherited, as by a shell
    const ino_t before = StatusOf(path).st_ino;
    ExpectWritten(QStringLiteral("/dev/fd/%1").arg(file), "new line\n");
    close(file);
    EXPECT_EQ(ReadBytes(path), "old line\nnew line\n");
    EXPECT_EQ(StatusOf(path).st_ino, before);
}

TEST(OutputFile, DescriptorsThatWereNotGivenToTheProgramAreRefused)
{
    const TestDirectory directory;
    const QByteArray name = QFile::encodeName(directory.Write("file", "old"));
    const int file = open(name.constData(), O_WRONLY | O_CLOEXEC);
    const QString path = QStringLiteral("/dev/fd/%1").arg(file);
    EXPECT_EQ(ErrorOf(path), "Bad file descriptor");
    close(file);
    EXPECT_EQ(ErrorOf(path), "Bad file descriptor");
}

TEST(OutputFile, DirectoryIsNoFile)
{
    const TestDirectory directory;
    EXPECT_TRUE(
        ErrorOf(directory.Path()).endsWith("; check the directory, its permissions and the free space"));
    EXPECT_TRUE(QFileInfo(directory.Path()).isDir());
}

TEST(ScratchFile, IsReadAndWrittenByItsPathAndHasNoName)
{
    const TestDirectory directory;
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", QFile::encodeName(directory.Path()));
    {
        const output::ScratchFile scratch;
        EXPECT_EQ(directory.Names(), QStringList());
        for (const char* line : {"one\n", "two\n"}) {
            QFile file(scratch.Path());
            ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Append));
            file.write(line);
        }
        EXPECT_EQ(ReadBytes(scratch.Path()), "one\ntwo\n");
    }
    qputenv("TMPDIR", before);
}
