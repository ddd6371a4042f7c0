// What the configuration must say about each channel, computed from the recording.
#pragma once

#include "verify/knownlines.h"

#include <QString>
#include <QStringList>

class AnChannelData;
class DiChannelData;

namespace verify {

class Device;

/// The texts of a channel's line as they are written: number, name, phase, circuit and, for an analog
/// channel, unit. Throws Mismatch if a name holds a comma or a line end, so that the line has other fields.
QStringList NameFields(const AnChannelData& channel, size_t number, const Device& device);
QStringList NameFields(const DiChannelData& channel, size_t number, const Device& device);

/// What a channel's lines are made from.
LineInputs InputsOf(const AnChannelData& channel);
LineInputs InputsOf(const DiChannelData& channel);

/// Fills in texts as the lines of a record do it: a "%1" in one of them is replaced by the next.
QString Filled(QString pattern, const QStringList& values);

/// value = a * code + b, and the shift in time.
struct Scaling
{
    QString a, b, skew; // microseconds; eight significant digits each
    int lowest, highest;
    QString primary, secondary;
};

Scaling ScalingOf(const AnChannelData& channel);

} // namespace verify
