// The fast readers of ASCII lines give what the careful one gives, or leave the line to it.
#include "comtrade/asciirecord.h"
#include "comtrade/plainline.h"
#include "examples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

using namespace comtrade;

namespace {

struct Parts
{
    quint32 number = 0;
    qint64 time = 0;
    std::vector<double> analog;
    std::vector<quint8> states;
    qint64 length = -1; // of the line with its end; negative: not read

    explicit Parts(const LineShape& shape) : analog(shape.analog, -1), states(shape.states, 9) {}
    Target To() { return {&number, &time, analog.data(), states.data()}; }

    // Bit by bit, so that a missing value and the sign of zero count.
    bool operator==(const Parts& other) const
    {
        return number == other.number && time == other.time && states == other.states &&
               length == other.length &&
               std::memcmp(analog.data(), other.analog.data(), analog.size() * sizeof(double)) == 0;
    }
};

// What lies beyond the limit looks like more of the line.
Parts ReadBy(PlainLineReader reader, const QByteArray& line, const LineShape& shape)
{
    const int margin = static_cast<int>(PlainLineMargin);
    const QByteArray bytes = QByteArray(margin, '7') + line + QByteArray(margin, '0');
    Parts parts(shape);
    const char* const begin = bytes.constData() + margin;
    const char* const after = reader(begin, begin + line.size(), shape, parts.To());
    parts.length = after != nullptr ? after - begin : -1;
    return after != nullptr ? parts : Parts(shape);
}

Parts ReadCarefully(const QByteArray& line, const LineShape& shape)
{
    Configuration configuration;
    configuration.analog.resize(shape.analog);
    configuration.states.resize(shape.states);
    Parts parts(shape);
    const int feed = line.indexOf('\n');
    const int end = feed < 0 ? line.size() : feed > 0 && line[feed - 1] == '\r' ? feed - 1 : feed;
    const QString none;
    const QString error = ErrorOf([&] {
        ReadLine(line.constData(), line.constData() + end, configuration, {none, 1, nullptr}, parts.To());
    });
    parts.length = feed + 1;
    return error.isEmpty() && feed >= 0 ? parts : Parts(shape);
}

QByteArray RandomLine(const LineShape& shape, std::mt19937& random)
{
    const auto below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
    QByteArray line = QByteArray::number(below(300000)) + ',' + QByteArray::number(below(99999999));
    const int digits = 1 + below(8);
    for (size_t i = 0; i < shape.analog; ++i) {
        const QByteArray number = QByteArray::number(below(1 << 30)).left(1 + below(digits));
        line += below(50) == 0 ? ",99999" : below(2) == 0 ? ',' + number : ",-" + number.left(7);
    }
    for (size_t i = 0; i < shape.states; ++i)
        line += below(2) == 0 ? ",0" : ",1";
    return line + (below(2) == 0 ? "\n" : "\r\n");
}

const LineShape Shapes[] = {{64, 128, 99999}, {8, 16, 99999},  {9, 17, 99999}, {7, 15, 99999},
                            {300, 40, 99999}, {1, 0, 99999},   {0, 5, 99999},  {250, 16, 99999},
                            {13, 0, 99999},   {515, 31, 99999}};

std::vector<PlainLineReader> Readers()
{
    std::vector<PlainLineReader> readers = {ReadPlainLine};
    if (WidePlainLineReader() != nullptr)
        readers.push_back(WidePlainLineReader());
    return readers;
}

} // namespace

TEST(PlainLine, IsReadAsTheCarefulReaderReadsIt)
{
    std::mt19937 random(7);
    for (const LineShape& shape : Shapes)
        for (int i = 0; i < 200; ++i) {
            const QByteArray line = RandomLine(shape, random);
            const Parts expected = ReadCarefully(line, shape);
            ASSERT_EQ(expected.length, line.size()) << line.constData();
            for (const PlainLineReader reader : Readers())
                ASSERT_TRUE(ReadBy(reader, line, shape) == expected) << line.constData();
        }
}

