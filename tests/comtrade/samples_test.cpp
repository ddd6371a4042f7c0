// A record's samples in memory.
#include "comtrade/samples.h"
#include "examples.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using comtrade::Samples;

namespace {

class SamplesOf : public TestDirectory
{
public:
    explicit SamplesOf(const QByteArray& data, const QByteArray& type = "ASCII")
        : path(Write("rec.cfg", ExampleConfiguration().replace("\nASCII\n", '\n' + type + '\n')))
    {
        Write("rec.dat", data);
    }

    Samples operator()() const
    {
        comtrade::Record record(path);
        return Samples(record);
    }

private:
    const QString path;
};

template <class Number>
std::vector<Number> CodesAs(const Samples& samples, size_t channel)
{
    return std::get<std::vector<Number>>(samples.Analog(channel));
}

} // namespace

TEST(ComtradeSamples, AreInTheNarrowestTypeThatHoldsThemExactly)
{
    const Samples samples = SamplesOf("1,0,-5,32767,1\n2,0,,32768,0\n3,0,-32767,-2147483647,0\n")();
    EXPECT_EQ(samples.Count(), 3);
    EXPECT_EQ(CodesAs<qint16>(samples, 0), (std::vector<qint16>{-5, -32768, -32767}));
    EXPECT_EQ(CodesAs<qint32>(samples, 1), (std::vector<qint32>{32767, 32768, -2147483647}));
}

TEST(ComtradeSamples, ThatAreNoIntegersAreDoubles)
{
    const Samples samples = SamplesOf("1,0,,2147483647,1\n2,0,0.1,,0\n3,0,-32768,2147483648,0\n")();
    const std::vector<double> first = CodesAs<double>(samples, 0);
    EXPECT_TRUE(std::isnan(first[0]));
    EXPECT_EQ(first[1], 0.1);
    EXPECT_EQ(first[2], -32768);
    const std::vector<double> second = CodesAs<double>(samples, 1);
    EXPECT_EQ(second[0], 2147483647.0);
    EXPECT_TRUE(std::isnan(second[1]));
    EXPECT_EQ(second[2], 2147483648.0);
}

TEST(ComtradeSamples, HaveChangesOfStatesAndOddNumbers)
{
    QByteArray data;
    for (int i = 1; i <= 100; ++i)
        data += QByteArray::number(i < 50 ? i : i + 1) + ",0,1,2," + (i > 8 && i <= 40 ? "1\n" : "0\n");
    const Samples samples = SamplesOf(data)();
    const comtrade::Changes changes = samples.ChangesOf(0);
    EXPECT_EQ(changes.samples, (std::vector<qint64>{8, 40}));
    EXPECT_EQ(changes.states, (std::vector<quint8>{1, 0}));
    EXPECT_EQ(samples.StateBits(0).size(), 13U);
    ASSERT_EQ(samples.Numbers().size(), 100U);
    EXPECT_EQ(samples.Numbers()[0], 1U);
    EXPECT_EQ(samples.Numbers()[99], 101U);
    EXPECT_TRUE(samples.Stamps().empty());
}
