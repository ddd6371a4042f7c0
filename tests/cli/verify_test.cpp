// zucmtr verify: a record and its recording.
#include "verifyplace.h"

#include "comtrade/text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using recorderfile::Encode;

namespace {

struct NamedForm
{
    const char* name;
    QStringList options;
};

void PrintTo(const NamedForm& form, std::ostream* out)
{
    *out << form.name;
}

const std::vector<NamedForm>& Forms()
{
    static const std::vector<NamedForm> forms = {
        {"Ascii1999", {"--revision", "1999", "--data", "ascii", "--encoding", "cp1251"}},
        {"Binary1999", {"--revision", "1999", "--data", "binary"}},
        {"Ascii2013", {"--form", "cfg", "--data", "ascii"}},
        {"Binary2013", {"--form", "cfg", "--data", "binary", "--encoding", "cp1251"}},
        {"AsciiContainer", {"--form", "cff", "--data", "ascii"}},
        {"BinaryContainer", {"--form", "cff", "--data", "binary"}},
    };
    return forms;
}

class VerifyForms : public Verify, public testing::WithParamInterface<NamedForm>
{};

// Lines that convert does not compare, and so not verify either: calculated values, the converter's names.
bool IsCompared(const QByteArray& bytes, int position)
{
    const int begin = bytes.lastIndexOf('\n', std::max(0, position - 1)) + 1;
    const QString line = comtrade::DecodedText(bytes.mid(begin, bytes.indexOf('\n', begin) - begin));
    for (const char* text : {"модуль", "макс_", "мин_", "Source=", "Russian_Comtrade_Edition_", "Vendor="}) {
        if (line.contains(QString::fromUtf8(text)))
            return false;
    }
    return true;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(All, VerifyForms, testing::ValuesIn(Forms()),
                         [](const auto& form) { return std::string(form.param.name); });

TEST_P(VerifyForms, RecordOfConvertIsGoodToTheByte)
{
    const QString record = Convert(GetParam().options);
    const Finished run =
        Run({"--ini", "ZuDrv.ini", "--defaults", "Default", "--device", "Vostochnaya", "rec.ZU", record});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, record + ": good, the record of rec.ZU (40 samples, 3 + 3 channels); every byte "
                                "compared, by 'ZuDrv.ini'\n");
}

TEST_P(VerifyForms, RecordOfConvertIsGoodByItself)
{
    const QString record = Convert(GetParam().options);
    const Finished run = Run({record});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, record + ": good (40 samples, 3 + 3 channels)\n");
}

TEST_P(VerifyForms, RecordIsGoodWithoutIniFile)
{
    const QString record = Convert(GetParam().options);
    EXPECT_EQ(Verdict(record, true), "");
}

TEST_P(VerifyForms, EveryFlippedBitIsFound)
{
    const QString record = Convert(GetParam().options);
    const bool isBinary = GetParam().options.contains("binary");
    for (const char* extension : {".cff", ".cfg", ".dat", ".hdr", ".inf"}) {
        const QString piece = PieceOf(record, extension);
        if (!QFile::exists(place.Path(piece)))
            continue;
        const QByteArray good = Bytes(piece);
        const int data = isBinary ? good.lastIndexOf("---\r\n") + 5 : good.size();
        const bool hasData = isBinary && (good.contains("DAT BINARY") || qstrcmp(extension, ".dat") == 0);
        const int begin = qstrcmp(extension, ".dat") == 0 ? 0 : data;
        constexpr int recordSize = 8 + 3 * 2 + 2;
        const int step = std::max(1, int(good.size()) / 40);
        for (int position = 0, bit = 0; position < good.size(); position += step, bit = (bit + 3) % 8) {
            const bool isInData = hasData && position >= begin;
            // Of the words with the states three bits are used.
            if (isInData && (position - begin) % recordSize >= recordSize - 2 &&
                ((position - begin) % recordSize == recordSize - 1 || bit > 2))
                continue;
            if (!isInData && !IsCompared(good, position))
                continue;
            QByteArray bad = good;
            bad[position] = static_cast<char>(bad[position] ^ (1 << bit));
            Write(piece, bad);
            EXPECT_NE(Verdict(record), "") << extension << ", byte " << position << ", bit " << bit;
        }
        Write(piece, good);
    }
    EXPECT_EQ(Verdict(record), "");
}

TEST_P(VerifyForms, MissingPiecesAreFound)
{
    const QString record = Convert(GetParam().options);
    for (const char* extension : {".dat", ".hdr", ".inf"}) {
        const QString piece = PieceOf(record, extension);
        if (!QFile::exists(place.Path(piece)))
            continue;
        const QByteArray good = Bytes(piece);
        QFile::remove(place.Path(piece));
        EXPECT_NE(Verdict(record), "") << extension;
        EXPECT_NE(Verdict(record, true), "") << extension;
        EXPECT_EQ(Run({record}).code, 1) << extension;
        Write(piece, good);
    }
}

