// The channel lines of the CFG file and the coefficients that they leave on the channels.
#include "support/readyrecording.h"

#include <gtest/gtest.h>

namespace {

using recorderfile::AnalogChannel;
using recorderfile::DiscreteChannel;
using recorderfile::Recording;

QString LineOf(const AnalogChannel& channel, const QByteArray& deviceLines = QByteArray())
{
    TestStation station(deviceLines);
    ReadyRecording recording(station, Recording().Add(channel));
    recording.Cfg();
    return recording.First().CfgAnLines.at(0);
}

AnalogChannel Ia(const QString& unit = QStringLiteral("A"))
{
    return AnalogChannel{QStringLiteral("Q1:Ia"), unit, {1, 2}};
}

struct Range
{
    uint16_t range;
    const char* limits;
};

class CfgCodeRange : public testing::TestWithParam<Range>
{};

constexpr char TwoOfThree[] = "nAnMax=2\n"
                              "A01=Q2:Ia,V_L=110 E_G=L S_G=CT\n"
                              "A02=Q1:Ia,V_L=110 E_G=L S_G=CT\n"
                              "nDiMax=1\n"
                              "D01=Q2:x,V_L=110 E_G=L D_G=RP S_T=FD\n";

} // namespace

TEST(CfgAnalogLine, OfAnEmptyUnitSaysNone)
{
    EXPECT_EQ(LineOf(Ia("")), "1,Ia Q1,A,Q1,NONE,1,0,0,-32767,32767,1,1,P");
}

TEST(CfgAnalogLine, OfANameWithoutColonHasItAsIdAndCircuit)
{
    EXPECT_EQ(LineOf(AnalogChannel{"Ток", "А", {1}}), "1,Ток,,Ток,А,1,0,0,-32767,32767,1,1,P");
}

TEST_P(CfgCodeRange, GivesTheLimits)
{
    AnalogChannel channel = Ia();
    channel.codeRange = GetParam().range;
    EXPECT_EQ(LineOf(channel), QStringLiteral("1,Ia Q1,A,Q1,A,1,0,0,%1,1,1,P").arg(GetParam().limits));
}

INSTANTIATE_TEST_SUITE_P(OfChannels, CfgCodeRange,
                         testing::Values(Range{0, "0,0"}, Range{1, "-1,1"}, Range{4095, "-4095,4095"},
                                         Range{4096, "-2048,2048"}, Range{4097, "-4097,4097"},
                                         Range{2048, "-2048,2048"}, Range{32767, "-32767,32767"},
                                         Range{32768, "-32768,32768"}, Range{65535, "-32768,32768"}));

TEST(CfgAnalogLine, OffsetTakesTheZeroCode)
{
    AnalogChannel channel = Ia();
    channel.zeroCode = -100;
    channel.scale = 0.5F;
    channel.offset = 1;
    EXPECT_EQ(LineOf(channel), "1,Ia Q1,A,Q1,A,0.5,-49,0,-32767,32767,1,1,P");
}

TEST(CfgAnalogLine, MultiplierIsTheProductOfThreeFactors)
{
    AnalogChannel channel = Ia();
    channel.primary = 600;
    channel.secondary = 5;
    channel.scale = 0.25F;
    EXPECT_EQ(LineOf(channel), "1,Ia Q1,A,Q1,A,750,0,0,-32767,32767,600,5,P");
}

TEST(CfgAnalogLine, NumbersHaveEightSignificantDigits)
{
    AnalogChannel channel = Ia();
    channel.primary = 0.1F;       // 0.100000001490...
    channel.secondary = 16777216; // 2^24
    channel.scale = 1;
    channel.skewSeconds = 0.00001F;
    EXPECT_EQ(LineOf(channel), "1,Ia Q1,A,Q1,A,1677721.6,0,10,-32767,32767,0.1,16777216,P");
    channel.primary = 1.0F / 3.0F;
    channel.secondary = 1e9F;
    channel.skewSeconds = -1.0F / 1024.0F;
    EXPECT_EQ(LineOf(channel), "1,Ia Q1,A,Q1,A,3.3333334e+08,0,-976.5625,-32767,32767,0.33333334,1e+09,P");
}

TEST(CfgAnalogLine, ProductsAreRoundedToSinglePrecisionOneByOne)
{
    // (2^24 - 1) x (1 + 2^-23) is a little below 2^24 + 1, which is rounded to 2^24 before it is taken
    // threefold.
    AnalogChannel channel = Ia();
    channel.primary = 16777215;
    channel.secondary = 1.00000011920928955F;
    channel.scale = 3;
    channel.zeroCode = 1;
    channel.offset = 1; // lost: the sum is a multiple of 4
    EXPECT_EQ(LineOf(channel), "1,Ia Q1,A,Q1,A,50331648,50331648,0,-32767,32767,16777215,1.0000001,P");
}

TEST(CfgAnalogLine, MarkerInANameIsFilledByTheNextValue)
{
    EXPECT_EQ(LineOf(AnalogChannel{"Q1:%3", "A", {1}}), "1,3 Q1,3,Q1,A,1,0,0,-32767,32767,1,1,P");
}

