#include "zucmtr/files/sourceerror.h"

#include "text/texts.h"
#include "zucmtr/files/systemfile.h"

#include "explain/system.h"

namespace sourcefiles {

void ThrowChanged(const QString& what)
{
    throw Error(Trouble::Changed, Tr("sources", "%1; the recording is kept, convert it again").arg(what));
}

void ThrowUnwritten(const QString& path, const QString& directory, int error, Trouble otherwise)
{
    throw Error(explain::IsNoRoom(error) ? Trouble::NoRoom : otherwise,
                Tr("sources", "'%1' could not be written to the disk: %2; the recording is kept; check the "
                              "disk, then convert again")
                    .arg(path, explain::SystemText(error, directory)));
}

void SyncOrThrow(const QString& path, const QString& directory, Trouble otherwise)
{
    const int error = systemfile::Sync(path);
    if (error != 0)
        ThrowUnwritten(path, directory, error, otherwise);
}

} // namespace sourcefiles
