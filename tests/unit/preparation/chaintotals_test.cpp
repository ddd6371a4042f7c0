// The checks on a whole chain, and its totals of rate, time and samples.
#include "base/chainnames.h"
#include "preparation/segmentchain.h"
#include "recording/zufileformat.h"
#include "support/recordings.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

using recorderfile::AnalogChannel;
using recorderfile::Recording;

class ChainTotals : public testing::Test
{
protected:
    // Writes the segments rec.ZU, rec.Z01, ... and returns the path of the first.
    QString Write(const std::vector<Recording>& segments)
    {
        for (size_t i = 0; i < segments.size(); ++i)
            station.Directory().Write(zu::ContinuationName("rec.ZU", static_cast<int>(i)),
                                      Encode(segments[i]));
        return station.Directory().Path("rec.ZU");
    }

    // Expects a conversion of the segments to fail with this text and to leave no trace in the directory.
    void ExpectFailure(const std::vector<Recording>& segments, const QString& text)
    {
        station.Directory().Write(OutFile(".cfgtmp"), "debris");
        station.Directory().Write(OutFile(".cfg"), "earlier");
        EXPECT_FALSE(
            station.Converter().ConvertToComtrade(Write(segments), station.Directory().Path("out"), 0));
        EXPECT_EQ(station.Device().LastError, text);
        EXPECT_TRUE(station.Device().LogMessages.empty());
        EXPECT_EQ(station.Directory().Names("out"), OutNames({".cfg", ".cfgtmp"}));
        EXPECT_EQ(ReadBytes(station.Directory().Path(OutFile(".cfgtmp"))), "debris");
        EXPECT_TRUE(QFile::exists(station.Directory().Path("rec.ZU")));
    }

    // Path of a segment, as in the messages.
    QString Path(const QString& name) const { return station.Directory().Path(name); }

    TestStation station{"Удалять исходные=1"};
};

// A recording of discrete channels only.
Recording DiscreteOnly(uint32_t duration)
{
    Recording recording;
    recording.duration = duration;
    recording.Add(recorderfile::DiscreteChannel{"Q1:x"});
    return recording;
}

Recording WithRate(float rate)
{
    Recording recording = SmallRecording();
    FirstAnalog(recording).rate = rate;
    recording.duration = 10000;
    return recording;
}

Recording WithSecondChannel(const AnalogChannel& channel)
{
    return SmallRecording().Add(channel);
}

const AnalogChannel OtherRate{"Q1:Ib", "А", std::vector<int16_t>(24, 1), 1200};
const AnalogChannel OtherPoints{"Q1:Ib", "А", std::vector<int16_t>(23, 1)};
const AnalogChannel Fitting{"Q1:Ib", "А", std::vector<int16_t>(24, 1)};

} // namespace

TEST_F(ChainTotals, RatesThatDifferInTheFirstFileFailWithItsName)
{
    ExpectFailure({WithSecondChannel(OtherRate)},
                  "Разные частоты дискретизации в файле [" + Path("rec.ZU") + "]");
}

TEST_F(ChainTotals, RatesThatDifferInALaterFileFailWithItsName)
{
    ExpectFailure({WithSecondChannel(Fitting), WithSecondChannel(Fitting), WithSecondChannel(OtherRate)},
                  "Разные частоты дискретизации в файле [" + Path("rec.Z02") + "]");
}

TEST_F(ChainTotals, PointsThatDifferInTheFirstFileFailWithItsName)
{
    ExpectFailure({WithSecondChannel(OtherPoints)},
                  "Разное количество точек в аналоговых каналах в файле [" + Path("rec.ZU") + "]");
}

TEST_F(ChainTotals, PointsThatDifferInALaterFileFailWithItsName)
{
    ExpectFailure({WithSecondChannel(Fitting), WithSecondChannel(OtherPoints)},
                  "Разное количество точек в аналоговых каналах в файле [" + Path("rec.Z01") + "]");
}

TEST_F(ChainTotals, RatesOfAFileAreTestedBeforeItsPointsAndBeforeTheNextFile)
{
    AnalogChannel bothDiffer = OtherPoints;
    bothDiffer.rate = 1200;
    ExpectFailure({WithSecondChannel(bothDiffer), WithSecondChannel(OtherRate)},
                  "Разные частоты дискретизации в файле [" + Path("rec.ZU") + "]");
    ExpectFailure({WithSecondChannel(OtherPoints), WithSecondChannel(OtherRate)},
                  "Разное количество точек в аналоговых каналах в файле [" + Path("rec.ZU") + "]");
}

TEST_F(ChainTotals, RateOfZeroFails)
{
    ExpectFailure({WithRate(0.0F)}, "Плохое значение rate (==0)");
    ExpectFailure({WithRate(0x1p-53F)}, "Плохое значение rate (==0)");
}

TEST_F(ChainTotals, RateOfZeroComesBeforeTheLengthOfZero)
{
    Recording recording = WithRate(0.0F);
    recording.duration = 0;
    ExpectFailure({recording}, "Плохое значение rate (==0)");
}

