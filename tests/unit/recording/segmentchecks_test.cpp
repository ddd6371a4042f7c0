// The checks and look-ups on a loaded recorder file.
#include "support/loadedfile.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace recorderfile;

namespace {

AnalogChannel Analog(const QString& name = "Q1:Ia")
{
    return {name, "А", {1, 2, 3}};
}

Recording TwoOfEach()
{
    Recording recording;
    recording.identity = "РАС 1";
    recording.Add(Analog("a1")).Add(Analog("a2")).Add(DiscreteChannel{"d1"}).Add(DiscreteChannel{"d2"});
    return recording;
}

AnalogChannel& AnalogOf(Recording& recording, size_t section)
{
    return std::get<AnalogChannel>(recording.sections.at(section));
}

DiscreteChannel& DiscreteOf(Recording& recording, size_t section)
{
    return std::get<DiscreteChannel>(recording.sections.at(section));
}

bool Continues(const Recording& later, const Recording& first)
{
    LoadedFile a(later);
    LoadedFile b(first);
    EXPECT_TRUE(a.Ok() && b.Ok()) << a->ErrorText << b->ErrorText;
    return a->CompareHeader(&b.File());
}

// A change of a recording, and whether the changed one still continues the unchanged one.
struct Difference
{
    const char* name;
    void (*change)(Recording&);
    bool continues;
};

void PrintTo(const Difference& row, std::ostream* out)
{
    *out << row.name;
}

class CompareHeader : public testing::TestWithParam<Difference>
{};

const Difference differences[] = {
    {"None", [](Recording&) {}, true},
    {"Identity", [](Recording& r) { r.identity = "РАС 2"; }, false},
    {"Zone", [](Recording& r) { r.timeZone = 4; }, false},
    {"ZoneUnit", [](Recording& r) { r.timeZone = -180; }, true},
    {"Comment", [](Recording& r) { r.comment = "other"; }, true},
    {"Times", [](Recording& r) { r.startTime = r.trigTime = 5; }, true},
    {"MoreAnalog", [](Recording& r) { r.Add(Analog()); }, false},
    {"FewerAnalog", [](Recording& r) { r.sections.erase(r.sections.begin()); }, false},
    {"MoreDiscrete", [](Recording& r) { r.Add(DiscreteChannel{"d3"}); }, false},
    {"FewerDiscrete", [](Recording& r) { r.sections.pop_back(); }, false},
    {"AnalogName", [](Recording& r) { AnalogOf(r, 0).name = "other"; }, false},
    {"Unit", [](Recording& r) { AnalogOf(r, 0).unit = "В"; }, false},
    {"Rate", [](Recording& r) { AnalogOf(r, 0).rate = 2401; }, false},
    {"Primary", [](Recording& r) { AnalogOf(r, 0).primary = 2; }, false},
    {"Secondary", [](Recording& r) { AnalogOf(r, 0).secondary = 2; }, false},
    {"Scale", [](Recording& r) { AnalogOf(r, 0).scale = 2; }, false},
    {"ScaleByTheLimit", [](Recording& r) { AnalogOf(r, 0).scale = 1 + 0x1p-23F; }, false},
    {"ScaleByLess", [](Recording& r) { AnalogOf(r, 0).scale = 1 - 0x1p-24F; }, true},
    {"CodeRange", [](Recording& r) { AnalogOf(r, 0).codeRange = 32766; }, false},
    {"ZeroCode", [](Recording& r) { AnalogOf(r, 0).zeroCode = 5; }, true},
    {"Offset", [](Recording& r) { AnalogOf(r, 0).offset = 5; }, true},
    {"Skew", [](Recording& r) { AnalogOf(r, 0).skewSeconds = 5; }, true},
    {"Remark", [](Recording& r) { AnalogOf(r, 0).remark = "other"; }, true},
    {"Points", [](Recording& r) { AnalogOf(r, 0).samples = {1}; }, true},
    {"DiscreteName", [](Recording& r) { DiscreteOf(r, 2).name = "other"; }, false},
    {"Inverted", [](Recording& r) { DiscreteOf(r, 2).inverted = 1; }, false},
    // Only the first channel of each kind is checked.
    {"SecondAnalogName", [](Recording& r) { AnalogOf(r, 1).name = "other"; }, true},
    {"SecondAnalogRate", [](Recording& r) { AnalogOf(r, 1).rate = 1; }, true},
    {"SecondDiscreteName", [](Recording& r) { DiscreteOf(r, 3).name = "other"; }, true},
    {"SecondInverted", [](Recording& r) { DiscreteOf(r, 3).inverted = 1; }, true},
};

} // namespace

TEST_P(CompareHeader, SeesOnlyWhatDecides)
{
    Recording later = TwoOfEach();
    GetParam().change(later);
    EXPECT_EQ(Continues(later, TwoOfEach()), GetParam().continues);
    EXPECT_EQ(Continues(TwoOfEach(), later), GetParam().continues);
}

