// zucmtr convert over good, broken and continued recordings.
#include "program.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

namespace {

using recorderfile::Encode;
using recorderfile::Recording;

QStringList FilesOfRecord(const QString& name)
{
    return {name + ".cfg", name + ".dat", name + ".hdr", name + ".inf"};
}

QString Converted(const QString& file, int minutes)
{
    return file + " -> " + ShortRecordName(minutes);
}

// A start comment with too few values, which the library refuses by an exception.
Recording ThrowingRecording(int minutes)
{
    Recording recording = ShortRecording(minutes);
    recording.comment = QStringLiteral("Пуск ДЗ (I,1.5)");
    recording.Add(recorderfile::AnalogChannel{QStringLiteral("I"), QStringLiteral("А"), {1, 2, 3}});
    return recording;
}

} // namespace

TEST(Batch, EachRecordingGetsItsLineAndItsRecord)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording(0)));
    place.Write("b.zu", Encode(ShortRecording(10)));
    const Finished run = place.Convert({"a.ZU", "b.zu"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, Converted("a.ZU", 0) + "\n" + Converted("b.zu", 10) + "\n");
    EXPECT_EQ(Untimed(run.err), Summary(2, "2 converted and verified"));
    EXPECT_EQ(place.Names("out"), FilesOfRecord(ShortRecordName(0)) + FilesOfRecord(ShortRecordName(10)));
    EXPECT_EQ(place.Names(), (QStringList{"ZuDrv.ini", "a.ZU", "b.zu"}));
}

TEST(Batch, FailuresDoNotStopTheOthers)
{
    const Workplace place;
    place.Write("a.ZU", "broken");
    place.Write("b.ZU", Encode(ShortRecording(0)));
    place.Write("c.txt", "text");
    const Finished run = place.Convert({"no.ZU", "a.ZU", "b.ZU", "c.txt"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, Converted("b.ZU", 0) + "\n");
    const QStringList errors = Untimed(run.err).split('\n');
    ASSERT_EQ(errors.size(), 5) << run.err;
    const QString none = "it is no recording: it does not start like a recorder's file; give a "
                         "recording's first file (.ZU)";
    EXPECT_EQ(errors[0], "zucmtr: no.ZU: not converted: there is no such file; check the path");
    EXPECT_EQ(errors[1], "zucmtr: a.ZU: not converted: " + none);
    EXPECT_EQ(errors[2], "zucmtr: c.txt: not converted: " + none);
    EXPECT_EQ(errors[3] + "\n", Summary(4, "1 converted and verified, 3 failed"));
    EXPECT_EQ(place.Names("out"), FilesOfRecord(ShortRecordName(0)));
}

TEST(Batch, ExceptionOfTheLibraryIsThatRecordingsFailure)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ThrowingRecording(0)));
    place.Write("b.ZU", Encode(ShortRecording(10)));
    const Finished run = place.Convert({"a.ZU", "b.ZU"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, Converted("b.ZU", 10) + "\n");
    EXPECT_EQ(
        Untimed(run.err),
        "zucmtr: a.ZU: not converted: the start comment has too few values, or the segments have analog "
        "but no discrete channels; the library gives up such a recording\n" +
            Summary(2, "1 converted and verified, 1 failed"));
    EXPECT_EQ(place.Names("out"), FilesOfRecord(ShortRecordName(10)));
}

TEST(Batch, NoteOnACutChainFollowsTheRecordsName)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording(0)));
    Recording other = ShortRecording(0);
    other.identity = QStringLiteral("another recorder");
    place.Write("a.Z01", Encode(other));
    const Finished run = place.Convert({"a.ZU"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, Converted("a.ZU", 0) + "; the recording ends early, 'a.Z01' does not continue "
                                              "'a.ZU': they differ [Параметры файлов [a.Z01] и [a.ZU] "
                                              "различны, окончание осциллограммы некорректно]\n");
}

TEST(Batch, NotesOfAFailureFollowItsText)
{
    const Workplace place;
    Recording recording = ShortRecording(0);
    recording.duration = 0;
    place.Write("a.ZU", Encode(recording));
    place.Write("a.Z01", "broken");
    const Finished run = place.Convert({"a.ZU"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(
        run.err, // without a summary, since it is a single file
        "zucmtr: a.ZU: not converted: its duration is 0, so it cannot be converted [Плохое значение fullTime "
        "(==0)]; the recording of 'a.ZU' ends early, a continuation file cannot be read: the file ends "
        "within "
        "its header; was the copy interrupted? [Ошибка обработки файла a.ZU [Ошибка при чтении файла "
        "[ZuFileHeader]], окончание осциллограммы некорректно]\n");
}

TEST(Batch, ContinuationsOfGivenFilesArePassedOver)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording(0)));
    place.Write("a.Z01", Encode(ShortRecording(0)));
    place.Write("b.zu", Encode(ShortRecording(10)));
    place.Write("b.z01", Encode(ShortRecording(10)));
    const Finished run = place.Convert({"a.Z01", "./a.ZU", "b.z01", place.Path("b.zu")});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, Converted("./a.ZU", 0) + "\n" + Converted(place.Path("b.zu"), 10) + "\n");
    EXPECT_EQ(Untimed(run.err),
              QStringLiteral("zucmtr: a.Z01: passed over, it is converted with its first file a.ZU\n"
                             "zucmtr: b.z01: passed over, it is converted with its first file b.zu\n") +
                  Summary(2, "2 converted and verified"));
}

