// zucmtr check: what it prints and its exit codes. The findings themselves are tested in tests/inicheck.
#include "program.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace {

Finished RunCheck(const Workplace& place, const QStringList& arguments)
{
    return RunProgram(place.Path(), QStringList{"check"} + arguments);
}

QByteArray TwoDevices()
{
    return PlainIni() + "[Second]\nКлюч=1\n";
}

} // namespace

TEST(Check, GoodFileEndsWithZero)
{
    const Workplace place;
    const Finished run = RunCheck(place, {});
    EXPECT_EQ(run.code, 0);
    EXPECT_TRUE(run.out.endsWith("ZuDrv.ini: nothing is wrong with [Vostochnaya]\n")) << run.out;
    EXPECT_EQ(run.err, QString());
}

TEST(Check, FindingsHaveFileLineAndKind)
{
    const Workplace place({{"Обьект", "X"}});
    const Finished run = RunCheck(place, {"--ini", "ZuDrv.ini", "--device", "Vostochnaya"});
    EXPECT_EQ(run.code, 1);
    const int line = ReadBytes(place.Path("ZuDrv.ini")).split('\n').indexOf("Обьект=X") + 1;
    EXPECT_TRUE(run.out.contains(
        QString("ZuDrv.ini:%1: warning: ignored: there is no key 'Обьект'; is 'Объект' meant?\n").arg(line)))
        << run.out;
}

TEST(Check, JsonHasOneObjectAFinding)
{
    const Workplace place({{"Обьект", "X"}});
    const Finished run = RunCheck(place, {"--json"});
    EXPECT_EQ(run.code, 1);
    bool found = false;
    for (const QString& line : run.out.split('\n', Qt::SkipEmptyParts)) {
        const QJsonObject object = QJsonDocument::fromJson(line.toUtf8()).object();
        EXPECT_EQ(object.keys(), (QStringList{"file", "line", "reason", "severity", "text"}));
        found = found ||
                (object["severity"].toString() == "warning" && object["reason"].toString() == "unknownKey");
    }
    EXPECT_TRUE(found);
}

TEST(Check, AllDevicesAreCheckedUnlessOneIsNamed)
{
    const Workplace place;
    place.Write("two.ini", TwoDevices());
    const Finished all = RunCheck(place, {"--ini", "two.ini"});
    EXPECT_EQ(all.code, 1);
    EXPECT_TRUE(all.out.contains("there is no key 'Ключ'")) << all.out;
    EXPECT_EQ(RunCheck(place, {"--ini", "two.ini", "--device", "Vostochnaya"}).code, 0);
}

TEST(Check, RecordingsNeedOneDevice)
{
    const Workplace place;
    place.Write("two.ini", TwoDevices());
    place.Write("a.ZU", recorderfile::Encode(ShortRecording()));
    const Finished run = RunCheck(place, {"--ini", "two.ini", "a.ZU"});
    EXPECT_EQ(run.code, 2);
    EXPECT_TRUE(run.err.contains("describes 2 recorders")) << run.err;
    const Finished unknown = RunCheck(place, {"a.ZU"});
    EXPECT_EQ(unknown.code, 1);
    EXPECT_TRUE(unknown.out.contains("a.ZU: the dictionary does not know 1 channels")) << unknown.out;
}

TEST(Check, WrongUsageIsReported)
{
    const Workplace place;
    const Finished missing = RunCheck(place, {"--ini", "none.ini"});
    EXPECT_EQ(missing.code, 2);
    EXPECT_TRUE(missing.err.contains("none.ini: there is no such file")) << missing.err;
    const Finished section = RunCheck(place, {"--device", "None"});
    EXPECT_EQ(section.code, 2);
    EXPECT_TRUE(section.err.contains("has no section [None]")) << section.err;
}

TEST(Check, ExampleOfTheHelpFindsNothing)
{
    const TestDirectory directory;
    const QString help = RunProgram(QString(), {"check", "--help"}).out;
    const QString example = help.section("Example, with the sample station:\n", 1);
    const Finished run = RunShell(directory.Path(), "set -e\n" + example);
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_TRUE(run.out.contains("station/ZuDrv.ini: nothing is wrong with [Vostochnaya]")) << run.out;
}

TEST(Check, FirstDictionaryOfARecordingIsGood)
{
    const TestDirectory directory;
    const Finished run =
        RunShell(directory.Path(), "set -e\nzucmtr sample --out . >/dev/null\n"
                                   "zucmtr dictionary --complete Vostochnaya_000123.ZU > d.ini\n"
                                   "zucmtr check --ini d.ini Vostochnaya_000123.ZU\n");
    EXPECT_EQ(run.code, 0) << run.out;
}