TEST_F(Verify, DifferentSampleIsNamed)
{
    const QString record = Convert({"--data", "ascii", "--form", "cfg"});
    QList<QByteArray> lines = Bytes(PieceOf(record, ".dat")).split('\n');
    lines[9].replace(",83,", ",84,"); // 9 * 37 - 250
    lines[20].replace(",490,", ",2,");
    Write(PieceOf(record, ".dat"), lines.join('\n'));
    const Finished run = Run({"--plain", "rec.ZU", record});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "zucmtr: " + record +
                           ": is not what rec.ZU makes: analog channel 1 (Ia Q1): 1 of 40 values differ; "
                           "sample 10 (0.003750 s) is 84 and should be 83\n");
}

TEST_F(Verify, DifferentValuesAreCountedPerChannel)
{
    const QString record = Convert({"--data", "ascii", "--form", "cfg"});
    QList<QByteArray> lines = Bytes(PieceOf(record, ".dat")).split('\n');
    for (int i = 0; i < 40; ++i) {
        QList<QByteArray> fields = lines[i].split(',');
        fields[3] = i % 10 == 5 ? QByteArray("9") : fields[3];
        fields[5] = fields[5] == "0" ? "1" : "0";
        lines[i] = fields.join(',');
    }
    Write(PieceOf(record, ".dat"), lines.join('\n'));
    const Finished run = Run({"--plain", "--json", "rec.ZU", record});
    EXPECT_EQ(run.code, 1);
    const QJsonObject object = QJsonDocument::fromJson(run.out.toUtf8()).object();
    EXPECT_FALSE(object["good"].toBool());
    EXPECT_EQ(object["reason"].toString(), "samplesDiffer");
    const QJsonArray differences = object["differences"].toArray();
    ASSERT_EQ(differences.size(), 2);
    EXPECT_EQ(differences[0].toObject()["number"].toInt(), 2);
    EXPECT_EQ(differences[0].toObject()["count"].toInt(), 4);
    EXPECT_EQ(differences[0].toObject()["sample"].toInt(), 6);
    EXPECT_EQ(differences[0].toObject()["found"].toDouble(), 9);
    EXPECT_EQ(differences[0].toObject()["expected"].toDouble(), 5 * 38 - 250);
    EXPECT_EQ(differences[1].toObject()["kind"].toString(), "discrete");
    EXPECT_EQ(differences[1].toObject()["count"].toInt(), 40);
}

TEST_F(Verify, RecordOfAnotherRecordingIsSaidToBe)
{
    const QString record = Convert();
    place.Write("rec.ZU", Encode(VerifiedRecording(1)));
    const Finished run = Run({"rec.ZU", record});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "zucmtr: " + record +
                           ": is not what rec.ZU makes: trigger: the record says "
                           "'31/01/2024,12:00:00.250000', the recording '31/01/2024,12:01:00.250000'\n");
}

TEST_F(Verify, SameStampsWithOtherSamplesAreFound)
{
    const QString record = Convert();
    recorderfile::Recording other = VerifiedRecording(1);
    other.trigTime -= 60;
    other.startTime -= 60;
    place.Write("rec.ZU", Encode(other));
    const QString verdict = Verdict(record, true);
    EXPECT_TRUE(verdict.contains("analog channel 1 (Ia Q1): 40 of 40 values differ")) << verdict;
}

TEST_F(Verify, WithoutIniFileTheLineSaysThatTextsWereNotCompared)
{
    const QString record = Convert();
    QFile::remove(place.Path("ZuDrv.ini"));
    const Finished run = Run({"rec.ZU", record});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out,
              record + ": good, the record of rec.ZU (40 samples, 3 + 3 channels); samples, states and times "
                       "compared; texts were not compared, as no ini file was found\n");
}

TEST_F(Verify, OtherSettingsAreSaidAndSamplesCompared)
{
    const QString record = Convert();
    place.Write("ZuDrv.ini", Bytes("ZuDrv.ini").replace("ПС Узловая", "ПС Другая"));
    const Finished run = Run({"rec.ZU", record});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out,
              record + ": good, the record of rec.ZU (40 samples, 3 + 3 channels); samples, states and times "
                       "compared; the record has other settings than 'ZuDrv.ini' (station: the record says "
                       "'ПС Узловая', the ini file makes it 'ПС Другая')\n");
}

TEST_F(Verify, OtherTextsInARecordWithoutReportAreWrong)
{
    const QString record = Convert({"--revision", "1999"});
    place.Write("ZuDrv.ini", Bytes("ZuDrv.ini").replace("ПС Узловая", "ПС Другая"));
    const Finished run = Run({"rec.ZU", record});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "zucmtr: " + record +
                           ": is not what rec.ZU makes: station: the record says 'ПС Узловая', the ini file "
                           "makes it 'ПС Другая'\nzucmtr: " +
                           record +
                           ": if the record was made with other settings than 'ZuDrv.ini', --plain leaves "
                           "its texts out\n");
    EXPECT_EQ(Run({"--plain", "rec.ZU", record}).code, 0);
}

