// Data of all types, and the ways in which they can be cut off or malformed.
#include "examples.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

using comtrade::Record;
using comtrade::Row;

namespace {

// Two analog channels and one status channel in a record of the given type of data.
class Example : public TestDirectory
{
public:
    explicit Example(const QByteArray& data, const QByteArray& type = "ASCII")
    {
        Write(QStringLiteral("rec.dat"), data);
        path =
            Write(QStringLiteral("rec.cfg"), ExampleConfiguration().replace("\nASCII\n", '\n' + type + '\n'));
    }

    std::vector<Row> Rows(const comtrade::ReadingOptions& options = comtrade::Strict()) const
    {
        Record record(path, options);
        std::vector<Row> rows;
        Row row;
        while (record.Next(row))
            rows.push_back(row);
        return rows;
    }

    // Without the directory.
    QString Error() const
    {
        return ErrorOf([this] { Rows(); }).remove(Path() + QLatin1Char('/'));
    }

private:
    QString path;
};

template <class Value>
QByteArray Bytes(Value value)
{
    return QByteArray(reinterpret_cast<const char*>(&value), sizeof value);
}

} // namespace

TEST(ComtradeData, AsciiRecordsMayMissTimesAndValues)
{
    const std::vector<Row> rows = Example("1,0,-5,32767,1\r\n2,,,7.5,0\n 3 , 833 ,1,2,1").Rows();
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0].number, 1U);
    EXPECT_TRUE(rows[0].hasTime);
    EXPECT_EQ(rows[0].analog, (std::vector<double>{-5, 32767}));
    EXPECT_EQ(rows[0].states, std::vector<quint8>{1});
    EXPECT_FALSE(rows[1].hasTime);
    EXPECT_TRUE(std::isnan(rows[1].analog[0]));
    EXPECT_EQ(rows[1].analog[1], 7.5);
    EXPECT_EQ(rows[2].time, 833);
    EXPECT_EQ(rows[2].analog, (std::vector<double>{1, 2}));
}

TEST(ComtradeData, AsciiValueOf99999IsMissingAsIsAnEmptyField)
{
    const std::vector<Row> rows =
        Example("1,0,99999,99998,1\n2,0,-99999,99999.0,1\n3,0, 99999 ,,1\n4,0,nan,inf,1\n").Rows();
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_TRUE(std::isnan(rows[0].analog[0]));
    EXPECT_EQ(rows[0].analog[1], 99998);
    EXPECT_EQ(rows[1].analog[0], -99999);
    EXPECT_TRUE(std::isnan(rows[1].analog[1]));
    for (size_t row : {2U, 3U})
        for (const double code : rows[row].analog)
            EXPECT_TRUE(std::isnan(code)) << row;
}

TEST(ComtradeData, AsciiNumbersMayBeOfAnyLength)
{
    const std::vector<Row> rows = Example("1,0,123456789012345678,-999999999999999999,0\n"
                                          "2,0,1234567890123456789,007,1\n"
                                          "3,0,123456789012345678901234567890,-0,1\n")
                                      .Rows();
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0].analog, (std::vector<double>{123456789012345678.0, -999999999999999999.0}));
    EXPECT_EQ(rows[1].analog, (std::vector<double>{1234567890123456789.0, 7}));
    EXPECT_EQ(rows[2].analog, (std::vector<double>{1.2345678901234568e29, 0}));
}

TEST(ComtradeData, AsciiEndsAtTheEndOfFileMark)
{
    EXPECT_EQ(Example("1,0,1,2,1\n\x1A").Rows().size(), 1U);
    EXPECT_EQ(Example("").Rows().size(), 0U);
}

