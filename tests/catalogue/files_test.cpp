// Files that cannot be a catalogue: the messages name them.
#include "anycatalogue.h"

#include "support/childend.h"

#include <QFileInfo>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using catalogue::Catalogue;

QString RefusalOf(const std::function<void()>& work)
{
    try {
        work();
    } catch (const text::Error& error) {
        return error.Message();
    }
    return "none";
}

QString Refusal(const QString& path)
{
    return RefusalOf([&] { Catalogue one(path); });
}

QString Named(const QString& path, const QString& reason)
{
    return QStringLiteral("the catalogue '%1': ").arg(path) + reason;
}

// What a user without rights is told.
int FailuresOfNobody(const std::function<void()>& checks)
{
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
            _exit(100);
        checks();
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    const int status = EndOf(child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

TEST(CatalogueFiles, OtherKindsAreRefused)
{
    const TestDirectory directory;
    const QString path = directory.Write("x.db", QByteArray(5000, 'x'));
    const QString refusal = Named(path, "it is no catalogue, or a damaged one (file is not a database)");
    EXPECT_EQ(Refusal(path), refusal);
    EXPECT_EQ(RefusalOf([&] { Catalogue::ForReading(path); }), refusal);
    EXPECT_EQ(ReadBytes(path), QByteArray(5000, 'x'));
    EXPECT_EQ(Refusal(directory.Path()), Named(directory.Path(), "it is no regular file"));
}

TEST(CatalogueFiles, DamagedOneIsReportedWithWhatToDo)
{
    const TestDirectory directory;
    const QString path = directory.Path("x.db");
    {
        Catalogue one(path);
        std::vector<catalogue::Entry> entries;
        for (int i = 0; i < 200; ++i)
            entries.push_back(RecordingAt(directory.Path(QString::number(i)), QByteArray::number(i), i));
        one.Put(entries);
    }
    const QByteArray bytes = ReadBytes(path);
    directory.Write("x.db", bytes.left(bytes.size() / 2));
    const QString refusal = RefusalOf([&] { Catalogue(path).KnownBelow(directory.Path()); });
    EXPECT_TRUE(refusal.startsWith(Named(path, "it is "))) << refusal;
    EXPECT_TRUE(refusal.contains("damaged") && refusal.contains("database disk image is malformed"))
        << refusal;
}

TEST(CatalogueFiles, MissingOneIsNotMadeForReading)
{
    const TestDirectory directory;
    const QString path = directory.Path("x.db");
    EXPECT_EQ(RefusalOf([&] { Catalogue::ForReading(path); }), Named(path, "No such file or directory"));
    EXPECT_EQ(Refusal(directory.Path("no/x.db")),
              Named(directory.Path("no/x.db"), "No such file or directory"));
    EXPECT_EQ(directory.Names(), QStringList());
}

TEST(CatalogueFiles, UserWithoutRightsIsToldSo)
{
    const TestDirectory directory;
    const QString path = directory.Path("x.db");
    Catalogue(path).Put({RecordingAt(directory.Path("a.ZU"), "x")});
    const QByteArray place = QFile::encodeName(directory.Path());
    ASSERT_EQ(chmod(place.constData(), geteuid() == 0 ? 0755 : 0555), 0);
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), 0444), 0);
    EXPECT_EQ(
        FailuresOfNobody([&] {
            const auto denied = [&](const char* what, const QString& where, const char* mode) {
                return QString(
                           "user '%1' may not %2 '%3'%4; its owner '%5' can permit that, as by a group and "
                           "chmod %6")
                    .arg(geteuid() == 65534 ? "nobody" : QFileInfo(path).owner(), what, where,
                         where == directory.Path() ? ", where the database needs some beside it" : "",
                         QFileInfo(where).owner(), mode);
            };
            EXPECT_EQ(Refusal(path), Named(path, denied("write to the file", path, "g+w")));
            EXPECT_EQ(Refusal(directory.Path("new.db")),
                      Named(directory.Path("new.db"),
                            denied("make files in the directory", directory.Path(), "g+wx")));
            EXPECT_EQ(Catalogue::ForReading(path)->KnownBelow(directory.Path()).size(), 1);
        }),
        0);
    ASSERT_EQ(chmod(place.constData(), 0755), 0);
}

TEST(CatalogueFiles, FullDiskLeavesTheCatalogueAsItWas)
{
    const TestDirectory directory;
    const QString path = directory.Path("x.db");
    Catalogue one(path);
    one.Put({RecordingAt(directory.Path("a.ZU"), "x")});
    one.Database().One(QStringLiteral("PRAGMA max_page_count=%1")
                           .arg(std::get<qint64>(one.Database().One("PRAGMA page_count"))));
    std::vector<catalogue::Entry> entries;
    for (int i = 0; i < 200; ++i)
        entries.push_back(RecordingAt(directory.Path(QString::number(i)), QByteArray::number(i), i));
    EXPECT_EQ(RefusalOf([&] { one.Put(entries); }), Named(path, "No space left on device"));
    EXPECT_EQ(one.KnownBelow(directory.Path()).size(), 1);
}
