// The std::out_of_range that a conversion passes on: nothing leaks, and the device goes on working.
#include "base/chainnames.h"
#include "support/recordings.h"

#include <gtest/gtest.h>

#include <stdexcept>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace {

using recorderfile::AnalogChannel;
using recorderfile::DiscreteChannel;
using recorderfile::Recording;

Recording AnalogOnly(const QString& name = QStringLiteral("Q1:Ia"))
{
    Recording recording;
    recording.Add(AnalogChannel{name, "А", std::vector<int16_t>(1000, 1)});
    return recording;
}

// Builds with the address sanitizer search for memory that nothing refers to any more; others cannot know.
bool Leaks()
{
#if defined(__SANITIZE_ADDRESS__)
    return __lsan_do_recoverable_leak_check() != 0;
#else
    return false;
#endif
}

class OutOfRange : public testing::Test
{
protected:
    void Write(const std::vector<Recording>& segments)
    {
        for (size_t i = 0; i < segments.size(); ++i)
            station.Directory().Write(zu::ContinuationName("rec.ZU", static_cast<int>(i)),
                                      Encode(segments[i]));
    }

    bool Convert()
    {
        return station.Converter().ConvertToComtrade(station.Directory().Path("rec.ZU"),
                                                     station.Directory().Path("out"), 0);
    }

    TestStation station{"Удалять исходные=1"};
};

} // namespace

TEST_F(OutOfRange, ComesFromEqualFilesWithoutDiscreteChannels)
{
    Write({AnalogOnly(), AnalogOnly(), AnalogOnly()});
    EXPECT_THROW(Convert(), std::out_of_range);
    EXPECT_FALSE(Leaks());
}

TEST_F(OutOfRange, ComesFromDifferingFilesWithoutDiscreteChannels)
{
    Write({AnalogOnly("Q1:Ia"), AnalogOnly("Q1:Ib"), AnalogOnly("Q1:Ic")});
    EXPECT_THROW(Convert(), std::out_of_range);
    EXPECT_FALSE(Leaks());
}

TEST_F(OutOfRange, DoesNotComeWhenTheIdentityDiffers)
{
    Recording later = AnalogOnly();
    later.identity = "другой";
    Write({AnalogOnly(), later});
    EXPECT_TRUE(Convert());
    EXPECT_EQ(station.Device().LogMessages.size(), 2U);
}

TEST_F(OutOfRange, DoesNotComeFromASingleFile)
{
    Write({AnalogOnly()});
    EXPECT_TRUE(Convert());
}

TEST_F(OutOfRange, ComesFromACommentOfTwoValues)
{
    Recording first = AnalogOnly();
    first.comment = "Пуск ДЗ(Q1:Ia,1.5) больше";
    first.Add(DiscreteChannel{"Q1:x", 0, {{0, 1}}});
    Recording second = first;
    Write({first, second});
    EXPECT_THROW(Convert(), std::out_of_range);
    EXPECT_FALSE(Leaks());
}

TEST_F(OutOfRange, LeavesOutputAndSourcesAsTheyWere)
{
    station.Directory().Write(OutFile(".cfg"), "earlier");
    Write({AnalogOnly(), AnalogOnly()});
    EXPECT_THROW(Convert(), std::out_of_range);
    EXPECT_EQ(station.Directory().Names("out"), OutNames({".cfg"}));
    EXPECT_EQ(station.Directory().Names(), (QStringList{"ZuDrv.ini", "rec.Z01", "rec.ZU"}));
    EXPECT_TRUE(station.Device().LastError.isNull());
    EXPECT_TRUE(station.Device().LogMessages.empty());
}

TEST_F(OutOfRange, DeviceConvertsTheNextRecording)
{
    Write({AnalogOnly(), AnalogOnly()});
    EXPECT_THROW(Convert(), std::out_of_range);
    QFile::remove(station.Directory().Path("rec.Z01"));
    EXPECT_TRUE(station.Convert(SmallFile()));
    EXPECT_EQ(Notes(station.Device()), QStringList{SuccessNote()});
    EXPECT_FALSE(Leaks());
}
