// zucmtr verify: a record and its recording, and a record by itself.
#include "program.h"

#include "zucmtr/commands/recordpair.h"
#include "zucmtr/commands/recordsource.h"
#include "zucmtr/terminal/command.h"

#include "comtrade/text.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstring>

using recorderfile::AnalogChannel;
using recorderfile::DiscreteChannel;
using recorderfile::Encode;

namespace {

constexpr int Samples = 40;

// Three analog and three discrete channels, whose values are all different.
recorderfile::Recording Sample(int minutes = 0)
{
    recorderfile::Recording recording;
    recording.trigTime += static_cast<uint32_t>(minutes) * 60;
    recording.startTime = recording.trigTime;
    recording.startMicroseconds = recording.trigMicroseconds;
    for (int channel = 0; channel < 3; ++channel) {
        AnalogChannel analog{QStringLiteral("Q%1:Ia").arg(channel + 1), QStringLiteral("А"), {}};
        analog.primary = 100.0F * static_cast<float>(channel + 1);
        analog.offset = channel == 1 ? 2.5F : 0.0F;
        for (int i = 0; i < Samples; ++i)
            analog.samples.push_back(static_cast<int16_t>((i * (37 + channel) + 7 * minutes) % 500 - 250));
        recording.Add(analog);
    }
    recording.Add(DiscreteChannel{QStringLiteral("Q1:x"), 0, {{0, 0}, {4000, 1}}});
    recording.Add(DiscreteChannel{QStringLiteral("Q2:y"), 0, {{0, 1}, {9000, 0}}});
    recording.Add(DiscreteChannel{QStringLiteral("Q3:z"), 0, {{0, 1}}});
    return recording;
}

struct NamedForm
{
    const char* name;
    QStringList options;
};

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

class Verify : public testing::Test
{
protected:
    void SetUp() override { place.Write("rec.ZU", Encode(Sample())); }

    // Converts, and returns the path of the record relative to the place.
    QString Convert(const QStringList& options = {}) const
    {
        const Finished run = place.Convert(options + QStringList{"rec.ZU"});
        EXPECT_EQ(run.code, 0) << run.err;
        return RecordIn("out");
    }

    QString RecordIn(const QString& directory) const
    {
        const QStringList names =
            QDir(place.Path(directory)).entryList({"*.cfg", "*.cff"}, QDir::Files, QDir::Name);
        return names.isEmpty() ? QString() : directory + '/' + names.first();
    }

    Finished Run(const QStringList& arguments) const
    {
        return RunProgram(place.Path(), QStringList{"verify"} + arguments);
    }

    QString PieceOf(const QString& record, const char* extension) const
    {
        return QFileInfo(record).path() + '/' + QFileInfo(record).completeBaseName() +
               QLatin1String(extension);
    }

    QByteArray Bytes(const QString& name) const { return ReadBytes(place.Path(name)); }

    void Write(const QString& name, const QByteArray& bytes) const
    {
        QFile::remove(place.Path(name));
        place.Write(name, bytes);
    }

    // What is wrong with the record as the recording's, empty if it is good.
    QString Verdict(const QString& record, bool isPlain = false) const
    {
        try {
            const PairVerdict verdict = ComparePair(
                place.Path("rec.ZU"), place.Path(record),
                isPlain ? DeviceChoice() : DeviceChoice{place.Path("ZuDrv.ini"), "Default", "Vostochnaya"},
                isPlain);
            QStringList texts;
            for (const comtrade::Finding& finding : verdict.wrong.All())
                texts << finding.text;
            return texts.join('\n');
        } catch (const text::Error& error) {
            return error.Message();
        }
    }

    QString WithoutPlace(QString text) const { return text.replace(place.Path() + '/', QString()); }

    const Workplace place;
};

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
        const int step = std::max(1, good.size() / 40);
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
    place.Write("rec.ZU", Encode(Sample(1)));
    const Finished run = Run({"rec.ZU", record});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "zucmtr: " + record +
                           ": is not what rec.ZU makes: trigger: the record says "
                           "'31/01/2024,12:00:00.250000', the recording '31/01/2024,12:01:00.250000'\n");
}

