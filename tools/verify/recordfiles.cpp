#include "verify/recordfiles.h"

#include "explain/system.h"
#include "text/texts.h"
#include "verify/mismatch.h"

#include <cerrno>
#include <sys/stat.h>

namespace verify {

void FailToRead(const QString& path, const QString& reason)
{
    throw Mismatch(Tr("verify", "'%1' cannot be read: %2").arg(path, reason));
}

bool IsThere(const QString& path)
{
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0) {
        if (errno == ENOENT)
            return false;
        FailToRead(path, explain::SystemText(errno));
    }
    if (!S_ISREG(status.st_mode))
        throw Mismatch(Tr("verify", "'%1' is not a file").arg(path));
    return true;
}

void Open(QFile& file)
{
    IsThere(file.fileName());
    if (!file.open(QIODevice::ReadOnly))
        FailToRead(file.fileName(), explain::SystemText(file.errorString()));
}

void Seek(QFile& file, qint64 position)
{
    if (!file.seek(position))
        FailToRead(file.fileName(), explain::SystemText(file.errorString()));
}

QByteArray Read(QFile& file, qint64 most)
{
    QByteArray result(static_cast<int>(most), Qt::Uninitialized);
    const qint64 count = file.read(result.data(), most);
    if (count < 0)
        FailToRead(file.fileName(), explain::SystemText(file.errorString()));
    result.truncate(static_cast<int>(count));
    return result;
}

QByteArray ReadText(const QString& path)
{
    QFile file(path);
    Open(file);
    if (file.size() > LargestText)
        throw Mismatch(Tr("verify", "'%1' is too large").arg(path));
    return Read(file, file.size());
}

} // namespace verify
