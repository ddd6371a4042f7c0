// The fault report (HDR file) as text, and what the pictures take out of it.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace view {

/// The report decoded; lines end in line feeds.
QString ReportText(const QByteArray& bytes);

/// The circuit whose start made the recording, one of the circuits given: that which the report names, or
/// which stands in the condition of the start. Empty if there is none.
QString StartedCircuit(const QString& report, const QStringList& circuits);

/// The value after a label at the beginning of a line, empty if there is no such line.
QString ReportValue(const QString& report, const QString& label);

/// The lines of the report that say most, as they stand, with lines between them that are empty.
QStringList Figures(const QString& report);

} // namespace view