TEST_F(Verify, SameStampsWithOtherSamplesAreFound)
{
    const QString record = Convert();
    recorderfile::Recording other = Sample(1);
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

namespace {

// A record of revision 1999 as others would make it from one of convert: with part of it, or in another form.
class VerifyOthers : public Verify
{
protected:
    void SetUp() override
    {
        Verify::SetUp();
        const QString record = Convert({"--revision", "1999", "--data", "ascii"});
        configuration = Bytes(record).split('\n');
        for (const QByteArray& line : Bytes(PieceOf(record, ".dat")).split('\n')) {
            if (!line.isEmpty())
                rows << line.trimmed().split(',');
        }
    }

    // The configuration's lines: 0 station, 1 counts, 2-4 analog, 5-7 states, 8 frequency, 9 rates, 10 rate,
    // 11 start, 12 trigger, 13 form.
    Finished Compare()
    {
        Write("out/other.cfg", configuration.join('\n'));
        QByteArray data;
        for (const QList<QByteArray>& row : rows)
            data += row.join(',') + "\r\n";
        Write("out/other.dat", data);
        return Run({"rec.ZU", "out/other.cfg"});
    }

    QList<QByteArray> configuration;
    QList<QList<QByteArray>> rows;
};

} // namespace

TEST_F(VerifyOthers, WindowWithFewerChannelsIsGood)
{
    rows = rows.mid(12, 10); // 12 samples at 2400 Hz are 5 ms
    for (int i = 0; i < rows.size(); ++i) {
        rows[i][0] = QByteArray::number(i + 1);
        rows[i][1] = QByteArray::number(qRound(i * 1e6 / 2400));
        rows[i].removeAt(6);
        rows[i].removeAt(3);
    }
    configuration[1] = "4,2A,2D";
    configuration.removeAt(6);
    configuration.removeAt(3);
    configuration[8] = "2400,10";
    configuration[9] = "31/01/2024,12:00:00.255000";
    const Finished run = Compare();
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out,
              "out/other.cfg: good, the record of rec.ZU (samples 13 to 22 of 40; 2 + 2 of 3 + 3 channels); "
              "samples, states, times and names compared; its bytes were not, as 'zucmtr convert' "
              "did not write them\n");
    rows[4][2] = "7";
    const Finished bad = Compare();
    EXPECT_EQ(bad.code, 1);
    EXPECT_TRUE(
        bad.err.contains("analog channel 1 (Ia Q1): 1 of 10 values differ; sample 5 (0.001667 s) is 7 "
                         "and should be "))
        << bad.err;
}

TEST_F(VerifyOthers, CopiedReportAndInformationOfAnotherProgramAreNotCompared)
{
    const QString record = Convert({"--form", "cfg"});
    Write("out/other.hdr", Bytes(PieceOf(record, ".hdr")));
    Write("out/other.inf", Bytes(PieceOf(record, ".inf")).replace("=40", "=99"));
    for (QByteArray& line : configuration)
        line += line.isEmpty() ? "" : "\r";
    const Finished run = Compare();
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(Run({"out/other.cfg"}).code, 0);
    for (QByteArray& line : configuration)
        line.replace("\r", "");
    Compare();
    EXPECT_EQ(Run({"out/other.cfg"}).code, 1);
}

TEST_F(VerifyOthers, EveryOtherSampleIsGood)
{
    QList<QList<QByteArray>> some;
    for (int i = 0; i < rows.size(); i += 2) {
        some << rows[i];
        some.last()[0] = QByteArray::number(i / 2 + 1);
    }
    rows = some;
    configuration[10] = "1200,20";
    const Finished run = Compare();
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_TRUE(run.out.contains("(samples 1 to 39 of 40, one in 2; 3 + 3 of 3 + 3 channels)")) << run.out;
}

TEST_F(VerifyOthers, OtherRatesAreRefused)
{
    configuration[10] = "1000,40";
    const Finished run = Compare();
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "zucmtr: out/other.cfg: is not what rec.ZU makes: samples per second: the record says "
                       "'1000', the recording '2400'\n");
}

TEST_F(VerifyOthers, SecondaryValuesWithOtherMultipliersAreGood)
{
    // Of 100 A to 1 A: half a secondary ampere of the recorder's code is one of these.
    QList<QByteArray> fields = configuration[2].split(',');
    const double a = fields[5].toDouble();
    fields[5] = QByteArray::number(a / fields[10].toDouble() * fields[11].toDouble() / 2, 'g', 9);
    fields[12] = "S";
    configuration[2] = fields.join(',');
    for (QList<QByteArray>& row : rows)
        row[2] = QByteArray::number(2 * row[2].toInt());
    const Finished run = Compare();
    EXPECT_EQ(run.code, 0) << run.err;
    rows[3][2] = QByteArray::number(rows[3][2].toInt() + 1);
    EXPECT_EQ(Compare().code, 1);
}

TEST_F(VerifyOthers, ChannelsInAnotherOrderAreFoundByTheirSamples)
{
    std::swap(configuration[2], configuration[4]);
    std::swap(configuration[5], configuration[7]);
    for (QList<QByteArray>& row : rows) {
        std::swap(row[2], row[4]);
        std::swap(row[5], row[7]);
    }
    for (int line : {2, 3, 4, 5, 6, 7}) { // without names
        QList<QByteArray> fields = configuration[line].split(',');
        fields[1] = "?";
        configuration[line] = fields.join(',');
    }
    Write("ZuDrv.ini", QByteArray());
    QFile::remove(place.Path("ZuDrv.ini"));
    const Finished run = Compare();
    EXPECT_EQ(run.code, 0) << run.err;
}

