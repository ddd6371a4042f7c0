// Records that the library writes, read back.
#include "examples.h"

#include "recorderfile/recorderfile.h"
#include "support/device.h"

#include <gtest/gtest.h>

#include <QDir>

namespace {

struct Form
{
    const char* name;
    const char* keys;
    const char* file;
    comtrade::Revision revision;
    comtrade::DataType type;
};

void PrintTo(const Form& form, std::ostream* out)
{
    *out << form.name;
}

recorderfile::Recording Example()
{
    recorderfile::Recording recording;
    recording.Add(recorderfile::AnalogChannel{"Q1:Ia", "А", {1, -2, 300, -32767}})
        .Add(recorderfile::AnalogChannel{"Q1:Ib", "А", {4, 5, 6, 32767}})
        .Add(recorderfile::DiscreteChannel{"Q1:x", 0, {{0, 1}, {500, 0}}});
    return recording;
}

class ComtradeWritten : public testing::TestWithParam<Form>
{};

} // namespace

TEST_P(ComtradeWritten, IsReadAsItWasRecorded)
{
    TestStation station(QString::fromUtf8(GetParam().keys).toUtf8());
    ASSERT_TRUE(station.Convert(Encode(Example())));
    const QDir out(station.Directory().Path("out"));
    const QStringList names = out.entryList({QLatin1String(GetParam().file)}, QDir::Files);
    ASSERT_EQ(names.size(), 1);
    comtrade::Record record(out.filePath(names[0]));

    const comtrade::Configuration& configuration = record.Config();
    EXPECT_EQ(configuration.revision, GetParam().revision);
    EXPECT_EQ(configuration.dataType, GetParam().type);
    EXPECT_EQ(configuration.SampleCount(), 4);
    EXPECT_EQ(configuration.analog[0].name, "Ia Q1");
    EXPECT_EQ(configuration.analog[0].unit, "А");
    EXPECT_EQ(record.Header().isEmpty(), configuration.revision == comtrade::Revision::R1999);
    EXPECT_EQ(record.Information().isEmpty(), configuration.revision == comtrade::Revision::R1999);

    std::vector<std::vector<double>> codes;
    std::vector<int> states;
    std::vector<qint64> times;
    comtrade::Row row;
    while (record.Next(row)) {
        codes.push_back(row.analog);
        states.push_back(row.states[0]);
        times.push_back(row.time);
        EXPECT_EQ(row.number, codes.size());
    }
    EXPECT_EQ(codes, (std::vector<std::vector<double>>{{1, 4}, {-2, 5}, {300, 6}, {-32767, 32767}}));
    EXPECT_EQ(states, (std::vector<int>{1, 1, 0, 0}));
    EXPECT_EQ(times, (std::vector<qint64>{0, 417, 833, 1250}));
}

INSTANTIATE_TEST_SUITE_P(
    Forms, ComtradeWritten,
    testing::Values(Form{"Ascii2013", "", "*.cfg", comtrade::Revision::R2013, comtrade::DataType::Ascii},
                    Form{"Binary2013", "Тип Comtrade BIN=1\n", "*.cfg", comtrade::Revision::R2013,
                         comtrade::DataType::Binary},
                    Form{"Binary1999", "Тип Comtrade BIN=1\nТип Comtrade 1999=1\n", "*.cfg",
                         comtrade::Revision::R1999, comtrade::DataType::Binary},
                    Form{"AsciiContainer", "Тип Comtrade CFF=1\n", "*.cff", comtrade::Revision::R2013,
                         comtrade::DataType::Ascii},
                    Form{"BinaryContainerUtf8",
                         "Тип Comtrade CFF=1\nТип Comtrade BIN=1\nКодировка Comtrade UTF8=1\n", "*.cff",
                         comtrade::Revision::R2013, comtrade::DataType::Binary}),
    [](const auto& form) { return std::string(form.param.name); });
