// Numbers about a catalogue.
#pragma once

#include "catalogue/catalogue.h"
#include "catalogue/wanted.h"

#include <vector>

namespace catalogue {

struct Overview
{
    qint64 recordings = 0;
    qint64 records = 0;
    qint64 unread = 0; ///< of them
    qint64 bytes = 0;  ///< of all their files
    QString first;     ///< trigger of the oldest, ISO 8601; empty without one
    QString last;
};
Overview OverviewOf(Catalogue& catalogue, const Wanted& wanted);

/// How many there are that were there once.
qint64 GoneCount(Catalogue& catalogue, Wanted wanted);

enum class By { Month, Kind, Circuit };

struct FaultCount
{
    QString of; ///< "2024-03", "AG", the circuit
    qint64 count = 0;
};

/// Faults by month and by kind in this order, by circuit the most frequent first. A recording and its record
/// count once: what happened to a circuit at the same moment.
std::vector<FaultCount> FaultCounts(Catalogue& catalogue, const Wanted& wanted, By by);

struct Recorder
{
    QString station;
    QString name;
    QString last; ///< trigger of its last recording, ISO 8601
};

/// The recorders whose names are wanted, by station and name: all of them, or those whose last recording,
/// even if it is gone by now, was triggered before `silentSince`.
std::vector<Recorder> RecordersOf(Catalogue& catalogue, const Wanted& wanted,
                                  const std::optional<qint64>& silentSince);

struct Duplicates
{
    qint64 entries = 0; ///< more than one of each content
    qint64 bytes = 0;   ///< of them
};
Duplicates DuplicatesOf(Catalogue& catalogue, const Wanted& wanted);

} // namespace catalogue
