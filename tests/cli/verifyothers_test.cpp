// zucmtr verify: records that other programs make, and a record by itself.
#include "verifyplace.h"

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
