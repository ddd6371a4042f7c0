#include "station/linefault.h"

#include <algorithm>

namespace station {

namespace {

struct KindRow
{
    FaultKind kind;
    const char* name;
    std::array<bool, 3> phases;
    bool grounded;
    size_t reference;
};

const KindRow KindRows[] = {
    {FaultKind::AG, "AG", {true, false, false}, true, 0},
    {FaultKind::BG, "BG", {false, true, false}, true, 1},
    {FaultKind::CG, "CG", {false, false, true}, true, 2},
    {FaultKind::AB, "AB", {true, true, false}, false, 0},
    {FaultKind::BC, "BC", {false, true, true}, false, 1},
    {FaultKind::CA, "CA", {true, false, true}, false, 2},
    {FaultKind::ABG, "ABG", {true, true, false}, true, 0},
    {FaultKind::BCG, "BCG", {false, true, true}, true, 1},
    {FaultKind::CAG, "CAG", {true, false, true}, true, 2},
    {FaultKind::ABC, "ABC", {true, true, true}, true, 0},
};

const KindRow& RowOf(FaultKind kind)
{
    return KindRows[static_cast<size_t>(kind)];
}

size_t PhaseCount(FaultKind kind)
{
    const std::array<bool, 3> phases = PhasesOf(kind);
    return static_cast<size_t>(std::count(phases.begin(), phases.end(), true));
}

// Of each phase's arc, as a part of the fault's resistance.
double ArcPart(FaultKind kind)
{
    if (PhaseCount(kind) != 2)
        return 1.0;
    return IsGrounded(kind) ? 0.1 : 0.5;
}

} // namespace

const std::vector<FaultKind>& AllFaultKinds()
{
    static const std::vector<FaultKind> kinds = [] {
        std::vector<FaultKind> all;
        for (const KindRow& row : KindRows)
            all.push_back(row.kind);
        return all;
    }();
    return kinds;
}

QString NameOf(FaultKind kind)
{
    return QString::fromLatin1(RowOf(kind).name);
}

std::optional<FaultKind> FaultKindNamed(const QString& name)
{
    for (const KindRow& row : KindRows)
        if (name.compare(QLatin1String(row.name), Qt::CaseInsensitive) == 0)
            return row.kind;
    return std::nullopt;
}

std::array<bool, 3> PhasesOf(FaultKind kind)
{
    return RowOf(kind).phases;
}

bool IsGrounded(FaultKind kind)
{
    return RowOf(kind).grounded;
}

size_t ReferencePhase(FaultKind kind)
{
    return RowOf(kind).reference;
}

bool Evolves(FaultKind from, FaultKind into)
{
    for (size_t phase = 0; phase < 3; ++phase)
        if (PhasesOf(from)[phase] && !PhasesOf(into)[phase])
            return false;
    return from != into && (IsGrounded(into) || !IsGrounded(from));
}

Eigen::Matrix3d ConductanceOf(const FaultState& fault)
{
    const double arc = 1.0 / std::max(fault.resistance * ArcPart(fault.kind), MetallicContact);
    Eigen::Vector3d arcs = Eigen::Vector3d::Zero();
    for (Eigen::Index phase = 0; phase < 3; ++phase)
        if (PhasesOf(fault.kind)[static_cast<size_t>(phase)])
            arcs[phase] = arc;
    Eigen::Matrix3d conductance = arcs.asDiagonal();
    if (PhaseCount(fault.kind) != 2)
        return conductance;
    // The point where the arcs meet is eliminated (star-mesh transformation).
    const double ground = IsGrounded(fault.kind) ? 1.0 / std::max(fault.resistance, MetallicContact) : 0.0;
    conductance -= arcs * arcs.transpose() / (arcs.sum() + ground);
    return conductance;
}

} // namespace station
