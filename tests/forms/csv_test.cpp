#include "forms/csvstream.h"
#include "forms/csvwriter.h"
#include "forms/madestream.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

using forms::CsvForm;
using forms::CsvStream;
using forms::CsvTime;
using forms::CsvWriter;

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr qint64 Millisecond = 1000000; // ns

CsvForm Russian()
{
    CsvForm form;
    form.decimalComma = true;
    return form;
}

CsvForm WithDates()
{
    CsvForm form;
    form.time = CsvTime::Iso8601;
    return form;
}

class Csv : public testing::Test
{
protected:
    QByteArray Written(forms::Stream& source, const CsvForm& form = {})
    {
        CsvWriter writer(path, source.Config(), form);
        comtrade::Block block;
        while (source.Next(block))
            writer.Write(block);
        writer.Finish();
        return ReadBytes(path);
    }

    // What is read from a file of these bytes.
    comtrade::Block Read(const comtrade::Configuration& config, const QByteArray& bytes,
                         const CsvForm& form = {})
    {
        directory.Write(QStringLiteral("record.csv"), bytes);
        CsvStream stream(path, config, form);
        return AllOf(stream);
    }

    QString ErrorOf(const QByteArray& bytes)
    {
        try {
            Read(MadeConfiguration(1, 1, 1), bytes);
        } catch (const comtrade::Error& error) {
            return error.Message().mid(path.size() + 2);
        }
        return QString();
    }

    TestDirectory directory;
    const QString path = directory.Path(QStringLiteral("record.csv"));
};

} // namespace

TEST_F(Csv, HasALineOfTitlesAndALineForEachRecord)
{
    comtrade::Configuration config = MadeConfiguration(2, 2, 3);
    config.analog[1].name = QStringLiteral("Напряжение \"Ub\", линия");
    MadeStream source(config, 2);
    source.Add({0.1, -2e-7}, {0, 1}, -250 * Millisecond);
    source.Add({Missing, 1e300}, {1, 1}, -1);
    source.Add({100, Missing}, {1, 0}, 2000 * Millisecond + 500);
    EXPECT_EQ(QString::fromUtf8(Written(source)),
              "time [s],Ia [A],\"Напряжение \"\"Ub\"\", линия [A]\",K1,K2\r\n"
              "-0.25,0.1,-2e-07,0,1\r\n"
              "-0.000000001,,1e+300,1,1\r\n"
              "2.0000005,100,,1,0\r\n");
}

TEST_F(Csv, HasSemicolonsAndAByteOrderMarkWithDecimalCommas)
{
    comtrade::Configuration config = MadeConfiguration(2, 0, 1);
    config.analog[0].name = QStringLiteral("I;a");
    config.analog[1].name = QStringLiteral("I,b");
    MadeStream source(config);
    source.Add({-1.5, 1.25e-9}, {}, 500 * Millisecond);
    EXPECT_EQ(Written(source, Russian()),
              "\xEF\xBB\xBFtime [s];\"I;a [A]\";I,b [A]\r\n0,5;-1,5;1,25e-09\r\n");
}

TEST_F(Csv, HasDatesOnRequest)
{
    comtrade::Configuration config = MadeConfiguration(1, 0, 2);
    MadeStream source(config);
    source.Add({0.5}, {}, -2 * Millisecond);
    source.Add({0.5}, {}, 3 * Millisecond + 7);
    EXPECT_EQ(Written(source, WithDates()), "time,Ia [A]\r\n"
                                            "2024-01-31T23:59:59.998000000,0.5\r\n"
                                            "2024-02-01T00:00:00.003000007,0.5\r\n");
}

TEST_F(Csv, HasTheOffsetFromUtcWithDatesIfItIsKnown)
{
    comtrade::Configuration config = MadeConfiguration(1, 0, 1);
    config.timeCode = QStringLiteral("-5h30");
    MadeStream source(config);
    source.Add({0.5}, {}, 90061000 * Millisecond);
    EXPECT_EQ(Written(source, WithDates()), "time,Ia [A]\r\n2024-02-02T01:01:01.000000000-05:30,0.5\r\n");
}

TEST_F(Csv, HasNoDatesIfTheTriggerHasNone)
{
    comtrade::Configuration config = MadeConfiguration(1, 0, 1);
    config.trigger.date = QDate();
    EXPECT_THROW(CsvWriter(path, config, WithDates()), text::Error);
    EXPECT_NO_THROW(CsvWriter(path, config, CsvForm()));
}

