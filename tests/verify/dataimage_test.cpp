// Data are right without being read if their bytes are those that they must have; any others are read.
#include "device/zucmtrdevparam.h"
#include "scene.h"
#include "verify/dataimage.h"
#include "verify/source.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <random>

using namespace recorderfile;

namespace {

// The places of a form's data: their file, and where they begin in it.
struct Data
{
    Data(const Scene& scene, const Form& form) : path(scene.Path(form.cff ? "cff" : "dat"))
    {
        bytes = ReadBytes(path);
        const int mark = form.cff ? bytes.indexOf("--- file type: DAT") : 0;
        begin = form.cff ? bytes.indexOf('\n', mark) + 1 : 0;
    }

    const QString path;
    QByteArray bytes;
    int begin;
};

class DataImage : public testing::TestWithParam<size_t>
{
protected:
    const Form& form = AllForms()[GetParam()];

    // Whether the data of the scene's record are as expected.
    bool IsExpected(const Scene& scene) const
    {
        const Data data(scene, form);
        const verify::Device device(QFileInfo(scene.Recording()).path() + "/ZuDrv.ini", "Defaults", "Device");
        const verify::Source source(device, scene.Recording());
        return verify::HasExpectedData(data.path, data.begin, source);
    }
};

// Signals that change at these times, in this order, whatever it is.
Recording WithChanges(const std::vector<uint32_t>& times)
{
    Recording recording;
    recording.Add(AnalogChannel{"Q1:Ia", "А", std::vector<int16_t>(60, 7)});
    DiscreteChannel channel{"Q1:x", 0, {}};
    for (const uint32_t time : times) {
        channel.changes.push_back({time, static_cast<uint8_t>(channel.changes.size() % 2)});
        recording.Add(channel); // 1 change, 2 changes ...
        channel.name += QLatin1Char('x');
        channel.inverted = channel.inverted == 0 ? 1 : 0;
    }
    return recording;
}

} // namespace

TEST_P(DataImage, IsThatOfTheLibrary)
{
    EXPECT_TRUE(IsExpected(Scene(form.lines, SmallRecording())));
    EXPECT_TRUE(IsExpected(Scene(form.lines, LongRecording())));
}

// More channels and samples than are turned into rows at once, and some left over of both; each code is
// another one.
TEST_P(DataImage, HasTheCodesOfManyChannels)
{
    Recording recording;
    for (int channel = 0; channel < 19; ++channel) {
        std::vector<int16_t> codes(301);
        for (size_t i = 0; i < codes.size(); ++i)
            codes[i] = static_cast<int16_t>(static_cast<int>(i) * 101 + channel * 1009);
        recording.Add(AnalogChannel{QStringLiteral("Q1:I%1").arg(channel), "А", codes});
    }
    EXPECT_TRUE(IsExpected(Scene(form.lines, {recording})));
}

TEST_P(DataImage, LacksTheSamplesThatTheRecordingLacks)
{
    Segments segments = SmallRecording();
    segments[0].duration = 9 * 417; // five samples of nine
    EXPECT_TRUE(IsExpected(Scene(form.lines, segments)));
}

TEST_P(DataImage, HasTheStatesWhateverTheOrderOfTheChanges)
{
    std::mt19937 random(1);
    for (int round = 0; round < 8; ++round) {
        std::vector<uint32_t> times(20);
        for (uint32_t& time : times)
            time = static_cast<uint32_t>(random() % 30000);
        EXPECT_TRUE(IsExpected(Scene(form.lines, {WithChanges(times)}))) << round;
    }
}

TEST_P(DataImage, IsNoneWithAnyOtherByte)
{
    const Scene scene(form.lines, SmallRecording());
    const Data data(scene, form);
    const verify::Device device(QFileInfo(scene.Recording()).path() + "/ZuDrv.ini", "Defaults", "Device");
    const verify::Source source(device, scene.Recording());
    for (int i = data.begin; i < data.bytes.size(); ++i)
        for (const int mask : {0x01, 0x10, 0x80}) {
            QByteArray changed = data.bytes;
            changed[i] = static_cast<char>(changed.at(i) ^ mask);
            ASSERT_TRUE(QFile::remove(data.path) && WriteFile(data.path, changed));
            EXPECT_FALSE(verify::HasExpectedData(data.path, data.begin, source)) << i << " ^ " << mask;
        }
    for (const QByteArray& bytes :
         {data.bytes.chopped(1), data.bytes + '\0', data.bytes + data.bytes.right(1)}) {
        ASSERT_TRUE(QFile::remove(data.path) && WriteFile(data.path, bytes));
        EXPECT_FALSE(verify::HasExpectedData(data.path, data.begin, source)) << bytes.size();
    }
    ASSERT_TRUE(QFile::remove(data.path));
    EXPECT_FALSE(verify::HasExpectedData(data.path, data.begin, source));
}

INSTANTIATE_TEST_SUITE_P(Forms, DataImage, testing::Range(size_t{0}, AllForms().size()),
                         [](const auto& test) { return std::string(AllForms()[test.param].name); });

TEST(OtherBytes, OfTheSameValuesAreRight)
{
    const Scene ascii("Тип Comtrade 1999=1", SmallRecording());
    QByteArray text = ascii.Bytes("dat");
    EXPECT_EQ(ascii.VerdictWith("dat", QByteArray(text).replace("\n", "\r\n")), QString());
    EXPECT_EQ(ascii.VerdictWith("dat", QByteArray(text).replace(",123,", ", 0123,")), QString());
    EXPECT_NE(ascii.VerdictWith("dat", QByteArray(text).replace(",123,", ", 0124,")), QString());

    const Scene binary("Тип Comtrade 1999=1\nТип Comtrade BIN=1", SmallRecording());
    QByteArray bytes = binary.Bytes("dat");
    bytes[bytes.size() - 1] = '\x7F'; // bits after the last state
    EXPECT_EQ(binary.VerdictWith("dat", bytes), QString());
}
