// What the columns of a table are called.
#pragma once

#include "comtrade/record.h"

#include <QString>

#include <vector>

namespace forms {

/// A title for each analog channel and then for each discrete one, no two of them equal, and none equal to
/// `taken`: the channel's name; where channels share it, with circuit and phase as well; where they share
/// those, too, after A or D and the number among the channels of the kind. Analog channels have their unit in
/// brackets at the end.
std::vector<QString> ChannelTitles(const comtrade::Configuration& config, const QString& taken);

} // namespace forms
