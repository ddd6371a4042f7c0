// What the public sections of an INF text repeat of the configuration.
#pragma once

#include "comtrade/places.h"

#include <QString>

#include <vector>

namespace comtrade {

/// A key of an INF section, and the value of the configuration that it repeats.
struct RepeatedValue
{
    QString key;
    QString value;
};

/// Of the section [Public File_Description].
std::vector<RepeatedValue> DescriptionValues(const Places& places);

/// Of [Public Analog_Channel_#N] and [Public Status_Channel_#N] by the channel's line in the configuration;
/// none if it has more or fewer fields than the standard says.
std::vector<RepeatedValue> AnalogValues(const Place& channel);
std::vector<RepeatedValue> StatusValues(const Place& channel);

/// Whether both are the same value: numbers by what they are, texts but for their case.
bool IsSameValue(const QString& one, const QString& other);

} // namespace comtrade
