// All the recordings of a sample station.
#pragma once

#include "station/station.h"

/// The files of one recording for each possible kind of start.
inline std::vector<recorderfile::NamedFile> AllStationFiles(const station::StationOptions& options)
{
    std::vector<recorderfile::NamedFile> files;
    for (const station::StartKind start : station::PossibleStarts(options)) {
        for (recorderfile::NamedFile& file : station::MakeFiles(options, start))
            files.push_back(std::move(file));
    }
    return files;
}