TEST_F(Verify, RenamedRecordIsComparedToTheByte)
{
    const QString record = Convert({"--form", "cfg"});
    for (const char* extension : {".cfg", ".dat", ".hdr", ".inf"})
        QFile::rename(place.Path(PieceOf(record, extension)), place.Path("out/other" + QString(extension)));
    const Finished run = Run({"rec.ZU", "out/other.cfg"});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_TRUE(run.out.endsWith("every byte compared, by 'ZuDrv.ini'\n")) << run.out;
}

TEST_F(Verify, PiecesThatDisagreeAreFound)
{
    const QString record = Convert({"--form", "cfg"});
    const QString report = PieceOf(record, ".hdr");
    Write(report, Bytes(report).replace("РАС-1", "РАС-2"));
    const QString information = PieceOf(record, ".inf");
    Write(information, Bytes(information).replace("End_Sample_Rate_#1=40", "End_Sample_Rate_#1=41"));
    const Finished run = Run({record});
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.err.contains("\n  the INF file has '41' for End_Sample_Rate_#1 in [Public "
                                 "File_Description], the configuration '40'\n"))
        << run.err;
    EXPECT_TRUE(run.err.contains("\n  the fault report has 'РАС-2' for 'Источник:', the record's other files "
                                 "'РАС-1'\n"))
        << run.err;
}

TEST_F(Verify, ContainerWithOtherSizesIsWrong)
{
    const QString record = Convert({"--form", "cff", "--data", "binary"});
    const QByteArray good = Bytes(record);
    Write(record, good + "12345");
    EXPECT_EQ(Run({record}).err, "zucmtr: " + record + ": wrong: 5 bytes follow the data\n");
    Write(record, good.left(good.size() - 16));
    EXPECT_EQ(Run({record}).code, 1);
    Write(record, QByteArray(good).replace("file type: HDR", "file type: HDX"));
    EXPECT_EQ(Run({record}).err, "zucmtr: " + record + ": wrong: its fault report (HDR) is missing\n");
}

TEST_F(Verify, DirectoriesStandForTheirRecords)
{
    place.Write("b.ZU", Encode(ShortRecording(5)));
    EXPECT_EQ(place.Convert({"rec.ZU", "b.ZU"}).code, 0);
    const Finished all = Run({"out"});
    EXPECT_EQ(all.code, 0) << all.err;
    EXPECT_EQ(all.out.count(": good ("), 2) << all.out;
    EXPECT_EQ(Run({"-q", "out"}).out, "");
    EXPECT_EQ(Run({"-r", "."}).out.count(": good ("), 2);
    const Finished none = Run({"."});
    EXPECT_EQ(none.code, 1);
    EXPECT_EQ(none.err, "zucmtr: .: there is no record (.cfg, .cff) in this directory; --recursive searches "
                        "the directories below it, too\n");
    QFile::remove(place.Path("out/" + ShortRecordName(5) + ".dat"));
    const Finished one = Run({"--json", "out"});
    EXPECT_EQ(one.code, 1);
    EXPECT_EQ(one.out.count("\"good\":true"), 1);
    EXPECT_EQ(one.out.count("\"good\":false"), 1);
    EXPECT_TRUE(one.out.contains("\"reason\":\"recordUnreadable\"")) << one.out;
}

TEST_F(Verify, WrongUsageIsExplained)
{
    const QString record = Convert();
    const QString end = "\nRun 'zucmtr verify --help' for the options and an example.\n";
    EXPECT_EQ(Run({"rec.ZU"}).err,
              "zucmtr: 'rec.ZU' is not the .cfg or .cff file of a record; give the record "
              "of a recording after it" +
                  end);
    for (const QStringList& files : {QStringList{"rec.ZU", record, record}, QStringList{record, "rec.ZU"},
                                     QStringList{"rec.ZU", "out"}}) {
        const Finished run = Run(files);
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(run.err, "zucmtr: a recording is compared with one record: give the first file of the "
                           "recording, then the .cfg or .cff file of the record" +
                               end);
    }
    EXPECT_EQ(Run({"--plain", record}).code, 2);
    const Finished none = Run({"no.ZU", record});
    EXPECT_EQ(none.code, 1);
    EXPECT_EQ(none.err, "zucmtr: no.ZU: there is no such file; check the path\n");
}

TEST_F(Verify, ExampleOfTheHelpWorks)
{
    const Finished help = Run({"--help"});
    const QString example = help.out.section("Example, with the sample station:\n", 1).section("\n\n", 0, 0);
    const TestDirectory directory;
    const Finished finished = RunShell(directory.Path(), example);
    EXPECT_EQ(finished.code, 0) << finished.err;
    EXPECT_EQ(finished.out.count(": good"), 9) << finished.out;
}
