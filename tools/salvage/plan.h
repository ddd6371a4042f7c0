// What can be saved of a damaged recording, and what is lost.
//
//     const salvage::Examination found = salvage::Examine(files);
//     if (found.isDamaged && found.plan)
//         Convert(salvage::Write(found.plan->segments, found.plan->choice, directory));
#pragma once

#include "salvage/segment.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace salvage {

/// Which channels of a recording, by their numbers. A number beyond the end is not in it.
struct Choice
{
    std::vector<bool> analog;
    std::vector<bool> discrete;

    bool Has(const Section& section) const;
    size_t Analog() const;
    size_t Discrete() const;
    size_t Channels() const { return Analog() + Discrete(); }

    /// Whether the library can join files that have these channels.
    bool CanBeJoined() const { return Analog() == 0 || Discrete() > 0; }
};

/// What a record has of its damaged recording.
struct Loss
{
    size_t analog = 0; // channels in the record
    size_t discrete = 0;
    std::optional<size_t> allAnalog; // channels of the recording, if the kinds of all are known
    std::optional<size_t> allDiscrete;
    size_t channels = 0;   // of the recording, as its header says
    QStringList lost;      // names of those that are not in the record
    size_t nameless = 0;   // further ones, whose names are lost too
    int files = 0;         // of the recording in the record, the first ones
    QStringList lostFiles; // paths of the others

    bool LosesChannels() const { return !lost.isEmpty() || nameless > 0; }
};

/// What to convert.
struct Plan
{
    std::vector<Segment> segments; // the first file first
    Choice choice;
    Loss loss;
};

struct Examination
{
    bool isDamaged = false;   // a file of the chain is; else nothing needs to be salvaged
    std::optional<Plan> plan; // of a damaged one; nothing if no channel is whole
};

/// Reads the files of a recording, the first file first, and finds what to convert of it. A record has the
/// same channels from its start to its end, and starts with the first file. So it can have the channels that
/// are whole in the first file, or those that are whole in the first two, and so on: the plan is what has
/// most, counted in channels times duration; of equal ones the longest. The library joins no files that have
/// analog channels but no discrete one, so that such a plan has the first file alone. Throws as ReadSegment.
Examination Examine(const QStringList& files);

/// "30 of 32 analog, 0 of 64 discrete channels"
QString TextOf(const Loss& loss);

/// What is lost, as sentences for people. Names beyond the tenth are counted.
QStringList NotesOf(const Loss& loss);

/// The same for programs; docs/json.md lists the keys.
QJsonObject JsonOf(const Loss& loss);

} // namespace salvage
