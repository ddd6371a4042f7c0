// What a form cannot hold, parts of a record, and what is done where codes must change.
#include "forms/channelchoice.h"
#include "forms/comtradetext.h"
#include "forms/exporting.h"
#include "forms/spantext.h"
#include "madestream.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <QDir>

#include <cmath>

namespace {

using comtrade::DataType;
using comtrade::Revision;
using forms::Form;

// A record in ASCII of 2013 with two analog channels and a discrete one, to be changed before it is read.
struct Text
{
    QByteArray station = "Подстанция,РАС,2013";
    QByteArray analog = "1,Ia,A,Q1,A,0.5,-1,2.5,-32767,32767,1000,5,P\r\n"
                        "2,Ub,B,Q2,kV,0.001,0,0,-99999,99998,220,0.1,S\r\n";
    QByteArray states = "1,Trip,,Q1,1\r\n";
    QByteArray counts = "3,2A,1D";
    QByteArray rates = "1\r\n1000,4";
    QByteArray data = "1,0,10,-20,0\r\n2,1000,11,-21,0\r\n3,2000,12,-22,1\r\n4,3000,13,-23,1\r\n";

    QString Store(const TestDirectory& place) const
    {
        place.Write("r.cfg",
                    station + "\r\n" + counts + "\r\n" + analog + states + "50\r\n" + rates +
                        "\r\n31/01/2024,23:59:59.998000\r\n01/02/2024,00:00:00.000000\r\nASCII\r\n1\r\n"
                        "+3h00,+3h00\r\n0,3\r\n");
        place.Write("r.dat", data);
        return place.Path("r.cfg");
    }
};

forms::Request To(DataType data, Revision revision = Revision::R2013)
{
    forms::Request request;
    request.comtrade.data = data;
    request.comtrade.revision = revision;
    return request;
}

// The message of the error; empty if there is none.
QString RefusalOf(const Text& text, const forms::Request& request)
{
    const TestDirectory place;
    try {
        forms::Export({text.Store(place), {}, {}}, request, place.Path("out"));
    } catch (const text::Error& error) {
        return error.Message();
    }
    return QString();
}

// The exported record.
struct Result
{
    forms::Exported exported;
    comtrade::Configuration config;
    comtrade::Block rows;
    QByteArray header;
};

Result ResultOf(const Text& text, const forms::Request& request)
{
    const TestDirectory place;
    Result result;
    result.exported = forms::Export({text.Store(place), {}, {}}, request, place.Path("out"));
    forms::RecordStream stream(place.Path("out" + result.exported.files.first()), comtrade::Strict());
    result.config = stream.Config();
    result.rows = AllOf(stream);
    result.header = stream.Record().Header();
    return result;
}

TEST(Export, NamesTheCodeThatDoesNotFit)
{
    Text text;
    text.data.replace("12,-22", "40000,-22");
    EXPECT_EQ(RefusalOf(text, To(DataType::Binary)),
              "A1 (Ia), sample 3: the code 40000 is beyond the 32767 of BINARY; --data binary32 holds it");
    EXPECT_EQ(RefusalOf(text, To(DataType::Binary32)), "");
    text.data.replace("40000", "3000000000");
    EXPECT_EQ(RefusalOf(text, To(DataType::Binary32)),
              "A1 (Ia), sample 3: the code 3000000000 is beyond the 2147483647 of BINARY32; --form csv, "
              "--form mat holds it");
    text.data.replace("3000000000", "16777217");
    EXPECT_EQ(RefusalOf(text, To(DataType::Float32)),
              "A1 (Ia), sample 3: 16777217 has more digits than FLOAT32 can hold; --data binary32 holds it");
    EXPECT_EQ(RefusalOf(text, To(DataType::Ascii, Revision::R1999)),
              "A1 (Ia), sample 3: the code 16777217 is beyond the 99998 of ASCII; --data binary32 holds it");
}

TEST(Export, RefusesACodeThatMeansAMissingValue)
{
    Text text;
    text.data.replace("12,-22", "-32768,-22");
    EXPECT_EQ(RefusalOf(text, To(DataType::Binary)),
              "A1 (Ia), sample 3: the code -32768 is beyond the 32767 of BINARY; --data binary32 holds it");
}

TEST(Export, NamesTheTimeStampThatDoesNotFit)
{
    Text text;
    text.data.replace("3,2000,", "3,4294967295,");
    EXPECT_EQ(
        RefusalOf(text, To(DataType::Binary)),
        "sample 3: the time stamp 4294967295 does not fit the 32 bits of binary data; --data ascii holds it");
    text.data.replace("4294967295", "-5");
    EXPECT_EQ(RefusalOf(text, To(DataType::Binary)),
              "sample 3: the time stamp -5 does not fit the 32 bits of binary data; --data ascii holds it");
    text.data.replace("-5", "12345678901");
    EXPECT_EQ(
        RefusalOf(text, To(DataType::Ascii, Revision::R1999)),
        "sample 3: the time stamp 12345678901 has more digits than ASCII data of revision 1999 can hold; "
        "--form csv holds it");
}

TEST(Export, NamesTheTextThatDoesNotFit)
{
    Text text;
    text.analog.replace("Ia", QByteArray(65, 'x'));
    const QString name(65, 'x');
    EXPECT_EQ(RefusalOf(text, To(DataType::Ascii, Revision::R1999)),
              "A1: '" + name + "' has 65 characters, revision 1999 allows 64; CSV and MAT hold it");
    EXPECT_EQ(RefusalOf(text, To(DataType::Ascii)), "");
}

TEST(Export, NamesTheLetterThatTheEncodingLacks)
{
    Text text;
    text.analog.replace("Ia", "Iα");
    forms::Request request = To(DataType::Ascii);
    request.comtrade.encoding = "Windows-1251";
    EXPECT_EQ(RefusalOf(text, request),
              QStringLiteral("1,Iα: the encoding Windows-1251 has no letter 'α'; --out-encoding utf8 has"));
}

TEST(Export, RefusesASideWithoutFactors)
{
    Text text;
    text.analog.replace("220,0.1,S", "220,0,S");
    forms::Request request = To(DataType::Ascii);
    request.side = forms::Side::Primary;
    EXPECT_EQ(RefusalOf(text, request),
              "A2 (Ub): its factors, primary 220 and secondary 0, do not lead to primary values");
}

TEST(Export, TurnsValuesIntoThoseOfASide)
{
    forms::Request request = To(DataType::Binary);
    request.side = forms::Side::Primary;
    const Result result = ResultOf(Text(), request);
    EXPECT_EQ(result.config.analog[0].a, 0.5);
    EXPECT_EQ(result.config.analog[1].a, 0.001 * (220 / 0.1));
    EXPECT_TRUE(result.config.analog[1].primaryValues);
    EXPECT_EQ(result.rows.analog[1], -20);
    request.side = forms::Side::Secondary;
    const Result other = ResultOf(Text(), request);
    EXPECT_EQ(other.config.analog[0].a, 0.5 * (5.0 / 1000));
    EXPECT_EQ(other.config.analog[0].b, -1 * (5.0 / 1000));
    EXPECT_EQ(other.config.analog[1].a, 0.001);
}

// New codes use the whole range, and no value is off by more than half a step.
void ExpectNewCodes(DataType data, Revision revision, double most)
{
    SCOPED_TRACE(QString::number(most).toStdString());
    Text text;
    text.data.replace("10,", "0.125,").replace("13,", "99.5,").replace("12,", ",");
    const Result result = ResultOf(text, To(data, revision));
    ASSERT_EQ(result.exported.newScales.size(), 1U);
    const comtrade::AnalogChannel& channel = result.config.analog[0];
    EXPECT_EQ(channel.max, most);
    EXPECT_EQ(result.rows.analog[0], -most);
    EXPECT_EQ(result.rows.analog[6], most);
    EXPECT_TRUE(std::isnan(result.rows.analog[4]));
    const double codes[] = {0.125, 11, 0, 99.5};
    for (size_t i : {0U, 1U, 3U})
        EXPECT_NEAR(channel.a * result.rows.analog[2 * i] + channel.b, 0.5 * codes[i] - 1,
                    result.exported.newScales[0].halfStep * 1.000001)
            << i;
    EXPECT_EQ(result.rows.analog[1], -20); // the other channel keeps its codes
    EXPECT_EQ(result.config.analog[1].a, 0.001);
}

TEST(Export, GivesRealNumbersNewCodesWhereTheFormHasWholeOnes)
{
    ExpectNewCodes(DataType::Binary, Revision::R2013, 32767);
    ExpectNewCodes(DataType::Binary32, Revision::R2013, 2147483647);
    ExpectNewCodes(DataType::Ascii, Revision::R1999, 99998);
}

TEST(Export, SaysWhatItRoundsToSinglePrecision)
{
    Text text;
    text.data.replace("10,", "0.1,").replace("11,", "0.5,");
    const Result result = ResultOf(text, To(DataType::Float32));
    EXPECT_EQ(result.exported.rounded, 1);
    EXPECT_EQ(result.rows.analog[0], static_cast<double>(0.1F));
}

TEST(Export, WritesTheCountThatTheDataHave)
{
    Text text;
    text.rates = "2\r\n1000,2\r\n500,9";
    const Result result = ResultOf(text, To(DataType::Binary));
    EXPECT_EQ(result.exported.announced, 9);
    EXPECT_EQ(result.exported.total, 4);
    ASSERT_EQ(result.config.rates.size(), 2U);
    EXPECT_EQ(result.config.rates[0].lastSample, 2);
    EXPECT_EQ(result.config.rates[1].lastSample, 4);
}

TEST(Export, StartsAPartWithTheTimeOfItsFirstSample)
{
    forms::Request request = To(DataType::Binary);
    request.span.from = -0.001;
    request.span.to = 0.0;
    const Result result = ResultOf(Text(), request);
    ASSERT_EQ(result.rows.count, 2U);
    EXPECT_EQ(result.rows.numbers, (std::vector<quint32>{1, 2}));
    EXPECT_EQ(result.rows.times, (std::vector<qint64>{0, 1000}));
    EXPECT_EQ(result.rows.analog, (std::vector<double>{11, -21, 12, -22}));
    EXPECT_EQ(result.config.start.nanoseconds, 86399LL * 1000000000 + 999000000);
    EXPECT_EQ(result.config.trigger.nanoseconds, 0);
    EXPECT_EQ(result.config.rates.size(), 1U);
    EXPECT_EQ(result.config.SampleCount(), 2);
}

TEST(Export, TakesAPartByTheStampsWhereThereIsNoRate)
{
    Text text;
    text.rates = "0\r\n0,4";
    text.data.replace("4,3000", "4,9000");
    forms::Request request = To(DataType::Binary);
    request.span.from = 0;
    const Result result = ResultOf(text, request);
    EXPECT_EQ(result.rows.times, (std::vector<qint64>{0, 7000}));
    EXPECT_EQ(result.config.start.nanoseconds, 0);
    EXPECT_EQ(result.config.start.date, QDate(2024, 2, 1));
}

TEST(Export, RecomputesTheRatesOfAPart)
{
    Text text;
    text.rates = "2\r\n1000,2\r\n500,4";
    forms::Request request = To(DataType::Binary);
    request.span.from = -0.001;
    const Result result = ResultOf(text, request);
    ASSERT_EQ(result.config.rates.size(), 2U);
    EXPECT_EQ(result.config.rates[0].lastSample, 1);
    EXPECT_EQ(result.config.rates[1].lastSample, 3);
}

TEST(Export, RefusesAPartWithoutSamples)
{
    forms::Request request = To(DataType::Binary);
    request.span.from = 1;
    EXPECT_EQ(RefusalOf(Text(), request), "no sample of the record is in the time asked for");
}

TEST(Export, KeepsTheChannelsThatAreNamed)
{
    forms::Request request = To(DataType::Binary);
    for (const auto& [pattern, analog, states] : {std::tuple<const char*, size_t, size_t>{"Ia", 1, 0},
                                                  {"q1", 1, 1},
                                                  {"A2", 1, 0},
                                                  {"D1", 0, 1},
                                                  {"*", 2, 1},
                                                  {"?r*", 0, 1}}) {
        request.channels = QStringList{pattern};
        const Result result = ResultOf(Text(), request);
        EXPECT_EQ(result.config.analog.size(), analog) << pattern;
        EXPECT_EQ(result.config.states.size(), states) << pattern;
    }
    request.channels = QStringList{"A3"};
    EXPECT_EQ(RefusalOf(Text(), request), "no channel has the name, circuit or number 'A3'");
}

TEST(Export, LeavesOutStatesThatNeverChange)
{
    Text text;
    text.counts = "4,2A,2D";
    text.states += "2,Never,,,0\r\n";
    text.data = "1,0,10,-20,0,1\r\n2,1000,11,-21,1,1\r\n3,2000,1,1,1,1\r\n4,3000,1,1,1,1\r\n";
    forms::Request request = To(DataType::Binary);
    request.changingOnly = true;
    const Result result = ResultOf(text, request);
    ASSERT_EQ(result.config.states.size(), 1U);
    EXPECT_EQ(result.config.states[0].name, "Trip");
    EXPECT_EQ(result.exported.statesLeftOut, 1U);
    EXPECT_EQ(result.rows.states, (std::vector<quint8>{0, 1, 1, 1}));
}

TEST(Export, SaysInTheHdrFileThatSamplesAreOthers)
{
    forms::Request request = To(DataType::Binary);
    request.every = 2;
    const Result result = ResultOf(Text(), request);
    EXPECT_EQ(result.rows.count, 2U);
    EXPECT_EQ(QString::fromUtf8(result.header), result.exported.resampling + "\r\n");
    EXPECT_FALSE(result.exported.resampling.isEmpty());
}

// Written, then one byte of a file changed before it is read back. With `isRaw`, the source is binary, too.
QString DifferenceAfter(const char* file, int place, char byte, bool isRaw = false)
{
    const TestDirectory directory;
    QString record = Text().Store(directory);
    if (isRaw) {
        forms::Export({record, {}, {}}, To(DataType::Binary), directory.Path("raw"));
        record = directory.Path("raw.cfg");
    }
    int asked = 0;
    const auto damage = [&] {
        if (++asked == 2) { // after the only block
            QByteArray bytes = ReadBytes(directory.Path(file));
            bytes[place < 0 ? bytes.size() + place : place] = byte;
            directory.Write(file, bytes);
        }
        return false;
    };
    try {
        forms::Export({record, {}, damage}, To(DataType::Binary), directory.Path("out"));
    } catch (const forms::Different& error) {
        return error.Message();
    }
    return QString();
}

TEST(Export, NamesTheValueThatWasReadBackWrong)
{
    // Records of 8 + 4 + 2 bytes.
    EXPECT_EQ(DifferenceAfter("out.dat", 2 * 14 + 10, 1),
              "sample 3, A2 (Ub): -255 was read back where -22 was written");
    EXPECT_EQ(DifferenceAfter("out.dat", 14 + 12, 1),
              "sample 2, D1 (Trip): 1 was read back where 0 was written");
    EXPECT_EQ(DifferenceAfter("out.dat", 14 + 4, 0),
              "sample 2, its time: 768 was read back where 1000 was written");
    EXPECT_EQ(DifferenceAfter("out.dat", 0, 9), "sample 1, its number: 9 was read back where 1 was written");
    EXPECT_EQ(DifferenceAfter("out.cfg", 45, 'J'),
              "configuration, line 3: '1,Ja,A,Q1,A,0.5,-1,2.5,-32767,32767,1000,5,P' was read back where "
              "'1,Ia,A,Q1,A,0.5,-1,2.5,-32767,32767,1000,5,P' was written");
    EXPECT_TRUE(DifferenceAfter("out.cfg", 43, 'x').contains("out.cfg, line 3: channel number"));
}

TEST(Export, NamesTheValueThatWasCopiedWrong)
{
    EXPECT_EQ(DifferenceAfter("out.dat", 2 * 14 + 10, 1, true),
              "sample 3, A2 (Ub): -255 was read back where -22 was written");
    EXPECT_TRUE(DifferenceAfter("out.cfg", 45, 'J', true).startsWith("configuration, line 3: '1,Ja"));
}

TEST(Moments, AreSecondsOrDates)
{
    comtrade::Configuration config = MadeConfiguration(1, 0, 4);
    EXPECT_EQ(*forms::SecondsOf("-0.2", config), -0.2);
    EXPECT_EQ(*forms::SecondsOf("200ms", config), 0.2);
    EXPECT_EQ(*forms::SecondsOf("2024-01-31T23:59:59.5", config), -0.5);
    EXPECT_FALSE(forms::SecondsOf("", config));
    EXPECT_THROW(forms::SecondsOf("2024-01-31T23:59:59Z", config), forms::MomentError);
    config.timeCode = "+3h00";
    EXPECT_EQ(*forms::SecondsOf("2024-01-31T21:00:01Z", config), 1);
    EXPECT_EQ(*forms::SecondsOf("2024-02-01 00:00:01+03:00", config), 1);
    for (const char* wrong : {"now", "1..2", "2024-13-01T00:00:00", "5 min"})
        EXPECT_FALSE(forms::IsMoment(wrong)) << wrong;
}

} // namespace
