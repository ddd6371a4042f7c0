// Lines that were right in the record before are passed by their bytes, but only if they are made from the
// same.
#include "scene.h"

#include <QFileInfo>

#include <gtest/gtest.h>

using namespace recorderfile;

namespace {

struct Case
{
    const char* name;
    void (*change)(Recording& recording);
};

AnalogChannel& First(Recording& recording)
{
    return ChannelOf<AnalogChannel>(recording, 0);
}

const Case cases[] = {
    {"name", [](Recording& r) { First(r).name = "Q1:Ic"; }},
    {"circuit", [](Recording& r) { First(r).name = "Q3:Ia"; }},
    {"unit", [](Recording& r) { First(r).unit = "кА"; }},
    {"primary", [](Recording& r) { First(r).primary = 2000; }},
    {"secondary", [](Recording& r) { First(r).secondary = 2; }},
    {"scale", [](Recording& r) { First(r).scale = 0.125F; }},
    {"zeroCode", [](Recording& r) { First(r).zeroCode = -4; }},
    {"offset", [](Recording& r) { First(r).offset = 2; }},
    {"skew", [](Recording& r) { First(r).skewSeconds = 0; }},
    {"codeRange", [](Recording& r) { First(r).codeRange = 2048; }},
    {"stateName", [](Recording& r) { ChannelOf<DiscreteChannel>(r, 3).name = "Q1:вык"; }},
};

class KnownLines : public testing::TestWithParam<Case>
{};

} // namespace

// The files keep their names, so that the record of the first recording is held against the second.
TEST_P(KnownLines, OfAnotherRecordingAreCompared)
{
    const Scene scene("Кодировка Comtrade UTF8=1", SmallRecording());
    ASSERT_EQ(scene.Verdict(), QString());
    ASSERT_EQ(scene.Verdict(), QString());
    Segments other = SmallRecording();
    for (Recording& segment : other)
        GetParam().change(segment);
    ASSERT_TRUE(WriteFile(scene.Recording(), Encode(other[0])));
    const QString continuation = QFileInfo(scene.Recording()).path() + "/rec.Z01";
    ASSERT_TRUE(WriteFile(continuation, Encode(other[1])));

    verify::Verifier fresh(QFileInfo(scene.Recording()).path() + "/ZuDrv.ini", "Defaults", "Device");
    QString expected;
    try {
        fresh.Check(scene.Recording(), scene.Out());
    } catch (const std::exception& error) {
        expected = QString::fromUtf8(error.what()).replace(scene.Out() + '/', QString());
    }
    EXPECT_NE(expected, QString());
    EXPECT_EQ(scene.Verdict(), expected);
}

// The bytes of a text may be damaged in the record after one in which they were right.
TEST(KnownLinesOfTheInfFile, AreComparedByteByByte)
{
    const Scene scene("Кодировка Comtrade UTF8=1", SmallRecording());
    const QByteArray bytes = scene.Bytes("inf");
    const QByteArray until = "[Russian_Comtrade_Edition Description]";
    const int begin = bytes.indexOf("[Public Analog_Channel_#1]");
    ASSERT_GT(begin, 0);
    for (int i = begin; i < bytes.indexOf(until); ++i) {
        ASSERT_EQ(i % 50 == 0 ? scene.Verdict() : QString(), QString());
        QByteArray changed = bytes;
        changed[i] = static_cast<char>(changed.at(i) ^ 1);
        EXPECT_NE(scene.VerdictWith("inf", changed), QString()) << "byte " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Inputs, KnownLines, testing::ValuesIn(cases),
                         [](const auto& test) { return std::string(test.param.name); });