TEST(Batch, ContinuationWithoutItsFirstFileFails)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording(0)));
    place.Write("a.Z0f", Encode(ShortRecording(0)));
    place.Write("b.ZU", Encode(ShortRecording(10)));
    const Finished run = place.Convert({"a.Z0f", "b.ZU"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, Converted("b.ZU", 10) + "\n");
    EXPECT_EQ(Untimed(run.err), QStringLiteral("zucmtr: a.Z0f: not converted: it continues a recording; give "
                                               "the first file a.ZU instead\n") +
                                    Summary(2, "1 converted and verified, 1 failed"));
}

TEST(Batch, NameThatTheChainDoesNotKnowIsNoContinuation)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording(0)));
    place.Write("a.Z0A", Encode(ShortRecording(0)));
    const Finished run = place.Convert({"a.ZU", "a.Z0A"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(Untimed(run.err),
              QStringLiteral("zucmtr: a.Z0A: not converted: the name of a recording ends in "
                             ".ZU or .zu; rename the file\n") +
                  Summary(2, "1 converted and verified, 1 failed"));
}

TEST(Batch, RecordOfAnotherRecordingIsReplacedOnlyOnRequest)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording(0)));
    recorderfile::Recording other = ShortRecording(0);
    std::get<recorderfile::AnalogChannel>(other.sections[0]).samples[1] = 5;
    place.Write("b.ZU", Encode(other));
    const QString record = "out/" + ShortRecordName(0);
    const Finished run = place.Convert({"a.ZU", "b.ZU"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(Untimed(run.err),
              "zucmtr: b.ZU: not converted: '" + record +
                  ".cfg' is there already and is not the record of this recording ('" + record +
                  ".dat' has other samples than the recording); move it away, choose another directory by "
                  "--out, or replace it by --replace\n" +
                  Summary(2, "1 converted and verified, 1 failed"));
    EXPECT_EQ(ReadBytes(place.Path(record + ".dat")), "1,0,1,1\n2,417,-2,1\n3,833,3,1\n");
}

TEST(Batch, CopyOfARecordingHasItsRecordAlready)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording(0)));
    place.Write("b.ZU", Encode(ShortRecording(0)));
    const Finished run = place.Convert({"a.ZU", "b.ZU"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, Converted("a.ZU", 0) + "\n" + Converted("b.ZU", 0) + "; it was there already\n");
}

TEST(Batch, RecordThatIsNotInPlaceIsAFailure)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording(0)));
    place.MakeDirectory("out/" + ShortRecordName(0) + ".cfg");
    const Finished run = place.Convert({"a.ZU"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, QString());
    EXPECT_EQ(run.err, QStringLiteral(
                           "zucmtr: a.ZU: not converted: 'out/%1.cfg' is there already and is not the record "
                           "of this recording ('out/%1.cfg' is not a file); move it away, choose another "
                           "directory by --out, or replace it by --replace\n")
                           .arg(ShortRecordName(0)));
}

TEST(Batch, CffRecordIsOneFile)
{
    const Workplace place({{"Тип Comtrade CFF", "1"}});
    place.Write("a.ZU", Encode(ShortRecording(0)));
    EXPECT_EQ(place.Convert({"a.ZU"}).out, Converted("a.ZU", 0) + "\n");
    EXPECT_EQ(place.Names("out"), QStringList{ShortRecordName(0) + ".cff"});
}

TEST(Batch, NotesOfLoadingAreReportedOnceBeforeTheRecordings)
{
    const Workplace place({{"Тип Comtrade CFF", "1"}, {"Тип Comtrade 1999", "1"}});
    place.Write("a.ZU", Encode(ShortRecording(0)));
    place.Write("b.ZU", Encode(ShortRecording(10)));
    const Finished run = place.Convert({"a.ZU", "b.ZU"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, Converted("a.ZU", 0) + "\n" + Converted("b.ZU", 10) + "\n");
    EXPECT_EQ(Untimed(run.err),
              QStringLiteral("zucmtr: warnings and notes on section [Vostochnaya] of 'ZuDrv.ini':\n"
                             "  Значение параметра Тип Comtrade CFF=1 несовместимо с Comtrade 1999 и "
                             "будет проигнорировано\n") +
                  Summary(2, "2 converted and verified"));
}

TEST(Batch, LogHasBothSections)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording(0)));
    EXPECT_EQ(place.Convert({"--log", "a.log", "a.ZU"}).code, 0);
    const QStringList lines = ReadLines(place.Path("a.log"));
    EXPECT_EQ(lines.filter(QRegularExpression("^>")),
              (QStringList{">Параметры по умолчанию для преобразования ZU в Comtrade", ">Vostochnaya"}));
}

TEST(Batch, ControlCharactersOfANameDoNotReachTheTerminal)
{
    const Workplace place;
    place.Write("a\x1b[1m.ZU", Encode(ShortRecording(0)));
    EXPECT_EQ(place.Convert({"a\x1b[1m.ZU"}).out, Converted("a?[1m.ZU", 0) + "\n");
}

TEST(Batch, OutDirectoryMayEndInASlash)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording(0)));
    const Finished run = RunProgram(place.Path(), {"convert", "--ini", "ZuDrv.ini", "--defaults", "Default",
                                                   "--device", "Vostochnaya", "--out", "out/", "a.ZU"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(place.Names("out"), FilesOfRecord(ShortRecordName(0)));
}

TEST(Batch, OutputThatCannotBeWrittenIsAFailure)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording(0)));
    const Finished run =
        RunShell(place.Path(), "zucmtr convert --ini ZuDrv.ini --defaults Default --device Vostochnaya "
                               "--out out a.ZU > /dev/full");
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, QStringLiteral("zucmtr: standard output could not be written; check the disk or the "
                                      "pipe\n"));
}
