// A recorder file through ZuFileFormat::Load, then the checks and look-ups on what was loaded.
#include "support.h"

#include "recording/zufileformat.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    ZuFileFormat file;
    if (file.Load(fuzz::Write(QStringLiteral("rec.ZU"), bytes))) {
        file.IsAnChRatesValid();
        file.IsAnChPointsValid();
        file.GetTrigIndex();
        for (DiChannelData* channel : file.DiChannels) {
            for (const quint32 time : {0U, 1000U, 500U, 4294967295U}) {
                channel->GetVal(time);
                channel->NextChange(time);
            }
        }
    }
    return 0;
}
