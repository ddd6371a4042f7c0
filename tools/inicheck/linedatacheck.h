// Explains lines.ini, the data of the lines, against the ini file of the recorders.
#pragma once

#include "inicheck/finding.h"

#include <QStringList>

namespace inicheck {

/// Mistakes, and for each section what it is about: equipment of the devices' sorting dictionaries, or a bay.
/// The findings are about the rows of lines.ini, in their order. Throws text::Error if a file cannot be read.
Findings CheckLineData(const QString& lineFile, const QString& ini, const QStringList& devices);

} // namespace inicheck
