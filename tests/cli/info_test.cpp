// zucmtr info.
#include "program.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

// The text of the short recording, in a file of the given name with the given end of its chain.
QString ShortText(const QString& name, const QString& end)
{
    return name +
           "\n  Recorder:            \n"
           "  Title:               Данные РАС\n"
           "  Code page:           CP866\n"
           "  First sample:        2024-01-31T12:00:00.250000+03:00\n"
           "  Trigger:             2024-01-31T12:00:00.250000+03:00\n"
           "  Start comment:       \n"
           "  Condition:           \n"
           "  Duration:            0.001250 s\n"
           "  Sampling rate:       2400 Hz\n"
           "  Samples:             3\n"
           "  Channels:            1 analog, 1 discrete\n"
           "  Chain ends because:  " +
           end + '\n';
}

QJsonObject JsonOf(const Finished& finished)
{
    return QJsonDocument::fromJson(finished.out.toUtf8()).object();
}

} // namespace

TEST(Info, ShowsWhatIsInARecording)
{
    const Workplace place;
    place.Write("rec.ZU", Encode(ShortRecording()));
    const Finished finished = RunProgram(place.Path(), {"info", "--no-channels", "rec.ZU"});
    EXPECT_EQ(finished.code, 0) << finished.err;
    EXPECT_TRUE(finished.out.startsWith(ShortText("rec.ZU", "there is no rec.Z01"))) << finished.out;
    EXPECT_EQ(finished.err, "");
}

TEST(Info, ListsSegmentsAndChannels)
{
    const Workplace place;
    const QByteArray bytes = Encode(ShortRecording());
    place.Write("rec.ZU", bytes);
    place.Write("rec.Z01", bytes);
    place.Write("rec.Z03", bytes);
    const QJsonObject object = JsonOf(RunProgram(place.Path(), {"info", "--json", "rec.ZU"}));
    EXPECT_EQ(object["kind"].toString(), "recording");
    EXPECT_EQ(object["segments"].toArray().size(), 2);
    EXPECT_EQ(object["segments"].toArray()[1].toObject()["file"].toString(), "rec.Z01");
    EXPECT_EQ(object["chainEnd"].toString(), "noNextFile");
    EXPECT_EQ(object["chainEndText"].toString(), "there is no rec.Z02");
    EXPECT_EQ(object["notes"].toArray()[0].toString(), "not part of the recording: rec.Z03");
    const QJsonObject analog = object["analog"].toArray()[0].toObject();
    EXPECT_EQ(analog["number"].toInt(), 1);
    EXPECT_EQ(analog["rate"].toDouble(), 2400.0);
    EXPECT_FALSE(analog["compressed"].toBool());
    EXPECT_EQ(object["discrete"].toArray().size(), 1);
    EXPECT_EQ(object["rate"].toDouble(), 2400.0);
}

TEST(Info, SaysWhatIsLeftOfABadFile)
{
    const Workplace place;
    const QByteArray bytes = Encode(ShortRecording());
    place.Write("cut.ZU", bytes.left(300));
    const Finished cut = RunProgram(place.Path(), {"info", "cut.ZU"});
    EXPECT_EQ(cut.code, 1);
    EXPECT_EQ(cut.out, "cut.ZU\n  Size:      300 bytes\n  Channels:  2 in the header\n");
    EXPECT_EQ(
        cut.err,
        "zucmtr: cut.ZU: cut off: 300 of at least 339 bytes, after 0 of its 2 channels [Ошибка при чтении "
        "файла [ZuFileSectionHeader]]\n");

    place.Write("tiny.ZU", bytes.left(10));
    const Finished tiny = RunProgram(place.Path(), {"info", "tiny.ZU"});
    EXPECT_EQ(tiny.code, 1);
    EXPECT_EQ(tiny.out, "tiny.ZU\n  Size:  10 bytes\n"
                        "  note: a recording starts with a header of 263 bytes; was the copy interrupted?\n");
}

TEST(Info, NamesTheFirstFileOfAContinuationAndGoesOnAfterAFailure)
{
    const Workplace place;
    place.Write("rec.Z01", Encode(ShortRecording()));
    const Finished finished = RunProgram(place.Path(), {"info", "--no-channels", "no.ZU", "rec.Z01"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.err, "zucmtr: no.ZU: there is no such file; check the path\n");
    EXPECT_TRUE(
        finished.out.contains("  note: it continues a recording whose first file rec.ZU is not there; "
                              "bring that back\n"))
        << finished.out;
    place.Write("rec.ZU", Encode(ShortRecording()));
    const Finished whole = RunProgram(place.Path(), {"info", "--no-channels", "rec.Z01"});
    EXPECT_EQ(whole.code, 0);
    EXPECT_TRUE(whole.out.contains("  note: this file continues a recording; its first file is rec.ZU\n"))
        << whole.out;
}

TEST(Info, ShowsWhatIsInARecord)
{
    const Workplace place;
    place.Write("rec.ZU", Encode(ShortRecording()));
    ASSERT_EQ(place.Convert({"rec.ZU"}).code, 0);
    const QString record = "out/" + ShortRecordName() + ".cfg";
    const Finished finished = RunProgram(place.Path(), {"info", "--json", record});
    ASSERT_EQ(finished.code, 0) << finished.err;
    const QJsonObject object = JsonOf(finished);
    EXPECT_EQ(object["kind"].toString(), "record");
    EXPECT_EQ(object["revision"].toInt(), 2013);
    EXPECT_EQ(object["samples"].toInt(), 3);
    EXPECT_EQ(object["start"].toString(), "2024-01-31T12:00:00.250000+03:00");
    EXPECT_EQ(object["analog"].toArray().size(), 1);

    QFile data(place.Path("out/" + ShortRecordName() + ".dat"));
    ASSERT_TRUE(data.resize(data.size() / 4));
    const Finished cut = RunProgram(place.Path(), {"info", record});
    EXPECT_EQ(cut.code, 0);
    EXPECT_TRUE(cut.out.contains("the configuration says 3 samples, the data hold ")) << cut.out;
}

TEST(Info, ExampleOfTheHelpWorks)
{
    const TestDirectory place;
    const Finished help = RunProgram(place.Path(), {"info", "--help"});
    const QString example = help.out.section("Example, with the sample station:\n", 1).section("\n\n", 0, 0);
    const Finished finished = RunShell(place.Path(), example);
    EXPECT_EQ(finished.code, 0) << finished.err;
    EXPECT_EQ(finished.out.count("Chain ends because:"), 8);
}
