// The files of a record that is not a container, and whatever case their names are in.
#pragma once

#include "comtrade/finding.h"

#include <QByteArray>
#include <QString>

namespace comtrade {

/// The files beside a configuration; a path is empty if there is no such file.
struct RecordFiles
{
    QString data;
    QString header;
    QString information;
};

/// Finds them. A name in another case is taken if it is the only one; that is a finding. Throws Error if
/// there are several, or no data.
RecordFiles FilesOf(const QString& configurationPath, Findings* forgiven);

/// Throws Error unless the name is that of a configuration or container; for another file of a record the
/// text names its configuration.
void CheckName(const QString& path);

/// The bytes of a text file of a record. Throws Error.
QByteArray ReadText(const QString& path);

} // namespace comtrade
