// zucmtr convert over directories, with several recordings at once, and what it reports.
#include "program.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace {

using recorderfile::Encode;

QByteArray Short(int minutes)
{
    return Encode(ShortRecording(minutes));
}

std::vector<QJsonObject> Objects(const QString& output)
{
    std::vector<QJsonObject> objects;
    for (const QString& line : output.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        objects.push_back(QJsonDocument::fromJson(line.toUtf8()).object());
    return objects;
}

QJsonArray Paths(const QString& directory, const QStringList& names)
{
    QJsonArray paths;
    for (const QString& name : names)
        paths << directory + "/" + name;
    return paths;
}

QStringList Lines(const QString& text)
{
    return text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

TEST(Many, DirectoryStandsForItsRecordings)
{
    const Workplace place;
    place.MakeDirectory("in/sub");
    place.Write("in/b.ZU", Short(10));
    place.Write("in/b.Z01", Short(10));
    place.Write("in/a.zu", Short(0));
    place.Write("in/notes.txt", "text");
    place.Write("in/sub/c.ZU", Short(20));
    const Finished run = place.Convert({"in"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "in/a.zu -> " + ShortRecordName(0) + "\nin/b.ZU -> " + ShortRecordName(10) + "\n");
    EXPECT_EQ(Untimed(run.err), Summary(2, "2 converted and verified"));
}

TEST(Many, RecursiveTakesTheDirectoriesBelow)
{
    const Workplace place;
    place.MakeDirectory("in/2024/01");
    place.Write("in/2024/01/c.ZU", Short(20));
    place.Write("in/a.ZU", Short(0));
    const Finished run = place.Convert({"--recursive", "in"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(Lines(run.out),
              (QStringList{"in/2024/01/c.ZU -> " + ShortRecordName(20), "in/a.ZU -> " + ShortRecordName(0)}));
}

TEST(Many, NamesThatAreNotUtf8AreReportedAndFail)
{
    const Workplace place;
    place.MakeDirectory("in/sub");
    place.Write("in/a.ZU", Short(0));
    const std::filesystem::path in = place.Path("in").toStdString();
    const std::filesystem::path file = in / "sub/\377.ZU";
    const std::filesystem::path directory = in / "\376";
    std::ofstream(file) << "recording";
    std::filesystem::create_directory(directory);
    const Finished run = place.Convert({"--recursive", "in"});
    const Finished shallow = place.Convert({"in"});
    std::filesystem::remove(file); // Qt could not
    std::filesystem::remove(directory);
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "in/a.ZU -> " + ShortRecordName(0) + "\n");
    EXPECT_EQ(
        Lines(run.err).mid(0, 2),
        (QStringList{
            QStringLiteral("zucmtr: in/\uFFFD: not converted: the name is not UTF-8; rename the directory"),
            QStringLiteral(
                "zucmtr: in/sub/\uFFFD.ZU: not converted: the name is not UTF-8; rename the file")}));
    EXPECT_EQ(shallow.code, 0); // what is below was not asked for
}

TEST(Many, RecordingGivenTwiceIsConvertedOnce)
{
    const Workplace place;
    place.MakeDirectory("in");
    place.Write("in/a.ZU", Short(0));
    const Finished run = place.Convert({"in", "in/a.ZU", "./in/../in/a.ZU"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "in/a.ZU -> " + ShortRecordName(0) + "\n");
    EXPECT_EQ(run.err, QString());
}

TEST(Many, ViewWritesAPageBesideEachRecord)
{
    const Workplace place;
    place.Write("a.ZU", Short(0));
    place.Write("b.ZU", Short(10));
    const Finished run = place.Convert({"--view", "--json", "--remove-source", "a.ZU", "b.ZU"});
    EXPECT_EQ(run.code, 0) << run.err;
    const std::vector<QJsonObject> objects = Objects(run.out);
    ASSERT_EQ(objects.size(), 2U);
    for (int i = 0; i < 2; ++i) {
        const QString page = "out/" + ShortRecordName(10 * i) + ".html";
        EXPECT_EQ(objects[static_cast<size_t>(i)]["files"].toArray().last().toString(), page);
        EXPECT_TRUE(ReadBytes(place.Path(page)).startsWith("<!doctype html>"));
    }
    EXPECT_FALSE(QFile::exists(place.Path("a.ZU")));
}

TEST(Many, PageThatCannotBeWrittenIsAFailureAndTheRecordingStays)
{
    const Workplace place;
    place.Write("a.ZU", Short(0));
    place.MakeDirectory("out/" + ShortRecordName(0) + ".html");
    const Finished run = place.Convert({"--view", "--remove-source", "a.ZU"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, QString());
    EXPECT_TRUE(run.err.contains("a.ZU: converted, but its page could not be written: ")) << run.err;
    EXPECT_TRUE(run.err.contains("; the recording is kept")) << run.err;
    EXPECT_EQ(ReadBytes(place.Path("a.ZU")), Short(0));
}

TEST(Many, DirectoryWithoutRecordingsIsReportedAndNoFailure)
{
    const Workplace place;
    place.MakeDirectory("in");
    const Finished run = place.Convert({"in"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, QStringLiteral("zucmtr: in: there is no recording (.ZU) in this directory; "
                                      "--recursive searches the directories below it, too\n"));
}

TEST(Many, SeveralAtOnceReportInTheOrderOfTheListAndWriteTheSame)
{
    const Workplace place;
    QStringList names;
    QString lines;
    for (int i = 0; i < 40; ++i) {
        const QString name = QString::asprintf("%02d.ZU", i);
        place.Write(name, Short(i));
        names << name;
        lines += name + " -> " + ShortRecordName(i) + "\n";
    }
    EXPECT_EQ(place.Convert(names).out, lines);
    const QStringList files = place.Names("out");
    EXPECT_EQ(files.size(), 160);
    place.MakeDirectory("out4");
    const Finished run = RunProgram(place.Path(), QStringList{"convert", "-j4", "--out", "out4"} + names);
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, lines);
    EXPECT_EQ(Untimed(run.err), Summary(40, "40 converted and verified"));
    ASSERT_EQ(place.Names("out4"), files);
    for (const QString& file : files)
        EXPECT_EQ(ReadBytes(place.Path("out4/" + file)), ReadBytes(place.Path("out/" + file))) << file;
}

TEST(Many, EqualNamesAtOnceAreConvertedOneAfterTheOther)
{
    const Workplace place;
    QStringList names;
    for (int i = 0; i < 30; ++i) {
        const QString name = QString::asprintf("%02d.ZU", i);
        recorderfile::Recording recording = ShortRecording();
        std::get<recorderfile::AnalogChannel>(recording.sections[0]).samples[0] = static_cast<int16_t>(i);
        place.Write(name, Encode(recording));
        names << name;
    }
    const Finished run = place.Convert(QStringList{"-j", "4", "--replace"} + names);
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err.count("its record replaced that of"), 29);
    EXPECT_TRUE(run.err.contains("zucmtr: 29.ZU: its record replaced that of 28.ZU, ")) << run.err;
    const QStringList data = ReadLines(place.Path("out/" + ShortRecordName() + ".dat"));
    EXPECT_EQ(data.first(), QStringLiteral("1,0,29,1")); // the last of the list
}

TEST(Many, JsonHasEverythingAboutARecording)
{
    const Workplace place;
    place.Write("a.ZU", Short(0));
    place.Write("a.Z01", Short(0));
    place.Write("b.ZU", "broken");
    const Finished run = place.Convert({"--json", "a.ZU", "b.ZU", "c.Z01"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(Untimed(run.err), Summary(3, "1 converted and verified, 2 failed"));
    const std::vector<QJsonObject> objects = Objects(run.out);
    ASSERT_EQ(objects.size(), 3U);
    const QJsonObject& refused = objects[0]; // arguments that are no recordings come first
    EXPECT_EQ(refused["file"].toString(), QStringLiteral("c.Z01"));
    EXPECT_EQ(refused["status"].toString(), QStringLiteral("failed"));
    EXPECT_EQ(refused["reason"].toString(), QStringLiteral("continuationFile"));

    QJsonObject converted = objects[1];
    EXPECT_GT(converted.take("seconds").toDouble(), 0);
    EXPECT_EQ(converted.take("summary").toObject()["events"].toInt(-1), 0);
    const QString name = ShortRecordName(0);
    EXPECT_EQ(
        converted,
        (QJsonObject{{"file", "a.ZU"},
                     {"status", "converted"},
                     {"reason", QJsonValue()},
                     {"error", QJsonValue()},
                     {"record", name},
                     {"directory", "out"},
                     {"form", "cfg 2013 ascii utf8"},
                     {"files", Paths("out", {name + ".cfg", name + ".dat", name + ".hdr", name + ".inf"})},
                     {"sources", QJsonArray{"a.ZU", "a.Z01"}},
                     {"notes", QJsonArray()},
                     {"verified", true},
                     {"source", "kept"}}))
        << run.out;

    EXPECT_EQ(objects[2]["file"].toString(), QStringLiteral("b.ZU"));
    EXPECT_EQ(objects[2]["status"].toString(), QStringLiteral("failed"));
    EXPECT_EQ(objects[2]["reason"].toString(), QStringLiteral("notConverted"));
    EXPECT_EQ(objects[2]["error"].toString(), "not converted: it is no recording: it does not start like a "
                                              "recorder's file; give a recording's first file (.ZU)");
    EXPECT_FALSE(objects[2]["verified"].toBool());
}

TEST(Many, QuietReportsOnlyFailures)
{
    const Workplace place({{"Тип Comtrade CFF", "1"}, {"Тип Comtrade 1999", "1"}}); // a note of loading
    place.Write("a.ZU", Short(0));
    place.Write("a.Z01", Short(0));
    EXPECT_EQ(place.Convert({"--quiet", "a.ZU", "a.Z01"}).err, QString());
    const Finished run = place.Convert({"-q", "a.ZU", "b.ZU"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, QString());
    EXPECT_EQ(run.err, "zucmtr: b.ZU: not converted: there is no such file; check the path\n");
}

TEST(Many, DryRunWritesNothingAndFindsTheFailures)
{
    const Workplace place;
    place.Write("a.ZU", Short(0));
    place.Write("b.ZU", "broken");
    const Finished run = place.Convert({"--dry-run", "a.ZU", "b.ZU"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "a.ZU -> out/" + ShortRecordName(0) + "\n");
    EXPECT_EQ(Untimed(run.err),
              "zucmtr: b.ZU: the recording cannot be read: it is no recording: it does not start "
              "like a recorder\'s file; give a recording\'s first file (.ZU)\n" +
                  Summary(2, "1 to convert, 1 failed"));
    EXPECT_EQ(place.Names("out"), QStringList());
}

TEST(Many, FailFastStartsNoFurtherRecording)
{
    const Workplace place;
    place.Write("a.ZU", Short(0));
    place.Write("b.ZU", "broken");
    place.Write("c.ZU", Short(20));
    place.Write("d.ZU", Short(30));
    const Finished run = place.Convert({"--fail-fast", "a.ZU", "b.ZU", "c.ZU", "d.ZU"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "a.ZU -> " + ShortRecordName(0) + "\n");
    EXPECT_TRUE(Untimed(run.err).endsWith(Summary(4, "1 converted and verified, 1 failed, 2 not started")))
        << run.err;
    EXPECT_EQ(place.Convert({"--continue", "b.ZU", "c.ZU"}).out, "c.ZU -> " + ShortRecordName(20) + "\n");
}

TEST(Many, JobsOfAllProcessorsAndWrongNumbers)
{
    const Workplace place;
    place.Write("a.ZU", Short(0));
    place.Write("b.ZU", Short(1));
    EXPECT_EQ(place.Convert({"--jobs", "0", "a.ZU", "b.ZU"}).code, 0);
    EXPECT_EQ(place.Convert({"--jobs", "257", "a.ZU"}).code, 2);
    EXPECT_EQ(place.Convert({"--jobs", "x", "a.ZU"}).code, 2);
}

TEST(Many, MakeOutMakesTheDirectory)
{
    const Workplace place;
    place.Write("a.ZU", Short(0));
    const QStringList arguments = {"convert", "--make-out", "--out", "new/records", "a.ZU"};
    EXPECT_EQ(RunProgram(place.Path(), arguments + QStringList{"--dry-run"}).code, 0);
    EXPECT_EQ(place.Names(), (QStringList{"ZuDrv.ini", "a.ZU"}));
    EXPECT_EQ(RunProgram(place.Path(), arguments).code, 0);
    EXPECT_EQ(place.Names("new/records").size(), 4);
}
