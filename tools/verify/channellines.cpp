#include "verify/channellines.h"

#include "recording/anchanneldata.h"
#include "recording/dichanneldata.h"
#include "resorter/bayoptionalparam.h"
#include "text/texts.h"
#include "verify/device.h"
#include "verify/mismatch.h"

namespace verify {

namespace {

// What is shown for a bay; empty: nothing.
QString BayText(const BayOptionalParam* bay)
{
    return bay != nullptr ? bay->DisplayName : QString();
}

QString Circuit(const BayOptionalParam* bay, const QString& own)
{
    const QString shown = BayText(bay);
    return shown.isEmpty() ? own : shown;
}

QStringList Fields(const char* pattern, const QStringList& values, const QString& channelName,
                   const Device& device)
{
    const QString line = device.AsWritten(Filled(QString::fromLatin1(pattern), values));
    QStringList fields = line.split(QLatin1Char(','));
    if (fields.size() != values.size() || line.contains(QLatin1Char('\n')))
        throw Mismatch(Tr("verify", "the channel '%1' has a comma or a line end in its name, its unit or its "
                                    "bay, so that no program can read the record's configuration; rename it "
                                    "in the recorder, or in the ini file if it is a bay's text")
                           .arg(channelName));
    for (QString& field : fields)
        field = field.trimmed();
    return fields;
}

QString EightDigits(float value)
{
    return QString::number(static_cast<double>(value), 'g', 8);
}

} // namespace

LineInputs InputsOf(const AnChannelData& channel)
{
    LineInputs inputs;
    inputs.name = channel.CfgName;
    inputs.phase = channel.CfgPhase;
    inputs.circuit = channel.CfgCircuit;
    inputs.bay = BayText(channel.BayParam);
    inputs.unit = channel.Unit;
    inputs.scaling = channel.m_HeaderAn;
    inputs.scaling.points = 0; // how many samples there are is in none of the lines
    return inputs;
}

LineInputs InputsOf(const DiChannelData& channel)
{
    LineInputs inputs;
    inputs.name = channel.CfgName;
    inputs.circuit = channel.CfgCircuit;
    inputs.bay = BayText(channel.BayParam);
    return inputs;
}

QString Filled(QString pattern, const QStringList& values)
{
    for (const QString& value : values)
        pattern = pattern.arg(value); // one after the other, on purpose
    return pattern;
}

QStringList NameFields(const AnChannelData& channel, size_t number, const Device& device)
{
    const QString unit = channel.Unit.isEmpty() ? QStringLiteral("NONE") : channel.Unit;
    return Fields("%1,%2,%3,%4,%5",
                  {QString::number(number), channel.CfgName, channel.CfgPhase,
                   Circuit(channel.BayParam, channel.CfgCircuit), unit},
                  channel.Name, device);
}

QStringList NameFields(const DiChannelData& channel, size_t number, const Device& device)
{
    // The fifth field is the normal state, which is always off.
    return Fields("%1,%2,%3,%4,%5",
                  {QString::number(number), channel.CfgName, QString(),
                   Circuit(channel.BayParam, channel.CfgCircuit), QStringLiteral("0")},
                  channel.Name, device);
}

Scaling ScalingOf(const AnChannelData& channel)
{
    const ZuAnChannelHeader header = channel.m_HeaderAn;
    // Single precision, rounded after each step.
    const float ratio = header.Primary * header.Secondary;
    const float a = ratio * header.Scale;
    const float zero = static_cast<float>(header.ZeroCode) * a;
    const float b = zero + header.Offset;
    const float skew = 1000000.0F * header.SkewSeconds;

    const int range = header.CodeRange;
    const bool wide = range > 32767;
    const int highest = range == 4096 ? 2048 : range;
    return {EightDigits(a),
            EightDigits(b),
            EightDigits(skew),
            wide ? -32768 : -highest,
            wide ? 32768 : highest,
            EightDigits(header.Primary),
            EightDigits(header.Secondary)};
}

} // namespace verify
