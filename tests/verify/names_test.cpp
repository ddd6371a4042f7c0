// The name of a record from the head of its recording alone.
#include "recorderfile/recorderfile.h"
#include "recording/zufileformat.h"
#include "support/device.h"
#include "verify/device.h"
#include "verify/recordname.h"

#include <gtest/gtest.h>

using recorderfile::Encode;
using recorderfile::Recording;

namespace {

class RecordName : public testing::Test
{
protected:
    QString Ini() const { return station.Directory().Path(QStringLiteral("ZuDrv.ini")); }

    // As the library names it.
    QString Expected(const QString& path)
    {
        ZuFileFormat file;
        return file.Load(path) ? file.DoOutName(&station.Device()) : QString();
    }

    void ExpectSame(const Recording& recording)
    {
        const verify::Device device(Ini(), QStringLiteral("Defaults"), QStringLiteral("Device"));
        const QString path = station.Directory().Write(QStringLiteral("rec.ZU"), Encode(recording));
        EXPECT_FALSE(Expected(path).isEmpty());
        EXPECT_EQ(verify::RecordHeadOf(path, device).name, Expected(path));
    }

    TestStation station;
};

} // namespace

TEST_F(RecordName, IsThatOfTheLibraryInEveryZone)
{
    for (const int zone : {0, 3, -5, 12, 30, 60, 90, 330, 1800, 10800, 12600, -7200}) {
        Recording recording;
        recording.timeZone = static_cast<int16_t>(zone);
        SCOPED_TRACE(zone);
        ExpectSame(recording);
    }
}

TEST_F(RecordName, IsThatOfTheLibraryAtEveryFraction)
{
    for (const int microseconds : {0, 99499, 99500, 999499, 999500, 999999, -1, -500000, -1000000}) {
        Recording recording;
        recording.trigMicroseconds = microseconds;
        SCOPED_TRACE(microseconds);
        ExpectSame(recording);
    }
}

TEST_F(RecordName, IsEmptyForAFileWithoutAHead)
{
    const verify::Device device(Ini(), QStringLiteral("Defaults"), QStringLiteral("Device"));
    EXPECT_EQ(verify::RecordHeadOf(station.Directory().Write(QStringLiteral("a.ZU"), "short"), device).name,
              QString());
    EXPECT_EQ(verify::RecordHeadOf(station.Directory().Path(QStringLiteral("no.ZU")), device).name,
              QString());
    EXPECT_EQ(verify::RecordHeadOf(station.Directory().Path(), device).name, QString());
}

TEST_F(RecordName, IsEmptyForAHeadThatTheLibraryRefuses)
{
    const verify::Device device(Ini(), QStringLiteral("Defaults"), QStringLiteral("Device"));
    QByteArray bytes = Encode(Recording());
    bytes[0] = '3';
    EXPECT_EQ(verify::RecordHeadOf(station.Directory().Write(QStringLiteral("a.ZU"), bytes), device).name,
              QString());
}
