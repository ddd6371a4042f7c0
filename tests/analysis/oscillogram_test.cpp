#include "analysis/channelrole.h"
#include "analysis/oscillogram.h"
#include "comtrade/text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

comtrade::AnalogChannel Channel(const char* name, const char* phase, const char* unit)
{
    comtrade::AnalogChannel channel;
    channel.name = QString::fromUtf8(name);
    channel.phase = QString::fromUtf8(phase);
    channel.unit = QString::fromUtf8(unit);
    return channel;
}

TEST(Codes, StayShortWhileTheyAreIntegersOf16Bits)
{
    analysis::Codes codes;
    for (const double code : {-32768.0, 0.0, 32767.0})
        codes.Add(code);
    EXPECT_FALSE(codes.IsWide());
    EXPECT_EQ(codes.Small(), (std::vector<qint16>{-32768, 0, 32767}));
    EXPECT_EQ(codes.Least(), -32768);
    EXPECT_EQ(codes.Greatest(), 32767);
}

TEST(Codes, BecomeWideWithTheFirstOtherAndKeepTheEarlierOnes)
{
    for (const double other : {32768.0, 0.5, std::nan("")}) {
        analysis::Codes codes;
        codes.Add(7);
        codes.Add(other);
        codes.Add(-3);
        EXPECT_TRUE(codes.IsWide());
        ASSERT_EQ(codes.Size(), 3u);
        EXPECT_EQ(codes.At(0), 7);
        EXPECT_EQ(codes.At(2), -3);
        EXPECT_EQ(codes.Least(), -3);
    }
}

TEST(Codes, CountWhatIsMissingAndHaveNoEndsWhereAllIs)
{
    analysis::Codes codes;
    codes.Add(std::nan(""));
    EXPECT_TRUE(std::isnan(codes.Least()));
    EXPECT_TRUE(std::isnan(codes.Greatest()));
    codes.Add(5);
    codes.Add(std::nan(""));
    EXPECT_EQ(codes.Missing(), 2);
    EXPECT_EQ(codes.Least(), 5);
    EXPECT_EQ(codes.Greatest(), 5);
}

TEST(States, KeepOneBitPerSampleAndKnowTheChanges)
{
    analysis::States states;
    for (int i = 0; i < 20; ++i)
        states.Add(i == 7 || i >= 9);
    EXPECT_EQ(states.Size(), 20u);
    EXPECT_EQ(states.ChangePositions(), (std::vector<qint32>{7, 8, 9}));
    EXPECT_EQ(states.Changes(), 3);
    EXPECT_EQ(states.Bits(), (std::vector<quint8>{0x80, 0xfe, 0x0f}));
}

TEST(States, ChangesAreFoundWhereverTheyAre)
{
    std::mt19937 random(3);
    for (int round = 0; round < 200; ++round) {
        analysis::States states;
        std::vector<qint32> truth;
        bool state = random() % 2 == 0;
        while (states.Size() < 300) {
            states.Add(state, 1 + random() % (round % 2 == 0 ? 3 : 90));
            truth.push_back(static_cast<qint32>(states.Size()));
            state = !state;
        }
        truth.pop_back();
        EXPECT_EQ(states.ChangePositions(), truth);
        EXPECT_EQ(states.NextChange(1), truth.empty() ? states.Size() : static_cast<size_t>(truth[0]));
        EXPECT_EQ(states.NextChange(states.Size()), states.Size());
    }
}

TEST(States, AddedTogetherAreThoseAddedOneByOne)
{
    analysis::States one;
    analysis::States many;
    bool state = false;
    for (size_t times : {3u, 0u, 5u, 1u, 17u, 8u, 40u, 2u, 9u, 16u}) {
        for (size_t i = 0; i < times; ++i)
            one.Add(state);
        many.Add(state, times);
        state = !state;
    }
    EXPECT_EQ(many.Size(), one.Size());
    EXPECT_EQ(many.Bits(), one.Bits());
    EXPECT_EQ(many.Changes(), one.Changes());
}

struct RoleCase
{
    const char* name;
    const char* phase;
    const char* unit;
    analysis::Quantity quantity;
    char expected;
};

class Roles : public testing::TestWithParam<RoleCase>
{};

TEST_P(Roles, FollowUnitNameAndPhase)
{
    const RoleCase& row = GetParam();
    const analysis::Role role = analysis::RoleOf(Channel(row.name, row.phase, row.unit));
    EXPECT_EQ(role.quantity, row.quantity);
    EXPECT_EQ(role.phase, row.expected);
}

INSTANTIATE_TEST_SUITE_P(Table, Roles,
                         testing::Values(RoleCase{"Ua W1", "", "В", analysis::Quantity::Voltage, 'a'},
                                         RoleCase{"W1:Ib", "", "кА", analysis::Quantity::Current, 'b'},
                                         RoleCase{"W1 Ic1", "", "A", analysis::Quantity::Current, 'c'},
                                         RoleCase{"3I01 W1", "0", "А", analysis::Quantity::Current, '0'},
                                         RoleCase{"Line voltage", "B", "kV", analysis::Quantity::Voltage,
                                                  'b'},
                                         RoleCase{"Neutral", "N", "V", analysis::Quantity::Voltage, '0'},
                                         RoleCase{"Uab W1", "AB", "kV", analysis::Quantity::Voltage, ' '},
                                         RoleCase{"Fa", "A", "Гц", analysis::Quantity::Other, ' '},
                                         RoleCase{"", "", "", analysis::Quantity::Other, ' '}));

TEST(Unit, KiloIsOfTheUnitsScript)
{
    EXPECT_EQ(analysis::WithKilo(QStringLiteral("В")), QStringLiteral("кВ"));
    EXPECT_EQ(analysis::WithKilo(QStringLiteral("A")), QStringLiteral("kA"));
    EXPECT_EQ(analysis::WithKilo(QStringLiteral("кА")), QStringLiteral("кА"));
    EXPECT_EQ(analysis::WithKilo(QStringLiteral("Гц")), QStringLiteral("Гц"));
}

TEST(Unit, OfFrequencyPercentTemperatureAngleOrTimeIsNoWave)
{
    for (const char* unit : {"Гц", "Hz", "%", "°C", "град", "ms"})
        EXPECT_FALSE(analysis::IsWave(QString::fromUtf8(unit))) << unit;
    for (const char* unit : {"В", "kA", "МВт", "", "p.u."})
        EXPECT_TRUE(analysis::IsWave(QString::fromUtf8(unit))) << unit;
}

TEST(PrimaryFactor, IsTheRatioOfSecondaryValues)
{
    comtrade::AnalogChannel channel = Channel("Ua", "", "В");
    channel.primary = 110000;
    channel.secondary = 100;
    EXPECT_EQ(analysis::PrimaryFactor(channel), 1100);
    channel.primaryValues = true;
    EXPECT_EQ(analysis::PrimaryFactor(channel), 1);
    channel.primaryValues = false;
    channel.secondary = 0;
    EXPECT_EQ(analysis::PrimaryFactor(channel), 1);
}

TEST(ReportOfARecord, IsDecodedFromBothCodings)
{
    EXPECT_EQ(comtrade::DecodedText("Пуск\r\n1"), QStringLiteral("Пуск\r\n1"));
    EXPECT_EQ(comtrade::DecodedText("\xcf\xf3\xf1\xea"), QStringLiteral("Пуск"));
    EXPECT_EQ(comtrade::DecodedText("a\xcf"), QStringLiteral("aП")); // no UTF-8, as its last character is cut
}

} // namespace
