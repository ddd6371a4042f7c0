// Data that are not as they should be: what is read, and what is said about it.
#include "examples.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

using comtrade::Configuration;
using comtrade::Record;
using comtrade::Row;

namespace {

// What a record of two analog channels and one state gives: its rows as "number time analog analog state",
// then the findings as "reason record".
struct Outcome
{
    QByteArray rows;
    QByteArray findings;
    QString error;
};

QByteArray TextOf(const Row& row)
{
    QByteArray text =
        QByteArray::number(row.number) + ' ' + (row.hasTime ? QByteArray::number(row.time) : "-");
    for (const double code : row.analog)
        text += ' ' + (std::isnan(code) ? QByteArray("-") : QByteArray::number(code));
    for (const quint8 state : row.states)
        text += ' ' + QByteArray::number(state);
    return text;
}

Outcome Read(const QByteArray& configuration, const QByteArray& data)
{
    const TestDirectory directory;
    directory.Write("rec.dat", data);
    const QString path = directory.Write("rec.cfg", QByteArray(configuration).replace("\n", "\r\n"));
    Outcome outcome;
    outcome.error = ErrorOf([&] {
                        Record record(path);
                        Row row;
                        while (record.Next(row))
                            outcome.rows += TextOf(row) + '|';
                        EXPECT_FALSE(record.Next(row));
                        for (const comtrade::Finding& finding : record.Forgiven().All()) {
                            EXPECT_FALSE(finding.text.isEmpty());
                            outcome.findings +=
                                QByteArray(finding.reason) + ' ' + QByteArray::number(finding.line) + '|';
                        }
                    }).remove(directory.Path() + QLatin1Char('/'));
    return outcome;
}

QByteArray Samples(int count, const QByteArray& type)
{
    return ExampleConfiguration()
        .replace("2400,4", "2400," + QByteArray::number(count))
        .replace("ASCII", type);
}

template <class Value>
QByteArray Bytes(Value value)
{
    return QByteArray(reinterpret_cast<const char*>(&value), sizeof value);
}

template <class Value>
QByteArray BinaryRecord(quint32 number, Value first, Value second)
{
    return Bytes(number) + Bytes<quint32>(number * 100) + Bytes(first) + Bytes(second) + Bytes<quint16>(1);
}

template <class Value>
QByteArray BinaryRecords(int count)
{
    QByteArray data;
    for (int i = 1; i <= count; ++i)
        data += BinaryRecord(static_cast<quint32>(i), static_cast<Value>(10 * i), static_cast<Value>(-i));
    return data;
}

constexpr char TwoRows[] = "1 0 5 -6 1|2 417 7 8 0|";

struct Odd
{
    const char* name;
    QByteArray data; // ASCII, of two samples
    QByteArray findings;
    QByteArray rows = TwoRows;
};

class ForgivenLines : public testing::TestWithParam<Odd>
{};

QByteArray Zeros(int count)
{
    return QByteArray(count, '\0');
}

} // namespace

TEST_P(ForgivenLines, AreReadAndReported)
{
    const Outcome outcome = Read(Samples(2, "ASCII"), GetParam().data);
    EXPECT_EQ(outcome.error, QString());
    EXPECT_EQ(outcome.rows, GetParam().rows);
    EXPECT_EQ(outcome.findings, GetParam().findings);
}

