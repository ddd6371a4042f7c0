// The files of a command line as recordings. Shell patterns hand in continuation files (rec.Z01 ... rec.Z0f)
// too, which the library takes by itself when it converts their first file (rec.ZU).
#pragma once

#include <QString>
#include <QStringList>

/// The path of the first file to which a continuation file belongs; empty if the name is not that of a
/// continuation file.
QString FirstFileOf(const QString& path);

/// What to do with one file of the command line.
enum class Role {
    FirstFile,   // convert it; names that are no recorder file's are the library's to refuse
    PassedOver,  // a continuation whose first file is given as well
    WithoutFirst // a continuation whose first file is not given
};

/// The role of a file among all files of the command line. Two spellings of one path count as the same.
Role RoleOf(const QString& path, const QStringList& allFiles);
