// What is said about files that the user may not use.
#include "sql/permission.h"

#include "process.h"
#include "support/files.h"

#include <QFileInfo>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace {

// A file of the user who runs the tests. Who asks is nobody if that is the superuser, who may do everything.
class Permission : public testing::Test
{
protected:
    void SetUp() override { Allow(place, 0777); }

    static void Allow(const QString& path, mode_t mode)
    {
        ASSERT_EQ(chmod(QFile::encodeName(path).constData(), mode), 0);
    }
    QString Said(bool writes) const
    {
        return InAProcess([&] {
            BecomeNobody();
            return sql::MissingPermission(file, writes);
        });
    }
    static QString With(const QString& sentence, const QString& path)
    {
        const QString owner = QFileInfo(path).owner();
        return sentence.arg(geteuid() == 0 ? QString("nobody") : owner, path, owner);
    }

    const TestDirectory directory{};
    const QString place = directory.MakeDirectory("place");
    const QString file = directory.Write("place/x.db", "");
};

} // namespace

TEST_F(Permission, NothingIsSaidWhereNothingIsMissing)
{
    Allow(directory.Path(), 0755);
    Allow(file, 0444);
    EXPECT_EQ(Said(false), "");
    Allow(file, 0666);
    EXPECT_EQ(Said(true), "");
}

TEST_F(Permission, FirstDirectoryThatIsClosedIsNamed)
{
    const QString sentence =
        "user '%1' may not enter the directory '%2'; its owner '%3' can permit that, as by "
        "a group and chmod g+x";
    Allow(directory.Path(), 0755);
    Allow(place, 0600);
    EXPECT_EQ(Said(false), With(sentence, place));
    Allow(directory.Path(), 0600);
    EXPECT_EQ(Said(false), With(sentence, directory.Path()));
    Allow(directory.Path(), 0700);
    Allow(place, 0700);
}

TEST_F(Permission, FileIsNamedWithWhatTheUserMayNot)
{
    Allow(directory.Path(), 0755);
    Allow(file, 0444);
    EXPECT_EQ(Said(true),
              With("user '%1' may not write to the file '%2'; its owner '%3' can permit that, as by a "
                   "group and chmod g+w",
                   file));
    Allow(file, 0);
    EXPECT_EQ(Said(false),
              With("user '%1' may not read the file '%2'; its owner '%3' can permit that, as by a "
                   "group and chmod g+r",
                   file));
}

TEST_F(Permission, WriterNeedsADirectoryToMakeFilesIn)
{
    Allow(directory.Path(), 0755);
    Allow(file, 0666);
    Allow(place, 0555);
    EXPECT_EQ(Said(false), "");
    EXPECT_EQ(Said(true),
              With("user '%1' may not make files in the directory '%2', where the database needs some "
                   "beside it; its owner '%3' can permit that, as by a group and chmod g+wx",
                   place));
    Allow(place, 0700);
}