TEST(PlainLine, OfAnotherFormIsNeverReadDifferently)
{
    std::mt19937 random(8);
    const QByteArray bytes = ",,--0019 +.eE\r\n\t\x1A;/:";
    int left = 0;
    for (const LineShape& shape : Shapes)
        for (int i = 0; i < 400; ++i) {
            QByteArray line = RandomLine(shape, random);
            const int place = static_cast<int>(random() % static_cast<unsigned>(line.size()));
            const char byte = bytes[static_cast<int>(random() % static_cast<unsigned>(bytes.size()))];
            if (random() % 3 == 0)
                line.truncate(place);
            else if (random() % 2 == 0)
                line[place] = byte;
            else
                line.insert(place, byte);
            const Parts expected = ReadCarefully(line, shape);
            for (const PlainLineReader reader : Readers()) {
                const Parts found = ReadBy(reader, line, shape);
                left += found.length < 0 ? 1 : 0;
                ASSERT_TRUE(found.length < 0 || found == expected) << line.constData();
            }
        }
    EXPECT_GT(left, 1000);
}

namespace {

// What the narrow readers give for a line, as doubles; nothing if they leave it.
Parts ReadNarrowlyBy(NarrowLineReader reader, const QByteArray& line, const LineShape& shape)
{
    const int margin = static_cast<int>(PlainLineMargin);
    const QByteArray bytes = QByteArray(margin, '7') + line + QByteArray(margin, '0');
    Parts parts(shape);
    std::vector<qint16> codes(shape.analog);
    const char* const begin = bytes.constData() + margin;
    const char* const after = reader(begin, begin + line.size(), shape,
                                     {&parts.number, &parts.time, codes.data(), parts.states.data()});
    if (after == nullptr)
        return Parts(shape);
    parts.length = after - begin;
    for (size_t i = 0; i < codes.size(); ++i)
        parts.analog[i] = codes[i] == -32768 ? std::numeric_limits<double>::quiet_NaN() : codes[i];
    return parts;
}

std::vector<NarrowLineReader> NarrowReaders()
{
    std::vector<NarrowLineReader> readers = {ReadNarrowLine};
    if (WideNarrowLineReader() != nullptr)
        readers.push_back(WideNarrowLineReader());
    return readers;
}

} // namespace

TEST(PlainLine, IsReadNarrowlyIfItsValuesAre16BitCodes)
{
    std::mt19937 random(9);
    int read = 0;
    for (const LineShape& shape : Shapes)
        for (int i = 0; i < 200; ++i) {
            const QByteArray line = RandomLine(shape, random);
            const Parts expected = ReadCarefully(line, shape);
            const bool isNarrow =
                std::all_of(expected.analog.begin(), expected.analog.end(),
                            [](double code) { return std::isnan(code) || std::abs(code) <= 32767; });
            read += isNarrow ? 1 : 0;
            for (const NarrowLineReader reader : NarrowReaders())
                ASSERT_TRUE(ReadNarrowlyBy(reader, line, shape) == (isNarrow ? expected : Parts(shape)))
                    << line.constData();
        }
    EXPECT_GT(read, 500);
}

TEST(PlainLine, IsNotNarrowBeyondTheLimits)
{
    const LineShape shape = {9, 16, 99999};
    const QByteArray states = QByteArray(",0").repeated(16) + '\n';
    for (const NarrowLineReader reader : NarrowReaders()) {
        const auto lengthOf = [&](const QByteArray& code) {
            return ReadNarrowlyBy(reader, "1,2,3,4,5," + code + ",7,8,9,10,11" + states, shape).length;
        };
        EXPECT_GT(lengthOf("32767"), 0);
        EXPECT_GT(lengthOf("-32767"), 0);
        EXPECT_GT(lengthOf("99999"), 0);
        EXPECT_LT(lengthOf("-32768"), 0);
        EXPECT_LT(lengthOf("32768"), 0);
        EXPECT_LT(lengthOf("65536"), 0);
        EXPECT_LT(lengthOf("-99999"), 0);
    }
}
