// What an archive's catalogue is told about a recording or record.
#pragma once

#include "catalogue/entry.h"
#include "zucmtr/host/devicechoice.h"

namespace archive {

/// How recordings and records are read.
struct Reading
{
    DeviceChoice choice; ///< of recordings; completed for each as `events` does
    bool isPlain = false;
    QString lines; ///< file of --lines; empty: found for each
};

/// Reads it and looks for what happened. What cannot be read gives an entry that says why. Throws
/// ConfigurationError if the choice or the data of the lines are wrong.
catalogue::Entry Look(const QString& path, catalogue::Kind kind, const Reading& reading);

} // namespace archive
