#include "station/linephasors.h"

#include <Eigen/LU>

namespace station {

namespace {

constexpr double HalfRootOfThree = 0.86602540378443864676;
const Complex Third(-0.5, HalfRootOfThree); // a turn of 120 degrees

// Zero, positive and negative sequence.
using Sequences = std::array<Complex, 3>;

Sequences SequencesOf(const Eigen::Vector3cd& phases)
{
    const Complex square = std::conj(Third);
    return {(phases[0] + phases[1] + phases[2]) / 3.0,
            (phases[0] + Third * phases[1] + square * phases[2]) / 3.0,
            (phases[0] + square * phases[1] + Third * phases[2]) / 3.0};
}

PhasePhasors PhasesOf(const Sequences& sequences)
{
    const auto& [zero, positive, negative] = sequences;
    const Complex square = std::conj(Third);
    return {zero + positive + negative, zero + square * positive + Third * negative,
            zero + Third * positive + square * negative};
}

Complex OfSequence(const SequenceImpedance& impedance, size_t sequence)
{
    return sequence == 0 ? impedance.zero : impedance.positive;
}

Complex InParallel(Complex one, Complex other)
{
    return one * other / (one + other);
}

// The impedances of one sequence's network, seen from the fault.
struct SequenceNetwork
{
    Complex infeed;
    Complex healthy;
    Complex bus;   // both in parallel
    Complex near;  // from the fault to the bus and behind it
    Complex far;   // from the fault to the remote source
    Complex whole; // near and far in parallel
};

SequenceNetwork NetworkOf(const LineModel& model, size_t sequence)
{
    const auto impedance = [&](const SequenceImpedance& both) {
        return OfSequence(AtFrequency(both, model.frequency), sequence);
    };
    SequenceNetwork network;
    network.infeed = impedance(model.infeed);
    network.healthy = impedance(model.healthy);
    network.bus = InParallel(network.infeed, network.healthy);
    network.near = network.bus + impedance(LineImpedance(model.line, model.fraction));
    network.far = impedance(InSeries(LineImpedance(model.line, 1.0 - model.fraction), model.remote));
    network.whole = InParallel(network.near, network.far);
    return network;
}

// Current out of the line into the fault.
Sequences FaultCurrent(const LineModel& model, const FaultState& fault, const SequenceNetwork& positive,
                       const SequenceNetwork& zero)
{
    Eigen::Matrix3cd source = Eigen::Matrix3cd::Constant((zero.whole - positive.whole) / 3.0);
    source.diagonal().setConstant((zero.whole + 2.0 * positive.whole) / 3.0);
    const Complex before =
        model.voltage -
        model.lineLoad * AtFrequency(LineImpedance(model.line, model.fraction), model.frequency).positive;
    const PhasePhasors phases = PhasesOf({0.0, before, 0.0});
    const Eigen::Matrix3cd conductance = ConductanceOf(fault).cast<Complex>();
    const Eigen::Matrix3cd divider = Eigen::Matrix3cd::Identity() + source * conductance;
    return SequencesOf(conductance * (divider.inverse() * Eigen::Vector3cd(phases[0], phases[1], phases[2])));
}

} // namespace

LinePhasors SteadyState(const LineModel& model, const std::optional<FaultState>& fault)
{
    const SequenceNetwork networks[] = {NetworkOf(model, 0), NetworkOf(model, 1), NetworkOf(model, 2)};
    const Sequences fed = fault ? FaultCurrent(model, *fault, networks[1], networks[0]) : Sequences{};
    Sequences bus = {0.0, model.voltage, 0.0};
    Sequences line = {0.0, model.lineLoad, 0.0};
    Sequences infeed = {0.0, -model.lineLoad - model.healthyLoad, 0.0};
    Sequences healthy = {0.0, model.healthyLoad, 0.0};
    Sequences remote = {0.0, -model.lineLoad, 0.0};
    for (size_t sequence = 0; sequence < 3; ++sequence) {
        const SequenceNetwork& network = networks[sequence];
        const Complex fromNear = fed[sequence] * network.far / (network.near + network.far);
        const Complex drop = fromNear * network.bus;
        bus[sequence] -= drop;
        line[sequence] += fromNear;
        infeed[sequence] -= drop / network.infeed;
        healthy[sequence] -= drop / network.healthy;
        remote[sequence] += fed[sequence] - fromNear;
    }
    return {PhasesOf(bus), PhasesOf(line), PhasesOf(infeed), PhasesOf(healthy), PhasesOf(remote)};
}

} // namespace station
