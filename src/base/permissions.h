// Permissions of the files that the library creates.
#pragma once

#include <QFile>

namespace zu {

/// What lets a file's group read and write it.
inline constexpr QFile::Permissions GroupAccess = QFile::ReadGroup | QFile::WriteGroup;

/// Adds permissions to those of the file. False if it does not exist or refuses them.
inline bool AddPermissions(const QString& fileName, QFile::Permissions permissions)
{
    return QFile::exists(fileName) &&
           QFile::setPermissions(fileName, QFile::permissions(fileName) | permissions);
}

} // namespace zu