TEST(ComtradeData, BinaryRecordsHaveCodesAndWordsOfStates)
{
    const QByteArray head = Bytes<quint32>(7) + Bytes<quint32>(0xFFFFFFFF);
    const std::vector<Row> rows =
        Example(head + Bytes<qint16>(-2) + Bytes<qint16>(-32768) + Bytes<quint16>(1), "binary").Rows();
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0].number, 7U);
    EXPECT_FALSE(rows[0].hasTime);
    EXPECT_EQ(rows[0].analog[0], -2.0);
    EXPECT_TRUE(std::isnan(rows[0].analog[1]));
    EXPECT_EQ(rows[0].states[0], 1);
}

TEST(ComtradeData, WideBinaryRecordsHaveFourBytesAValue)
{
    const QByteArray head = Bytes<quint32>(1) + Bytes<quint32>(5);
    const std::vector<Row> whole =
        Example(head + Bytes<qint32>(100000) + Bytes<qint32>(INT32_MIN) + Bytes<quint16>(0), "BINARY32")
            .Rows();
    EXPECT_EQ(whole[0].analog[0], 100000.0);
    EXPECT_TRUE(std::isnan(whole[0].analog[1]));
    EXPECT_EQ(whole[0].time, 5);
    const std::vector<Row> real =
        Example(head + Bytes(1.5F) + Bytes(-0.25F) + Bytes<quint16>(0), "FLOAT32").Rows();
    EXPECT_EQ(real[0].analog, (std::vector<double>{1.5, -0.25}));
}

TEST(ComtradeData, SinglePrecisionThatIsNotFiniteIsMissing)
{
    const QByteArray head = Bytes<quint32>(1) + Bytes<quint32>(5);
    const float infinity = std::numeric_limits<float>::infinity();
    const std::vector<Row> rows =
        Example(head + Bytes(std::nanf("")) + Bytes(-infinity) + Bytes<quint16>(0), "FLOAT32").Rows();
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_TRUE(std::isnan(rows[0].analog[0]));
    EXPECT_TRUE(std::isnan(rows[0].analog[1]));
}

TEST(ComtradeData, NumbersWithTheBitsOfOtherTypesAreValues)
{
    const QByteArray head = Bytes<quint32>(1) + Bytes<quint32>(5);
    const std::vector<Row> whole =
        Example(head + Bytes<qint32>(99999) + Bytes<qint32>(-32768) + Bytes<quint16>(0), "BINARY32").Rows();
    EXPECT_EQ(whole[0].analog, (std::vector<double>{99999, -32768}));
    const std::vector<Row> real =
        Example(head + Bytes(99999.0F) + Bytes(-32768.0F) + Bytes<quint16>(0), "FLOAT32").Rows();
    EXPECT_EQ(real[0].analog, (std::vector<double>{99999, -32768}));
}

struct Malformed
{
    const char* data;
    const char* error;
};

class ComtradeDataError : public testing::TestWithParam<Malformed>
{};

