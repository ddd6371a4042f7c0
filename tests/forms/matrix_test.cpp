// Every form read, written in every other form and read again: all codes, values, states and times are the
// same.
#include "forms/comtradetext.h"
#include "forms/csvstream.h"
#include "forms/exporting.h"
#include "forms/matstream.h"
#include "forms/values.h"
#include "madestream.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using comtrade::DataType;
using comtrade::Revision;
using forms::Form;

struct Kind
{
    const char* name;
    Form form;
    Revision revision;
    DataType data;
};

// The forms of COMTRADE, then the others.
const std::vector<Kind> Kinds = {
    {"1999Ascii", Form::Cfg, Revision::R1999, DataType::Ascii},
    {"1999Binary", Form::Cfg, Revision::R1999, DataType::Binary},
    {"2013Ascii", Form::Cfg, Revision::R2013, DataType::Ascii},
    {"2013Binary", Form::Cfg, Revision::R2013, DataType::Binary},
    {"2013Binary32", Form::Cfg, Revision::R2013, DataType::Binary32},
    {"2013Float32", Form::Cfg, Revision::R2013, DataType::Float32},
    {"CffAscii", Form::Cff, Revision::R2013, DataType::Ascii},
    {"CffBinary", Form::Cff, Revision::R2013, DataType::Binary},
    {"CffBinary32", Form::Cff, Revision::R2013, DataType::Binary32},
    {"CffFloat32", Form::Cff, Revision::R2013, DataType::Float32},
    {"Csv", Form::Csv, Revision::R2013, DataType::Ascii},
    {"Mat", Form::Mat, Revision::R2013, DataType::Ascii},
};
constexpr size_t OfComtrade = 10;

struct Made
{
    const char* name;
    comtrade::Configuration config;
    comtrade::Block rows;
};

// Codes over the whole range of 16 bits, with gaps.
double CodeOf(size_t sample, size_t channel)
{
    const double codes[] = {0, 1, -1, 32767, -32767, 100, -9999, 10000, Missing, 7};
    return codes[(3 * sample + channel) % 10];
}

comtrade::Block RowsOf(const comtrade::Configuration& config, qint64 step)
{
    comtrade::Block rows;
    rows.Resize(static_cast<size_t>(config.SampleCount()), config);
    for (size_t i = 0; i < rows.count; ++i) {
        rows.numbers[i] = static_cast<quint32>(i + 1);
        rows.times[i] = static_cast<qint64>(i) * step;
        for (size_t k = 0; k < config.analog.size(); ++k)
            rows.analog[i * config.analog.size() + k] = CodeOf(i, k);
        for (size_t k = 0; k < config.states.size(); ++k)
            rows.states[i * config.states.size() + k] = (i >> (k % 5)) % 2 == 1 ? 1 : 0;
    }
    return rows;
}

comtrade::Configuration ConfigurationOf(int analog, int states)
{
    comtrade::Configuration config = MadeConfiguration(analog, states, 23);
    for (size_t k = 0; k < config.analog.size(); ++k) {
        comtrade::AnalogChannel& channel = config.analog[k];
        channel.phase = QStringLiteral("A");
        channel.circuit = QStringLiteral("ВЛ %1").arg(k + 1);
        channel.a = 0.1 / (static_cast<double>(k) + 3);
        channel.b = -2.5 + static_cast<double>(k);
        channel.skew = 12.5;
        channel.min = -32767;
        channel.max = 32767;
        channel.primary = 1000;
        channel.secondary = 5;
        channel.primaryValues = k % 2 == 0;
    }
    for (comtrade::StateChannel& channel : config.states)
        channel.normalState = channel.number % 2 == 0;
    return config;
}

std::vector<Made> AllMade()
{
    comtrade::Configuration config = ConfigurationOf(3, 17);
    std::vector<Made> all = {{"Plain", config, RowsOf(config, 1000)}};
    config.rates = {{1000, 10}, {250.5, 23}};
    all.push_back({"TwoRates", config, RowsOf(config, 1500)});
    config.rates = {{0, 23}};
    config.timeMultiplier = 2;
    all.push_back({"NoRate", config, RowsOf(config, 777)});
    config = ConfigurationOf(0, 16);
    all.push_back({"NoAnalog", config, RowsOf(config, 1000)});
    config = ConfigurationOf(2, 0);
    all.push_back({"NoDiscrete", config, RowsOf(config, 1000)});
    return all;
}

forms::Request RequestOf(const Kind& kind)
{
    forms::Request request;
    request.form = kind.form;
    request.comtrade.revision = kind.revision;
    request.comtrade.data = kind.data;
    return request;
}

