// The DAT writer against a plain second implementation, on random recordings.
//
// The plain one makes one text for every value and asks every discrete channel at every sample. It works on a
// second copy of the segments, since asking moves a channel's cursor.
#include "resorter/ResorterZuCmtrConv.h"
#include "support/readyrecording.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace {

using recorderfile::AnalogChannel;
using recorderfile::DiscreteChannel;
using recorderfile::Recording;

void AppendLittleEndian(QByteArray& out, quint64 value, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        out.append(static_cast<char>(value >> (8 * i)));
}

class PlainWriter
{
public:
    PlainWriter(const std::vector<ZuFileFormat*>& files_, const ZuCmtrDevParam& device_)
        : files(files_), device(device_)
    {}

    QByteArray Write()
    {
        const double step = 1000000.0 / device.SampleRate;
        size_t segment = 0;
        size_t sample = 0;
        for (qint64 n = 0; n < device.TotalSamples; ++n) {
            const auto time = static_cast<quint64>(std::round(static_cast<double>(n) * step));
            quint32 relative = Relative(time, segment);
            if (relative >= files[segment]->SegmentDuration) {
                if (++segment == files.size())
                    break;
                sample = 0;
                relative = Relative(time, segment);
            }
            const std::vector<QString> codes = Codes(*files[segment], sample);
            const std::vector<bool> states = States(*files[segment], relative);
            if (device.ComtradeBin)
                AppendBinary(n + 1, time, codes, states);
            else
                AppendAscii(n + 1, time, codes, states);
            ++sample;
        }
        return out;
    }

private:
    quint32 Relative(quint64 time, size_t segment) const
    {
        return static_cast<quint32>(time) - static_cast<quint32>(files[segment]->SegmentTimeBase);
    }

    // In output order; an empty text where the channel has no such sample.
    std::vector<QString> Codes(const ZuFileFormat& file, size_t sample) const
    {
        std::vector<QString> codes;
        for (size_t i = 0; i < file.AnChannels.size(); ++i) {
            const AnChannelData& channel = *file.AnChannels[device.Resorter->PrevFileAnIndexes[i]];
            const bool has = sample < channel.m_HeaderAn.points;
            codes.push_back(has ? QString::number(channel.Samples[sample]) : QString());
        }
        return codes;
    }

    std::vector<bool> States(const ZuFileFormat& file, quint32 time) const
    {
        std::vector<bool> states;
        for (size_t i = 0; i < file.DiChannels.size(); ++i)
            states.push_back(file.DiChannels[device.Resorter->PrevFileDiIndexes[i]]->GetVal(time));
        return states;
    }

    void AppendAscii(qint64 number, quint64 time, const std::vector<QString>& codes,
                     const std::vector<bool>& states)
    {
        QString line = QStringLiteral("%1,%2").arg(number).arg(time);
        for (const QString& code : codes)
            line += QStringLiteral(",") + code;
        for (const bool state : states)
            line += state ? QStringLiteral(",1") : QStringLiteral(",0");
        out += (line + QStringLiteral("\n")).toLatin1();
    }

    void AppendBinary(qint64 number, quint64 time, const std::vector<QString>& codes,
                      const std::vector<bool>& states)
    {
        AppendLittleEndian(out, static_cast<quint64>(number), 4);
        AppendLittleEndian(out, time, 4);
        for (const QString& code : codes)
            AppendLittleEndian(out, code.isEmpty() ? 0x8000 : static_cast<quint64>(code.toInt()), 2);
        for (size_t word = 0; word < states.size(); word += 16) {
            quint64 bits = 0;
            for (size_t k = word; k < std::min(word + 16, states.size()); ++k)
                bits |= static_cast<quint64>(states[k]) << (k - word);
            AppendLittleEndian(out, bits, 2);
        }
    }

    const std::vector<ZuFileFormat*>& files;
    const ZuCmtrDevParam& device;
    QByteArray out;
};

class RandomRecordings
{
public:
    explicit RandomRecordings(unsigned int seed) : random(seed) {}

    size_t UpTo(size_t highest) { return std::uniform_int_distribution<size_t>(0, highest)(random); }

    // A usual, round or odd number of samples per second.
    double Rate()
    {
        switch (UpTo(5)) {
        case 0:
            return 2400;
        case 1:
            return std::pow(10, static_cast<double>(UpTo(6)));
        case 2:
            return static_cast<double>(1 + UpTo(999999));
        case 3:
            return 0.001 + 0.01 * static_cast<double>(UpTo(100)); // times wrap in 32 bits
        case 4:
            return 48.0 / static_cast<double>(1 + UpTo(70));
        default:
            return 1000.0 * std::exp(static_cast<double>(UpTo(7000)) / 1000.0);
        }
    }

