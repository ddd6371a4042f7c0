#include "explain/filesystem.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <linux/magic.h>
#include <sys/vfs.h>

namespace explain {

namespace {

bool IsLocal(const struct statfs& status)
{
    constexpr std::array<unsigned long, 7> local = {EXT4_SUPER_MAGIC,     XFS_SUPER_MAGIC,  BTRFS_SUPER_MAGIC,
                                                    TMPFS_MAGIC,          F2FS_SUPER_MAGIC, MSDOS_SUPER_MAGIC,
                                                    OVERLAYFS_SUPER_MAGIC};
    return std::find(local.begin(), local.end(), static_cast<unsigned long>(status.f_type)) != local.end();
}

} // namespace

bool IsLocal(int file)
{
    struct statfs status = {};
    return fstatfs(file, &status) == 0 && IsLocal(status);
}

bool IsLocal(const QString& path)
{
    struct statfs status = {};
    return statfs(QFile::encodeName(path).constData(), &status) == 0 && IsLocal(status);
}

} // namespace explain