TEST_P(ComtradeDataError, NamesFileRecordAndValue)
{
    EXPECT_EQ(Example(GetParam().data).Error(), GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    Ascii, ComtradeDataError,
    testing::Values(
        Malformed{"1,0,1,2,1\n2,416,1,2", "rec.dat, record 2: ends before status channel 1"},
        Malformed{"1", "rec.dat, record 1: ends before timestamp"},
        Malformed{"x,0,1,2,1\n", "rec.dat, record 1: n is 'x', which is no number"},
        Malformed{"1,0y,1,2,1\n", "rec.dat, record 1: timestamp is '0y', which is no number"},
        Malformed{"1,0,1,--2,1\n", "rec.dat, record 1: analog channel 2 is '--2', which is no number"},
        Malformed{"1,0,1,-,1\n", "rec.dat, record 1: analog channel 2 is '-', which is no number"},
        Malformed{"1,0,1,2,-0\n", "rec.dat, record 1: status channel 1 is '-0', which is no number"},
        Malformed{"1,0,1\n", "rec.dat, record 1: ends before analog channel 2"},
        Malformed{"1,0,1,2,2\n", "rec.dat, record 1: status channel 1 is '2', which is no number"},
        Malformed{"1,0,1,2,1,0\n", "rec.dat, record 1: has more fields than channels"},
        Malformed{"\n", "rec.dat, record 1: n is '', which is no number"}));

TEST(ComtradeData, ARecordThatNeverEndsIsRefusedInBoundedMemory)
{
    EXPECT_EQ(Example(QByteArray(3000000, '1')).Error(), "rec.dat, record 1: has no end within 224 bytes");
}

TEST(ComtradeData, ABinaryRecordThatIsCutOffIsAnError)
{
    EXPECT_EQ(Example(QByteArray(14 + 13, '\0'), "BINARY").Error(),
              "rec.dat, record 2: is cut off: 13 of 14 bytes");
}

TEST(ComtradeRecord, PiecesMayBeMissingOrInCapitals)
{
    const TestDirectory directory;
    const QString path = directory.Write("REC.CFG", ExampleConfiguration());
    EXPECT_EQ(ErrorOf([&] { Record record(path); }), path + ": there is no .dat file beside it");
    directory.Write("REC.DAT", "1,0,1,2,1\n");
    directory.Write("REC.hdr", "report");
    Record record(path);
    EXPECT_EQ(record.Header(), "report");
    EXPECT_EQ(record.Information(), "");
    EXPECT_EQ(ErrorOf([&] { Record other(directory.Path("REC.DAT")); }),
              directory.Path("REC.DAT") + ": is a part of a record; give its configuration '" + path + "'");
    EXPECT_EQ(ErrorOf([&] { Record other(directory.Path("no.cff")); }),
              directory.Path("no.cff") + ": does not exist");
}

class ComtradeContainer : public testing::Test, public TestDirectory
{
public:
    QString Error(const QByteArray& bytes)
    {
        const QString path = Write("rec.cff", bytes);
        return ErrorOf([&] {
                   Record record(path);
                   Row row;
                   while (record.Next(row)) {
                   }
               })
            .remove(Path() + QLatin1Char('/'));
    }
};

TEST_F(ComtradeContainer, HoldsSectionsInAnyOrder)
{
    const QByteArray data =
        Bytes<quint32>(1) + Bytes<quint32>(0) + Bytes<qint32>(0x2D2D2D2D) + Bytes<quint16>(1);
    const QByteArray binary = ExampleConfiguration().replace("\nASCII\n", "\nBINARY\n");
    const QString path =
        Write("rec.cff", "--- file type: HDR ---\r\nreport\n--- File Type: DAT BINARY: 14 ---\r\n" + data +
                             "--- file type: INF ---\r\ninf\r\n--- file type: cfg ---\n" + binary);
    Record record(path);
    EXPECT_EQ(record.Header(), "report\n");
    EXPECT_EQ(record.Information(), "inf\r\n");
    Row row;
    ASSERT_TRUE(record.Next(row));
    EXPECT_EQ(row.analog[0], double(0x2D2D));
    EXPECT_FALSE(record.Next(row));
}

TEST_F(ComtradeContainer, AsciiDataEndAtTheNextMark)
{
    const QString path =
        Write("rec.cff", "--- file type: CFG ---\r\n" + ExampleConfiguration() +
                             "--- file type: DAT ASCII ---\r\n1,0,1,2,1\n--- file type: HDR ---\r\n");
    Record record(path);
    Row row;
    EXPECT_TRUE(record.Next(row));
    EXPECT_FALSE(record.Next(row));
}

TEST_F(ComtradeContainer, FailuresNameWhatIsMissing)
{
    const QByteArray configuration = "--- file type: CFG ---\r\n" + ExampleConfiguration();
    EXPECT_EQ(Error("text\n"), "rec.cff: has no CFG section");
    EXPECT_EQ(Error(""), "rec.cff: has no CFG section");
    EXPECT_EQ(Error(configuration), "rec.cff: has no DAT section");
    EXPECT_EQ(Error(configuration + "--- file type: DAT BINARY: 14 ---\r\n1234\n"),
              "rec.cff, record 1: ends before timestamp");
}
