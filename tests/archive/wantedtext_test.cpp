// What a user writes to say which entries are wanted.
#include "zucmtr/archive/wantedtext.h"

#include <QDateTime>

#include <gtest/gtest.h>

using archive::End;

namespace {

// "+" at the end: on the clock of the recorder.
QString Instant(const char* text, End end)
{
    const catalogue::Instant instant = archive::InstantOf(QString::fromUtf8(text), end);
    return QDateTime::fromMSecsSinceEpoch(instant.at / 1000, Qt::UTC).toString("yyyy-MM-dd hh:mm:ss.zzz") +
           (instant.isOwnClock ? "+" : "");
}

} // namespace

TEST(WantedText, InstantIsTheFirstOrTheOneAfterTheLast)
{
    const char* const rows[][3] = {
        {"2024", "2024-01-01 00:00:00.000+", "2025-01-01 00:00:00.000+"},
        {"2024-12", "2024-12-01 00:00:00.000+", "2025-01-01 00:00:00.000+"},
        {"2024-02-29", "2024-02-29 00:00:00.000+", "2024-03-01 00:00:00.000+"},
        {"2024-01-31T12:59", "2024-01-31 12:59:00.000+", "2024-01-31 13:00:00.000+"},
        {"2024-01-31 12:59:59", "2024-01-31 12:59:59.000+", "2024-01-31 13:00:00.000+"},
        {"2024-01-31T12:00:00.25", "2024-01-31 12:00:00.250+", "2024-01-31 12:00:00.251+"},
        {"2024-01-31T12:00Z", "2024-01-31 12:00:00.000", "2024-01-31 12:01:00.000"},
        {"2024-01-31T12:00-0730", "2024-01-31 19:30:00.000", "2024-01-31 19:31:00.000"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Instant(row[0], End::First), row[1]);
        EXPECT_EQ(Instant(row[0], End::Last), row[2]);
    }
}

TEST(WantedText, AgeIsCountedFromNow)
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch() * 1000;
    for (const auto& [text, hours] : {std::pair("36h", 36), {"1,5d", 36}, {"1w", 168}, {"1г", 8760}}) {
        const catalogue::Instant instant = archive::InstantOf(QString::fromUtf8(text), End::First);
        EXPECT_NEAR(static_cast<double>(now - instant.at) / 3.6e9, hours, 0.1) << text;
        EXPECT_FALSE(instant.isOwnClock);
    }
}

TEST(WantedText, NumbersHaveUnits)
{
    EXPECT_DOUBLE_EQ(archive::SecondsOf("80ms"), 0.08);
    EXPECT_DOUBLE_EQ(archive::SecondsOf(QString::fromUtf8("0,5 с")), 0.5);
    EXPECT_DOUBLE_EQ(archive::AgeOf("90min"), 5400);
    EXPECT_DOUBLE_EQ(archive::AmperesOf("1.5kA"), 1500);
    EXPECT_DOUBLE_EQ(archive::AmperesOf(QString::fromUtf8("800 А")), 800);
}

TEST(WantedText, DistancesInKilometresOrPercent)
{
    EXPECT_EQ(archive::DistancesOf("20-30.5km").kilometres.to, 30.5);
    EXPECT_EQ(archive::DistancesOf("20-").kilometres.from, 20.0);
    EXPECT_EQ(archive::DistancesOf("20-").kilometres.to, std::nullopt);
    EXPECT_EQ(archive::DistancesOf("-5").kilometres.to, 5.0);
    EXPECT_EQ(archive::DistancesOf("40-60%").percent.from, 40.0);
    EXPECT_EQ(archive::DistancesOf("40-60%").kilometres.from, std::nullopt);
}

TEST(WantedText, KindsByWordsAndPhases)
{
    EXPECT_EQ(archive::KindsOf("single, ABC").join(' '), "AG BG CG ABC");
    EXPECT_EQ(archive::KindsOf("two-earth,earth").join(' '), "ABG BCG CAG AG BG CG ABCG");
    EXPECT_EQ(archive::KindsOf("none"), QStringList{""});
    EXPECT_EQ(archive::KindsWithPhases("ca").join(' '), "CA CAG ABC ABCG");
}

TEST(WantedText, OthersAreRefused)
{
    for (const char* text :
         {"", "spring", "24-01-31", "2024-13", "2024-01-31T25:00", "2024-01-31Z", "2024-1-1", "30x"})
        EXPECT_THROW(archive::InstantOf(text, End::First), archive::WantedTextError) << text;
    EXPECT_THROW(archive::SecondsOf("80"), archive::WantedTextError);
    EXPECT_THROW(archive::SecondsOf("-80ms"), archive::WantedTextError);
    EXPECT_THROW(archive::DistancesOf("-"), archive::WantedTextError);
    EXPECT_THROW(archive::DistancesOf("30-20"), archive::WantedTextError);
    EXPECT_THROW(archive::KindsOf(""), archive::WantedTextError);
    EXPECT_THROW(archive::KindsWithPhases("ABCA"), archive::WantedTextError);
}
