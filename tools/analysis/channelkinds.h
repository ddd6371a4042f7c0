// What a discrete channel is about, and which of its states means what.
#pragma once

#include "analysis/statusinfo.h"
#include "comtrade/record.h"

#include <map>

namespace analysis {

enum class ChannelKind { Start, Trip, Breaker, Reclosing, Other };

/// The word of the JSON output: "start", "trip", "breaker", "reclosing", "other".
const char* NameOf(ChannelKind kind);

struct ChannelUse
{
    ChannelKind kind = ChannelKind::Other;
    /// The state in which the signal is there: a start, a trip, a reclosing; of a breaker's contact, the
    /// state in which the breaker is closed.
    bool active = true;
};

/// Knows the channels of one record. Their types are those of the sorting dictionary (S_T, D_G), which are in
/// the INF file of the Russian edition of COMTRADE; without it, or for a channel that it does not have, they
/// are guessed from the name as for a new dictionary. There is no code for reclosing, so that it is found by
/// its name in any case.
class ChannelKinds
{
public:
    /// information: the INF file; may be empty. The configuration must outlive the object.
    ChannelKinds(const comtrade::Configuration& config_, const QString& information);

    /// Of a discrete channel, by its place in the configuration.
    ChannelUse Of(size_t channel) const;

    /// The circuit under which the record has a piece of equipment of the sorting dictionary; empty if the
    /// INF file does not have the equipment.
    QString CircuitOf(const QString& equipment) const;

private:
    const StatusInfo* InfoOf(const comtrade::StateChannel& channel) const;

    const comtrade::Configuration& config;
    std::map<int, StatusInfo> known;
};

/// The name of a channel without that of its circuit.
QString SignalName(const comtrade::StateChannel& channel);

} // namespace analysis
