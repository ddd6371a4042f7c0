// The extreme RMS values of a recording: windows of one period, channel by channel, and the report's lines.
#include "recording/zufileformat.h"

#include <algorithm>
#include <cmath>

static double SumOfSquares(const qint16* codes, quint64 first, quint64 end)
{
    double sum = 0.0;
    for (quint64 i = first; i < end; ++i) {
        const int square = int(codes[i]) * int(codes[i]);
        sum += static_cast<double>(square);
    }
    return sum;
}

bool AnChannelData::DoExtremeParam()
{
    if (m_HeaderAn.points == 0 || Samples == nullptr || CfgSignal.isEmpty())
        return false;
    if (Unit.isEmpty() || Unit.length() > 2)
        return false;
    const QChar quantity = CfgSignal[0];
    const QChar unit = Unit.back();
    const bool voltage = quantity == QLatin1Char('U');
    if (!voltage && quantity != QLatin1Char('I'))
        return false;
    if (voltage && (unit == QLatin1Char('V') || unit == QChar(u'В')))
        IsVoltage = true;
    if (!voltage && (unit == QLatin1Char('A') || unit == QChar(u'А')))
        IsCurrent = true;
    // Deliberate: the prefix of the unit is ignored; values in kV are shown as if in V.
    ExtremeScale = 1.0F;
    return true;
}

bool AnChannelData::CalcExtremeRMS(unsigned int start, unsigned int window, float& value, double& sum,
                                   unsigned int& count)
{
    if (count >= window)
        return false;
    const quint64 points = m_HeaderAn.points;
    const quint64 end = quint64(window) + start - count;
    if (end <= points) {
        sum += SumOfSquares(Samples, start, end);
        const auto rms = static_cast<float>(std::sqrt(sum / static_cast<double>(window)));
        const float multiplied = rms * CoefA;
        value = multiplied + CoefB;
        sum = 0.0;
        count = 0;
        return true;
    }
    if (count != 0)
        return false;
    sum = 0.0;
    if (start >= points)
        return false;
    sum = SumOfSquares(Samples, start, points);
    count = static_cast<unsigned int>(points - start);
    return false;
}

bool AnChannelData::FindExtremeRMS(unsigned int window, double& sum, unsigned int& count)
{
    if (m_HeaderAn.points == 0 || Samples == nullptr)
        return false;
    float value = 0.0F;
    if (!CalcExtremeRMS(0, window, value, sum, count))
        return false;
    ExtremeMin = value;
    ExtremeMax = value;
    // Deliberate: the second window starts at window even where a carry made the first one shorter.
    for (quint64 start = window; start < m_HeaderAn.points; start += window) {
        if (CalcExtremeRMS(static_cast<unsigned int>(start), window, value, sum, count)) {
            ExtremeMin = std::min(ExtremeMin, value);
            ExtremeMax = std::max(ExtremeMax, value);
        }
    }
    return true;
}

bool AnChannelData::FindExtremeRMS(std::vector<AnChannelData*>& others)
{
    for (const AnChannelData* other : others) {
        ExtremeMin = std::min(ExtremeMin, other->ExtremeMin);
        ExtremeMax = std::max(ExtremeMax, other->ExtremeMax);
    }
    return true;
}

namespace {

// Currents or voltages: their letter, units, and what joins a later segment's search to the first one.
struct Quantity
{
    QString letter;
    QString unit, kiloUnit, milliUnit;
    bool joinsFailedSearches;
};

QString ExtremeLine(const char* which, const Quantity& quantity, const QString& number, const QString& unit)
{
    return QString::fromUtf8(which).arg(quantity.letter).arg(number).arg(unit);
}

QString ValueLine(const char* which, const Quantity& quantity, float value)
{
    QString unit = quantity.unit;
    if (std::fabs(value) >= 1000.0F) {
        value /= 1000.0F;
        unit = quantity.kiloUnit;
    } else if (std::fabs(value) < 1.0F) {
        value *= 1000.0F;
        unit = quantity.milliUnit;
    }
    const QString number = QString::asprintf("%5.2f", static_cast<double>(value)).trimmed();
    return ExtremeLine(which, quantity, number, unit);
}

constexpr char MaximumLine[] = "макс_%1 = %2 %3";
constexpr char MinimumLine[] = "мин_%1 = %2 %3";

// Searches the channels with these indexes over all segments, the first of which is first.
void SearchSegments(ZuFileFormat& first, const std::vector<ZuFileFormat*>& files, const Quantity& quantity,
                    const std::vector<unsigned int>& indexes)
{
    for (const unsigned int index : indexes) {
        AnChannelData* channel = first.AnChannels.at(index);
        double sum = 0.0;
        unsigned int count = 0;
        if (!channel->FindExtremeRMS(first.SamplesPerPeriod, sum, count))
            continue;
        std::vector<AnChannelData*> others;
        for (size_t i = 1; i < files.size(); ++i) {
            AnChannelData* later = files[i]->GetAnChannel(index);
            if (later == nullptr)
                continue;
            const bool found = later->FindExtremeRMS(first.SamplesPerPeriod, sum, count);
            // Deliberate: the first segment's own channel is listed, so that only its extremes are shown.
            if (found || quantity.joinsFailedSearches)
                others.push_back(channel);
        }
        if (!others.empty())
            channel->FindExtremeRMS(others);
    }
}

void ComposeLines(const ZuFileFormat& first, const Quantity& quantity,
                  const std::vector<unsigned int>& indexes, QString& maximum, QString& minimum)
{
    // Deliberate: without a channel the minimum line too reads as a maximum.
    maximum = ExtremeLine(MaximumLine, quantity, QStringLiteral("--"), quantity.unit);
    minimum = maximum;
    if (indexes.empty())
        return;
    const AnChannelData& head = *first.AnChannels.at(indexes[0]);
    float largest = head.ExtremeMax * head.ExtremeScale;
    float smallest = head.ExtremeMin * head.ExtremeScale;
    for (const unsigned int index : indexes) {
        const AnChannelData& channel = *first.AnChannels.at(index);
        largest = std::max(largest, channel.ExtremeMax * channel.ExtremeScale);
        smallest = std::min(smallest, channel.ExtremeMin * channel.ExtremeScale);
    }
    maximum = ValueLine(MaximumLine, quantity, largest);
    minimum = ValueLine(MinimumLine, quantity, smallest);
}

} // namespace

void ZuFileFormat::FindExtremeRMS(const QString& circuit, std::vector<ZuFileFormat*>* files, QString& maxI,
                                  QString& minI, QString& maxU, QString& minU)
{
    const Quantity current{QStringLiteral("I"), QStringLiteral("А"), QStringLiteral("кА"),
                           QStringLiteral("мА"), false};
    const Quantity voltage{QStringLiteral("U"), QStringLiteral("В"), QStringLiteral("кВ"),
                           QStringLiteral("мВ"), true};
    std::vector<unsigned int> currents;
    std::vector<unsigned int> voltages;
    for (size_t i = 0; i < AnChannels.size(); ++i) {
        AnChannelData& channel = *AnChannels[i];
        if (channel.CfgCircuit != circuit || !channel.DoExtremeParam())
            continue;
        if (channel.IsCurrent)
            currents.push_back(static_cast<unsigned int>(i));
        else if (channel.IsVoltage)
            voltages.push_back(static_cast<unsigned int>(i));
    }
    SearchSegments(*this, *files, current, currents);
    SearchSegments(*this, *files, voltage, voltages);
    ComposeLines(*this, current, currents, maxI, minI);
    ComposeLines(*this, voltage, voltages, maxU, minU);
}
