// Moving recordings into an archive on another file system.
#include "support/files.h"
#include "zucmtr/sourcefiles.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <functional>
#include <sys/stat.h>

namespace {

dev_t FileSystemOf(const QString& path)
{
    struct stat status = {};
    return stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_dev : 0;
}

// A directory on another file system than the usual temporary one, if the machine has one in memory.
class OtherDirectory
{
public:
    OtherDirectory() : directory(QStringLiteral("/dev/shm/zucmtr-test-XXXXXX")) {}
    QString Path(const QString& name = QString()) const { return directory.filePath(name); }

private:
    QTemporaryDir directory;
};

QString TextOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const sourcefiles::Error& error) {
        return QString::fromUtf8(error.what());
    }
    return QString();
}

} // namespace

TEST(SourceFiles, GoToAnotherFileSystem)
{
    const TestDirectory here;
    const OtherDirectory there;
    ASSERT_NE(FileSystemOf(here.Path()), FileSystemOf(there.Path()));
    const QByteArray large(1 << 20, 'x');
    const QStringList files = {here.Write("a.ZU", large), here.Write("a.Z01", "second")};
    sourcefiles::Archive(files, there.Path("2024"));
    EXPECT_EQ(here.Names(), QStringList());
    EXPECT_EQ(QDir(there.Path("2024")).entryList(QDir::Files), (QStringList{"a.Z01", "a.ZU"}));
    EXPECT_TRUE(ReadBytes(there.Path("2024/a.ZU")) == large);
}

TEST(SourceFiles, RestOfAnEndedRunIsReplacedOnAnotherFileSystem)
{
    const TestDirectory here;
    const OtherDirectory there;
    const QString file = here.Write("a.ZU", "whole");
    QFile part(there.Path("a.ZU.part"));
    ASSERT_TRUE(part.open(QIODevice::WriteOnly) && part.write("par") == 3);
    part.close();
    sourcefiles::Archive({file}, there.Path());
    EXPECT_EQ(QDir(there.Path()).entryList(QDir::Files), QStringList{"a.ZU"});
    EXPECT_EQ(ReadBytes(there.Path("a.ZU")), QByteArray("whole"));
}

TEST(SourceFiles, ThatCannotBeDeletedOrWrittenAreNamed)
{
    const TestDirectory here;
    const QString gone = here.Path("no.ZU");
    EXPECT_EQ(
        TextOf([&] { sourcefiles::Remove({gone}); }),
        QStringLiteral("'%1' could not be deleted: No such file or directory; delete it yourself, its record "
                       "is verified")
            .arg(gone));
    EXPECT_TRUE(TextOf([&] {
                    sourcefiles::Sync({gone}, here.Path());
                }).startsWith(QStringLiteral("'%1' could not be written to the disk: ").arg(gone)));
    const QString file = here.Write("a.ZU", "a");
    here.Write("file", "b");
    EXPECT_TRUE(
        TextOf([&] { sourcefiles::Archive({file}, here.Path("file/below")); }).contains("cannot be made"));
    EXPECT_EQ(ReadBytes(file), QByteArray("a"));
}
