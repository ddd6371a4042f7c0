#include "analysis/circuits.h"

#include "analysis/channelrole.h"

#include <QHash>

#include <algorithm>

namespace analysis {

namespace {

constexpr int NoPlace = -1;

int PlaceOf(char phase)
{
    switch (phase) {
    case 'a':
        return PhaseA;
    case 'b':
        return PhaseB;
    case 'c':
        return PhaseC;
    case '0':
        return Residual;
    default:
        return NoPlace;
    }
}

class Grouping
{
public:
    Circuit& Of(const QString& name)
    {
        const auto known = places.constFind(name);
        if (known != places.constEnd())
            return circuits[*known];
        places.insert(name, circuits.size());
        circuits.emplace_back();
        circuits.back().name = name;
        return circuits.back();
    }

    std::vector<Circuit> Take() { return std::move(circuits); }

private:
    std::vector<Circuit> circuits;
    QHash<QString, size_t> places;
};

void Add(Circuit& circuit, const Role& role, int channel)
{
    const int place = PlaceOf(role.phase);
    if (role.quantity == Quantity::Other || place == NoPlace)
        return;
    Circuit::Channels& channels = role.quantity == Quantity::Voltage ? circuit.voltages : circuit.currents;
    int& known = channels[static_cast<size_t>(place)];
    if (known == NoChannel)
        known = channel;
}

} // namespace

bool Circuit::HasPhases(const Channels& channels)
{
    return std::all_of(channels.begin(), channels.begin() + Phases,
                       [](int channel) { return channel != NoChannel; });
}

bool Circuit::HasWave(size_t channel) const
{
    const auto isAmong = [channel](const Channels& channels) {
        return std::find(channels.begin(), channels.end(), static_cast<int>(channel)) != channels.end();
    };
    return isAmong(voltages) || isAmong(currents);
}

std::vector<Circuit> CircuitsOf(const comtrade::Configuration& config)
{
    Grouping grouping;
    for (size_t i = 0; i < config.analog.size(); ++i)
        Add(grouping.Of(config.analog[i].circuit), RoleOf(config.analog[i]), static_cast<int>(i));
    for (size_t i = 0; i < config.states.size(); ++i)
        grouping.Of(config.states[i].circuit).states.push_back(i);
    return grouping.Take();
}

} // namespace analysis
