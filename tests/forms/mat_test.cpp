#include "forms/comtradetext.h"
#include "forms/comtradewriter.h"
#include "forms/madestream.h"
#include "forms/matstream.h"
#include "forms/matwriter.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <QFile>

#include <cmath>
#include <cstring>
#include <random>

using forms::MatStream;
using forms::MatWriter;

namespace {

constexpr qint64 Day = qint64{86400} * 1000000000; // ns

comtrade::Configuration RussianConfiguration()
{
    comtrade::Configuration config = MadeConfiguration(2, 1, 3);
    config.analog[0].name = QStringLiteral("Ток фазы А");
    config.analog[0].phase = QStringLiteral("А");
    config.analog[0].circuit = QStringLiteral("ВЛ 110 кВ");
    config.analog[0].unit = QStringLiteral("кА");
    config.analog[0].primary = 1000;
    config.analog[0].secondary = 5;
    config.analog[0].primaryValues = true;
    config.analog[0].skew = 2.5;
    config.states[0].name = QStringLiteral("Отключение");
    config.states[0].normalState = true;
    config.timeCode = QStringLiteral("+3");
    config.rates = {{1000, 2}, {0.5, 3}};
    return config;
}

class Mat : public testing::Test
{
protected:
    void Write(forms::Stream& source)
    {
        MatWriter writer(path, source.Config());
        comtrade::Block block;
        while (source.Next(block))
            writer.Write(block);
        writer.Finish();
    }

    // A file of one sample.
    void WriteOne(const comtrade::Configuration& config)
    {
        MadeStream source(config);
        source.Add(std::vector<double>(config.analog.size(), 1.5),
                   std::vector<quint8>(config.states.size(), 1));
        Write(source);
    }

    QString ErrorOfReading(const comtrade::Configuration& config)
    {
        try {
            MatStream(path, config);
        } catch (const comtrade::Error& error) {
            return error.Message().mid(path.size() + 2);
        }
        return QString();
    }

    TestDirectory directory;
    const QString path = directory.Path(QStringLiteral("запись.mat"));
};

} // namespace

TEST_F(Mat, IsReadBackToTheBit)
{
    constexpr int samples = 3000;
    std::mt19937_64 random(1);
    MadeStream source(MadeConfiguration(70, 3, samples), 700);
    MadeStream same(source.Config(), 700);
    for (int i = 0; i < samples; ++i) {
        std::vector<double> values(70);
        for (double& value : values) {
            const quint64 bits = random();
            std::memcpy(&value, &bits, sizeof value);
            value = std::isnan(value) ? Missing : value;
        }
        const std::vector<quint8> states{quint8(random() & 1), quint8(random() & 1), quint8(random() & 1)};
        const auto time = static_cast<qint64>(random() % static_cast<quint64>(50 * Day)) - 25 * Day;
        source.Add(values, states, time);
        same.Add(values, states, time);
    }
    Write(source);
    MatStream stream(path, source.Config());
    const comtrade::Block expected = AllOf(same);
    const comtrade::Block read = AllOf(stream);
    ASSERT_EQ(read.count, samples);
    EXPECT_EQ(read.numbers, expected.numbers);
    EXPECT_EQ(read.times, expected.times);
    EXPECT_EQ(read.states, expected.states);
    EXPECT_EQ(BitsOf(read.analog), BitsOf(expected.analog));
}

TEST_F(Mat, LeavesAMissingTimeMissing)
{
    const comtrade::Configuration config = MadeConfiguration(0, 1, 1);
    MadeStream source(config);
    source.Add({}, {1}, comtrade::Block::NoTime);
    Write(source);
    MatStream stream(path, config);
    EXPECT_EQ(AllOf(stream).times[0], comtrade::Block::NoTime);
}

