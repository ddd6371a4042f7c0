// DAT files of recordings with invalid sample rates: defined times, and nothing beyond the samples.
#include "support/readyrecording.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using recorderfile::AnalogChannel;
using recorderfile::Recording;

struct OddRate
{
    const char* name;
    float rate;
    const char* dat; // of three samples 7, 8, 9 and a duration of 1 s
};

void PrintTo(const OddRate& rate, std::ostream* out)
{
    *out << rate.name;
}

class DatOddRate : public testing::TestWithParam<OddRate>
{
protected:
    static Recording Input()
    {
        AnalogChannel channel{"Q1:Ia", "A", {7, 8, 9}};
        channel.rate = GetParam().rate;
        Recording recording;
        recording.duration = 1000000;
        return recording.Add(channel);
    }
};

constexpr float Infinity = std::numeric_limits<float>::infinity();
constexpr char Standing[] = "1,0,7\n2,0,8\n3,0,9\n";
constexpr char FirstOnly[] = "1,0,7\n";

} // namespace

TEST_P(DatOddRate, GivesDefinedTimesInAscii)
{
    TestStation station;
    ASSERT_TRUE(station.Convert(recorderfile::Encode(Input())));
    EXPECT_EQ(station.Output("dat"), GetParam().dat);
}

TEST_P(DatOddRate, GivesTheSameRecordsInBinary)
{
    TestStation station("Тип Comtrade BIN=1");
    ASSERT_TRUE(station.Convert(recorderfile::Encode(Input())));
    EXPECT_EQ(station.Output("dat").size(), 10 * QByteArray(GetParam().dat).count('\n'));
}

INSTANTIATE_TEST_SUITE_P(
    OfFiles, DatOddRate,
    testing::Values(OddRate{"NotANumber", std::numeric_limits<float>::quiet_NaN(), Standing},
                    OddRate{"Infinite", Infinity, Standing}, OddRate{"MinusInfinite", -Infinity, Standing},
                    OddRate{"Negative", -2400, Standing},
                    OddRate{"Huge", std::numeric_limits<float>::max(), Standing},
                    OddRate{"AboveOneAMicrosecond", 4e6F, "1,0,7\n2,0,8\n3,1,9\n"},
                    OddRate{"Slow", 0.25F, FirstOnly}, OddRate{"Tiny", 1e-15F, FirstOnly}),
    [](const auto& rate) { return std::string(rate.param.name); });

TEST(DatZeroRate, EndsAfterTheFirstRecord)
{
    TestStation station;
    ReadyRecording recording(station, Recording().Add(AnalogChannel{"Q1:Ia", "A", {7, 8, 9}}));
    station.Device().SampleRate = 0.0; // a conversion refuses it
    EXPECT_EQ(recording.Dat(), FirstOnly);
}
