// A record's samples in memory.
#include "comtrade/samples.h"
#include "examples.h"

#include <gtest/gtest.h>

#include <QtEndian>

#include <cmath>
#include <cstring>
#include <limits>

using comtrade::Samples;

namespace {

class SamplesOf : public TestDirectory
{
public:
    explicit SamplesOf(const QByteArray& data, const QByteArray& type = "ASCII")
        : path(Write("rec.cfg", ExampleConfiguration().replace("\nASCII\n", '\n' + type + '\n')))
    {
        Write("rec.dat", data);
    }

    Samples operator()() const
    {
        comtrade::Record record(path);
        return Samples(record);
    }

private:
    const QString path;
};

template <class Number>
std::vector<Number> CodesAs(const Samples& samples, size_t channel)
{
    const auto codes = std::get<comtrade::View<Number>>(samples.Analog(channel));
    return {codes.begin(), codes.end()};
}

std::vector<quint8> StatesOf(const Samples& samples, size_t channel)
{
    std::vector<quint8> states(static_cast<size_t>(samples.Count()));
    samples.Unpack(channel, states.data());
    return states;
}

// A configuration of integers' channels A1 to An, states D1 to Dm and one rate.
QByteArray Configuration(int analog, int states, int samples, const QByteArray& type)
{
    QByteArray text = "S,R,1999\n" + QByteArray::number(analog + states) + ',' + QByteArray::number(analog) +
                      "A," + QByteArray::number(states) + "D\n";
    for (int i = 1; i <= analog; ++i)
        text += QByteArray::number(i) + ",A" + QByteArray::number(i) +
                ",,,A,1,0,0,-2147483648,2147483647,1,1,P\n";
    for (int i = 1; i <= states; ++i)
        text += QByteArray::number(i) + ",D" + QByteArray::number(i) + ",,,0\n";
    return text + "50\n1\n1000," + QByteArray::number(samples) +
           "\n31/01/2024,12:00:00.000000\n31/01/2024,12:00:00.000000\n" + type + "\n1\n";
}

constexpr double Missing = std::numeric_limits<double>::quiet_NaN();

// How the values of a record may be stored; by it, what sample `i` of channel `channel` is.
struct Form
{
    QByteArray type;
    double (*codeOf)(int channel, int i);
};

double Small(int channel, int i)
{
    return i % 97 == channel ? Missing : (i * 31 + channel * 1009) % 65535 - 32767;
}

double Large(int channel, int i)
{
    return i % 97 == channel ? Missing : (i % 2 == 0 ? 1 : -1) * (2147483647.0 - i * 100 - channel);
}

double Fraction(int channel, int i)
{
    return i % 97 == channel ? Missing
                             : static_cast<double>(static_cast<float>(i) / 7 - static_cast<float>(channel));
}

// The first channel is narrow, the second one becomes wide in the middle, the third one at the end.
double Widening(int channel, int i)
{
    return channel == 1 && i >= 3000 ? 40000.0 + i : channel == 2 && i >= 5990 ? 0.5 : Small(channel, i);
}

// States that never change, that change now and then, and at every sample.
quint8 StateOf(int channel, int i)
{
    const int kind = channel % 3;
    return static_cast<quint8>(((kind == 0 ? 0 : kind == 1 ? i / 1000 : i) + channel) % 2);
}

template <class Integer>
void AppendInteger(QByteArray& bytes, Integer number)
{
    number = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

void AppendCode(QByteArray& bytes, const QByteArray& type, double code)
{
    const bool isMissing = std::isnan(code);
    if (type == "BINARY")
        AppendInteger(bytes, isMissing ? std::numeric_limits<qint16>::min() : static_cast<qint16>(code));
    else if (type == "BINARY32")
        AppendInteger(bytes, isMissing ? std::numeric_limits<qint32>::min() : static_cast<qint32>(code));
    else {
        const float value = isMissing ? std::numeric_limits<float>::infinity() : static_cast<float>(code);
        quint32 word = 0;
        std::memcpy(&word, &value, sizeof word);
        AppendInteger(bytes, word);
    }
}

QByteArray BinaryRecord(const Form& form, int analog, int states, int i)
{
    QByteArray bytes;
    AppendInteger(bytes, static_cast<quint32>(i + 1));
    AppendInteger(bytes, static_cast<quint32>(i));
    for (int channel = 0; channel < analog; ++channel)
        AppendCode(bytes, form.type, form.codeOf(channel, i));
    for (int first = 0; first < states; first += 16) {
        unsigned word = 0;
        for (int channel = first; channel < std::min(states, first + 16); ++channel)
            word |= unsigned{StateOf(channel, i)} << (channel - first);
        AppendInteger(bytes, static_cast<quint16>(word));
    }
    return bytes;
}

QByteArray AsciiRecord(const Form& form, int analog, int states, int i)
{
    QByteArray line = QByteArray::number(i + 1) + ',' + QByteArray::number(i);
    for (int channel = 0; channel < analog; ++channel) {
        const double code = form.codeOf(channel, i);
        line += std::isnan(code) ? QByteArray(i % 2 == 0 ? "," : ",99999")
                                 : ',' + QByteArray::number(code, 'g', 12);
    }
    for (int channel = 0; channel < states; ++channel)
        line += StateOf(channel, i) != 0 ? ",1" : ",0";
    return line + '\n';
}

// The codes of a channel as doubles.
std::vector<double> DoublesOf(const Samples& samples, size_t channel)
{
    std::vector<double> codes(static_cast<size_t>(samples.Count()));
    samples.Values(channel, {1, 0, 1}, codes.data());
    return codes;
}

// What was written in `data` of so many samples is there, whatever number the configuration announces.
void ExpectWhatWasWritten(const Form& form, int analog, int states, int count, int announced)
{
    QByteArray data;
    for (int i = 0; i < count; ++i)
        data += form.type == "ASCII" ? AsciiRecord(form, analog, states, i)
                                     : BinaryRecord(form, analog, states, i);
    const TestDirectory directory;
    directory.Write("rec.dat", data);
    comtrade::Record record(directory.Write("rec.cfg", Configuration(analog, states, announced, form.type)));
    const Samples samples(record);
    ASSERT_EQ(samples.Count(), count);
    EXPECT_EQ(samples.Numbers().size(), 0U);
    for (int channel = 0; channel < analog; ++channel) {
        const std::vector<double> found = DoublesOf(samples, static_cast<size_t>(channel));
        for (int i = 0; i < count; ++i) {
            const double expected = form.codeOf(channel, i);
            const double code = found[static_cast<size_t>(i)];
            ASSERT_TRUE(std::isnan(expected) ? std::isnan(code) : code == expected)
                << form.type.constData() << ' ' << channel << ' ' << i << ": " << code;
        }
    }
    for (int channel = 0; channel < states; ++channel) {
        std::vector<quint8> expected;
        for (int i = 0; i < count; ++i)
            expected.push_back(StateOf(channel, i));
        ASSERT_EQ(StatesOf(samples, static_cast<size_t>(channel)), expected) << channel;
        std::vector<qint64> changes;
        for (int i = 1; i < count; ++i)
            if (StateOf(channel, i) != StateOf(channel, i - 1))
                changes.push_back(i);
        ASSERT_EQ(samples.ChangesOf(static_cast<size_t>(channel)).samples, changes) << channel;
    }
}

} // namespace

TEST(ComtradeSamples, AreInTheNarrowestTypeThatHoldsThemExactly)
{
    const Samples samples = SamplesOf("1,0,-5,32767,1\n2,0,,32768,0\n3,0,-32767,-2147483647,0\n")();
    EXPECT_EQ(samples.Count(), 3);
    EXPECT_EQ(CodesAs<qint16>(samples, 0), (std::vector<qint16>{-5, -32768, -32767}));
    EXPECT_EQ(CodesAs<qint32>(samples, 1), (std::vector<qint32>{32767, 32768, -2147483647}));
}

TEST(ComtradeSamples, ThatAreNoIntegersAreDoubles)
{
    const Samples samples = SamplesOf("1,0,,2147483647,1\n2,0,0.1,,0\n3,0,-32768,2147483648,0\n")();
    const std::vector<double> first = CodesAs<double>(samples, 0);
    EXPECT_TRUE(std::isnan(first[0]));
    EXPECT_EQ(first[1], 0.1);
    EXPECT_EQ(first[2], -32768);
    const std::vector<double> second = CodesAs<double>(samples, 1);
    EXPECT_EQ(second[0], 2147483647.0);
    EXPECT_TRUE(std::isnan(second[1]));
    EXPECT_EQ(second[2], 2147483648.0);
}

TEST(ComtradeSamples, HaveChangesOfStatesAndOddNumbers)
{
    QByteArray data;
    for (int i = 1; i <= 100; ++i)
        data += QByteArray::number(i < 50 ? i : i + 1) + ",0,1,2," + (i > 8 && i <= 40 ? "1\n" : "0\n");
    const Samples samples = SamplesOf(data)();
    const comtrade::Changes changes = samples.ChangesOf(0);
    EXPECT_EQ(changes.samples, (std::vector<qint64>{8, 40}));
    EXPECT_EQ(changes.states, (std::vector<quint8>{1, 0}));
    ASSERT_EQ(samples.Numbers().size(), 100U);
    EXPECT_EQ(samples.Numbers()[0], 1U);
    EXPECT_EQ(samples.Numbers()[99], 101U);
    EXPECT_TRUE(samples.Stamps().empty());
}

TEST(ComtradeSamples, AreThoseOfTheDataWhateverTheirFormAndCounts)
{
    const Form forms[] = {
        {"BINARY", Small}, {"BINARY32", Large}, {"FLOAT32", Fraction}, {"ASCII", Small}, {"ASCII", Large}};
    const int shapes[][2] = {{64, 128}, {9, 17}, {3, 0}, {1, 70}};
    for (const Form& form : forms)
        for (const auto& shape : shapes)
            for (const int announced : {4, 2003, 1000000})
                if (announced == 4 || shape[0] < 64)
                    ExpectWhatWasWritten(form, shape[0], shape[1], 2003, announced);
}

TEST(ComtradeSamples, BecomeWideInTheMiddle)
{
    ExpectWhatWasWritten({"ASCII", Widening}, 9, 17, 6000, 6000);
    ExpectWhatWasWritten({"ASCII", Widening}, 3, 2, 6000, 10);
}

TEST(ComtradeSamples, OfOnlyStatesAndOfNoneAreRead)
{
    ExpectWhatWasWritten({"BINARY", Small}, 0, 20, 5000, 5000);
    ExpectWhatWasWritten({"ASCII", Small}, 0, 20, 5000, 5000);
    const Samples samples = SamplesOf("", "BINARY")();
    EXPECT_EQ(samples.Count(), 0);
    EXPECT_EQ(CodesAs<qint16>(samples, 0), std::vector<qint16>());
}

TEST(ComtradeSamples, OfLinesWrittenInOtherWaysAreTheSame)
{
    const Samples samples = SamplesOf("1,0,5,-6,1\n 2, 0, 7, -8.0, 0\n3,0,9,-10,1\n")();
    EXPECT_EQ(CodesAs<qint16>(samples, 0), (std::vector<qint16>{5, 7, 9}));
    EXPECT_EQ(CodesAs<qint16>(samples, 1), (std::vector<qint16>{-6, -8, -10}));
    EXPECT_EQ(StatesOf(samples, 0), (std::vector<quint8>{1, 0, 1}));
}

TEST(ComtradeSamples, HaveStampsWithoutARate)
{
    const TestDirectory directory;
    directory.Write("rec.dat", "1,0,1,2,1\n2,,1,2,1\n3,70,1,2,1\n");
    comtrade::Record record(
        directory.Write("rec.cfg", ExampleConfiguration().replace("1\n2400,4", "0\n0,3")));
    const Samples samples(record);
    EXPECT_EQ(std::vector<qint64>(samples.Stamps().begin(), samples.Stamps().end()),
              (std::vector<qint64>{0, comtrade::Block::NoTime, 70}));
}

TEST(ComtradeSamples, OfRevision1991MayHaveNoSign)
{
    QByteArray configuration = ExampleConfiguration().replace("\nASCII\n", "\nBINARY\n");
    configuration.replace("Подстанция,РАС,2013", "S,R");
    configuration.replace(",0.5,-1,2.5,-32767,32767,1000,5,P", ",0.5,-1,2.5,0,65535");
    configuration.replace(",1e-3,0,0,-99999,99998,1,1,s", ",1e-3,0,0,-32767,32767");
    configuration.replace("1,Trip,,Q1,1", "1,Trip,1")
        .replace("31/01/2024", "01/31/24")
        .replace("31/01/2024", "01/31/24");
    configuration.truncate(configuration.indexOf("BINARY\n") + 7);
    QByteArray data;
    for (const int code : {40000, 0xFFFF, 7}) {
        AppendInteger(data, static_cast<quint32>(data.size() / 14 + 1));
        AppendInteger(data, quint32{0});
        AppendInteger(data, static_cast<quint16>(code));
        AppendInteger(data, static_cast<quint16>(code));
        AppendInteger(data, quint16{1});
    }
    const TestDirectory directory;
    directory.Write("rec.dat", data);
    comtrade::Record record(directory.Write("rec.cfg", configuration));
    const Samples samples(record);
    EXPECT_EQ(CodesAs<qint32>(samples, 0),
              (std::vector<qint32>{40000, std::numeric_limits<qint32>::min(), 7}));
    EXPECT_EQ(CodesAs<qint16>(samples, 1), (std::vector<qint16>{-25536, -1, 7}));
}

TEST(ComtradeSamples, AreScaledInStepsOfDoubles)
{
    const Samples samples = SamplesOf("1,0,3,70000,1\n2,0,,0.1,0\n")();
    std::vector<double> values(2);
    samples.Values(0, {0.1, 0.2, 3}, values.data());
    const volatile double product = 0.1 * 3;
    const volatile double sum = product + 0.2;
    EXPECT_EQ(values[0], sum * 3);
    EXPECT_TRUE(std::isnan(values[1]));
}

TEST(ComtradeSamples, TakeNoMoreRoomThanTheDataCanFill)
{
    const TestDirectory directory;
    directory.Write("rec.dat", "1,0,5,6,1\n");
    comtrade::Record record(
        directory.Write("rec.cfg", ExampleConfiguration().replace("2400,4", "2400,4000000000")));
    EXPECT_LE(record.ExpectedRecords(), 2);
    EXPECT_EQ(Samples(record).Count(), 1);
}

TEST(ComtradeSamples, ThatLackNearlyAllValuesAreNotRead)
{
    QByteArray data;
    for (int i = 1; i <= 3000; ++i)
        data += "1,0,5\n";
    const TestDirectory directory;
    directory.Write("rec.dat", data);
    comtrade::Record record(directory.Write("rec.cfg", Configuration(2000, 0, 3000, "ASCII")));
    EXPECT_EQ(ErrorOf([&] { const Samples samples(record); }),
              directory.Path("rec.cfg") + ": the samples lack so many values that they are not read");
}
