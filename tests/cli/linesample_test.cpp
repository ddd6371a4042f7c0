// zucmtr sample with a fault on a line of known data, given or drawn: what it writes, and what it refuses.
#include "program.h"
#include "sampleoption.h"

#include "station/linerecording.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace {

using station::FaultKind;
using station::LineFaultOptions;
using station::Reclosing;

using LineOption = GoodOption<LineFaultOptions>;

class LineSampleOption : public testing::TestWithParam<LineOption>
{};

class WrongLineSampleOption : public testing::TestWithParam<WrongOption>
{};

QString Excludes(const char* option, const char* other)
{
    return QStringLiteral("%1 and %2 exclude each other; leave one out").arg(option, other);
}

QString NeedsLineFault(const char* option)
{
    return QStringLiteral("%1 needs a simulated fault; give --fault AG|BG|CG|AB|BC|CA|ABG|BCG|CAG|ABC, too")
        .arg(option);
}

QJsonObject TruthOf(const TestDirectory& directory, const QString& name)
{
    return QJsonDocument::fromJson(ReadBytes(directory.Path(name))).object();
}

} // namespace

TEST_P(LineSampleOption, GivesTheBytesOfTheScenario)
{
    LineFaultOptions options;
    GetParam().set(options);
    const TestDirectory directory;
    const Finished run = RunProgram(directory.Path(), QStringList{"sample", "--out", ".", "--fault", "AG"} +
                                                          GetParam().arguments);
    ASSERT_EQ(run.code, 0) << run.err;
    const auto files = station::MakeLineFiles(station::ScenarioOf(options));
    for (const recorderfile::NamedFile& file : files)
        EXPECT_EQ(ReadBytes(directory.Path(file.name)), file.bytes) << file.name;
    EXPECT_EQ(directory.Names(), (QStringList{"Vostochnaya_fault.ZU", "Vostochnaya_fault.truth.json",
                                              "ZuDrv.ini", "lines.ini"}));
}

INSTANTIATE_TEST_SUITE_P(
    LineSample, LineSampleOption,
    testing::Values(
        LineOption{{}, [](LineFaultOptions&) {}},
        LineOption{{"--distance", "70.5"}, [](LineFaultOptions& options) { options.distance = 70.5; }},
        LineOption{{"--resistance", "0"}, [](LineFaultOptions& options) { options.resistance = 0; }},
        LineOption{{"--inception", "-30"}, [](LineFaultOptions& options) { options.inception = -30; }},
        LineOption{{"--frequency", "47"}, [](LineFaultOptions& options) { options.frequency = 47; }},
        LineOption{{"--load", "-0.5"}, [](LineFaultOptions& options) { options.load = -0.5; }},
        LineOption{{"--noise", "0.3"}, [](LineFaultOptions& options) { options.noise = 0.3; }},
        LineOption{{"--saturation"}, [](LineFaultOptions& options) { options.saturation = true; }},
        LineOption{{"--evolving", "abg"},
                   [](LineFaultOptions& options) { options.evolving = FaultKind::ABG; }},
        LineOption{{"--reclose", "success"},
                   [](LineFaultOptions& options) { options.reclosing = Reclosing::Success; }},
        LineOption{{"--reclose", "fault"},
                   [](LineFaultOptions& options) { options.reclosing = Reclosing::Fault; }},
        LineOption{{"--length", "150"}, [](LineFaultOptions& options) { options.length = 150; }},
        LineOption{{"--rate", "20000"}, [](LineFaultOptions& options) { options.sampleRate = 20000; }},
        LineOption{{"--seconds", "0.75"}, [](LineFaultOptions& options) { options.seconds = 0.75; }},
        LineOption{{"--seed", "9"}, [](LineFaultOptions& options) { options.seed = 9; }},
        LineOption{{"--plain"}, [](LineFaultOptions& options) { options.compressed = false; }},
        LineOption{{"--code-page", "cp1251"},
                   [](LineFaultOptions& options) { options.codePage = recorderfile::CodePage::Cp1251; }}));

