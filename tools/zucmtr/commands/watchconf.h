// The .conf files of 'zucmtr watch --config' as options: what conffile reads, given to the parser's own
// options, so that values are checked, and explained, as on the command line.
#pragma once

#include "zucmtr/commands/watchoptions.h"
#include "zucmtr/watch/conffile.h"

#include <QStringList>

struct ConfiguredRecorder
{
    RecorderOptions options;
    QStringList mistakes; // with file and line; with one the options are of no use
};

/// The options in the file.
ConfiguredRecorder ConfiguredBy(const conffile::File& file);
