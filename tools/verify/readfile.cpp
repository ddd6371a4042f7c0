#include "verify/readfile.h"

#include "explain/system.h"
#include "text/texts.h"
#include "verify/mismatch.h"

#include <QFile>

namespace verify {

void CannotRead(const QString& path, const QString& reason)
{
    throw Mismatch(Tr("verify", "'%1' cannot be read: %2").arg(path, reason));
}

void Open(QFile& file)
{
    if (!file.open(QIODevice::ReadOnly))
        CannotRead(file.fileName(), explain::SystemText(file.errorString()));
}

void Seek(QFile& file, qint64 position)
{
    if (!file.seek(position))
        CannotRead(file.fileName(), explain::SystemText(file.errorString()));
}

QByteArray Read(QFile& file, qint64 most)
{
    QByteArray result(static_cast<int>(most), Qt::Uninitialized);
    const qint64 count = file.read(result.data(), most);
    if (count < 0)
        CannotRead(file.fileName(), explain::SystemText(file.errorString()));
    result.truncate(static_cast<int>(count));
    return result;
}

} // namespace verify
