// Kinds of short circuit on a line, and the conductances that stand for them at the place of the fault.
#pragma once

#include <Eigen/Core>

#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace station {

enum class FaultKind { AG, BG, CG, AB, BC, CA, ABG, BCG, CAG, ABC };

// All kinds, in the order of the enumeration.
const std::vector<FaultKind>& AllFaultKinds();

// "AG" to "ABC".
QString NameOf(FaultKind kind);

// The kind with that name, in upper or lower case.
std::optional<FaultKind> FaultKindNamed(const QString& name);

// The phases that take part: a, b and c.
std::array<bool, 3> PhasesOf(FaultKind kind);

// Whether the ground takes part, which it does in ABC too.
bool IsGrounded(FaultKind kind);

// The phase on whose voltage the moment of the fault is stated: the one that comes first in the name.
size_t ReferencePhase(FaultKind kind);

// Whether one kind can turn into the other: phases or the ground join, and none leaves.
bool Evolves(FaultKind from, FaultKind into);

// A short circuit. What the resistance (ohm) is depends on the kind:
//   AG BG CG     between the phase and the ground;
//   AB BC CA     of the arc between the two phases;
//   ABG BCG CAG  between the ground and the point where the phases meet; each phase has an arc of a tenth of
//   it; ABC          between each phase and the ground, which carries no current as long as all three do.
// Less than MetallicContact counts as that.
struct FaultState
{
    FaultKind kind;
    double resistance;
};

constexpr double MetallicContact = 0.001; // ohm

// Conductances (siemens) between the phases, and between phases and the ground: the currents out of the
// phases into the fault are this matrix times the phases' voltages to the ground.
Eigen::Matrix3d ConductanceOf(const FaultState& fault);

} // namespace station
