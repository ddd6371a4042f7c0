// The fault report (HDR file) as text, and what the pictures take from it.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace view {

/// The circuit whose start made the recording, one of the given circuits: the one that the report names, or
/// the one in the condition of the start. Empty if there is none.
QString StartedCircuit(const QString& report, const QStringList& circuits);

/// The value after a label at the start of a line, empty if there is no such line.
QString ReportValue(const QString& report, const QString& label);

/// The most important lines of the report as they stand, with empty lines between their groups.
QStringList Figures(const QString& report);

} // namespace view