// Stored by hand, in ASCII of revision 1999.
void Store(const TestDirectory& place, const Made& made)
{
    comtrade::Configuration config = made.config;
    config.revision = Revision::R1999;
    config.dataType = DataType::Ascii;
    place.Write("made.cfg", forms::ConfigurationText(config).toUtf8());
    QByteArray data;
    for (size_t i = 0; i < made.rows.count; ++i) {
        data += QByteArray::number(made.rows.numbers[i]) + ',' + QByteArray::number(made.rows.times[i]);
        for (size_t k = 0; k < config.analog.size(); ++k) {
            const double code = made.rows.analog[i * config.analog.size() + k];
            data += std::isnan(code) ? QByteArray(",99999") : ',' + QByteArray::number(code);
        }
        for (size_t k = 0; k < config.states.size(); ++k)
            data += ',' + QByteArray::number(made.rows.states[i * config.states.size() + k]);
        data += '\n';
    }
    place.Write("made.dat", data);
}

void ExpectSame(const comtrade::Block& read, const comtrade::Block& expected)
{
    ASSERT_EQ(read.count, expected.count);
    EXPECT_EQ(read.times, expected.times);
    EXPECT_EQ(read.states, expected.states);
    ASSERT_EQ(read.analog.size(), expected.analog.size());
    for (size_t i = 0; i < read.analog.size(); ++i) {
        EXPECT_EQ(std::isnan(read.analog[i]), std::isnan(expected.analog[i])) << i;
        if (!std::isnan(expected.analog[i])) {
            EXPECT_EQ(read.analog[i], expected.analog[i]) << i;
        }
    }
}

// The configuration with what differs between the forms on purpose.
QString CommonText(comtrade::Configuration config)
{
    config.revision = Revision::R1999;
    config.dataType = DataType::Ascii;
    return forms::ConfigurationText(config);
}

void ExpectRecord(const QString& path, const Made& made)
{
    forms::RecordStream stream(path, comtrade::Strict());
    EXPECT_EQ(CommonText(stream.Config()), CommonText(made.config));
    const comtrade::Block read = AllOf(stream);
    EXPECT_EQ(read.numbers, made.rows.numbers);
    ExpectSame(read, made.rows);
}

// What Values makes of the record as it was made.
comtrade::Block ValuesOf(const Made& made, comtrade::Configuration& config)
{
    MadeStream stream(made.config);
    const size_t analog = made.config.analog.size();
    const size_t states = made.config.states.size();
    for (size_t i = 0; i < made.rows.count; ++i) {
        const double* const codes = made.rows.analog.data() + i * analog;
        const quint8* const bits = made.rows.states.data() + i * states;
        stream.Add({codes, codes + analog}, {bits, bits + states}, made.rows.times[i]);
    }
    forms::Values values(stream);
    config = values.Config();
    return AllOf(values);
}

void ExpectValues(const QString& base, Form form, const Made& made)
{
    comtrade::Configuration config;
    const comtrade::Block expected = ValuesOf(made, config);
    if (form == Form::Csv) {
        forms::CsvStream stream(base + ".csv", config, {});
        ExpectSame(AllOf(stream), expected);
    } else {
        forms::MatStream stream(base + ".mat", config);
        ExpectSame(AllOf(stream), expected);
    }
}

class Matrix : public testing::TestWithParam<size_t>
{};

TEST_P(Matrix, HoldsEveryValueFromAnyFormToAny)
{
    const Kind& first = Kinds[GetParam()];
    for (const Made& made : AllMade()) {
        SCOPED_TRACE(made.name);
        const TestDirectory place;
        Store(place, made);
        const forms::Exported once =
            forms::Export({place.Path("made.cfg"), {}, {}}, RequestOf(first), place.Path("first"));
        const QString record = place.Path("first" + once.files.first());
        EXPECT_TRUE(once.newScales.empty());
        ExpectRecord(record, made);
        for (const Kind& second : Kinds) {
            SCOPED_TRACE(second.name);
            const QString base = place.Path(QString::fromLatin1(second.name));
            const forms::Exported twice = forms::Export({record, {}, {}}, RequestOf(second), base);
            EXPECT_EQ(twice.samples, 23);
            if (second.form == Form::Cfg || second.form == Form::Cff)
                ExpectRecord(base + twice.files.first(), made);
            else
                ExpectValues(base, second.form, made);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Forms, Matrix, testing::Range(size_t{0}, OfComtrade),
                         [](const auto& row) { return std::string(Kinds[row.param].name); });

} // namespace
