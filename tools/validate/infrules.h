// The sections of an INF text.
#pragma once

#include "validate/report.h"

#include <QHash>
#include <QString>

#include <vector>

namespace validate {

struct InfEntry
{
    QString key;
    QString value;
    qint64 line = 0;
    int column = 0; ///< of the value
};

struct InfSection
{
    QString name; ///< without brackets, single blanks between its words
    qint64 line = 0;
    QHash<QString, InfEntry> entries; ///< by key in lower case; of equal keys the last one
};

/// The sections of a text; reports what is wrong with its lines and headings.
std::vector<InfSection> CheckSections(const QString& text, Report& report);

} // namespace validate