TEST_F(Csv, LeavesAMissingTimeEmpty)
{
    comtrade::Configuration config = MadeConfiguration(1, 0, 1);
    for (const CsvForm& form : {CsvForm(), WithDates()}) {
        MadeStream source(config);
        source.Add({0.5}, {}, comtrade::Block::NoTime);
        EXPECT_TRUE(Written(source, form).endsWith("\r\n,0.5\r\n"));
        CsvStream stream(path, config, form);
        EXPECT_EQ(AllOf(stream).times[0], comtrade::Block::NoTime);
    }
}

TEST_F(Csv, IsReadBackToTheBit)
{
    std::mt19937_64 random(1);
    comtrade::Configuration config = MadeConfiguration(3, 2, 5000);
    config.timeCode = QStringLiteral("+3");
    for (const CsvForm& form : {CsvForm(), Russian(), WithDates()}) {
        MadeStream source(config, 1000);
        MadeStream same(config, 1000);
        for (int i = 0; i < 5000; ++i) {
            std::vector<double> values(3);
            for (double& value : values) {
                const quint64 bits = random();
                std::memcpy(&value, &bits, sizeof value);
                value = std::isnan(value) ? Missing : value;
            }
            const std::vector<quint8> states{quint8(random() & 1), quint8(random() & 1)};
            const auto time = static_cast<qint64>(random() % (quint64{1} << 60)) - (qint64{1} << 59);
            source.Add(values, states, time);
            same.Add(values, states, time);
        }
        Written(source, form);
        CsvStream stream(path, config, form);
        const comtrade::Block expected = AllOf(same);
        const comtrade::Block read = AllOf(stream);
        ASSERT_EQ(read.count, 5000);
        EXPECT_EQ(read.numbers, expected.numbers);
        EXPECT_EQ(read.times, expected.times);
        EXPECT_EQ(read.states, expected.states);
        EXPECT_EQ(BitsOf(read.analog), BitsOf(expected.analog));
    }
}

TEST_F(Csv, HoldsInfiniteAndNegativeZeroValues)
{
    comtrade::Configuration config = MadeConfiguration(2, 0, 1);
    MadeStream source(config);
    source.Add({-Infinity, -0.0}, {});
    EXPECT_TRUE(Written(source).endsWith("\r\n0,-inf,-0\r\n"));
    CsvStream stream(path, config, {});
    const comtrade::Block read = AllOf(stream);
    EXPECT_EQ(read.analog[0], -Infinity);
    EXPECT_TRUE(std::signbit(read.analog[1]));
}

TEST_F(Csv, OfOtherTitlesIsNotRead)
{
    EXPECT_EQ(ErrorOf("time [s],Ia [A],K2\r\n0,1,0\r\n"), "line 1: the titles are not those of the record");
}

TEST_F(Csv, WithMalformedLinesIsNotRead)
{
    const QByteArray titles = "time [s],Ia [A],K1\r\n";
    EXPECT_EQ(ErrorOf(titles + "0,1,0\r\n"), QString());
    EXPECT_EQ(ErrorOf(titles + "0,1,0\r\n0.,1,0\r\n"), "line 3: the time is malformed");
    EXPECT_EQ(ErrorOf(titles + "1.0000000001,1,0\r\n"), "line 2: the time is malformed");
    EXPECT_EQ(ErrorOf(titles + "0,1 ,0\r\n"), "line 2: the value of analog channel 1 is malformed");
    EXPECT_EQ(ErrorOf(titles + "0\r\n"), "line 2: the value of analog channel 1 is malformed");
    EXPECT_EQ(ErrorOf(titles + "0,1,2\r\n"), "line 2: the state of discrete channel 1 is malformed");
    EXPECT_EQ(ErrorOf(titles + "0,1,\r\n"), "line 2: the state of discrete channel 1 is malformed");
    EXPECT_EQ(ErrorOf(titles + "0,1,0,0\r\n"), "line 2: the line has more fields than there are channels");
    EXPECT_EQ(ErrorOf(titles + "0,1,0\n"), "line 2: the line has no end");
    EXPECT_EQ(ErrorOf(titles + "0,1,0"), "line 2: the line has no end");
}

TEST_F(Csv, ThatTheDiskDoesNotTakeIsAnError)
{
    comtrade::Configuration config = MadeConfiguration(1, 0, 1);
    EXPECT_THROW(CsvWriter(directory.Path(QStringLiteral("none/record.csv")), config, {}), text::Error);
    CsvWriter writer(QStringLiteral("/dev/full"), config, {});
    EXPECT_THROW(writer.Finish(), text::Error);
}