TEST(CfgAnalogLine, LeavesCoefficientsOnTheChannel)
{
    TestStation station;
    AnalogChannel channel = Ia();
    channel.primary = 10;
    channel.scale = 0.25F;
    channel.zeroCode = 4;
    channel.offset = 3;
    channel.skewSeconds = 0.5F;
    ReadyRecording recording(station, Recording().Add(channel));
    const AnChannelData& loaded = *recording.First().AnChannels[0];
    EXPECT_EQ(loaded.CoefA, 0.0F);
    recording.Cfg();
    EXPECT_EQ(loaded.CoefA, 2.5F);
    EXPECT_EQ(loaded.CoefB, 13.0F);
    EXPECT_EQ(loaded.SkewMicroseconds, 500000.0F);
}

TEST(CfgCircuit, IsTheDisplayTextOfTheBay)
{
    TestStation station("nBayMax=1\nBAY01=Q1,Линия 1,W1");
    ReadyRecording recording(station, Recording().Add(Ia()).Add(DiscreteChannel{"Q1:x"}));
    recording.Cfg();
    EXPECT_EQ(recording.First().CfgAnLines.at(0), "1,Ia Линия 1,A,Линия 1,A,1,0,0,-32767,32767,1,1,P");
    EXPECT_EQ(recording.First().CfgDiLines.at(0), "1,x Линия 1,,Линия 1,0");
}

TEST(CfgCircuit, IsThatOfTheRecordingForABayWithoutDisplayText)
{
    TestStation station("nBayMax=1\nBAY01=Q1,,W1");
    ReadyRecording recording(station, Recording().Add(Ia()).Add(DiscreteChannel{"Q1:x"}));
    recording.Cfg();
    EXPECT_EQ(recording.First().CfgAnLines.at(0), "1,Ia Q1,A,Q1,A,1,0,0,-32767,32767,1,1,P");
    EXPECT_EQ(recording.First().CfgDiLines.at(0), "1,x Q1,,Q1,0");
}

TEST(CfgDiscreteLine, HasNoPhaseAndTheNormalStateZero)
{
    DiChannelData channel;
    channel.CfgName = "N";
    channel.CfgCircuit = "C";
    EXPECT_EQ(channel.DoCfgDescription(7), "7,N,,C,0");
}

TEST(CfgDiscreteLine, OfAnInvertedChannelIsTheSame)
{
    TestStation station;
    ReadyRecording recording(station, Recording().Add(Ia()).Add(DiscreteChannel{"Q1:x", 1, {{0, 1}}}));
    recording.Cfg();
    EXPECT_EQ(recording.First().CfgDiLines.at(0), "1,x Q1,,Q1,0");
}

TEST(CfgOrder, IsThatOfTheDictionaryAndTheFirstFieldCountsLines)
{
    TestStation station(TwoOfThree);
    ReadyRecording recording(station, Recording()
                                          .Add(AnalogChannel{"Q3:Ia", "A", {1}})
                                          .Add(Ia())
                                          .Add(AnalogChannel{"Q2:Ia", "A", {1}})
                                          .Add(DiscreteChannel{"Q1:x"})
                                          .Add(DiscreteChannel{"Q2:x"}));
    recording.Cfg();
    const ZuFileFormat& first = recording.First();
    EXPECT_EQ(first.CfgAnLines, (std::vector<QString>{"1,Ia Q2,A,Q2,A,1,0,0,-32767,32767,1,1,P",
                                                      "2,Ia Q1,A,Q1,A,1,0,0,-32767,32767,1,1,P",
                                                      "3,Ia Q3,A,Q3,A,1,0,0,-32767,32767,1,1,P"}));
    EXPECT_EQ(first.CfgDiLines, (std::vector<QString>{"1,x Q2,,Q2,0", "2,x Q1,,Q1,0"}));
}

TEST(CfgOrder, ChannelPushedOutByANameThatStandsTwiceHasNoCoefficients)
{
    TestStation station("nAnMax=2\n"
                        "A01=Q1:Ia,V_L=110 E_G=L S_G=CT\n"
                        "A02=Q1:Ia,V_L=110 E_G=L S_G=CT\n");
    ReadyRecording recording(station, Recording().Add(Ia()).Add(AnalogChannel{"Q2:Ia", "A", {1, 2}}));
    recording.Cfg();
    const ZuFileFormat& first = recording.First();
    EXPECT_EQ(first.CfgAnLines, (std::vector<QString>{"1,Ia Q1,A,Q1,A,1,0,0,-32767,32767,1,1,P",
                                                      "2,Ia Q1,A,Q1,A,1,0,0,-32767,32767,1,1,P"}));
    EXPECT_EQ(first.AnChannels[0]->CoefA, 1.0F);
    EXPECT_EQ(first.AnChannels[1]->CoefA, 0.0F);
    EXPECT_EQ(first.AnChannels[1]->CoefB, 0.0F);
    EXPECT_EQ(first.AnChannels[1]->SkewMicroseconds, 0.0F);
}
