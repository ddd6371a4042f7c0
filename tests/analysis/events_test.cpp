#include "analysis/events.h"

#include "made.h"

#include <gtest/gtest.h>

namespace {

// "time in ms: channel=state", with the changes of a bounce; "!" for one that went back.
QStringList Shown(const analysis::Oscillogram& record)
{
    const analysis::ChannelKinds kinds(record.config, record.information);
    QStringList shown;
    for (const analysis::Event& event : analysis::EventsOf(record, kinds).events)
        shown << QStringLiteral("%1: %2=%3%4%5")
                     .arg(event.time * 1e3)
                     .arg(event.channel)
                     .arg(event.state ? 1 : 0)
                     .arg(event.changes > 1 ? QStringLiteral(" x%1").arg(event.changes) : QString(),
                          event.isBounce ? QStringLiteral("!") : QString());
    return shown;
}

TEST(Events, AreTheFirstSamplesWithTheNewState)
{
    const analysis::Oscillogram record =
        made::Record({{"a", "", "00000000001111111111"}, {"b", "", "11110000000000000000"}}, 1000, 8);
    EXPECT_EQ(Shown(record), (QStringList{"-4: 1=0", "2: 0=1"}));
}

TEST(Events, OfOneSampleAreInTheOrderOfTheirChannels)
{
    const analysis::Oscillogram record =
        made::Record({{"a", "", "0001111"}, {"b", "", "0001111"}, {"c", "", "0111111"}});
    EXPECT_EQ(Shown(record), (QStringList{"1: 2=1", "3: 0=1", "3: 1=1"}));
}

TEST(Events, BounceIsOneEventWithItsFirstTimeAndItsLastState)
{
    const analysis::Oscillogram record = made::Record({{"a", "", "00101001111111111111111110"}});
    EXPECT_EQ(Shown(record), (QStringList{"2: 0=1 x5", "25: 0=0"}));
}

TEST(Events, BounceIntoTheOldStateIsNotLost)
{
    const analysis::Oscillogram record = made::Record({{"a", "", "0011110000000000"}});
    EXPECT_EQ(Shown(record), QStringList{"2: 0=0 x2!"});
}

TEST(Events, ChangeAfterMoreThanFiveMillisecondsIsAnotherEvent)
{
    EXPECT_EQ(Shown(made::Record({{"a", "", "01111100000000"}})), QStringList{"1: 0=0 x2!"});
    EXPECT_EQ(Shown(made::Record({{"a", "", "01111110000000"}})), (QStringList{"1: 0=1", "7: 0=0"}));
}

TEST(Events, ChannelThatGoesOnChangingIsNoBounceForever)
{
    QString chatter(QLatin1Char('0'));
    for (int i = 0; i < 12; ++i) // changes every 4 ms, 24 times
        chatter += QStringLiteral("11110000");
    EXPECT_EQ(Shown(made::Record({{"a", "", chatter}})),
              (QStringList{"1: 0=0 x6!", "25: 0=0 x6!", "49: 0=0 x6!", "73: 0=0 x6!"}));
}

TEST(Events, PlaceInTheRecordCountsFromItsFirstSample)
{
    analysis::Oscillogram record = made::Record({{"a", "", "0001111"}});
    record.first = 100;
    const analysis::ChannelKinds kinds(record.config, {});
    const analysis::EventList list = analysis::EventsOf(record, kinds);
    EXPECT_EQ(list.events.front().sample, 103);
    EXPECT_DOUBLE_EQ(list.events.front().time, 0.103);
}

TEST(Events, MoreThanTheMostAreCounted)
{
    QString chatter;
    for (size_t i = 0; i < analysis::MostEvents + 10; ++i)
        chatter += QLatin1String(i % 2 == 0 ? "0" : "1");
    const analysis::Oscillogram record = made::Record({{"a", "", chatter}, {"b", "", chatter}}, 10);
    const analysis::EventList list = analysis::EventsOf(record, analysis::ChannelKinds(record.config, {}));
    EXPECT_EQ(list.events.size(), analysis::MostEvents);
    EXPECT_EQ(list.leftOut, static_cast<qint64>(2 * (analysis::MostEvents + 9) - analysis::MostEvents));
}

} // namespace
