// What becomes of recordings that are safely converted: deleted, or moved into an archive.
#pragma once

#include <QString>
#include <QStringList>

#include <stdexcept>

namespace sourcefiles {

/// A file that could not be written to the disk, moved or deleted; what() is UTF-8.
class Error : public std::runtime_error
{
public:
    explicit Error(const QString& text) : std::runtime_error(text.toStdString()) {}
};

/// Has the system write these files, and their names in the directory, to the disk. Throws Error.
void Sync(const QStringList& files, const QString& directory);

/// Deletes the files, in order. Throws Error at the first that stays.
void Remove(const QStringList& files);

/// Moves the files into the directory, which is made if it is not there: by a new name on the same file
/// system, else by a copy that is compared before the original goes. A file that is there already stands for
/// its original if they are the same; if they differ, nothing at all is moved. Throws Error.
void Archive(const QStringList& files, const QString& directory);

} // namespace sourcefiles
