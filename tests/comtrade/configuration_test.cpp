// CFG texts.
#include "examples.h"

#include <gtest/gtest.h>

using comtrade::Configuration;

namespace {

Configuration Parsed(const QByteArray& text)
{
    return comtrade::ParseConfiguration(text, QStringLiteral("rec.cfg"));
}

// The example with one line (counted from 1) replaced.
QByteArray WithLine(int number, const QByteArray& line)
{
    QList<QByteArray> lines = ExampleConfiguration().split('\n');
    lines[number - 1] = line;
    return lines.join('\n');
}

} // namespace

TEST(ComtradeConfiguration, ReadsEverythingInTheLines)
{
    const Configuration configuration = Parsed(ExampleConfiguration());
    EXPECT_EQ(configuration.station, "Подстанция");
    EXPECT_EQ(configuration.device, "РАС");
    EXPECT_EQ(configuration.revision, comtrade::Revision::R2013);
    ASSERT_EQ(configuration.analog.size(), 2U);
    const comtrade::AnalogChannel& current = configuration.analog[0];
    EXPECT_EQ(current.number, 1);
    EXPECT_EQ(QStringList({current.name, current.phase, current.circuit, current.unit}),
              QStringList({"Ia", "A", "Q1", "A"}));
    EXPECT_EQ(current.a, 0.5);
    EXPECT_EQ(current.b, -1.0);
    EXPECT_EQ(current.skew, 2.5);
    EXPECT_EQ(current.min, -32767.0);
    EXPECT_EQ(current.max, 32767.0);
    EXPECT_EQ(current.primary, 1000.0);
    EXPECT_EQ(current.secondary, 5.0);
    EXPECT_TRUE(current.primaryValues);
    EXPECT_FALSE(configuration.analog[1].primaryValues);
    EXPECT_EQ(configuration.analog[1].a, 1e-3);
    ASSERT_EQ(configuration.states.size(), 1U);
    EXPECT_EQ(configuration.states[0].name, "Trip");
    EXPECT_TRUE(configuration.states[0].normalState);
    EXPECT_EQ(configuration.lineFrequency, 50.0);
    EXPECT_EQ(configuration.SampleCount(), 4);
    EXPECT_EQ(configuration.start.date, QDate(2024, 1, 31));
    EXPECT_EQ(configuration.start.nanoseconds, qint64{43199} * 1000000000 + 750000000);
    EXPECT_EQ(configuration.start.decimals, 6);
    EXPECT_EQ(configuration.trigger.nanoseconds, qint64{43200} * 1000000000 + 250000000);
    EXPECT_EQ(configuration.trigger.decimals, 2);
    EXPECT_EQ(configuration.dataType, comtrade::DataType::Ascii);
    EXPECT_EQ(configuration.timeCode, "+3h00");
    EXPECT_EQ(configuration.leapSecond, "3");
}

TEST(ComtradeConfiguration, TakesWindows1251AndCarriageReturns)
{
    QByteArray text = ExampleConfiguration().replace("\n", "\r\n");
    text.replace("Подстанция", "\xCF\xD1");
    EXPECT_EQ(Parsed(text).station, "ПС");
    EXPECT_EQ(Parsed(text).leapSecond, "3");
}

TEST(ComtradeConfiguration, NeedsNoClockLinesIn1999)
{
    QList<QByteArray> lines = WithLine(1, "a,b,1999").split('\n');
    lines = lines.mid(0, 12);
    EXPECT_EQ(Parsed(lines.join('\n') + '\n').revision, comtrade::Revision::R1999);
}

TEST(ComtradeConfiguration, KnowsRecordsWithoutAConstantRate)
{
    QList<QByteArray> lines = WithLine(7, "0").split('\n');
    lines[7] = "0,4";
    const Configuration configuration = Parsed(lines.join('\n'));
    ASSERT_EQ(configuration.rates.size(), 1U);
    EXPECT_EQ(configuration.rates[0].hertz, 0.0);
    EXPECT_EQ(configuration.SampleCount(), 4);
}

struct Spoilt
{
    int line;
    const char* text;
    const char* error;
};

class ComtradeConfigurationError : public testing::TestWithParam<Spoilt>
{};

TEST_P(ComtradeConfigurationError, NamesFileLineAndValue)
{
    const QByteArray text = WithLine(GetParam().line, GetParam().text);
    EXPECT_EQ(ErrorOf([&] { Parsed(text); }), GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ComtradeConfigurationError,
    testing::Values(
        Spoilt{1, "a,b", "rec.cfg, line 1: the first line has no revision year, which stands for 1991"},
        Spoilt{1, "a", "rec.cfg, line 1: station, device, revision needs 2 fields, there are 1"},
        Spoilt{1, "a,b,c,2013", "rec.cfg, line 1: a text holds a comma, which separates fields"},
        Spoilt{1, "a,b,2001", "rec.cfg, line 1: revision '2001' is none of 1991, 1999 and 2013"},
        Spoilt{2, "3,2A,1X", "rec.cfg, line 2: '1X' should be a number and D"},
        Spoilt{2, "3,-2A,1D", "rec.cfg, line 2: -2 channels, but only 12 lines follow"},
        Spoilt{2, "3,999999999999A,1D", "rec.cfg, line 2: 999999999999 channels, but only 12 lines follow"},
        Spoilt{2, "4,2A,1D", "rec.cfg, line 2: 4 channels in all are not 2 and 1"},
        Spoilt{3, "1,I,a,A,Q1,A,0.5,-1,2.5,-32767,32767,1000,5,P",
               "rec.cfg, line 3: a text holds a comma, which separates fields"},
        Spoilt{3, "1,Ia,A,Q1,A,x,-1,2.5,-32767,32767,1000,5,P",
               "rec.cfg, line 3: multiplier a is 'x', which is no number"},
        Spoilt{3, "1,Ia,A,Q1,A,1,-1,2.5,-32767,32767,1000,5,X", "rec.cfg, line 3: 'X' should be P or S"},
        Spoilt{5, "1,Trip,,Q1", "rec.cfg, line 5: a status channel needs 5 fields, there are 4"},
        Spoilt{7, "9", "rec.cfg, line 7: 9 rates, but only 7 lines follow"},
        Spoilt{8, "-1,4", "rec.cfg, line 8: the rate or its last sample is out of range"},
        Spoilt{8, "nan,4", "rec.cfg, line 8: rate is 'nan', which is no number"},
        Spoilt{9, "31/13/2024,00:00:00.0", "rec.cfg, line 9: '31/13/2024,00:00:00.0' is no date and time"},
        Spoilt{9, "31/01/2024,0:0", "rec.cfg, line 9: '31/01/2024,0:0' should be dd/mm/yyyy,hh:mm:ss.ssssss"},
        Spoilt{11, "Text", "rec.cfg, line 11: data file type 'Text' is not known"}));

TEST(ComtradeConfiguration, SaysWhatFollowsWhereATextEnds)
{
    EXPECT_EQ(ErrorOf([] { Parsed(QByteArray()); }),
              "rec.cfg: ends after line 0, where station, device, revision should follow");
    const QByteArray text = ExampleConfiguration();
    EXPECT_EQ(ErrorOf([&] { Parsed(text.left(text.indexOf("0,3"))); }),
              "rec.cfg, line 13: the line with time quality is missing");
}
