// Records at other rates, from file to file.
#include "forms/comtradetext.h"
#include "forms/csvstream.h"
#include "forms/exporting.h"
#include "forms/values.h"
#include "madestream.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr int Samples = 1000;

// The value of a channel at a time, s from the first sample.
double ValueAt(double time)
{
    return 100 * std::sin(2 * 3.14159265358979323846 * 50 * time);
}

// A second at 1 kHz, with a header.
class OtherRates : public testing::Test
{
protected:
    OtherRates()
    {
        comtrade::Configuration config = MadeConfiguration(1, 1, Samples);
        config.analog[0].a = 0.01;
        config.analog[0].min = -32767;
        config.analog[0].max = 32767;
        Store(config);
    }

    void Store(const comtrade::Configuration& config)
    {
        place.Write("made.cfg", forms::ConfigurationText(config).toUtf8());
        place.Write("made.hdr", "Отчёт");
        QByteArray data;
        for (int i = 0; i < Samples; ++i)
            data += QByteArray::number(i + 1) + ',' + QByteArray::number(1000 * i) + ',' +
                    QByteArray::number(std::llround(100 * ValueAt(i / 1000.0))) + ',' +
                    QByteArray::number(i / 500) + '\n';
        place.Write("made.dat", data);
        stored = config;
    }

    forms::Exported Export(const forms::Request& request)
    {
        return forms::Export({place.Path("made.cfg"), {}, {}}, request, place.Path("out"));
    }

    // What a CSV file has; from and to in s from the trigger.
    std::vector<double> TableValues(std::optional<double> from, std::optional<double> to)
    {
        forms::Request request;
        request.form = forms::Form::Csv;
        request.rate = 400;
        request.span = {from, to};
        const forms::Exported exported = Export(request);
        forms::CsvStream stream(place.Path("out.csv"), exported.config, {});
        return AllOf(stream).analog;
    }

    TestDirectory place;
    comtrade::Configuration stored;
};

} // namespace

TEST_F(OtherRates, KeepTheDataTypeAndTheScaleOfTheValues)
{
    for (const comtrade::DataType type : {comtrade::DataType::Ascii, comtrade::DataType::Binary}) {
        stored.dataType = comtrade::DataType::Ascii;
        forms::Request request;
        request.rate = 2500;
        request.comtrade.data = type;
        const forms::Exported exported = Export(request);
        forms::RecordStream record(place.Path("out.cfg"), comtrade::Strict());
        EXPECT_EQ(record.Config().dataType, type);
        ASSERT_EQ(exported.newScales.size(), 1U);
        forms::Values values(record);
        const comtrade::Block block = AllOf(values);
        ASSERT_EQ(block.count, 2498U);
        for (size_t i = 100; i < 2398; ++i)
            ASSERT_NEAR(block.analog[i], ValueAt(static_cast<double>(i) / 2500), 0.02) << i;
    }
    forms::Request request;
    request.rate = 400;
    Export(request);
    EXPECT_EQ(comtrade::Record(place.Path("out.cfg")).Config().dataType, comtrade::DataType::Ascii);
}

TEST_F(OtherRates, KeepTheScaleInAsciiDataWhichHaveRealNumbers)
{
    stored.revision = comtrade::Revision::R2013;
    stored.timeCode = stored.localCode = QStringLiteral("x");
    stored.timeQuality = QStringLiteral("F");
    stored.leapSecond = QStringLiteral("3");
    Store(stored);
    // Far from zero, where the digits of single precision are few enough for a field.
    QByteArray data;
    for (int i = 0; i < Samples; ++i)
        data += QByteArray::number(i + 1) + ',' + QByteArray::number(1000 * i) + ',' +
                QByteArray::number(std::llround(100 * ValueAt(i / 1000.0)) + 20000) + ",0\n";
    place.Write("made.dat", data);
    forms::Request request;
    request.rate = 2500;
    const forms::Exported exported = Export(request);
    EXPECT_TRUE(exported.newScales.empty());
    forms::RecordStream text(place.Path("out.cfg"), comtrade::Strict());
    const comtrade::Block digits = AllOf(text);
    request.comtrade.data = comtrade::DataType::Float32;
    Export(request);
    forms::RecordStream single(place.Path("out.cfg"), comtrade::Strict());
    const comtrade::Block numbers = AllOf(single);
    ASSERT_EQ(digits.count, 2498U);
    for (size_t i = 0; i < digits.analog.size(); ++i)
        ASSERT_EQ(static_cast<float>(digits.analog[i]), static_cast<float>(numbers.analog[i])) << i;
}

TEST_F(OtherRates, AreExplainedAtTheEndOfTheHdrFile)
{
    forms::Request request;
    request.rate = 400;
    Export(request);
    EXPECT_EQ(
        QString::fromUtf8(ReadBytes(place.Path("out.hdr"))),
        "Отчёт\r\nThe samples were computed for a rate of 400 Hz from those taken at 1000 Hz, by a low-pass "
        "filter (FIR, linear phase, Kaiser window) that passes up to 160 Hz and attenuates by 80 dB from 200 "
        "Hz "
        "on.\r\n");
    request.rate = 0;
    request.every = 5;
    Export(request);
    EXPECT_EQ(QString::fromUtf8(ReadBytes(place.Path("out.hdr"))),
              "Отчёт\r\nOne sample of 5 was kept of those taken at 1000 Hz, without a filter.\r\n");
}

TEST_F(OtherRates, AreTheSameInAPartOfARecordAsInTheWhole)
{
    const std::vector<double> whole = TableValues({}, {});
    const std::vector<double> part = TableValues(0.098, 0.298);
    EXPECT_EQ(part, std::vector<double>(whole.begin() + 40, whole.begin() + 121));
}

TEST_F(OtherRates, ChangeNothingIfTheRateIsThatOfTheRecord)
{
    forms::Request request;
    request.rate = 1000;
    const forms::Exported exported = Export(request);
    EXPECT_TRUE(exported.newScales.empty());
    EXPECT_EQ(exported.resampling, QString());
    EXPECT_EQ(QString::fromUtf8(ReadBytes(place.Path("out.hdr"))), "Отчёт");
    forms::RecordStream record(place.Path("made.cfg"));
    forms::RecordStream same(place.Path("out.cfg"));
    EXPECT_EQ(AllOf(same).analog, AllOf(record).analog);
}

TEST_F(OtherRates, NeedARate)
{
    stored.rates = {{0, Samples}};
    Store(stored);
    forms::Request request;
    request.rate = 400;
    EXPECT_THROW(Export(request), forms::FormError);
    request.rate = 0;
    request.every = 4;
    EXPECT_EQ(Export(request).samples, Samples / 4);
}

TEST_F(OtherRates, HoldForRecordsThatAreShorterThanAnnounced)
{
    stored.rates = {{1000, qint64{2} * Samples}};
    Store(stored);
    forms::Request request;
    request.rate = 500;
    const forms::Exported exported = Export(request);
    EXPECT_EQ(exported.samples, Samples / 2);
    EXPECT_EQ(exported.total, Samples);
    EXPECT_EQ(comtrade::Record(place.Path("out.cfg")).Config().SampleCount(), Samples / 2);
}
