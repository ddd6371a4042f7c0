// The time stamp of 24 characters inside a start comment: which one is taken out, and where.
#include "support/readyrecording.h"

#include <gtest/gtest.h>

namespace {

// The condition of a recording with the fault at .250000 and the first sample at .750000. Its comment has no
// parentheses, so that the condition is the cleaned comment up to its first comma.
QString ConditionOf(const QString& comment, int trigMicroseconds = 250000, int startMicroseconds = 750000)
{
    TestStation station;
    recorderfile::Recording recording;
    recording.comment = comment;
    recording.trigMicroseconds = trigMicroseconds;
    recording.startMicroseconds = startMicroseconds;
    ReadyRecording ready(station, recording.Add(recorderfile::AnalogChannel{"Q1:Ia", "A", {1, 2}}));
    return ready.First().StartCondition;
}

} // namespace

TEST(StartCommentStamp, OfTheFaultIsTakenOut)
{
    EXPECT_EQ(ConditionOf("Пуск xyz 31.01.24 12:00:00.250000w"), "Пуск xyz w");
}

TEST(StartCommentStamp, OfTheStartIsTakenOutInPlaceOfTheFaults)
{
    EXPECT_EQ(ConditionOf("Пуск xyz 31.01.24 11:59:59.750000w"), "Пуск xyz w");
}

TEST(StartCommentStamp, OfTheFaultGoesBeforeThatOfTheStart)
{
    EXPECT_EQ(ConditionOf("Пуск 31.01.24 11:59:59.750000 31.01.24 12:00:00.250000"),
              "Пуск 31.01.24 11:59:59.750000 ");
}

TEST(StartCommentStamp, IsTakenOutOnceOnly)
{
    EXPECT_EQ(ConditionOf("Пуск 31.01.24 12:00:00.250000 31.01.24 12:00:00.250000"),
              "Пуск  31.01.24 12:00:00.250000");
}

TEST(StartCommentStamp, OfAnotherTimeStays)
{
    EXPECT_EQ(ConditionOf("Пуск xyz 31.01.24 12:00:00.250001"), "Пуск xyz 31.01.24 12:00:00.250001");
}

TEST(StartCommentStamp, HasSixDigits)
{
    EXPECT_EQ(ConditionOf("Пуск xyz 31.01.24 12:00:00.000042w", 42), "Пуск xyz w");
}

TEST(StartCommentStamp, WithItsMicrosecondsAtPosition21Stays)
{
    EXPECT_EQ(ConditionOf("Пуск31.01.24 12:00:00.250000 x"), "Пуск31.01.24 12:00:00.250000 x");
}

TEST(StartCommentStamp, WithItsMicrosecondsAtPosition22IsTakenOut)
{
    EXPECT_EQ(ConditionOf("Пуск 31.01.24 12:00:00.250000x"), "Пуск x");
}

TEST(StartCommentStamp, PositionCountsWithoutApostrophesAndGps)
{
    EXPECT_EQ(ConditionOf("'Пуск'(GPS)31.01.24 12:00:00.250000 x"), "Пуск31.01.24 12:00:00.250000 x");
}

TEST(StartCommentStamp, OfTheFaultNearTheStartKeepsThatOfTheStartToo)
{
    EXPECT_EQ(ConditionOf("Пуск.250000 31.01.24 11:59:59.750000"), "Пуск.250000 31.01.24 11:59:59.750000");
}

TEST(StartCommentStamp, InAFreeTextDoesNotDisturbTheKind)
{
    TestStation station;
    recorderfile::Recording recording;
    recording.comment = "Пуск 31.01.24 12:00:00.250000(GPS) ДЗ (Q1:Ia,2,1.5,t) y";
    ReadyRecording ready(station, recording.Add(recorderfile::AnalogChannel{"Q1:Ia", "A", {1, 2}}));
    EXPECT_EQ(ready.First().StartCondition, "Пуск ДЗ Q1:Ia y");
    EXPECT_EQ(ready.First().StartSetting, "Порог срабатывания - 2.000 A, порог возврата - 1.500 A");
}