    // Segments of the same channels. Now and then channels differ in their points; changes are often
    // unsorted.
    std::vector<Recording> Segments(double rate, size_t mostSamples)
    {
        const size_t analog = UpTo(3) == 0 ? 0 : UpTo(40);
        const size_t discrete = UpTo(3) == 0 ? 0 : UpTo(70);
        std::vector<Recording> segments(1 + UpTo(4));
        for (Recording& segment : segments) {
            const size_t points = 1 + UpTo(mostSamples);
            const bool unequal = UpTo(9) == 0;
            // From nothing to twice the time of the samples, often the exact time.
            const double stretch = UpTo(2) == 0 ? 1.0 : static_cast<double>(UpTo(2000)) / 1000.0;
            const double time = static_cast<double>(points) * 1e6 / rate * stretch;
            segment.duration = static_cast<uint32_t>(std::llround(std::min(time, 268435455.0)));
            for (size_t i = 0; i < analog; ++i)
                segment.Add(Analog(unequal ? 1 + UpTo(points - 1) : points));
            for (size_t i = 0; i < discrete; ++i)
                segment.Add(Discrete(*segment.duration));
        }
        return segments;
    }

    std::vector<unsigned int> Order(size_t count)
    {
        std::vector<unsigned int> order(count);
        for (size_t i = 0; i < count; ++i)
            order[i] = static_cast<unsigned int>(i);
        std::shuffle(order.begin(), order.end(), random);
        return order;
    }

private:
    AnalogChannel Analog(size_t points)
    {
        AnalogChannel channel{QStringLiteral("Q1:Ia"), QStringLiteral("A"), {}};
        for (size_t i = 0; i < points; ++i)
            channel.samples.push_back(static_cast<int16_t>(UpTo(65535) >> UpTo(15)));
        return channel;
    }

    DiscreteChannel Discrete(uint32_t duration)
    {
        DiscreteChannel channel{QStringLiteral("Q1:x"), static_cast<uint8_t>(UpTo(1)), {}};
        const size_t changes = UpTo(3) == 0 ? 0 : UpTo(12);
        for (size_t i = 0; i < changes; ++i)
            channel.changes.push_back({static_cast<uint32_t>(UpTo(duration + duration / 8 + 1)),
                                       static_cast<uint8_t>(UpTo(1) * UpTo(255))});
        if (UpTo(1) == 0)
            std::sort(channel.changes.begin(), channel.changes.end(),
                      [](const auto& a, const auto& b) { return a.time < b.time; });
        return channel;
    }

    std::mt19937 random;
};

class DatDifferential : public testing::TestWithParam<unsigned int>
{
protected:
    static void ExpectSameBytes(size_t mostSamples)
    {
        RandomRecordings random(GetParam());
        const double rate = random.Rate();
        const std::vector<Recording> segments = random.Segments(rate, mostSamples);
        for (const bool binary : {false, true}) {
            TestStation station;
            ZuCmtrDevParam& device = station.Device();
            device.ComtradeBin = binary;
            ReadyRecording recording(station, segments);
            ReadyRecording copy(station, segments);
            device.SampleRate = rate;
            device.TotalSamples = static_cast<qint64>(random.UpTo(segments.size() * mostSamples));
            device.Resorter->PrevFileAnIndexes = random.Order(recording.First().AnChannels.size());
            device.Resorter->PrevFileDiIndexes = random.Order(recording.First().DiChannels.size());

            const QByteArray plain = PlainWriter(*copy.Files(), device).Write();
            const QByteArray dat = recording.Dat();
            ASSERT_EQ(dat.size(), plain.size()) << "binary " << binary << ", rate " << rate;
            ASSERT_TRUE(dat == plain) << "binary " << binary << ", rate " << rate;
            if (binary) {
                EXPECT_EQ(device.DatBytes, plain.size());
            }
        }
    }
};

class DatDifferentialOfLongRecordings : public DatDifferential
{};

} // namespace

TEST_P(DatDifferential, PlainWriterGivesTheSameBytes)
{
    ExpectSameBytes(60);
}

INSTANTIATE_TEST_SUITE_P(Seeds, DatDifferential, testing::Range(0U, 400U));

TEST_P(DatDifferentialOfLongRecordings, PlainWriterGivesTheSameBytes)
{
    ExpectSameBytes(2500); // several blocks of the writer
}

INSTANTIATE_TEST_SUITE_P(Seeds, DatDifferentialOfLongRecordings, testing::Range(1000U, 1010U));
