#include "station/linesimulation.h"

#include "station/linephasors.h"
#include "station/waveform.h"

#include <Eigen/Cholesky>
#include <Eigen/LU>

#include <algorithm>
#include <cmath>

namespace station {

namespace {

using Eigen::Matrix3d;
using Eigen::Vector3d;
using Matrix6d = Eigen::Matrix<double, 6, 6>;
using Vector6d = Eigen::Matrix<double, 6, 1>;

constexpr double LongestStep = 20e-6;
constexpr double SmallConductance =
    1e-9; // S, from each node to the ground, for phases that nothing else feeds
constexpr double HalfRootOfThree = 0.86602540378443864676;
const double RootOfTwo = std::sqrt(2.0);

// Coupled phases in series with a breaker; currents of open poles are zero.
struct Branch
{
    PhaseImpedance impedance;
    std::array<bool, 3> closed = {true, true, true};
    Vector3d current = Vector3d::Zero();
    Vector3d voltage = Vector3d::Zero(); // across the branch
    Vector3d history = Vector3d::Zero(); // of the companion model, A
    Matrix3d conductance;
    Matrix3d reactance;  // 2 L / step
    Matrix3d difference; // 2 L / step - R

    Branch(const SequenceImpedance& sequence, double step) : impedance(InPhases(sequence))
    {
        reactance = impedance.inductance * (2.0 / step);
        difference = reactance - impedance.resistance;
        SetPoles();
    }

    // What a change of the poles changes.
    void SetPoles()
    {
        Matrix3d matrix = reactance + impedance.resistance;
        for (Eigen::Index phase = 0; phase < 3; ++phase)
            if (!closed[static_cast<size_t>(phase)]) {
                matrix.row(phase).setZero();
                matrix.col(phase).setZero();
                matrix(phase, phase) = 1.0;
                current[phase] = 0.0;
            }
        conductance = matrix.inverse();
        for (Eigen::Index phase = 0; phase < 3; ++phase)
            if (!closed[static_cast<size_t>(phase)])
                conductance(phase, phase) = 0.0;
    }

    // A full step by the trapezoidal rule, or half a step by the backward Euler method.
    void SetHistory(bool euler)
    {
        if (euler)
            history.noalias() = conductance * (reactance * current);
        else
            history.noalias() = conductance * (voltage + difference * current);
    }

    void SetCurrent(const Vector3d& across)
    {
        voltage = across;
        current.noalias() = conductance * across + history;
    }
};

struct Emf
{
    Complex voltage;
    Vector3d part = Vector3d::Ones();
};

// Sines and cosines of the three phases of an angle.
struct Rotation
{
    Vector3d sine;
    Vector3d cosine;

    explicit Rotation(double turns)
    {
        const double s = SineOfTurns(turns);
        const double c = SineOfTurns(turns + 0.25);
        sine = {s, -0.5 * s - HalfRootOfThree * c, -0.5 * s + HalfRootOfThree * c};
        cosine = {c, -0.5 * c + HalfRootOfThree * s, -0.5 * c - HalfRootOfThree * s};
    }

    Vector3d Of(const Emf& emf) const
    {
        return (RootOfTwo * (emf.voltage.real() * sine + emf.voltage.imag() * cosine)).cwiseProduct(emf.part);
    }
};

// The momentary values of phasors at an angle of the reference.
Vector3d ValuesOf(const PhasePhasors& phasors, double turns)
{
    const double sine = SineOfTurns(turns);
    const double cosine = SineOfTurns(turns + 0.25);
    Vector3d values;
    for (size_t phase = 0; phase < 3; ++phase)
        values[static_cast<Eigen::Index>(phase)] =
            RootOfTwo * (phasors[phase].real() * sine + phasors[phase].imag() * cosine);
    return values;
}

PhaseValues ArrayOf(const Vector3d& values)
{
    return {values[0], values[1], values[2]};
}

class Simulation
{
public:
    Simulation(const LineModel& lineModel, const Course& events, double sampleRate);

    LineWaves Run(size_t samples);

private:
    void Start();
    void Record(LineWaves& waves) const;
    void Advance(LineWaves& waves);
    bool Act(double time);
    void Do(const FaultChange& change);
    void Do(const BreakerOrder& order);
    void Do(const SourceChange& change);
    void Factorise();
    void Solve(double time, bool euler);
    void Interrupt(double time, const Vector3d& before, Branch& branch, Terminal terminal, LineWaves& waves);
    void Measure(LineWaves& waves);
    double Turns(double time) const;
    Emf& EmfOf(Source source);

