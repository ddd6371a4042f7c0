// A recorder file: RMS values and symmetrical components of one moment, as the report shows them.
//
// All calculations run in the time domain over one mains period of 0.02 s: a value comes from the sum of the
// squares, an angle from the position of the largest sample, a sequence from adding the phases with two of
// them shifted by a third of a period.
#include "recording/zufileformat.h"

#include <array>
#include <cmath>

namespace {

const QString NoValue(QStringLiteral("--"));

// Whether a value of this unit is divided by 1000 to read in kV or kA. Latin letters and prefixed units are
// not.
bool IsBaseUnit(const QString& unit)
{
    return unit == QStringLiteral("В") || unit == QStringLiteral("А");
}

QString ModuleText(double value)
{
    return QString::asprintf("%3.2f", value);
}

// Angle of a period of count samples whose largest one is at position: the peak of a cosine at 0 has 90
// degrees.
QString AngleText(quint32 position, quint32 count)
{
    double angle = 450.0 - static_cast<double>(position) / static_cast<double>(count) * 360.0;
    if (angle > 360.0)
        angle -= 360.0;
    return QString::asprintf("%3.0f", angle);
}

bool HasSamples(const AnChannelData& channel, quint64 first, quint64 count)
{
    return channel.Samples != nullptr && count > 0 && first + count <= channel.m_HeaderAn.points;
}

// count samples of channel from first in physical units, scaled in 32 bits.
std::vector<double> ScaledSamples(const AnChannelData& channel, size_t first, size_t count)
{
    std::vector<double> values(count);
    for (size_t i = 0; i < count; ++i) {
        const float multiplied = static_cast<float>(channel.Samples[first + i]) * channel.CoefA;
        const float scaled = multiplied + channel.CoefB;
        values[i] = static_cast<double>(scaled);
    }
    return values;
}

// Sum of squares and position of the largest value of one sequence.
struct SequenceSum
{
    double squares = 0.0;
    double largest = 0.0;
    quint32 position = 0;

    void Add(double value, quint32 index)
    {
        squares += value * value;
        if (value > largest) {
            largest = value;
            position = index;
        }
    }

    double Rms(quint32 count) const { return std::sqrt(squares / static_cast<double>(count)); }
};

} // namespace

void ZuFileFormat::CalcShifts()
{
    ShiftOneThird = SamplesPerPeriod / 3 + (SamplesPerPeriod % 3 == 2 ? 1 : 0); // to the nearest
    ShiftTwoThirds = SamplesPerPeriod - ShiftOneThird;
}

void ZuFileFormat::CalcRMS(unsigned int index, AnChannelData* channel, QString& module, QString& angle)
{
    const quint32 count = SamplesPerPeriod;
    if (!HasSamples(*channel, index, count)) {
        module = NoValue;
        angle = NoValue;
        return;
    }
    const qint16* codes = channel->Samples + index;
    qint16 largest = codes[0];
    quint32 position = 0;
    double squares = 0.0;
    for (quint32 i = 0; i < count; ++i) {
        const int square = int(codes[i]) * int(codes[i]);
        squares += static_cast<double>(square);
        if (codes[i] > largest) {
            largest = codes[i];
            position = i;
        }
    }
    const double rms = std::sqrt(squares / static_cast<double>(count));
    // Deliberate: the coefficients scale the RMS of the codes, so that the offset is added once.
    double value = static_cast<double>(channel->CoefA) * rms + static_cast<double>(channel->CoefB);
    if (IsBaseUnit(channel->Unit))
        value /= 1000.0;
    module = ModuleText(value);
    angle = AngleText(position, count);
}

void ZuFileFormat::CalcSeq(unsigned int index, AnChannelData** channels, QString* modules, QString* angles)
{
    const quint32 count = SamplesPerPeriod;
    const quint32 start = index > count ? index - count : 0;
    std::array<std::vector<double>, 3> phases;
    for (size_t phase = 0; phase < phases.size(); ++phase) {
        if (!HasSamples(*channels[phase], start, quint64(2) * count)) {
            std::fill_n(modules, 3, NoValue);
            std::fill_n(angles, 3, NoValue);
            return;
        }
        phases[phase] = ScaledSamples(*channels[phase], start, size_t(2) * count);
    }

    const double* a = phases[0].data() + count;
    const double* b = phases[1].data() + count;
    const double* c = phases[2].data() + count;
    const double* bBackTwo = b - ShiftTwoThirds;
    const double* bBackOne = b - ShiftOneThird;
    const double* cBackTwo = c - ShiftTwoThirds;
    const double* cBackOne = c - ShiftOneThird;
    SequenceSum positive;
    SequenceSum negative;
    SequenceSum zero;
    for (quint32 i = 0; i < count; ++i) {
        positive.Add(bBackTwo[i] + a[i] + cBackOne[i], i);
        negative.Add(bBackOne[i] + a[i] + cBackTwo[i], i);
        zero.Add(a[i] + b[i] + c[i], i);
    }

    // The zero sequence is not divided by 3: the report gives 3U0 and 3I0.
    const double divisor = IsBaseUnit(channels[0]->Unit) ? 1000.0 : 1.0;
    modules[0] = ModuleText(positive.Rms(count) / 3.0 / divisor);
    modules[1] = ModuleText(negative.Rms(count) / 3.0 / divisor);
    modules[2] = ModuleText(zero.Rms(count) / divisor);
    angles[0] = AngleText(positive.position, count);
    angles[1] = AngleText(negative.position, count);
    angles[2] = AngleText(zero.position, count);
}
