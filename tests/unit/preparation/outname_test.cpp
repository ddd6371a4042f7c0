// The base name of the output files.
#include "device/zucmtrdevparam.h"
#include "support/loadedfile.h"

#include <gtest/gtest.h>

using recorderfile::Recording;

namespace {

ZuCmtrDevParam& SetIdentity(ZuCmtrDevParam& device)
{
    device.Object = "Object";
    device.Source = "Source";
    device.Subject = "Subject";
    return device;
}

QString OutName(const Recording& recording)
{
    ZuCmtrDevParam device;
    LoadedFile file(recording);
    EXPECT_TRUE(file.Ok()) << file->ErrorText;
    return file->DoOutName(&SetIdentity(device));
}

} // namespace

TEST(OutName, IsMadeOfTriggerZoneAndIdentity)
{
    EXPECT_EQ(OutName(Recording()), QString("240131,120000.2,+3t,Object,Source.Subject"));
}

TEST(OutName, DateAndTimeAreThoseOfTheZone)
{
    Recording recording;
    recording.timeZone = 0;
    EXPECT_EQ(OutName(recording), QString("240131,090000.2,+0t,Object,Source.Subject"));
    recording.timeZone = 18;
    EXPECT_EQ(OutName(recording), QString("240201,030000.2,+18t,Object,Source.Subject"));
}

namespace {

struct FractionCase
{
    int32_t microseconds;
    const char* digit;
};

void PrintTo(const FractionCase& row, std::ostream* out)
{
    *out << row.microseconds;
}

class OutNameFraction : public testing::TestWithParam<FractionCase>
{};

} // namespace

TEST_P(OutNameFraction, IsTheFirstDigitOfTheRoundedMilliseconds)
{
    Recording recording;
    recording.trigMicroseconds = GetParam().microseconds;
    EXPECT_EQ(OutName(recording),
              QString("240131,120000.%1,+3t,Object,Source.Subject").arg(GetParam().digit));
}

INSTANTIATE_TEST_SUITE_P(Microseconds, OutNameFraction,
                         testing::Values(FractionCase{0, "0"}, FractionCase{1499, "0"},
                                         FractionCase{99499, "0"}, FractionCase{99500, "1"},
                                         FractionCase{99999, "1"}, FractionCase{250000, "2"},
                                         FractionCase{899500, "9"}, FractionCase{999499, "9"},
                                         // The carry into a fourth digit does not reach the seconds.
                                         FractionCase{999500, "1"}, FractionCase{999600, "1"},
                                         FractionCase{999999, "1"}));

TEST(OutName, ZoneHasItsSignAndWholeHoursTowardsZero)
{
    ZuCmtrDevParam device;
    SetIdentity(device);
    LoadedFile file{Recording()};
    const auto zone = [&](qint32 seconds) {
        file->TimeZoneSeconds = seconds;
        return file->DoOutName(&device).section(',', 2, 2);
    };
    EXPECT_EQ(zone(10800), QString("+3t"));
    EXPECT_EQ(zone(0), QString("+0t"));
    EXPECT_EQ(zone(19800), QString("+5t"));
    EXPECT_EQ(zone(-18000), QString("-5t"));
    EXPECT_EQ(zone(-19800), QString("-5t"));
    EXPECT_EQ(zone(-1800), QString("+0t"));
}

TEST(OutName, ForbiddenCharactersOfTheIdentityVanishFromTheNameAlone)
{
    ZuCmtrDevParam device;
    device.Object = "ПС 1/2: \"А\"";
    device.Source = "a\\b*c?d<e>f|g";
    device.Subject = "x, y.z";
    LoadedFile file{Recording()};
    EXPECT_EQ(file->DoOutName(&device), QString("240131,120000.2,+3t,ПС 12 А,abcdefg.x, y.z"));
    EXPECT_EQ(device.Object, QString("ПС 1/2: \"А\""));
}

TEST(OutName, PlaceMarkersInAnIdentityTextAreFilledByTheNextText)
{
    ZuCmtrDevParam device;
    SetIdentity(device).Object = "%4";
    LoadedFile file{Recording()};
    EXPECT_EQ(file->DoOutName(&device), QString("240131,120000.2,+3t,Source,Source.Subject"));
    device.Object = "%5";
    EXPECT_EQ(file->DoOutName(&device), QString("240131,120000.2,+3t,Subject,Source.Subject"));
    device.Object = "100%";
    EXPECT_EQ(file->DoOutName(&device), QString("240131,120000.2,+3t,100%,Source.Subject"));
}
