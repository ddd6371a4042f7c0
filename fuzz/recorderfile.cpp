// A recorder file through ZuFileFormat::Load, then the checks and look-ups on what was loaded; and what is
// saved of it if it is damaged.
#include "support.h"

#include "recording/zufileformat.h"
#include "salvage/write.h"

#include <QDir>

#include <new>

// What is saved of the file is a recording that the library loads.
static void Salvage(const QString& path)
{
    const salvage::Examination found = salvage::Examine({path});
    if (!found.plan)
        return;
    const QString directory = fuzz::Directory() + QStringLiteral("/whole");
    QDir().mkdir(directory);
    ZuFileFormat whole;
    if (!whole.Load(salvage::Write(found.plan->segments, found.plan->choice, directory)) ||
        !whole.IsAnChRatesValid() || !whole.IsAnChPointsValid() ||
        whole.AnChannels.size() != found.plan->loss.analog ||
        whole.DiChannels.size() != found.plan->loss.discrete)
        __builtin_trap();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const QString path = fuzz::Write(QStringLiteral("rec.ZU"), bytes);
    try {
        Salvage(path);
    } catch (const std::bad_alloc&) {
        // a channel may claim more samples than there is memory
    }
    ZuFileFormat file;
    if (file.Load(path)) {
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
