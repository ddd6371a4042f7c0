// How far the data of a record are those of a recording, when nothing but the samples themselves can be
// trusted.
#pragma once

#include "comtrade/record.h"

#include <QString>

#include <vector>

namespace verify {

class Source;

/// Where the data of a record are.
struct DataPlace
{
    QString path;
    qint64 begin = 0;
    qint64 size = -1; // -1: to the end of the file
};

using DataPlaces = std::vector<DataPlace>;

struct Likeness
{
    qint64 compared = 0;  // records that could be read
    qint64 last = 0;      // number of the last one, from 1
    bool differs = false; // too much for a damaged record
    bool longer = false;  // goes on after the end of the recording
    bool others = false;  // there are bytes between the records that are none of the recording's
    bool torn = false;    // only what is between holes was compared

    bool Agrees() const { return compared > 0 && !differs && !longer; }
};

/// Reads the data as records with the channels of the recording, in whatever order, and compares what can be
/// read. type is Ascii or Binary. Goes through the data twice; the memory is in proportion to the number of
/// channels. Throws comtrade::Error if the file cannot be opened.
Likeness Compare(const DataPlace& place, comtrade::DataType type, const Source& source);

/// The same for data with holes, of which the places hold the records that were written whole. Each of them
/// has to be a record of the recording, with no value different: then nothing is lost with the data, however
/// little there is of them.
Likeness CompareTorn(const DataPlaces& places, comtrade::DataType type, const Source& source);

/// A configuration with as many channels as the recording's and data of the given form, to read them with.
comtrade::Configuration ChannelsOf(const Source& source, comtrade::DataType type);

} // namespace verify
