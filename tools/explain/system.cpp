#include "explain/system.h"

#include "text/texts.h"

#include <cerrno>
#include <cstring>

namespace explain {

namespace {

struct Failure
{
    int error;
    const char* text;
};

// The failures that files and directories can have.
const Failure Failures[] = {
    {EACCES, QT_TRANSLATE_NOOP("system", "Permission denied")},
    {EPERM, QT_TRANSLATE_NOOP("system", "Operation not permitted")},
    {ENOENT, QT_TRANSLATE_NOOP("system", "No such file or directory")},
    {EEXIST, QT_TRANSLATE_NOOP("system", "File exists")},
    {EISDIR, QT_TRANSLATE_NOOP("system", "Is a directory")},
    {ENOTDIR, QT_TRANSLATE_NOOP("system", "Not a directory")},
    {ENOTEMPTY, QT_TRANSLATE_NOOP("system", "Directory not empty")},
    {ENAMETOOLONG, QT_TRANSLATE_NOOP("system", "File name too long")},
    {ELOOP, QT_TRANSLATE_NOOP("system", "Too many levels of symbolic links")},
    {ENOSPC, QT_TRANSLATE_NOOP("system", "No space left on device")},
    {EDQUOT, QT_TRANSLATE_NOOP("system", "Disk quota exceeded")},
    {EFBIG, QT_TRANSLATE_NOOP("system", "File too large")},
    {EROFS, QT_TRANSLATE_NOOP("system", "Read-only file system")},
    {EIO, QT_TRANSLATE_NOOP("system", "Input/output error")},
    {EXDEV, QT_TRANSLATE_NOOP("system", "Invalid cross-device link")},
    {EBUSY, QT_TRANSLATE_NOOP("system", "Device or resource busy")},
    {ETXTBSY, QT_TRANSLATE_NOOP("system", "Text file busy")},
    {EPIPE, QT_TRANSLATE_NOOP("system", "Broken pipe")},
    {ENXIO, QT_TRANSLATE_NOOP("system", "No such device or address")},
    {ENODEV, QT_TRANSLATE_NOOP("system", "No such device")},
    {EMFILE, QT_TRANSLATE_NOOP("system", "Too many open files")},
    {ENFILE, QT_TRANSLATE_NOOP("system", "Too many open files in system")},
    {ENOMEM, QT_TRANSLATE_NOOP("system", "Cannot allocate memory")},
    {ESTALE, QT_TRANSLATE_NOOP("system", "Stale file handle")},
    {ETIMEDOUT, QT_TRANSLATE_NOOP("system", "Connection timed out")},
    {EREMOTEIO, QT_TRANSLATE_NOOP("system", "Remote I/O error")},
    {ENOTCONN, QT_TRANSLATE_NOOP("system", "Transport endpoint is not connected")},
    {EAGAIN, QT_TRANSLATE_NOOP("system", "Resource temporarily unavailable")},
    {EOPNOTSUPP, QT_TRANSLATE_NOOP("system", "Operation not supported")},
    {EINVAL, QT_TRANSLATE_NOOP("system", "Invalid argument")},
};

// Qt says "Unknown error" for a failure for which the system gave no reason.
QString UnknownReason()
{
    return Tr("system", "the system gives no reason");
}

} // namespace

QString SystemText(int error)
{
    for (const Failure& failure : Failures) {
        if (failure.error == error)
            return Tr("system", failure.text);
    }
    if (error == 0)
        return UnknownReason();
    return QString::fromLocal8Bit(std::strerror(error));
}

QString SystemText(int error, const QString& directory)
{
    return IsNoRoom(error) ? Tr("system", "no room left on the disk of %1").arg(directory)
                           : SystemText(error);
}

bool IsNoRoom(int error)
{
    return error == ENOSPC || error == EDQUOT;
}

QString SystemText(const QString& text)
{
    for (const Failure& failure : Failures) {
        // The C library may have translated its text itself; the program's translation then replaces it.
        if (text == QLatin1String(failure.text) ||
            text == QString::fromLocal8Bit(std::strerror(failure.error)))
            return Tr("system", failure.text);
    }
    if (text.isEmpty() || text == QLatin1String("Unknown error"))
        return UnknownReason();
    return text;
}

} // namespace explain