INSTANTIATE_TEST_SUITE_P(
    Odd, ForgivenLines,
    testing::Values(
        Odd{"Nothing", "1,0,5,-6,1\r\n2,417,7,8,0\r\n", ""},
        Odd{"NoLastLineEnd", "1,0,5,-6,1\r\n2,417,7,8,0", ""},
        Odd{"EndOfFileMark", "1,0,5,-6,1\r\n2,417,7,8,0\r\n\x1A", ""},
        Odd{"EndOfFileMarkInTheLine", "1,0,5,-6,1\r\n2,417,7,8,0\x1A\r\n", ""},
        Odd{"GarbageAfterIt",
            "1,0,5,-6,1\r\n2,417,7,8,0\r\n\x1A"
            "3,1,1,1,1\r\n",
            "bytesLeftOver 2|"},
        Odd{"OnlyReturns", "1,0,5,-6,1\r2,417,7,8,0\r", "lineEnds 1|"},
        Odd{"TwoReturns", "1,0,5,-6,1\r\r\n2,417,7,8,0\r\r\n", "lineEnds 1|"},
        Odd{"MixedEnds", "1,0,5,-6,1\n2,417,7,8,0\r", "lineEnds 2|"},
        Odd{"BlankLine", "1,0,5,-6,1\r\n\r\n2,417,7,8,0\r\n", "blankLine 2|"},
        Odd{"LineOfBlanks", "1,0,5,-6,1\r\n  \t\r\n2,417,7,8,0\r\n", "blankLine 2|"},
        Odd{"BlankLineAtTheEnd", "1,0,5,-6,1\r\n2,417,7,8,0\r\n\r\n", "blankLine 3|"},
        Odd{"ZerosAtTheEnd", "1,0,5,-6,1\r\n2,417,7,8,0\r\n" + Zeros(100), "zerosLeftOver 2|"},
        Odd{"ByteOrderMark",
            "\xEF\xBB\xBF"
            "1,0,5,-6,1\r\n2,417,7,8,0\r\n",
            "byteOrderMark 1|"},
        Odd{"Tabs", "1,\t0,5\t,-6,1\r\n2,417,7,8,0\r\n", "numberForm 1|numberForm 1|"},
        Odd{"PlusSign", "1,0,+5,-6,1\r\n2,417,7,8,0\r\n", "numberForm 1|"},
        Odd{"Exponent", "1,0,0.5E1,-6,1\r\n2,417,7,8,0\r\n", ""},
        Odd{"ExponentOfFortran", "1,0,0.5D+01,-6,1\r\n2,417,7,8,0\r\n", "numberForm 1|"},
        Odd{"TimeWithFraction", "1,0.0,5,-6,1\r\n2,416.667,7,8,0\r\n", "numberForm 1|numberForm 2|"},
        Odd{"NumberWithFraction", "1.0,0,5,-6,1\r\n2,417,7,8,0\r\n", "numberForm 1|"},
        Odd{"StateWithFraction", "1,0,5,-6,1.0\r\n2,417,7,8,0\r\n", "numberForm 1|"},
        Odd{"QuotationMarks", "\"1\",0,5,-6,\"1\"\r\n2,417,7,8,0\r\n", "numberForm 1|numberForm 1|"},
        Odd{"TrailingComma", "1,0,5,-6,1,\r\n2,417,7,8,0,\r\n", "fieldsLeftOver 1|fieldsLeftOver 2|"},
        Odd{"MoreFields", "1,0,5,-6,1,0\r\n2,417,7,8,0\r\n", "fieldsLeftOver 1|"},
        Odd{"Semicolons", "1;0;5;-6,0;1\r\n2,417,7,8,0\r\n", "fieldSeparator 1|numberForm 1|"},
        Odd{"TabsBetween", "1\t0\t5\t-6\t1\r\n2,417,7,8,0\r\n", "fieldSeparator 1|"},
        Odd{"NoNumber", ",0,5,-6,1\r\n2,417,7,8,0\r\n", "fieldEmpty 1|"},
        Odd{"FooterAfterTheLast", "1,0,5,-6,1\r\n2,417,7,8,0\r\nEND\r\n", "linesLeftOver 2|"},
        Odd{"LastSampleCutOff", "1,0,5,-6,1\r\n2,417,7", "sampleCutOff 2|samplesLacking 1|", "1 0 5 -6 1|"},
        Odd{"LastSampleCutOffWithZeros", "1,0,5,-6,1\r\n2,417,7" + Zeros(50),
            "sampleCutOff 2|samplesLacking 1|", "1 0 5 -6 1|"},
        Odd{"Shorter", "1,0,5,-6,1\r\n", "samplesLacking 1|", "1 0 5 -6 1|"},
        Odd{"Longer", "1,0,5,-6,1\r\n2,417,7,8,0\r\n3,833,9,9,1\r\n", "samplesLeftOver 3|",
            "1 0 5 -6 1|2 417 7 8 0|3 833 9 9 1|"}),
    [](const testing::TestParamInfo<Odd>& odd) { return std::string(odd.param.name); });

TEST(ForgivenData, NeverInventsAStateOrAValue)
{
    EXPECT_EQ(Read(Samples(2, "ASCII"), "1,0,5,-6\r\n2,417,7,8,0\r\n").error,
              "rec.dat, record 1: ends before status channel 1");
    EXPECT_EQ(Read(Samples(2, "ASCII"), "1,0,5,-6,\r\n2,417,7,8,0\r\n").error,
              "rec.dat, record 1: status channel 1 is '', which is no number");
    EXPECT_EQ(Read(Samples(2, "ASCII"), "1,0,5,-6,2\r\n2,417,7,8,0\r\n").error,
              "rec.dat, record 1: status channel 1 is '2', which is no number");
    EXPECT_EQ(Read(Samples(2, "ASCII"), "1,0,5,1 2,1\r\n2,417,7,8,0\r\n").error,
              "rec.dat, record 1: analog channel 2 is '1 2', which is no number");
    EXPECT_EQ(Read(Samples(2, "ASCII"), "1,0,5,-6,1\r\n" + Zeros(5) + "2,417,7,8,0\r\n").error,
              "rec.dat, record 2: is preceded by bytes 0");
}

