// Which channels of a record make up a circuit: a line, a transformer, the voltages of a busbar.
#pragma once

#include "comtrade/record.h"

#include <array>
#include <vector>

namespace analysis {

/// Places of the phases in Circuit's arrays.
enum Phase : size_t { PhaseA, PhaseB, PhaseC, Residual };

constexpr size_t Phases = 3;
constexpr int NoChannel = -1;

struct Circuit
{
    using Channels = std::array<int, Phases + 1>; ///< places in the configuration, NoChannel for none

    QString name;
    Channels voltages = {NoChannel, NoChannel, NoChannel, NoChannel}; ///< a, b, c to earth; 3U0
    Channels currents = {NoChannel, NoChannel, NoChannel, NoChannel}; ///< a, b, c; 3I0
    std::vector<size_t> states; ///< discrete channels, places in the configuration

    bool HasVoltages() const { return HasPhases(voltages); } ///< of all three phases
    bool HasCurrents() const { return HasPhases(currents); } ///< likewise

    bool HasWave(size_t channel) const; ///< one of voltages and currents

private:
    static bool HasPhases(const Channels& channels);
};

/// The circuits by the names that the channels have for them, in the order of their first channels, each with
/// the first channel for each of its places. Channels without a circuit are those of the circuit "".
std::vector<Circuit> CircuitsOf(const comtrade::Configuration& config);

} // namespace analysis
