// Work shared by several processes.
#include "zucmtr/run/crew.h"

#include "text/error.h"

#include <gtest/gtest.h>

#include <csignal>
#include <map>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// A task whose members tell the number of each piece that they do.
struct Told
{
    std::map<int, int> times; // how often each was told of
    Crew::Task task;

    explicit Told(size_t count, const std::function<void(size_t)>& before = {})
    {
        task.count = count;
        task.together = 4;
        task.work = [before](Crew::Member& member) {
            for (Crew::Member::Pieces pieces = member.Take(); pieces.first < pieces.second;
                 pieces = member.Take()) {
                for (size_t i = pieces.first; i < pieces.second; ++i) {
                    if (!member.Begin(i))
                        continue;
                    if (before)
                        before(i);
                    member.Done();
                }
                for (size_t i = pieces.first; i < pieces.second; ++i)
                    if (member.Begin(i))
                        member.Tell(QByteArray::number(static_cast<int>(i)));
            }
        };
        task.hear = [this](const QByteArray& message) { ++times[message.toInt()]; };
        task.show = [](size_t) {};
        task.isToEnd = [] { return false; };
    }

    bool HasEachOnceBut(size_t count, const std::set<int>& lost) const
    {
        for (int i = 0; i < static_cast<int>(count); ++i) {
            const auto found = times.find(i);
            if ((found == times.end() ? 0 : found->second) != (lost.count(i) > 0 ? 0 : 1))
                return false;
        }
        return true;
    }
};

} // namespace

TEST(Crew, DoesEachPieceOnce)
{
    for (const size_t members : {1u, 3u, 300u}) {
        Told told(50);
        EXPECT_TRUE(Crew(told.task).Do(members).empty());
        EXPECT_TRUE(told.HasEachOnceBut(50, {})) << members;
    }
}

TEST(Crew, WithoutWorkStartsNobody)
{
    Told told(0, [](size_t) { raise(SIGKILL); });
    EXPECT_TRUE(Crew(told.task).Do(3).empty());
}

TEST(Crew, LosesOnlyThePieceInWhichAProcessCrashes)
{
    Told told(20, [](size_t piece) {
        if (piece == 6 || piece == 7)
            raise(SIGKILL);
    });
    std::map<size_t, int> signalOf;
    for (const Crew::Loss& loss : Crew(told.task).Do(2))
        signalOf[loss.piece] = WTERMSIG(loss.status);
    EXPECT_EQ(signalOf, (std::map<size_t, int>{{6, SIGKILL}, {7, SIGKILL}}));
    EXPECT_TRUE(told.HasEachOnceBut(20, {6, 7}));
}

TEST(Crew, ThrowsWhatAProcessThrows)
{
    Told told(20, [](size_t piece) {
        if (piece == 6)
            throw text::Error("broken");
    });
    try {
        Crew(told.task).Do(2);
        FAIL();
    } catch (const text::Error& error) {
        EXPECT_EQ(error.Message(), "broken");
    }
}

TEST(Crew, TakesNoMoreWorkOnceItIsToEnd)
{
    Told told(1000);
    told.task.isToEnd = [] { return true; };
    told.task.work = [](Crew::Member& member) {
        while (!member.IsToEnd())
            usleep(1000);
        const Crew::Member::Pieces pieces = member.Take();
        if (pieces.first != pieces.second)
            member.Tell("1");
    };
    Crew(told.task).Do(2);
    EXPECT_TRUE(told.times.empty());
}

TEST(Crew, HearsLongMessagesWhole)
{
    Told told(8);
    std::map<QByteArray, int> heard;
    told.task.work = [](Crew::Member& member) {
        for (Crew::Member::Pieces pieces = member.Take(); pieces.first < pieces.second;
             pieces = member.Take())
            member.Tell(QByteArray(300000, 'x'));
    };
    told.task.hear = [&](const QByteArray& message) { ++heard[message]; };
    Crew(told.task).Do(2);
    EXPECT_EQ(heard, (std::map<QByteArray, int>{{QByteArray(300000, 'x'), 2}}));
}
