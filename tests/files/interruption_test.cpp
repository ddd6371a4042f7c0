// Kills before every call, and failures of every call, while a recording is put away.
#include "scene.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

class EveryWay : public testing::TestWithParam<std::tuple<Way, int>>
{
protected:
    const Way way = std::get<0>(GetParam());
    const int continuations = std::get<1>(GetParam());

    // Puts the recording away with failing calls from the nth on, one or all.
    QString PutAwayWithFailures(const Scene& scene, long nth, int error, bool all, bool& struck) const
    {
        long count = 0;
        const QString text = scene.TextOfPutAway(way, [&](const calls::Call& call) {
            if ((all || error == ENOSPC) && !call.Writes())
                return 0;
            ++count;
            return count == nth || (all && count > nth) ? error : 0;
        });
        struck = count >= nth;
        return text;
    }
};

} // namespace

TEST_P(EveryWay, TakesAllFiles)
{
    const Scene scene(continuations);
    EXPECT_EQ(scene.TextOfPutAway(way), QString());
    EXPECT_TRUE(scene.IsPutAway(way));
}

TEST_P(EveryWay, KillAtAnyCallLosesNothingAndTheNextRunFinishes)
{
    long nth = 0;
    for (bool killed = true; killed;) {
        const Scene scene(continuations);
        killed = scene.PutAwayAndKill(way, ++nth);
        EXPECT_EQ(scene.Recover().notes, QStringList()) << nth;
        if (scene.IsPutAway(way))
            continue;
        EXPECT_TRUE(scene.IsComplete("in")) << nth;
        EXPECT_EQ(scene.TextOfPutAway(way), QString()) << nth;
        EXPECT_TRUE(scene.IsPutAway(way)) << nth;
    }
    EXPECT_GT(nth, continuations + 1);
}

TEST_P(EveryWay, CallThatFailsLeavesAllFilesInOneOfTheTwoPlaces)
{
    for (const int error : {EIO, ENOSPC}) {
        bool struck = true;
        for (long nth = 1; struck; ++nth) {
            const Scene scene(continuations);
            const QString text = PutAwayWithFailures(scene, nth, error, false, struck);
            EXPECT_FALSE(text.contains("Unknown error")) << text;
            if (!text.isEmpty() && scene.IsComplete("in")) {
                EXPECT_EQ(scene.Archived(), QStringList()) << nth << ' ' << error;
                continue;
            }
            scene.Recover(); // of files that could not be deleted
            EXPECT_TRUE(scene.IsPutAway(way)) << nth << ' ' << error << text;
        }
    }
}

TEST_P(EveryWay, CallsThatFailFromOneOnLoseNothingAndTheNextRunFinishes)
{
    for (const int error : {EIO, ENOSPC}) {
        bool struck = true;
        for (long nth = 1; struck; ++nth) {
            const Scene scene(continuations);
            PutAwayWithFailures(scene, nth, error, true, struck);
            EXPECT_EQ(scene.Recover().notes, QStringList());
            if (scene.IsPutAway(way))
                continue;
            EXPECT_TRUE(scene.IsComplete("in")) << nth << ' ' << error;
            EXPECT_EQ(scene.TextOfPutAway(way), QString()) << nth << ' ' << error;
            EXPECT_TRUE(scene.IsPutAway(way)) << nth << ' ' << error;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, EveryWay, testing::Combine(testing::ValuesIn(Ways()), testing::Values(0, 1)));
