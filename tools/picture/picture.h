// A still picture of a record: what happened in words and figures, and the faulted circuit.
//
//     picture::Write("record.cfg", "record.svg", picture::Format::Svg, {});
#pragma once

#include "picture/module.h"
#include "view/view.h"

namespace picture {

/// Draws what happened, in words and figures, and the faulted circuit with its voltages, currents and
/// changing states; without a fault the started circuit and the key figures of the report. An older picture
/// is replaced only when the new one is whole. Needs the module's application. Throws view::Error,
/// ModuleError, and comtrade::Error for a record that cannot be read.
view::Held Write(const QString& recordPath, const QString& picturePath, Format format,
                 const view::Options& options);

} // namespace picture
