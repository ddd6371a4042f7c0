// A start comment with two values where three belong: std::out_of_range reaches the host, and nothing is
// lost.
#include "service/zucmtrlib.h"
#include "support/readyrecording.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

recorderfile::Recording StartedBy(const QString& comment)
{
    recorderfile::Recording recording;
    recording.comment = comment;
    return recording.Add(recorderfile::AnalogChannel{"Q1:Ia", "A", {1, 2}})
        .Add(recorderfile::DiscreteChannel{"Q1:x", 0, {{0, 1}}});
}

class StartCommentWithTwoItems : public testing::TestWithParam<const char*>
{};

// The process-wide converter with one device, for the duration of a test.
class Host
{
public:
    Host()
    {
        const QString ini =
            directory.Write(QStringLiteral("ZuDrv.ini"), DefaultsSection() + "[Device]\nОбъект=Station\n");
        ZuCmtrConverterInit();
        ZuCmtrLoadFromIniDefault(ini, QStringLiteral("Defaults"));
        ZuCmtrLoadFromIni(ini, QStringLiteral("Device"), &device);
        directory.MakeDirectory(QStringLiteral("out"));
    }

    ~Host() { ZuCmtrConverterExit(); }

    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    bool Convert(const recorderfile::Recording& recording)
    {
        const QString path = directory.Write(QStringLiteral("rec.ZU"), recorderfile::Encode(recording));
        return ZuCmtrConvertToComtrade(path, directory.Path(QStringLiteral("out")), device);
    }

    QStringList Outputs() const { return directory.Names(QStringLiteral("out")); }

private:
    TestDirectory directory;
    unsigned int device = 99;
};

} // namespace

TEST_P(StartCommentWithTwoItems, ThrowsOutOfRangeFromTheVector)
{
    TestStation station;
    try {
        ReadyRecording recording(station, StartedBy(QString::fromUtf8(GetParam())));
        FAIL() << "nothing thrown";
    } catch (const std::out_of_range& error) {
        EXPECT_NE(std::string(error.what()).find("vector::_M_range_check"), std::string::npos);
    }
}

INSTANTIATE_TEST_SUITE_P(AllKindsButDiscrete, StartCommentWithTwoItems,
                         testing::Values("Пуск ДЗ (Q1:Ia,1.5)", "Пуск ПП (Q1:I,1.5)", "Пуск ОП (Q1:I,1.5)",
                                         "Пуск НП (Q1:I,1.5)", "Пуск Ч (Q1:Ia,1.5)", "Пуск Г (Q1:Ia,1.5)",
                                         "Пуск ЖЖ (Q1:Ia,1.5)"));

TEST(StartCommentRangeError, PassesThroughTheExportedFunction)
{
    Host host;
    EXPECT_THROW(host.Convert(StartedBy("Пуск ДЗ (Q1:Ia,1.5)")), std::out_of_range);
    EXPECT_EQ(host.Outputs(), QStringList());
}

TEST(StartCommentRangeError, LeavesTheDeviceFitForTheNextRecording)
{
    Host host;
    EXPECT_THROW(host.Convert(StartedBy("Пуск Ч (Q1:Ia,1.5)")), std::out_of_range);
    EXPECT_TRUE(host.Convert(StartedBy("Пуск Ч (Q1:Ia,1.5,t)")));
    EXPECT_EQ(host.Outputs().size(), 4);
}