TEST(ForgivenData, WithoutStatesACutValueIsLeftOutAndALackingOneIsMissing)
{
    const QByteArray configuration =
        Samples(2, "ASCII").replace("3,2A,1D", "2,2A,0D").replace("1,Trip,,Q1,1\n", "");
    const Outcome cut = Read(Samples(3, "ASCII").replace("3,2A,1D", "2,2A,0D").replace("1,Trip,,Q1,1\n", ""),
                             "1,0,5,-6\r\n2,417,7,8");
    EXPECT_EQ(cut.rows, "1 0 5 -6|");
    EXPECT_EQ(cut.findings, "sampleCutOff 2|samplesLacking 1|");
    const Outcome lacking = Read(configuration, "1,0,5\r\n2,417,7,8");
    EXPECT_EQ(lacking.rows, "1 0 5 -|2 417 7 8|");
    EXPECT_EQ(lacking.findings, "fieldsLacking 1|");
}

TEST(ForgivenData, OfUtf16AreReadAsText)
{
    const QString text = QStringLiteral("\uFEFF1,0,5,-6,1\r\n2,417,7,8,0\r\n");
    const QByteArray little(reinterpret_cast<const char*>(text.utf16()), 2 * text.size());
    QByteArray big = little;
    for (int i = 0; i + 1 < big.size(); i += 2)
        std::swap(big.data()[i], big.data()[i + 1]);
    for (const QByteArray& data : {little, big, little.mid(2), little + ' '}) {
        const Outcome outcome = Read(Samples(2, "ASCII"), data);
        EXPECT_EQ(outcome.error, QString());
        EXPECT_EQ(outcome.rows, TwoRows);
        EXPECT_EQ(outcome.findings, "notUtf8 0|");
    }
}

TEST(ForgivenData, BinaryRecordsMayBeCutOffOrFollowedByBytes)
{
    const QByteArray three = "1 100 10 -1 1|2 200 20 -2 1|3 300 30 -3 1|";
    const QByteArray data = BinaryRecords<qint16>(3);
    EXPECT_EQ(Read(Samples(3, "BINARY"), data).findings, "");
    EXPECT_EQ(Read(Samples(3, "BINARY"), data + '\x1A').findings, "");
    const Outcome cut = Read(Samples(4, "BINARY"), data + "12345");
    EXPECT_EQ(cut.rows, three);
    EXPECT_EQ(cut.findings, "sampleCutOff 4|samplesLacking 3|");
    const Outcome garbage = Read(Samples(3, "BINARY"), data + "12345");
    EXPECT_EQ(garbage.rows, three);
    EXPECT_EQ(garbage.findings, "bytesLeftOver 3|");
    for (const int zeros : {3, 500}) {
        const Outcome padded = Read(Samples(3, "BINARY"), data + Zeros(zeros));
        EXPECT_EQ(padded.rows, three);
        EXPECT_EQ(padded.findings, "zerosLeftOver 3|");
    }
    const Outcome longer = Read(Samples(2, "BINARY"), data);
    EXPECT_EQ(longer.rows, three);
    EXPECT_EQ(longer.findings, "samplesLeftOver 3|");
}

TEST(ForgivenData, AreReadAsTheOnlyTypeThatFits)
{
    const QByteArray three = "1 100 10 -1 1|2 200 20 -2 1|3 300 30 -3 1|";
    const struct
    {
        const char* told;
        QByteArray data;
    } cases[] = {{"ASCII", BinaryRecords<qint16>(3)},
                 {"BINARY", BinaryRecords<qint32>(3)},
                 {"BINARY", BinaryRecords<float>(3)},
                 {"FLOAT32", BinaryRecords<qint16>(3)},
                 {"BINARY", "1,100,10,-1,1\r\n2,200,20,-2,1\r\n3,300,30,-3,1\r\n"}};
    for (const auto& one : cases) {
        const Outcome outcome = Read(Samples(3, one.told), one.data);
        EXPECT_EQ(outcome.error, QString());
        EXPECT_EQ(outcome.rows, three);
        EXPECT_EQ(outcome.findings, "dataTypeDiffers 0|");
    }
    EXPECT_EQ(Read(Samples(5, "ASCII"), BinaryRecords<qint16>(3)).error,
              "rec.dat: the configuration says ASCII, but the data are no text, and no binary type fits "
              "their size");
}

TEST(ForgivenData, Of1991HaveMissingValuesOfTheirOwn)
{
    Configuration configuration;
    const QByteArray text = "S,1\n3,2A,1D\n1,Ia,A,,A,1,0,0,0,65534\n2,Ib,A,,A,1,0,0,-100,100\n1,T,0\n50\n1\n"
                            "1000,2\n01/31/91,00:00:00.0\n01/31/91,00:00:00.0\n";
    const QByteArray data = BinaryRecord<quint16>(1, 0xFFFF, 0xFFFF) + BinaryRecord<quint16>(2, 0x8000, 1);
    EXPECT_EQ(Read(text + "BINARY\n", data).rows, "1 100 - -1 1|2 200 32768 1 1|");
    EXPECT_EQ(Read(text + "ASCII\n", "1,0,999999,99999,1\r\n2,1,1,1,1\r\n").rows, "1 0 - 99999 1|2 1 1 1 1|");
}
