#include "forms/channeltitles.h"

#include "support/files.h"

#include <gtest/gtest.h>

using forms::ChannelTitles;

namespace {

comtrade::AnalogChannel Analog(const char* name, const char* circuit, const char* phase, const char* unit)
{
    comtrade::AnalogChannel channel;
    channel.name = QString::fromUtf8(name);
    channel.circuit = QString::fromUtf8(circuit);
    channel.phase = QString::fromUtf8(phase);
    channel.unit = QString::fromUtf8(unit);
    return channel;
}

comtrade::StateChannel State(const char* name)
{
    comtrade::StateChannel channel;
    channel.name = QString::fromUtf8(name);
    return channel;
}

QStringList TitlesOf(const comtrade::Configuration& config)
{
    QStringList titles;
    for (const QString& title : ChannelTitles(config, QStringLiteral("time [s]")))
        titles += title;
    return titles;
}

} // namespace

TEST(ChannelTitles, AreTheNameAndTheUnit)
{
    comtrade::Configuration config;
    config.analog = {Analog("Ia", "ВЛ-1", "A", "А"), Analog("f", "", "", "")};
    config.states = {State("КСВ")};
    EXPECT_EQ(TitlesOf(config), (QStringList{"Ia [А]", "f", "КСВ"}));
}

TEST(ChannelTitles, HaveCircuitAndPhaseWhereChannelsShareAName)
{
    comtrade::Configuration config;
    config.analog = {Analog("I", "ВЛ-1", "A", "A"), Analog("I", "ВЛ-1", "B", "A"), Analog("U", "", "A", "V")};
    EXPECT_EQ(TitlesOf(config), (QStringList{"I ВЛ-1 A [A]", "I ВЛ-1 B [A]", "U [V]"}));
}

TEST(ChannelTitles, HaveNumbersWhereNothingElseDiffers)
{
    comtrade::Configuration config;
    config.analog = {Analog("I", "ВЛ", "A", "A"), Analog("I", "ВЛ", "A", "A"), Analog("x", "", "", "")};
    config.states = {State("x"), State("")};
    EXPECT_EQ(TitlesOf(config), (QStringList{"A1 I ВЛ A [A]", "A2 I ВЛ A [A]", "A3 x", "D1 x", "D2"}));
}

TEST(ChannelTitles, StayUniqueIfANameLooksLikeALongerTitle)
{
    comtrade::Configuration config;
    config.analog = {Analog("I", "", "A", ""), Analog("I", "", "B", ""), Analog("I A", "", "", ""),
                     Analog("A1 I A", "", "", "")};
    const QStringList titles = TitlesOf(config);
    EXPECT_EQ(titles, (QStringList{"A1 I A", "I B", "I A", "A4 A1 I A"}));
}

TEST(ChannelTitles, AreNeverThatOfTheTime)
{
    comtrade::Configuration config;
    config.analog = {Analog("time", "", "", "s")};
    EXPECT_EQ(TitlesOf(config), QStringList{"A1 time [s]"});
}
