// zucmtr sample: what it writes, and what it does not overwrite.
#include "program.h"

#include "station/station.h"

#include <gtest/gtest.h>

namespace {

const QStringList& SampleFiles()
{
    static const QStringList files = {
        "Vostochnaya_000123.ZU", "Vostochnaya_000124.ZU", "Vostochnaya_000125.ZU",
        "Vostochnaya_000126.ZU", "Vostochnaya_000127.ZU", "Vostochnaya_000128.ZU",
        "Vostochnaya_000129.ZU", "Vostochnaya_000130.ZU", "ZuDrv.ini"};
    return files;
}

} // namespace

TEST(Sample, FilesAreListedAndThenTheCommand)
{
    const TestDirectory directory;
    directory.MakeDirectory("station");
    const Finished run = RunShell(directory.Path(), "zucmtr sample --out station");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, QString());
    QStringList expected = {"station/ZuDrv.ini"};
    for (int number = 123; number <= 130; ++number)
        expected << QString::asprintf("station/Vostochnaya_%06d.ZU", number);
    expected << "mkdir -p station/comtrade && zucmtr convert --ini station/ZuDrv.ini --defaults Default "
                "--device Vostochnaya --out station/comtrade station/Vostochnaya_*.ZU";
    EXPECT_EQ(run.out, expected.join('\n') + "\n");
    EXPECT_EQ(directory.Names("station"), SampleFiles());
}

TEST(Sample, PrintedCommandConvertsEveryRecording)
{
    const TestDirectory directory;
    directory.MakeDirectory("it's a 'station'");
    const Finished sample =
        RunProgram(directory.Path(), {"sample", "--out", "it's a 'station'", "--segments", "3"});
    ASSERT_EQ(sample.code, 0) << sample.err;
    const Finished convert = RunShell(directory.Path(), sample.out.trimmed().section('\n', -1));
    EXPECT_EQ(convert.code, 0) << convert.err;
    const QStringList lines = convert.out.trimmed().split('\n');
    ASSERT_EQ(lines.size(), 8) << convert.out;
    EXPECT_EQ(lines[0], "it's a 'station'/Vostochnaya_000123.ZU -> " + ShortRecordName(0));
    EXPECT_EQ(directory.Names("it's a 'station'/comtrade").size(), 32);
}

TEST(Sample, BaysOfTheIniFileAreInTheLogAndNoWarnings)
{
    const TestDirectory directory;
    const Finished sample = RunProgram(directory.Path(), {"sample", "--out", ".", "--analog", "8"});
    ASSERT_EQ(sample.code, 0) << sample.err;
    const Finished convert =
        RunShell(directory.Path(), sample.out.trimmed().section('\n', -1) + " --log converter.log");
    EXPECT_EQ(convert.code, 0);
    EXPECT_FALSE(convert.err.contains("BAY")) << convert.err;
    EXPECT_TRUE(ReadLines(directory.Path("converter.log"))
                    .contains("BAY01: ВЛ-110 Восточная,[ВЛ 110 кВ Восточная],[ТН 1СШ-110]"));
}

TEST(Sample, TwoRunsGiveTheSameBytes)
{
    const TestDirectory directory;
    directory.MakeDirectory("one");
    directory.MakeDirectory("two");
    ASSERT_EQ(RunProgram(directory.Path(), {"sample", "--out", "one"}).code, 0);
    ASSERT_EQ(RunProgram(directory.Path(), {"sample", "--out", "two"}).code, 0);
    ASSERT_EQ(directory.Names("one"), directory.Names("two"));
    for (const QString& name : SampleFiles())
        EXPECT_EQ(ReadBytes(directory.Path("one/" + name)), ReadBytes(directory.Path("two/" + name))) << name;
}

TEST(Sample, DirectoryIsMadeWithThoseAboveIt)
{
    const TestDirectory directory;
    const Finished run = RunProgram(directory.Path(), {"sample", "--out", "архив/станция"});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.err, QString());
    EXPECT_EQ(directory.Names("архив/станция"), SampleFiles());
}

TEST(Sample, IniFileThatIsThereIsNotOverwritten)
{
    const TestDirectory directory;
    directory.Write("ZuDrv.ini", "mine");
    const Finished run = RunProgram(directory.Path(), {"sample", "--out", "."});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err,
              QStringLiteral("zucmtr: --out: '.' already has 'ZuDrv.ini'; choose another directory, or "
                             "replace the sample and its ini file by --force\n"));
    EXPECT_EQ(directory.Names(), QStringList{"ZuDrv.ini"});
    EXPECT_EQ(ReadBytes(directory.Path("ZuDrv.ini")), QByteArray("mine"));
}

TEST(Sample, ForceReplacesAnOlderSampleWithItsContinuations)
{
    const TestDirectory directory;
    directory.Write("Vostochnaya_000131.ZU", "mine");
    ASSERT_EQ(RunProgram(directory.Path(), {"sample", "--out", ".", "--segments", "2"}).code, 0);
    ASSERT_EQ(directory.Names().filter(".Z01").size(), 8);
    EXPECT_EQ(RunProgram(directory.Path(), {"sample", "--out", ".", "--force"}).code, 0);
    QStringList expected = SampleFiles();
    expected.insert(8, "Vostochnaya_000131.ZU");
    EXPECT_EQ(directory.Names(), expected);
    EXPECT_EQ(ReadBytes(directory.Path("Vostochnaya_000131.ZU")), QByteArray("mine"));
}

TEST(Sample, FileThatCannotBeWrittenIsNamed)
{
    const TestDirectory directory;
    directory.MakeDirectory("Vostochnaya_000124.ZU");
    const Finished run = RunProgram(directory.Path(), {"sample", "--out", "."});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, QStringLiteral("./ZuDrv.ini\n./Vostochnaya_000123.ZU\n"));
    EXPECT_EQ(run.err,
              QStringLiteral("zucmtr: './Vostochnaya_000124.ZU' cannot be written: Is a "
                             "directory; check the directory, its permissions and the free space\n"));
}
