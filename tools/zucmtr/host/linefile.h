// The file lines.ini that belongs to what a command works on.
#pragma once

#include "analysis/linedata.h"

#include <QString>
#include <QStringList>

struct LineData
{
    QString path; ///< empty: there is no file
    analysis::Lines lines;
};

/// The path of the lines.ini in the first of the directories that has one; empty if none has.
QString LineFileIn(const QStringList& directories);

/// Reads the data of the lines: the file of --lines if it is named, else the lines.ini beside the ini file,
/// else the one beside the recording or record; none is no error. Throws ConfigurationError with a line for
/// each mistake in the file.
LineData LoadLines(const QString& named, const QString& ini, const QString& file);