TEST_F(VerifyOthers, SinglePrecisionValuesAreGood)
{
    QByteArray data;
    for (const QList<QByteArray>& row : rows) {
        const auto put = [&data](const auto value) {
            data.append(reinterpret_cast<const char*>(&value), sizeof value);
        };
        put(row[0].toUInt());
        put(row[1].toUInt());
        for (int i = 0; i < 3; ++i) {
            const QList<QByteArray> fields = configuration[2 + i].split(',');
            put(static_cast<float>(fields[5].toDouble() * row[2 + i].toInt() + fields[6].toDouble()));
        }
        put(static_cast<quint16>(row[5].toInt() + 2 * row[6].toInt() + 4 * row[7].toInt()));
    }
    for (int line : {2, 3, 4}) {
        QList<QByteArray> fields = configuration[line].split(',');
        fields[5] = "1";
        fields[6] = "0";
        configuration[line] = fields.join(',');
    }
    configuration[13] = "FLOAT32";
    Compare();
    Write("out/other.dat", data);
    const Finished run = Run({"rec.ZU", "out/other.cfg"});
    EXPECT_EQ(run.code, 0) << run.err;
    data[13] = static_cast<char>(data[13] ^ 0x10);
    Write("out/other.dat", data);
    EXPECT_EQ(Run({"rec.ZU", "out/other.cfg"}).code, 1);
}

namespace {

// A record by itself, with one change.
class VerifyItself : public VerifyOthers
{
protected:
    QString Found()
    {
        Compare();
        const Finished run = Run({"out/other.cfg"});
        EXPECT_EQ(run.code, run.err.isEmpty() ? 0 : 1);
        return run.err;
    }

    static QString Wrong(const QString& what) { return "zucmtr: out/other.cfg: wrong: " + what + '\n'; }
};

} // namespace

TEST_F(VerifyItself, MissingSamples)
{
    rows.removeLast();
    EXPECT_EQ(Found(), Wrong("there are 39 samples, but the configuration says 40"));
}

TEST_F(VerifyItself, SamplesLeftOver)
{
    rows << rows.last();
    rows.last()[0] = "41";
    rows.last()[1] = "16667";
    EXPECT_EQ(Found(), Wrong("there are 41 samples, but the configuration says 40"));
}

TEST_F(VerifyItself, WrongNumber)
{
    rows[6][0] = "8";
    EXPECT_EQ(Found(), Wrong("sample 7 has the number 8 in place of 7"));
}

TEST_F(VerifyItself, WrongTime)
{
    rows[6][1] = "2600";
    EXPECT_EQ(Found(), Wrong("sample 7 has the time 2600; by the rates it should be 2500"));
}

TEST_F(VerifyItself, TimeThatIsRoundedWronglyWhereAllOthersAreExact)
{
    rows[7][1] = "2916";
    EXPECT_EQ(Found(), Wrong("sample 8 has the time 2916; by the rates it should be 2917"));
}

TEST_F(VerifyItself, TimesThatAreCutOffAreGood)
{
    for (int i = 0; i < rows.size(); ++i)
        rows[i][1] = QByteArray::number(i * 1000000 / 2400);
    EXPECT_EQ(Found(), "");
}

TEST_F(VerifyItself, TwoRatesAreGood)
{
    configuration[9] = "2";
    configuration[10] = "2400,20\n1200,40";
    for (int i = 20; i < rows.size(); ++i)
        rows[i][1] = QByteArray::number(qRound(19 * 1e6 / 2400 + (i - 19) * 1e6 / 1200));
    EXPECT_EQ(Found(), "");
    rows[30][1] = "1";
    EXPECT_TRUE(Found().contains("sample 31 has the time 1;"));
}

TEST_F(VerifyItself, ValuesBeyondTheLimits)
{
    QList<QByteArray> fields = configuration[3].split(',');
    fields[8] = "-249";
    configuration[3] = fields.join(',');
    EXPECT_EQ(Found(), Wrong("analog channel 2 (Ia Q2) has values beyond its limits -249 and 32767: 1, the "
                             "first is -250 in sample 1"));
}

TEST_F(VerifyItself, DataThatAreNoNumbers)
{
    rows[6][3] = "x";
    EXPECT_EQ(Found(), Wrong("out/other.dat, record 7: analog channel 2 is 'x', which is no number"));
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
