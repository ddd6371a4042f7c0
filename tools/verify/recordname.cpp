#include "verify/recordname.h"

#include "recording/zufileformat.h"
#include "verify/device.h"

QString verify::RecordNameOf(const QString& firstFile, const Device& device)
{
    ZuFileFormat file;
    return file.LoadHeader(firstFile) ? file.DoOutName(&device.Param()) : QString();
}