TEST_P(WrongLineSampleOption, EndsWithTwoAndWritesNothing)
{
    const TestDirectory directory;
    const Finished run =
        RunProgram(directory.Path(), QStringList{"sample", "--out", "."} + GetParam().arguments);
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.out, QString());
    EXPECT_EQ(run.err, "zucmtr: " + GetParam().error + "\n");
    EXPECT_EQ(directory.Names(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(
    LineSample, WrongLineSampleOption,
    testing::Values(
        WrongOption{{"--distance", "40"}, NeedsLineFault("--distance")},
        WrongOption{{"--fault", "three", "--saturation"}, NeedsLineFault("--saturation")},
        WrongOption{{"--fault", "AG", "--analog", "9"}, Excludes("--analog", "--fault AG")},
        WrongOption{{"--fault", "abc", "--segments", "2"}, Excludes("--segments", "--fault ABC")},
        WrongOption{{"--fault", "AG", "--distance", "100"},
                    "--distance: '100' is wrong; give a number from 1 to 99" + Hint()},
        WrongOption{{"--fault", "AG", "--frequency", "60"},
                    "--frequency: '60' is wrong; give a number from 45 to 55" + Hint()},
        WrongOption{{"--fault", "AG", "--reclose", "later"},
                    "--reclose: 'later' is wrong; give one of success, fault" + Hint()},
        WrongOption{{"--fault", "AG", "--evolving", "BG"},
                    "--evolving: a fault AG cannot turn into BG; give one of ABG, CAG, ABC"},
        WrongOption{{"--fault", "ABC", "--evolving", "ABG"},
                    "--evolving: a fault ABC cannot turn into another; leave it out"},
        WrongOption{{"--fault", "AG", "--rate", "500"},
                    "--rate 500: a simulated fault is sampled at 600 to 20000 Hz; give such a rate"},
        WrongOption{{"--fault", "BC", "--seconds", "0.1"},
                    "--seconds 0.1: a simulated recording lasts 0.5 to 30 s; give such a length"},
        WrongOption{{"--random-fault", "9-1"},
                    "--random-fault: '9-1' is wrong; give a seed or a range of "
                    "at most 100000, as 17 or 1-1000" +
                        Hint()},
        WrongOption{{"--random-quiet", "0-100000"},
                    "--random-quiet: '0-100000' is wrong; give a seed or a range of at most 100000, as 17 "
                    "or 1-1000" +
                        Hint()},
        WrongOption{{"--random-fault", "1", "--random-quiet", "1"},
                    Excludes("--random-fault", "--random-quiet") + Hint()},
        WrongOption{{"--random-fault", "1", "--rate", "600"},
                    "--random-fault draws everything and goes without --rate; leave one out"},
        WrongOption{{"--random-quiet", "1", "--load", "0"},
                    "--random-quiet draws everything and goes without --load; leave one out"},
        WrongOption{{"--archive", "9"},
                    "--archive: '9' is wrong; give a whole number from 10 to 100000" + Hint()},
        WrongOption{{"--archive", "10", "--random-fault", "1"},
                    Excludes("--random-fault", "--archive") + Hint()},
        WrongOption{{"--archive", "10", "--rate", "600"},
                    "--archive draws everything and goes without --rate; leave one out"}));

TEST(LineSample, FilesAreListedAndThePrintedCommandConvertsThem)
{
    const TestDirectory directory;
    const Finished sample =
        RunProgram(directory.Path(), {"sample", "--out", "faults", "--random-fault", "7-10"});
    ASSERT_EQ(sample.code, 0) << sample.err;
    QStringList lines = sample.out.trimmed().split('\n');
    ASSERT_EQ(lines.size(), 11) << sample.out;
    EXPECT_EQ(lines[0], "faults/ZuDrv.ini");
    EXPECT_EQ(lines[1], "faults/lines.ini");
    EXPECT_EQ(lines[2], "faults/Vostochnaya_fault_0000007.ZU");
    EXPECT_EQ(lines[3], "faults/Vostochnaya_fault_0000007.truth.json");
    EXPECT_EQ(lines[9], "faults/Vostochnaya_fault_0000010.truth.json");
    const Finished convert = RunShell(directory.Path(), lines.last());
    EXPECT_EQ(convert.code, 0) << convert.err;
    EXPECT_EQ(convert.out.trimmed().split('\n').size(), 4) << convert.out;
    for (const char* number : {"0000007", "0000010"})
        EXPECT_EQ(TruthOf(directory, QString("faults/Vostochnaya_fault_%1.truth.json").arg(number))["file"]
                      .toString(),
                  QString("Vostochnaya_fault_%1.ZU").arg(number));
}

TEST(LineSample, RecordingsCanBeShownAndHaveTheTriggerOfTheTruth)
{
    const TestDirectory directory;
    ASSERT_EQ(RunProgram(directory.Path(), {"sample", "--out", ".", "--random-quiet", "3-5"}).code, 0);
    for (const char* name : {"0000003", "0000004", "0000005"}) {
        const Finished info =
            RunProgram(directory.Path(), {"info", QString("Vostochnaya_quiet_%1.ZU").arg(name)});
        EXPECT_EQ(info.code, 0) << info.err;
        const QString trigger =
            TruthOf(directory, QString("Vostochnaya_quiet_%1.truth.json").arg(name))["trigger"].toString();
        EXPECT_TRUE(info.out.contains(trigger)) << trigger << info.out;
    }
}

TEST(LineSample, ArchiveListsItsRecordersAndThePrintedCommandCataloguesIt)
{
    const TestDirectory directory;
    const Finished sample =
        RunProgram(directory.Path(), {"sample", "--out", "all", "--archive", "10", "--seed", "4"});
    ASSERT_EQ(sample.code, 0) << sample.err;
    QStringList lines = sample.out.trimmed().split('\n');
    const QString command = lines.takeLast();
    int recordings = 0;
    for (const QString& line : qAsConst(lines)) {
        const QRegularExpressionMatch match =
            QRegularExpression(QStringLiteral("\\Aall/([a-z]+-[12]), recordings: (\\d+)\\z")).match(line);
        ASSERT_TRUE(match.hasMatch()) << line;
        EXPECT_EQ(QDir(directory.Path("all/" + match.captured(1))).entryList({"*.ZU"}).size(),
                  match.captured(2).toInt());
        recordings += match.captured(2).toInt();
    }
    EXPECT_EQ(recordings, 10);
    EXPECT_EQ(RunShell(directory.Path(), command).out,
              "10 read (1 unreadable), 0 moved, 0 gone, 0 unchanged\n");
    EXPECT_EQ(RunProgram(directory.Path(), {"sample", "--out", "all", "--archive", "10"}).code, 2);
    EXPECT_EQ(RunProgram(directory.Path(), {"sample", "--out", "all", "--archive", "11", "--force"}).code, 0);
    EXPECT_EQ(RunShell(directory.Path(), command).out.section(' ', 0, 1), "11 read");
    EXPECT_EQ(RunShell(directory.Path(), "ls all/*/*.ZU | wc -l").out.trimmed(), "11");
}

TEST(LineSample, ForceReplacesAnOlderSampleOfAnotherKind)
{
    const TestDirectory directory;
    ASSERT_EQ(RunProgram(directory.Path(), {"sample", "--out", ".", "--random-fault", "1-2"}).code, 0);
    EXPECT_EQ(RunProgram(directory.Path(), {"sample", "--out", ".", "--fault", "bc"}).code, 2);
    EXPECT_EQ(RunProgram(directory.Path(), {"sample", "--out", ".", "--fault", "bc", "--force"}).code, 0);
    EXPECT_EQ(directory.Names(), (QStringList{"Vostochnaya_fault.ZU", "Vostochnaya_fault.truth.json",
                                              "ZuDrv.ini", "lines.ini"}));
    EXPECT_EQ(TruthOf(directory, "Vostochnaya_fault.truth.json")["fault"].toObject()["kind"].toString(),
              "BC");
}
