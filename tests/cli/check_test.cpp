// zucmtr check.
#include "program.h"

#include "support/device.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>

TEST(Check, ExampleOfTheHelpWorks)
{
    const TestDirectory place;
    const Finished help = RunProgram(place.Path(), {"check", "--help"});
    const QString example = help.out.section("Example, with the sample station:\n", 1).section("\n\n", 0, 0);
    const Finished finished = RunShell(place.Path(), example);
    EXPECT_EQ(finished.code, 0) << finished.out << finished.err;
    EXPECT_FALSE(finished.out.contains(": warning: ") || finished.out.contains(": error: ")) << finished.out;
}

TEST(Check, CompleteDictionaryHasNoWarning)
{
    const TestDirectory place;
    const Finished finished =
        RunShell(place.Path(), "mkdir station && zucmtr sample --out station > log && "
                               "zucmtr dictionary --complete -o d.ini station/Vostochnaya_000123.ZU && "
                               "zucmtr check --ini d.ini station/Vostochnaya_000123.ZU");
    EXPECT_EQ(finished.code, 0) << finished.out << finished.err;
}

TEST(Check, GoodFileIsSilent)
{
    const Workplace place;
    const Finished finished = RunProgram(place.Path(), {"check"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err, "");
}

TEST(Check, WarningEndsWithOne)
{
    const Workplace place({{"Обьект", "ПС"}});
    const Finished finished = RunProgram(place.Path(), {"check"});
    EXPECT_EQ(finished.code, 1);
    const int line = ReadLines(place.Path("ZuDrv.ini")).indexOf("Обьект=ПС") + 1;
    EXPECT_EQ(finished.out,
              QString("ZuDrv.ini:%1: warning: the key 'Обьект' is unknown and is ignored; did you mean "
                      "'Объект'?\n")
                  .arg(line));
}

TEST(Check, NoteEndsWithZero)
{
    const Workplace place({{"Объект", ""}});
    const Finished finished = RunProgram(place.Path(), {"check"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_TRUE(finished.out.contains(": note: 'Объект' counts as left out")) << finished.out;
}

TEST(Check, JsonHasOneObjectAFinding)
{
    const Workplace place({{"Обьект", "ПС"}});
    const Finished finished = RunProgram(place.Path(), {"check", "--json"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.out.count('\n'), 1);
    const QJsonObject object = QJsonDocument::fromJson(finished.out.toUtf8()).object();
    EXPECT_EQ(object.value("file").toString(), "ZuDrv.ini");
    EXPECT_EQ(object.value("line").toInt(), ReadLines(place.Path("ZuDrv.ini")).indexOf("Обьект=ПС") + 1);
    EXPECT_EQ(object.value("severity").toString(), "warning");
    EXPECT_EQ(object.value("effect").toString(), "dropped");
    EXPECT_EQ(object.value("section").toString(), "Vostochnaya");
    EXPECT_EQ(object.value("key").toString(), "Обьект");
    EXPECT_EQ(object.value("what").toString(), "the key 'Обьект' is unknown and is ignored");
    EXPECT_EQ(object.value("advice").toString(), "did you mean 'Объект'?");
}

TEST(Check, AllDevicesAreChecked)
{
    const Workplace place;
    place.Write("ZuDrv.ini", PlainIni() + "[Second]\nВерсия ZU=9\n[Third]\nВерсия ZU=8\n");
    const Finished all = RunProgram(place.Path(), {"check"});
    EXPECT_EQ(all.code, 1);
    EXPECT_EQ(all.out.count(": error: "), 2) << all.out;
    const Finished one = RunProgram(place.Path(), {"check", "--device", "Third"});
    EXPECT_EQ(one.out.count(": error: 'Версия ZU' cannot be '8'"), 1) << one.out;
    EXPECT_EQ(one.out.count('\n'), 1);
}

TEST(Check, RecordingIsHeldAgainstTheDictionary)
{
    const Workplace place;
    place.Write("ZuDrv.ini", DefaultsSection() + "[Device]\nnAnMax=1\nA01=W1:Ux,V_L=110 E_G=L S_G=VT\n");
    place.Write("rec.ZU", Encode(ShortRecording()));
    const Finished finished = RunProgram(place.Path(), {"check", "rec.ZU"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_TRUE(finished.out.contains(": warning: rec.ZU has no channel 'W1:Ux'; ")) << finished.out;
    EXPECT_TRUE(finished.out.contains("\nrec.ZU: note: the dictionary does not know the channel '"))
        << finished.out;
}

TEST(Check, RecordingThatCannotBeLoadedIsAnError)
{
    const Workplace place;
    place.Write("bad.ZU", "no recording");
    const Finished finished = RunProgram(place.Path(), {"check", "bad.ZU"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_TRUE(finished.out.startsWith("bad.ZU: error: the recording cannot be loaded: ")) << finished.out;
}

TEST(Check, WrongSectionsAndFilesAreWrongUsage)
{
    const Workplace place;
    const Finished section = RunProgram(place.Path(), {"check", "--device", "Nobody"});
    EXPECT_EQ(section.code, 2);
    EXPECT_EQ(section.err, "zucmtr: 'ZuDrv.ini' has no section [Nobody]; it has [Default], [Vostochnaya]\n");
    const Finished file = RunProgram(place.Path(), {"check", "--ini", "none.ini"});
    EXPECT_EQ(file.code, 2);
    EXPECT_TRUE(file.err.contains("'none.ini' does not exist")) << file.err;
}