    LineModel model;
    Course course;
    StepGrid grid;
    Branch infeed;
    Branch healthy;
    Branch line;   // from the bus to the fault
    Branch remote; // from the remote source to the fault
    Emf infeedEmf;
    Emf healthyEmf;
    Emf remoteEmf;
    Matrix3d fault = Matrix3d::Zero();
    Vector3d bus = Vector3d::Zero();
    Vector3d extraLine = Vector3d::Zero(); // switched loads behind the bays
    Vector3d extraHealthy = Vector3d::Zero();
    Vector3d measured = Vector3d::Zero(); // current of the line, as its current transformers see it
    std::vector<CurrentTransformer> transformers;
    Eigen::LLT<Matrix6d> factors;
    std::array<bool, 2> opening = {false, false}; // by terminal
    bool discontinuous = true;                    // the next step needs the damping
    int64_t step = 0;
    size_t nextAction = 0;
};

Simulation::Simulation(const LineModel& lineModel, const Course& events, double sampleRate)
    : model(lineModel), course(events), grid(sampleRate), infeed(model.infeed, grid.Length()),
      healthy(model.healthy, grid.Length()), line(LineImpedance(model.line, model.fraction), grid.Length()),
      remote(InSeries(LineImpedance(model.line, 1.0 - model.fraction), model.remote), grid.Length())
{
    const SourceVoltages sources = SourceVoltagesOf(model);
    infeedEmf.voltage = sources.infeed;
    healthyEmf.voltage = sources.healthy;
    remoteEmf.voltage = sources.remote;
    if (course.kneeFlux)
        transformers.assign(3, CurrentTransformer(*course.kneeFlux, *course.kneeFlux));
}

LineWaves Simulation::Run(size_t samples)
{
    LineWaves waves;
    for (std::vector<PhaseValues>* values : {&waves.bus, &waves.line, &waves.infeed, &waves.healthy})
        values->reserve(samples);
    Start();
    for (size_t sample = 0; sample < samples; ++sample) {
        Record(waves);
        for (int i = 0; i < grid.PerSample(); ++i)
            Advance(waves);
    }
    return waves;
}

void Simulation::Start()
{
    const LinePhasors steady = SteadyState(model, std::nullopt);
    const double turns = Turns(0.0);
    bus = ValuesOf(steady.bus, turns);
    line.current = measured = ValuesOf(steady.line, turns);
    infeed.current = ValuesOf(steady.infeed, turns);
    healthy.current = ValuesOf(steady.healthy, turns);
    remote.current = -line.current;
}

void Simulation::Record(LineWaves& waves) const
{
    waves.bus.push_back(ArrayOf(bus));
    waves.line.push_back(ArrayOf(measured));
    waves.infeed.push_back(ArrayOf(infeed.current));
    waves.healthy.push_back(ArrayOf(healthy.current + extraHealthy));
}

void Simulation::Advance(LineWaves& waves)
{
    const double now = grid.TimeOf(step);
    const double next = grid.TimeOf(step + 1);
    discontinuous = Act(now) || discontinuous;
    const Vector3d lineBefore = line.current;
    const Vector3d remoteBefore = remote.current;
    if (discontinuous) {
        Factorise();
        Solve((now + next) / 2.0, true);
        Solve(next, true);
        discontinuous = false;
    } else {
        Solve(next, false);
    }
    ++step;
    Measure(waves); // before the poles: what is left of their currents is still part of the other bays' ones
    Interrupt(next, lineBefore, line, Terminal::Local, waves);
    Interrupt(next, remoteBefore, remote, Terminal::Remote, waves);
}

// Does what is due; true if anything was.
bool Simulation::Act(double time)
{
    bool acted = false;
    for (;
         nextAction < course.actions.size() && course.actions[nextAction].time <= time + grid.Length() / 2.0;
         ++nextAction) {
        std::visit([this](const auto& what) { Do(what); }, course.actions[nextAction].what);
        acted = true;
    }
    return acted;
}

void Simulation::Do(const FaultChange& change)
{
    fault = change.fault ? ConductanceOf(*change.fault) : Matrix3d::Zero();
}

void Simulation::Do(const BreakerOrder& order)
{
    opening[static_cast<size_t>(order.terminal)] = !order.closed;
    Branch& branch = order.terminal == Terminal::Local ? line : remote;
    if (order.closed) {
        branch.closed = {true, true, true};
        branch.SetPoles();
    }
}

void Simulation::Do(const SourceChange& change)
{
    Emf& emf = EmfOf(change.source);
    emf.voltage = change.voltage;
    emf.part = {change.part[0], change.part[1], change.part[2]};
}

Emf& Simulation::EmfOf(Source source)
{
    if (source == Source::Infeed)
        return infeedEmf;
    return source == Source::Healthy ? healthyEmf : remoteEmf;
}

// The nodes are the phases of the bus and those of the fault.
void Simulation::Factorise()
{
    Matrix6d nodes = Matrix6d::Identity() * SmallConductance;
    nodes.topLeftCorner<3, 3>() += infeed.conductance + healthy.conductance + line.conductance;
    nodes.topRightCorner<3, 3>() -= line.conductance;
    nodes.bottomLeftCorner<3, 3>() -= line.conductance;
    nodes.bottomRightCorner<3, 3>() += line.conductance + remote.conductance + fault;
    factors.compute(nodes);
}

void Simulation::Solve(double time, bool euler)
{
    const double turns = Turns(time);
    const Rotation rotation(turns);
    const Vector3d infeedVoltage = rotation.Of(infeedEmf);
    const Vector3d healthyVoltage = rotation.Of(healthyEmf);
    Vector3d remoteVoltage;
    if (course.swing && time > course.swing->start) {
        const double swing = SineOfTurns(course.swing->frequency * (time - course.swing->start));
        remoteVoltage = Rotation(turns + course.swing->amplitude * swing).Of(remoteEmf);
    } else {
        remoteVoltage = rotation.Of(remoteEmf);
    }
    if (course.inrush) {
        const PhaseValues currents = InrushCurrents(*course.inrush, time, turns);
        (course.inrush->bay == SwitchedBay::Line ? extraLine : extraHealthy) =
            Vector3d(currents[0], currents[1], currents[2]);
    }

    for (Branch* branch : {&infeed, &healthy, &line, &remote})
        branch->SetHistory(euler);
    Vector6d currents;
    currents.head<3>() = infeed.conductance * infeedVoltage + healthy.conductance * healthyVoltage -
                         infeed.history - healthy.history - line.history - extraLine - extraHealthy;
    currents.tail<3>() = remote.conductance * remoteVoltage + remote.history + line.history;
    const Vector6d voltages = factors.solve(currents);
    bus = voltages.head<3>();
    infeed.SetCurrent(bus - infeedVoltage);
    healthy.SetCurrent(bus - healthyVoltage);
    line.SetCurrent(bus - voltages.tail<3>());
    remote.SetCurrent(remoteVoltage - voltages.tail<3>());
}

void Simulation::Interrupt(double time, const Vector3d& before, Branch& branch, Terminal terminal,
                           LineWaves& waves)
{
    if (!opening[static_cast<size_t>(terminal)])
        return;
    bool interrupted = false;
    for (size_t phase = 0; phase < 3; ++phase) {
        const auto index = static_cast<Eigen::Index>(phase);
        if (!branch.closed[phase] || before[index] * branch.current[index] > 0.0)
            continue;
        branch.closed[phase] = false;
        waves.interruptions.push_back({terminal, phase, time});
        interrupted = true;
    }
    if (interrupted) {
        branch.SetPoles();
        discontinuous = true;
    }
}

void Simulation::Measure(LineWaves& waves)
{
    measured = line.current + extraLine;
    if (transformers.empty())
        return;
    for (size_t phase = 0; phase < 3; ++phase) {
        double& current = measured[static_cast<Eigen::Index>(phase)];
        const double passed = transformers[phase].Next(current, grid.Length());
        waves.largestCurrent = std::max(waves.largestCurrent, std::fabs(current));
        waves.largestDeviation = std::max(waves.largestDeviation, std::fabs(current - passed));
        current = passed;
    }
}

// The angle of the sources: the integral of their frequency.
double Simulation::Turns(double time) const
{
    double turns = course.turnsAtStart + model.frequency * time;
    if (course.ramp && time > course.ramp->start) {
        const double since = time - course.ramp->start;
        const double ramp = std::min(since, course.ramp->length);
        turns += course.ramp->slope * ramp * (since - ramp / 2.0);
    }
    return turns;
}

} // namespace

StepGrid::StepGrid(double sampleRate)
    : perSample(std::max(1, static_cast<int>(std::ceil(1.0 / (sampleRate * LongestStep) - 1e-9)))),
      rate(sampleRate * perSample)
{}

int64_t StepGrid::StepAt(double time) const
{
    return static_cast<int64_t>(std::ceil(time * rate - 1e-6));
}

LineWaves Simulate(const LineModel& model, const Course& course, double sampleRate, size_t samples)
{
    return Simulation(model, course, sampleRate).Run(samples);
}

} // namespace station
