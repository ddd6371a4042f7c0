// A recorder file: the checks of a chain of segments, and small look-ups.
#include "recording/zufileformat.h"

#include "base/numeric.h"

#include <algorithm>
#include <cmath>

static bool IsSameScaling(const AnChannelData& a, const AnChannelData& b)
{
    const ZuAnChannelHeader x = a.m_HeaderAn;
    const ZuAnChannelHeader y = b.m_HeaderAn;
    return a.Name == b.Name && a.Unit == b.Unit && zu::IsFloatEqual(x.Rate, y.Rate) &&
           zu::IsFloatEqual(x.Primary, y.Primary) && zu::IsFloatEqual(x.Secondary, y.Secondary) &&
           zu::IsFloatEqual(x.Scale, y.Scale) && x.CodeRange == y.CodeRange;
}

bool ZuFileFormat::CompareHeader(ZuFileFormat* other)
{
    if (Identity != other->Identity || TimeZoneSeconds != other->TimeZoneSeconds)
        return false;
    if (AnChannels.size() != other->AnChannels.size() || DiChannels.size() != other->DiChannels.size())
        return false;
    if (AnChannels.empty())
        return true;
    // Deliberate: only the first analog and the first discrete channel are compared, and without a discrete
    // channel the checked access throws.
    const DiChannelData& discrete = *DiChannels.at(0);
    const DiChannelData& otherDiscrete = *other->DiChannels.at(0);
    return IsSameScaling(*AnChannels[0], *other->AnChannels[0]) && discrete.Name == otherDiscrete.Name &&
           discrete.m_HeaderDi.inverted == otherDiscrete.m_HeaderDi.inverted;
}

bool ZuFileFormat::IsAnChPointsValid()
{
    return std::all_of(AnChannels.begin(), AnChannels.end(), [this](const AnChannelData* channel) {
        return channel->m_HeaderAn.points == AnChannels[0]->m_HeaderAn.points;
    });
}

bool ZuFileFormat::IsAnChRatesValid()
{
    if (AnChannels.empty()) {
        SampleRate = 2400.0;
        return true;
    }
    const float rate = AnChannels[0]->m_HeaderAn.Rate;
    SampleRate = static_cast<double>(rate);
    SamplesPerPeriod = zu::ToInteger<quint32>(std::round(SampleRate * 0.02));
    CalcShifts();
    return std::all_of(AnChannels.begin() + 1, AnChannels.end(), [rate](const AnChannelData* channel) {
        return zu::IsFloatEqual(float(channel->m_HeaderAn.Rate), rate);
    });
}

unsigned int ZuFileFormat::GetNumPointsAn()
{
    return AnChannels.empty() ? 0 : AnChannels[0]->m_HeaderAn.points;
}

AnChannelData* ZuFileFormat::GetAnChannel(unsigned int index)
{
    return index < AnChannels.size() ? AnChannels[index] : nullptr;
}

AnChannelData* ZuFileFormat::FindAnChannel(const QString& circuit, const QString& signal)
{
    for (AnChannelData* channel : AnChannels) {
        if (channel->CfgCircuit == circuit && channel->CfgSignal == signal)
            return channel;
    }
    return nullptr;
}

AnChannelData* ZuFileFormat::FindAnChannel(const QString& spec)
{
    const auto colon = spec.indexOf(QLatin1Char(':'));
    if (colon >= 0)
        return FindAnChannel(spec.left(colon).trimmed(), spec.mid(colon + 1).trimmed());
    for (AnChannelData* channel : AnChannels) {
        if (channel->Name == spec)
            return channel;
    }
    return nullptr;
}

unsigned int ZuFileFormat::GetTrigIndex()
{
    const qint64 seconds = StartTime.secsTo(TrigTime);
    const qint64 microseconds = seconds * 1000000 + (TrigMicroseconds - StartMicroseconds);
    if (microseconds < 0)
        return 0;
    const double position = static_cast<double>(microseconds) * SampleRate / 1e6;
    const auto index = static_cast<quint32>(zu::ToInteger<qint64>(std::round(position)));
    return SamplesPerPeriod >= index ? 0 : index - SamplesPerPeriod;
}
