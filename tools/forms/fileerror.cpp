#include "forms/fileerror.h"

#include "explain/system.h"

#include <cerrno>

namespace forms {

// Qt has no text for a call that wrote a part, as where the disk or the limit of a file's size cuts it off.
FileFailure FailureOf(const QFile& file)
{
    const int last = errno != 0 ? errno : EIO;
    const int code = file.error() == QFile::ResourceError ? ENOSPC : last;
    return {code, file.isOpen() ? explain::SystemText(code) : explain::SystemText(file.errorString())};
}

} // namespace forms