INSTANTIATE_TEST_SUITE_P(Differences, CompareHeader, testing::ValuesIn(differences));

TEST(CompareHeaderOfInverted, ComparesTheByteAndNotItsMeaning)
{
    Recording one = TwoOfEach();
    Recording two = TwoOfEach();
    DiscreteOf(one, 2).inverted = 1;
    DiscreteOf(two, 2).inverted = 2;
    EXPECT_FALSE(Continues(one, two));
}

TEST(CompareHeaderOfDiscrete, DiffersUnseenWithoutAnalogChannels)
{
    EXPECT_TRUE(Continues(Recording().Add(DiscreteChannel{"x"}), Recording().Add(DiscreteChannel{"y"})));
}

TEST(CompareHeaderOfAnalog, ThrowsWithoutDiscreteChannels)
{
    LoadedFile a(Recording().Add(Analog()));
    LoadedFile b(Recording().Add(Analog()));
    EXPECT_THROW(a->CompareHeader(&b.File()), std::out_of_range);
}

TEST(PointsCheck, WantsAllAnalogChannelsEquallyLong)
{
    EXPECT_TRUE(LoadedFile(Recording())->IsAnChPointsValid());
    Recording recording = TwoOfEach();
    EXPECT_TRUE(LoadedFile(recording)->IsAnChPointsValid());
    AnalogOf(recording, 1).samples = {1, 2};
    EXPECT_FALSE(LoadedFile(recording)->IsAnChPointsValid());
    recording.sections.erase(recording.sections.begin());
    EXPECT_TRUE(LoadedFile(recording)->IsAnChPointsValid());
}

TEST(RatesCheck, WithoutAnalogChannelsSetsTheUsualRateAlone)
{
    LoadedFile file{Recording()};
    file->SampleRate = 1;
    file->SamplesPerPeriod = 7;
    file->ShiftOneThird = 8;
    file->ShiftTwoThirds = 9;
    EXPECT_TRUE(file->IsAnChRatesValid());
    EXPECT_EQ(file->SampleRate, 2400.0);
    EXPECT_EQ(file->SamplesPerPeriod, 7u);
    EXPECT_EQ(file->ShiftOneThird, 8u);
    EXPECT_EQ(file->ShiftTwoThirds, 9u);
}

TEST(RatesCheck, TakesRateAndPeriodFromTheFirstChannel)
{
    Recording recording = TwoOfEach();
    AnalogOf(recording, 0).rate = 1200.1F;
    AnalogOf(recording, 1).rate = 1200.1F;
    LoadedFile file(recording);
    EXPECT_TRUE(file->IsAnChRatesValid());
    EXPECT_EQ(file->SampleRate, static_cast<double>(1200.1F));
    EXPECT_EQ(file->SamplesPerPeriod, 24u);
    EXPECT_EQ(file->ShiftOneThird, 8u);
    EXPECT_EQ(file->ShiftTwoThirds, 16u);
}

TEST(RatesCheck, DifferentRateFailsWithTheFieldsSet)
{
    Recording recording = TwoOfEach();
    AnalogOf(recording, 1).rate = 1200;
    LoadedFile file(recording);
    EXPECT_FALSE(file->IsAnChRatesValid());
    EXPECT_EQ(file->SampleRate, 2400.0);
    EXPECT_EQ(file->SamplesPerPeriod, 48u);
    EXPECT_EQ(file->ShiftOneThird, 16u);
    EXPECT_EQ(file->ShiftTwoThirds, 32u);
}

TEST(RatesCheck, RatesEqualUpToTheSmallestDifferencePass)
{
    Recording recording = TwoOfEach();
    AnalogOf(recording, 0).rate = 1;
    AnalogOf(recording, 1).rate = 1 - 0x1p-24F;
    EXPECT_TRUE(LoadedFile(recording)->IsAnChRatesValid());
    AnalogOf(recording, 1).rate = 1 + 0x1p-23F;
    EXPECT_FALSE(LoadedFile(recording)->IsAnChRatesValid());
}

TEST(LookUps, PointsOfTheFirstChannel)
{
    EXPECT_EQ(LoadedFile(Recording())->GetNumPointsAn(), 0u);
    Recording recording = TwoOfEach();
    AnalogOf(recording, 1).samples = {1};
    EXPECT_EQ(LoadedFile(recording)->GetNumPointsAn(), 3u);
}

TEST(LookUps, ChannelByIndexIsNullAfterTheLast)
{
    LoadedFile file(TwoOfEach());
    EXPECT_EQ(file->GetAnChannel(0), &file.An(0));
    EXPECT_EQ(file->GetAnChannel(1), &file.An(1));
    EXPECT_EQ(file->GetAnChannel(2), nullptr);
    EXPECT_EQ(file->GetAnChannel(0xFFFFFFFF), nullptr);
    EXPECT_EQ(LoadedFile(Recording())->GetAnChannel(0), nullptr);
}
