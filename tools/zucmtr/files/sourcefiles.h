// What becomes of recordings that are safely converted: deleted, or moved into an archive. What goes is what
// was read: the files are moved aside first and checked again (asidefiles.h).
#pragma once

#include "zucmtr/files/asidefiles.h"
#include "zucmtr/files/chainfiles.h"
#include "zucmtr/files/sourceerror.h"

#include <QString>
#include <QStringList>

namespace sourcefiles {

/// Has the system write these files, and their names in the directory, to the disk. Throws Error.
void Sync(const QStringList& files, const QString& directory);

/// Deletes the files of a recording, all or none. If it throws Error, either nothing was deleted, and each
/// file is where it was unless the text gives its new name; or the first file was deleted and the rest could
/// not be, which Recover does later. The chain must not be used afterwards.
void Remove(const ChainFiles& chain);

/// Moves the files of a recording into the directory, which is made if it is not there: they are placed
/// there, then removed here. A file that is there already takes the place of its original if their contents
/// are the same. Throws Error as Remove does, with nothing new in the archive but directories.
void Archive(const ChainFiles& chain, const QString& directory);

} // namespace sourcefiles
