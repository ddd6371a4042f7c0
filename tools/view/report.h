// The fault report (HDR file) as text, and what the pictures take out of it.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace view {

/// The report decoded: UTF-8, or CP1251 where it is no UTF-8; lines end in line feeds.
QString ReportText(const QByteArray& bytes);

/// The circuit whose start made the recording, one of the circuits given: that which the report names, or
/// which stands in the condition of the start. Empty if there is none.
QString StartedCircuit(const QString& report, const QStringList& circuits);

/// The value behind a label at the beginning of a line, empty if there is no such line.
QString ReportValue(const QString& report, const QString& label);

/// The lines with the extreme values of the started circuit.
QStringList ExtremeLines(const QString& report);

} // namespace view
