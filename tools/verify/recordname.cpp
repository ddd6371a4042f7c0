#include "verify/recordname.h"

#include "recording/zufileformat.h"
#include "verify/device.h"

#include <QFile>
#include <QFileInfo>

#include <cstdlib>

namespace verify {

namespace {

// Offset from UTC in seconds: the field holds seconds, minutes or hours, told apart by the value.
int ZoneSeconds(int field)
{
    const int size = std::abs(field);
    if (size % 1800 == 0)
        return size;
    return size % 30 == 0 ? size * 60 : size * 3600;
}

bool ReadHead(const QString& path, ZuFileHeader& head)
{
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) &&
           file.read(reinterpret_cast<char*>(&head), sizeof head) == qint64(sizeof head);
}

} // namespace

QString RecordNameOf(const QString& firstFile, const Device& device)
{
    ZuFileFormat file;
    if (!ReadHead(firstFile, file.Header))
        return QString();
    const ZuFileHeader head = file.Header;
    const bool borrowed = head.trigMicroseconds < 0;
    const quint32 seconds = head.trigTime - (borrowed ? 1 : 0);
    file.TrigMicroseconds = borrowed ? head.trigMicroseconds + 1000000 : head.trigMicroseconds;
    file.TimeZoneSeconds = ZoneSeconds(head.timeZone);
    file.TrigTime = QDateTime::fromSecsSinceEpoch(seconds, Qt::OffsetFromUTC, file.TimeZoneSeconds);
    return file.DoOutName(&device.Param());
}

} // namespace verify
