// Which circuits of a record the sections of lines.ini are about.
#pragma once

#include "analysis/channelkinds.h"
#include "analysis/circuits.h"
#include "analysis/linedata.h"

namespace analysis {

/// Whether two names of a circuit have the same letters and digits; "кВ" after a number, blanks, dashes and
/// the like are left out.
bool IsSameName(const QString& a, const QString& b);

/// The circuit of the record that a section means: the one of this name; the one that the INF file has for
/// equipment of this name; the only one of the same name as IsSameName has it ("ВЛ-110 Южная" for "ВЛ 110 кВ
/// Южная"). Empty if there is none.
QString CircuitNamed(const QString& name, const std::vector<Circuit>& circuits, const ChannelKinds& kinds);

/// The lines that the record has, under the names of its circuits; also those in `voltages` and `parallel`.
/// Lines of which neither impedances nor voltages are known are left out.
Lines LinesOf(const Lines& lines, const std::vector<Circuit>& circuits, const ChannelKinds& kinds);

/// The line of a circuit among those of the record; null if there is none.
const Line* LineOf(const QString& circuit, const Lines& lines);

/// The circuit whose voltages serve another one: the one that lines.ini names, itself, or the only one that
/// has voltages; null if there is none.
const Circuit* VoltagesOf(const Circuit& circuit, const std::vector<Circuit>& circuits, const Line* line);

} // namespace analysis
