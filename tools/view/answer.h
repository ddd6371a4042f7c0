// What happened in the record, as the page's scripts need it: the summary with its sentences in both
// languages, the circuits by the places of their channels, and the data of their lines.
#pragma once

#include "analysis/summary.h"

#include <QJsonObject>

namespace view {

/// The keys are those that web/*.js read. Channels are places in the configuration from 0 (null for none),
/// samples count from `first`, times are seconds from the trigger.
///
///     summary    what `zucmtr events --json` has, without "text" and "phasors"
///     sentences  {"en": [...], "ru": [...]}
///     faulted    place of the faulted circuit among the circuits, or null
///     circuits   [{name, voltages: [a, b, c, 3U0], currents: [a, b, c, 3I0], states, line}]: the voltages
///     are
///                those that serve the circuit; line is null or {length, r1, x1, r0, x0, k0: [re, im], zones:
///                [{number, radius, corners: [[r, x] ...]}]}, primary ohms (per km)
///     phasors    [{channel, before, during, after}]: [RMS in V or A, degrees] or null
///     changes    [[sample, state channel] ...], for summary.events in their order
QJsonObject AnswerJson(const analysis::Summary& summary, qint64 first);

} // namespace view
