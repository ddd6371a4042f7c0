// zucmtr dictionary.
#include "program.h"

#include <gtest/gtest.h>

TEST(Dictionary, ExampleOfTheHelpWorks)
{
    const TestDirectory place;
    const Finished help = RunProgram(place.Path(), {"dictionary", "--help"});
    const QString example = help.out.section("Example, with the sample station:\n", 1).section("\n\n", 0, 0);
    const Finished finished = RunShell(place.Path(), example);
    EXPECT_EQ(finished.code, 0) << finished.err;
    EXPECT_EQ(place.Names("new").size(), 5) << finished.err; // the ini file and the four of the record
}

TEST(Dictionary, WritesTheLinesToStandardOutput)
{
    const Workplace place;
    place.Write("rec.ZU", Encode(ShortRecording()));
    const Finished finished = RunProgram(place.Path(), {"dictionary", "rec.ZU"});
    EXPECT_EQ(finished.code, 0) << finished.err;
    EXPECT_TRUE(finished.out.startsWith("nAnMax=1\nA01=")) << finished.out;
    EXPECT_TRUE(finished.out.contains("\nnDiMax=1\nD01=")) << finished.out;
}

TEST(Dictionary, ReplacesNothingUnasked)
{
    const Workplace place;
    place.Write("rec.ZU", Encode(ShortRecording()));
    place.Write("old.ini", "precious");
    const Finished refused = RunProgram(place.Path(), {"dictionary", "-o", "old.ini", "rec.ZU"});
    EXPECT_EQ(refused.code, 2);
    EXPECT_EQ(
        refused.err,
        "zucmtr: --output: 'old.ini' is there already; choose another name, or replace it by --force\n");
    EXPECT_EQ(ReadBytes(place.Path("old.ini")), "precious");
    EXPECT_EQ(RunProgram(place.Path(), {"dictionary", "--force", "-o", "old.ini", "rec.ZU"}).code, 0);
    EXPECT_TRUE(ReadBytes(place.Path("old.ini")).startsWith("nAnMax=1\n"));
}

TEST(Dictionary, FailsForWhatIsNoRecording)
{
    const Workplace place;
    place.Write("bad.ZU", "no recording");
    const Finished finished = RunProgram(place.Path(), {"dictionary", "bad.ZU"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.err, "zucmtr: bad.ZU: it is no recording: it does not start like a recorder's file; "
                            "give a recording's first file (.ZU)\n");
    EXPECT_EQ(finished.out, "");
}
