// Files that a killed program left aside.
#include "scene.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>

#include <cerrno>
#include <sys/file.h>

TEST(Recover, GivesFilesTheirNamesBack)
{
    const TestDirectory here;
    here.Write(".a.ZU.zucmtr-Ab3xYz", "first");
    here.Write(".a.Z01.zucmtr-Ab3xYz-done", "second");
    here.Write("a.Z02", "third");
    const sourcefiles::Recovered recovered = sourcefiles::Recover(here.Path());
    EXPECT_EQ(recovered.back, (QStringList{here.Path("a.ZU"), here.Path("a.Z01")}));
    EXPECT_EQ(recovered.removed, QStringList());
    EXPECT_EQ(recovered.notes, QStringList());
    EXPECT_EQ(here.Names(), (QStringList{"a.Z01", "a.Z02", "a.ZU"}));
    EXPECT_EQ(ReadBytes(here.Path("a.ZU")), QByteArray("first"));
}

TEST(Recover, RemovesTheRestOfARecordingThatWasPutAway)
{
    const TestDirectory here;
    here.Write(".a.Z01.zucmtr-Ab3xYz-done", "second");
    here.Write(".a.Z02.zucmtr-Ab3xYz-done", "third");
    here.Write("a.ZU", "a new recording");
    const sourcefiles::Recovered recovered = sourcefiles::Recover(here.Path());
    EXPECT_EQ(recovered.removed, (QStringList{here.Path("a.Z01"), here.Path("a.Z02")}));
    EXPECT_EQ(here.Names(), QStringList{"a.ZU"});
}

TEST(Recover, RemovesNothingThatWasNotMarkedAsPutAway)
{
    const TestDirectory here;
    here.Write(".a.Z01.zucmtr-Ab3xYz", "second");
    here.Write(".a.Z02.zucmtr-Ab3xYz-done", "third");
    EXPECT_EQ(sourcefiles::Recover(here.Path()).removed, QStringList());
    EXPECT_EQ(here.Names(), (QStringList{"a.Z01", "a.Z02"}));
}

TEST(Recover, NeverReplacesAFileThatHasTakenTheName)
{
    const TestDirectory here;
    here.Write(".a.ZU.zucmtr-Ab3xYz", "first");
    here.Write(".a.Z01.zucmtr-Ab3xYz", "second");
    here.Write("a.ZU", "new");
    here.Write("a-2.Z01", "in the way too");
    const sourcefiles::Recovered recovered = sourcefiles::Recover(here.Path());
    EXPECT_EQ(
        recovered.notes,
        (QStringList{
            QStringLiteral("'%1/a.Z01' is now called '%1/a-3.Z01', because another file has taken its name")
                .arg(here.Path()),
            QStringLiteral("'%1/a.ZU' is now called '%1/a-3.ZU', because another file has taken its name")
                .arg(here.Path())}));
    EXPECT_EQ(here.Names(), (QStringList{"a-2.Z01", "a-3.Z01", "a-3.ZU", "a.ZU"}));
    EXPECT_EQ(ReadBytes(here.Path("a.ZU")), QByteArray("new"));
    EXPECT_EQ(ReadBytes(here.Path("a-3.ZU")), QByteArray("first"));
}

TEST(Recover, LeavesOtherFilesAlone)
{
    const TestDirectory here;
    const QStringList names = {".a.ZU.zucmtr-Ab3xY", ".a.ZU.zucmtr-Ab3xYz-gone", ".a.txt.zucmtr-Ab3xYz",
                               ".zucmtr-Ab3xYz", "a.ZU.zucmtr-Ab3xYz"};
    for (const QString& name : names)
        here.Write(name, "x");
    const sourcefiles::Recovered recovered = sourcefiles::Recover(here.Path());
    EXPECT_EQ(recovered.back + recovered.removed + recovered.notes, QStringList());
    EXPECT_EQ(here.Names(), names);
}

TEST(Recover, LeavesTheFilesOfARunningProgramAlone)
{
    const Scene scene(1);
    const ChainFiles chain(scene.Source("a.ZU"));
    {
        sourcefiles::AsideFiles aside(chain);
        aside.Move();
        const QStringList names = scene.Sources();
        const sourcefiles::Recovered recovered = scene.Recover();
        EXPECT_EQ(recovered.back + recovered.removed + recovered.notes, QStringList());
        EXPECT_EQ(scene.Sources(), names);
        EXPECT_EQ(names.filter(QRegularExpression("^\\.a\\.Z(U|01)\\.zucmtr-[A-Za-z0-9]{6}$")).size(), 2);
        EXPECT_EQ(OrphansIn(scene.Source()), QStringList());
    }
    EXPECT_TRUE(scene.IsComplete("in"));
}

TEST(Recover, WithoutLocksTakesWhatIsOld)
{
    const TestDirectory here;
    here.Write(".a.ZU.zucmtr-Ab3xYz", "first");
    const calls::Watch watch([](const calls::Call& call) { return call.name == "flock" ? ENOLCK : 0; });
    EXPECT_EQ(sourcefiles::Recover(here.Path()).back, QStringList());
    EXPECT_EQ(here.Names(), QStringList{".a.ZU.zucmtr-Ab3xYz"});
    const calls::Ahead twoHours(7200);
    EXPECT_EQ(sourcefiles::Recover(here.Path()).back, QStringList{here.Path("a.ZU")});
    EXPECT_EQ(here.Names(), QStringList{"a.ZU"});
}

TEST(Recover, SaysWhatKeepsItsAsideName)
{
    const TestDirectory here;
    const QString aside = here.Write(".a.ZU.zucmtr-Ab3xYz", "first");
    const calls::Watch watch([](const calls::Call& call) { return call.name == "renameat2" ? EROFS : 0; });
    EXPECT_EQ(
        sourcefiles::Recover(here.Path()).notes,
        QStringList{QStringLiteral("'%1' is now called '%2' and could not get its name back: Read-only file "
                                   "system; rename it")
                        .arg(here.Path("a.ZU"), aside)});
}

TEST(Recover, OfADirectoryThatIsGoneDoesNothing)
{
    const sourcefiles::Recovered recovered = sourcefiles::Recover("/nowhere/at/all");
    EXPECT_EQ(recovered.back + recovered.removed + recovered.notes, QStringList());
}
