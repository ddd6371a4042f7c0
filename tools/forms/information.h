// The INF text of a record in another form.
#pragma once

#include "comtrade/places.h"
#include "forms/channelchoice.h"

#include <QString>

#include <optional>

namespace forms {

struct Information
{
    QString text;
    bool isEquipmentLeftOut = false; ///< sections that count channels in ways of their own
};

/// The text with the values of the configuration that it becomes part of, where its public sections repeat
/// them. Of a choice of channels each has its section under its new number; sections that are not public go,
/// as they may count the channels, too.
Information InformationFor(const QString& text, const comtrade::Places& configuration,
                           const std::optional<ChannelSet>& chosen);

} // namespace forms