TEST_F(Mat, MayHaveNoChannelsAndNoSamples)
{
    for (const auto& [analog, states] : {std::pair{0, 0}, {2, 0}, {0, 2}}) {
        MadeStream source(MadeConfiguration(analog, states, 0));
        Write(source);
        MatStream stream(path, source.Config());
        EXPECT_EQ(AllOf(stream).count, 0);
        WriteOne(source.Config());
        MatStream one(path, source.Config());
        EXPECT_EQ(AllOf(one).count, 1);
    }
}

TEST_F(Mat, DescribesChannelsAndRecord)
{
    const comtrade::Configuration config = RussianConfiguration();
    WriteOne(config);
    EXPECT_EQ(ErrorOfReading(config), QString());

    comtrade::Configuration other = config;
    other.analog[0].name[0] = QLatin1Char('T');
    EXPECT_EQ(ErrorOfReading(other), "the variable 'analog_channels' differs from what it should be");
    other = config;
    other.analog[0].secondary = 1;
    EXPECT_EQ(ErrorOfReading(other), "the variable 'analog_channels' differs from what it should be");
    other = config;
    other.states[0].normalState = false;
    EXPECT_EQ(ErrorOfReading(other), "the variable 'digital_channels' differs from what it should be");
    other = config;
    other.rates[1].lastSample = 4;
    EXPECT_EQ(ErrorOfReading(other), "the variable 'record' differs from what it should be");
    other = config;
    other.trigger.nanoseconds += 1000;
    EXPECT_EQ(ErrorOfReading(other), "the variable 'record' differs from what it should be");
    EXPECT_EQ(ErrorOfReading(MadeConfiguration(3, 1, 3)), "the variable 'analog' has another type or size");
}

TEST_F(Mat, IsTheSameFileEachTime)
{
    WriteOne(RussianConfiguration());
    const QByteArray bytes = ReadBytes(path);
    EXPECT_TRUE(bytes.startsWith("MATLAB 5.0 MAT-file, written by zucmtr"));
    WriteOne(RussianConfiguration());
    EXPECT_EQ(ReadBytes(path), bytes);
}

TEST_F(Mat, DoesNotHoldMoreThanAVariableMayHave)
{
    const comtrade::Configuration config = MadeConfiguration(4, 0, 100);
    MatWriter writer(path, config, sizeof(double) * 10 * 4);
    comtrade::Block block;
    block.Resize(10, config);
    block.count = 10;
    writer.Write(block);
    block.count = 1;
    EXPECT_THROW(writer.Write(block), forms::FormError);
}

TEST_F(Mat, DoesNotHoldTimesThatItWouldRound)
{
    const comtrade::Configuration config = MadeConfiguration(0, 0, 1);
    MatWriter writer(path, config);
    comtrade::Block block;
    block.Resize(1, config);
    block.count = 1;
    block.times[0] = 120 * Day + 1;
    EXPECT_THROW(writer.Write(block), forms::FormError);
}

TEST_F(Mat, ThatTheDiskDoesNotTakeIsAnError)
{
    const comtrade::Configuration config = MadeConfiguration(1, 0, 10);
    EXPECT_THROW(MatWriter(directory.Path(QStringLiteral("none/record.mat")), config), forms::FileError);
    const QString full = directory.Path(QStringLiteral("full.mat"));
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/full"), full));
    MatWriter writer(full, config);
    comtrade::Block block;
    block.Resize(10, config);
    block.count = 10;
    writer.Write(block);
    EXPECT_THROW(writer.Finish(), forms::FileError);
}

TEST_F(Mat, ThatIsCutOffIsNotRead)
{
    const comtrade::Configuration config = RussianConfiguration();
    WriteOne(config);
    const QByteArray bytes = ReadBytes(path);
    // One variable less is a file of its own.
    const int record = bytes.lastIndexOf("record") - 48;
    const int size = bytes.size();
    for (int length : {0, 100, 127, 130, 135, 140, 300, size / 2, size - 1, record}) {
        directory.Write(QStringLiteral("запись.mat"), bytes.left(length));
        EXPECT_EQ(ErrorOfReading(config), length == record
                                              ? "the variable 'record' is missing"
                                              : "this is no MAT file that can be read, or it is cut off")
            << length;
    }
}
