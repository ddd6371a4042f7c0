// The still picture as a whole.
#pragma once

#include "picture/module.h"

namespace picture {

/// The file of the picture: what happened in words; voltages and currents of the faulted circuit with its
/// states, and beside them the fault in figures. Without a fault the started circuit and the figures of the
/// report. Needs a QGuiApplication.
QByteArray DrawOverview(const analysis::Oscillogram& oscillogram, const analysis::Summary& summary,
                        Format format);

} // namespace picture