TEST_F(ChainTotals, LengthOfZeroFails)
{
    Recording recording = SmallRecording();
    recording.duration = 0;
    ExpectFailure({recording}, "Плохое значение fullTime (==0)");
    ExpectFailure({recording, SmallRecording()}, "Плохое значение fullTime (==0)");
}

// The comparison of the headers, done in 32 bits, can take two different rates below 1 for the same.
TEST_F(ChainTotals, RatesThatDifferBetweenFilesFail)
{
    ExpectFailure({WithRate(0.75F), WithRate(std::nextafter(0.75F, 1.0F))},
                  "Разные частоты дискретизации в разных файлах");
}

TEST_F(ChainTotals, LaterFileOfNoLengthPasses)
{
    Recording later = SmallRecording();
    later.duration = 0;
    SegmentChain chain(station.Device());
    ASSERT_TRUE(chain.Load(Write({SmallRecording(), later})));
    EXPECT_TRUE(chain.SumTotals());
    EXPECT_EQ(station.Device().TotalTime, 10000U);
}

TEST_F(ChainTotals, SegmentsFollowEachOtherInTime)
{
    Recording middle = SmallRecording();
    middle.duration = 777;
    SegmentChain chain(station.Device());
    ASSERT_TRUE(chain.Load(Write({SmallRecording(), middle, SmallRecording()})));
    ASSERT_TRUE(chain.CheckChannels());
    EXPECT_TRUE(chain.SumTotals());
    EXPECT_EQ(chain.Files()->at(0)->SegmentTimeBase, 0);
    EXPECT_EQ(chain.Files()->at(1)->SegmentTimeBase, 10000);
    EXPECT_EQ(chain.Files()->at(2)->SegmentTimeBase, 10777);
    EXPECT_EQ(station.Device().TotalTime, 20777U);
    EXPECT_EQ(station.Device().TotalSamples, 72);
    EXPECT_EQ(station.Device().SampleRate, 2400.0);
}

TEST_F(ChainTotals, SamplesAreThePointsOfTheFilesAndNotOfTheirTime)
{
    Recording first = SmallRecording();
    first.duration = 1000000;
    Recording second = SmallRecording();
    FirstAnalog(second).samples.resize(10);
    SegmentChain chain(station.Device());
    ASSERT_TRUE(chain.Load(Write({first, second})));
    EXPECT_TRUE(chain.SumTotals());
    EXPECT_EQ(station.Device().TotalSamples, 34);
}

TEST_F(ChainTotals, RateIsWidenedFrom32Bits)
{
    SegmentChain chain(station.Device());
    ASSERT_TRUE(chain.Load(Write({WithRate(2400.1F)})));
    ASSERT_TRUE(chain.CheckChannels());
    EXPECT_TRUE(chain.SumTotals());
    EXPECT_EQ(station.Device().SampleRate, static_cast<double>(2400.1F));
}

TEST_F(ChainTotals, DiscreteChannelsAloneAreSampledAt2400)
{
    EXPECT_TRUE(station.Converter().ConvertToComtrade(Write({DiscreteOnly(1000000)}),
                                                      station.Directory().Path("out"), 0));
    EXPECT_EQ(station.Device().SampleRate, 2400.0);
    EXPECT_EQ(station.Device().TotalTime, 1000000U);
    EXPECT_EQ(station.Device().TotalSamples, 2400);
    EXPECT_EQ(ReadLines(station.Directory().Path(OutFile(".dat"))).size(), 2400);
}

TEST_F(ChainTotals, SamplesOfDiscreteChannelsFollowFromTheTimeOfAllSegments)
{
    SegmentChain chain(station.Device());
    ASSERT_TRUE(chain.Load(Write({DiscreteOnly(9999), DiscreteOnly(5000), DiscreteOnly(5000)})));
    ASSERT_TRUE(chain.CheckChannels());
    EXPECT_TRUE(chain.SumTotals());
    EXPECT_EQ(chain.Files()->at(2)->SegmentTimeBase, 14999);
    EXPECT_EQ(station.Device().TotalTime, 19999U);
    EXPECT_EQ(station.Device().TotalSamples, 48); // of 20000 us; 19999 us would give 47
}

TEST_F(ChainTotals, TimeOfDiscreteChannelsIsNarrowedTo32Bits)
{
    SegmentChain chain(station.Device());
    ASSERT_TRUE(chain.Load(Write({DiscreteOnly(199999998)})));
    EXPECT_TRUE(chain.SumTotals());
    EXPECT_EQ(station.Device().TotalSamples, 480000); // 479999 in 64 bits throughout
}

TEST_F(ChainTotals, PointsOfLaterFilesDoNotCountWhenTheFirstHasNone)
{
    SegmentChain chain(station.Device());
    ASSERT_TRUE(chain.Load(Write({DiscreteOnly(20000), SmallRecording()})));
    EXPECT_TRUE(chain.SumTotals());
    EXPECT_EQ(station.Device().TotalSamples, 72); // of 30000 us
}
