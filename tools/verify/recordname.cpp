#include "verify/recordname.h"

#include "device/zucmtrdevparam.h"
#include "recording/zufileformat.h"
#include "verify/device.h"

verify::RecordHead verify::RecordHeadOf(const QString& firstFile, const Device& device)
{
    ZuFileFormat file;
    RecordHead head;
    if (!file.LoadHeader(firstFile))
        return head;
    const ZuCmtrDevParam& param = device.Param();
    head.name = file.DoOutName(&device.Param());
    head.station = param.Object;
    head.recorder = param.Source;
    head.subject = param.Subject;
    head.trigger = TriggerMoment(file);
    return head;
}
