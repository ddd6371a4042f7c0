// The options of zucmtr sample: each reaches the station, and wrong values are refused.
#include "program.h"
#include "sampleoption.h"

#include "support/stationfiles.h"

#include <gtest/gtest.h>

namespace {

using station::StationOptions;

using Option = GoodOption<StationOptions>;

class SampleOption : public testing::TestWithParam<Option>
{};

class WrongSampleOption : public testing::TestWithParam<WrongOption>
{};

} // namespace

TEST_P(SampleOption, GivesTheStationsBytes)
{
    StationOptions options;
    GetParam().set(options);
    const TestDirectory directory;
    const Finished run =
        RunProgram(directory.Path(), QStringList{"sample", "--out", "."} + GetParam().arguments);
    ASSERT_EQ(run.code, 0) << run.err;
    QStringList names = {"ZuDrv.ini"};
    for (const recorderfile::NamedFile& file : AllStationFiles(options)) {
        names << file.name;
        EXPECT_EQ(ReadBytes(directory.Path(file.name)), file.bytes) << file.name;
    }
    names.sort();
    EXPECT_EQ(directory.Names(), names);
    EXPECT_EQ(ReadBytes(directory.Path("ZuDrv.ini")), station::MakeIni(options).toUtf8());
}

INSTANTIATE_TEST_SUITE_P(
    Sample, SampleOption,
    testing::Values(
        Option{{}, [](StationOptions&) {}},
        Option{{"--analog", "9"}, [](StationOptions& options) { options.analogChannels = 9; }},
        Option{{"--analog", "010"}, [](StationOptions& options) { options.analogChannels = 10; }},
        Option{{"--discrete", "3"}, [](StationOptions& options) { options.discreteChannels = 3; }},
        Option{{"--analog", "0", "--discrete", "0"},
               [](StationOptions& options) { options.analogChannels = options.discreteChannels = 0; }},
        Option{{"--rate", "1200.5"}, [](StationOptions& options) { options.sampleRate = 1200.5; }},
        Option{{"--seconds", "0.25"}, [](StationOptions& options) { options.seconds = 0.25; }},
        Option{{"--segments", "16", "--seconds", "0.1"},
               [](StationOptions& options) {
                   options.segments = 16;
                   options.seconds = 0.1;
               }},
        Option{{"--compressed"}, [](StationOptions& options) { options.compressed = true; }},
        Option{{"--plain"}, [](StationOptions& options) { options.compressed = false; }},
        Option{{"--code-page", "cp866"},
               [](StationOptions& options) { options.codePage = recorderfile::CodePage::Cp866; }},
        Option{{"--code-page", "cp1251"},
               [](StationOptions& options) { options.codePage = recorderfile::CodePage::Cp1251; }},
        Option{{"--fault", "single"},
               [](StationOptions& options) { options.fault = station::Fault::SinglePhase; }},
        Option{{"--fault", "two"}, [](StationOptions& options) { options.fault = station::Fault::TwoPhase; }},
        Option{{"--fault", "three"},
               [](StationOptions& options) { options.fault = station::Fault::ThreePhase; }},
        Option{{"--fault", "none"}, [](StationOptions& options) { options.fault = station::Fault::None; }},
        Option{{"--seed", "4294967295"}, [](StationOptions& options) { options.seed = 4294967295u; }}));

TEST_P(WrongSampleOption, EndsWithTwoAndWritesNothing)
{
    const TestDirectory directory;
    const Finished run =
        RunProgram(directory.Path(), QStringList{"sample", "--out", "."} + GetParam().arguments);
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.out, QString());
    EXPECT_EQ(run.err, "zucmtr: " + GetParam().error + "\n");
    EXPECT_EQ(directory.Names(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(
    Sample, WrongSampleOption,
    testing::Values(
        WrongOption{{"--analog", "4096"},
                    "--analog: '4096' is wrong; give a whole number from 0 to 4095" + Hint()},
        WrongOption{{"--analog", "8x"},
                    "--analog: '8x' is wrong; give a whole number from 0 to 4095" + Hint()},
        WrongOption{{"--discrete", "-1"},
                    "--discrete: '-1' is wrong; give a whole number from 0 to 4095" + Hint()},
        WrongOption{{"--rate", "0"},
                    "--rate: '0' is wrong; give a number above 0 and below 10000000" + Hint()},
        WrongOption{{"--rate", "1e7"},
                    "--rate: '1e7' is wrong; give a number above 0 and below 10000000" + Hint()},
        WrongOption{{"--seconds", "268"},
                    "--seconds: '268' is wrong; give a number above 0 and below 268" + Hint()},
        WrongOption{{"--seconds", "nan"},
                    "--seconds: 'nan' is wrong; give a number above 0 and below 268" + Hint()},
        WrongOption{{"--segments", "0"},
                    "--segments: '0' is wrong; give a whole number from 1 to 16" + Hint()},
        WrongOption{{"--segments", "17"},
                    "--segments: '17' is wrong; give a whole number from 1 to 16" + Hint()},
        WrongOption{{"--code-page", "koi8"},
                    "--code-page: 'koi8' is wrong; give one of cp866, cp1251" + Hint()},
        WrongOption{{"--fault", "four"},
                    "--fault: 'four' is wrong; give one of single, two, three, none, AG, BG, CG, AB, BC, CA, "
                    "ABG, BCG, CAG, ABC" +
                        Hint()},
        WrongOption{{"--seed", "4294967296"},
                    "--seed: '4294967296' is wrong; give a whole number from 0 to 4294967295" + Hint()},
        WrongOption{{"--plain", "--compressed"},
                    "--compressed and --plain exclude each other; leave one out" + Hint()},
        WrongOption{{"--analog", "4000", "--discrete", "96"},
                    "--analog 4000 and --discrete 96 make 4096 channels; a recording has fewer than 4096"},
        WrongOption{{"--analog", "4095", "--discrete", "0", "--segments", "2"},
                    "--analog 4095 and --discrete 0 make 4096 channels; a recording has fewer than 4096"},
        WrongOption{{"--rate", "0.01", "--seconds", "267"},
                    "--rate 0.01 and --seconds 267 make a segment of 300 s; it lasts less than 268 s: raise "
                    "the rate"},
        WrongOption{
            {"--rate", "1000000", "--seconds", "20", "--analog", "2", "--segments", "3"},
            "the recordings would have 20000000 samples per channel and segment, 120000000 in all; at "
            "most 10000000 and 500000000 are made: lower --rate, --seconds, --segments or --analog"}));
