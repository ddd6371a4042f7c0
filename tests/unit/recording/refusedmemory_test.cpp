// What the service reports when memory is refused on the way.
#include "allocations.h"

#include "recorderfile/recorderfile.h"
#include "service/zucmtrlib.h"
#include "support/device.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

using namespace recorderfile;

namespace {

// Small enough to load, while the writer of the DAT file takes blocks of 256 KB for it.
QByteArray SmallRecording()
{
    return Encode(Recording()
                      .Add(AnalogChannel{"Q1:Ia", "А", std::vector<int16_t>(100, 1)})
                      .Add(DiscreteChannel{"Q1:x", 0, {{0, 1}}}));
}

bool ConvertWithin(TestStation& station, size_t limit)
{
    const QByteArray recording = SmallRecording();
    const AllocationLimit allocations(limit);
    return station.Convert(recording);
}

} // namespace

TEST(RefusedMemory, FailsTheConversionWithItsText)
{
    TestStation station;
    EXPECT_FALSE(ConvertWithin(station, 100000));
    EXPECT_EQ(station.Device().LastError, "чтение файла, ошибка выделения памяти");
}

TEST(RefusedMemory, LeavesTheSourceAndNoFinalFile)
{
    TestStation station("Удалять исходные=1");
    EXPECT_FALSE(ConvertWithin(station, 100000));
    EXPECT_TRUE(station.Directory().Names().contains("rec.ZU"));
    EXPECT_EQ(station.Directory().Names("out").filter(QRegularExpression("(cfg|dat|hdr|inf)$")), QStringList());
}

TEST(RefusedMemory, LeavesTheDeviceFitForTheNextRecording)
{
    TestStation station;
    EXPECT_FALSE(ConvertWithin(station, 100000));
    EXPECT_TRUE(station.Convert(SmallRecording()));
    EXPECT_TRUE(station.Device().LastError.isEmpty());
    EXPECT_TRUE(station.Output("dat").startsWith("1,0,1,1\n2,417,1,1\n"));
}

TEST(RefusedMemory, MakesNoConverterUntilThereIsSome)
{
    bool made = true;
    {
        const AllocationLimit allocations(0);
        made = ZuCmtrConverterInit();
    }
    EXPECT_FALSE(made);
    EXPECT_TRUE(ZuCmtrConverterInit());
    ZuCmtrConverterExit();
}
