// A device: the lifetime of its re-sorter, from loading to release.
#include "base/codecs.h"
#include "device/zucmtrdevparam.h"
#include "resorter/ResorterZuCmtrConv.h"

bool ZuCmtrDevParam::PreResort()
{
    return Resorter != nullptr && Resorter->PreResort();
}

void ZuCmtrDevParam::Clear()
{
    if (Resorter != nullptr) {
        Resorter->Clear();
        delete Resorter;
        Resorter = nullptr;
    }
    for (QFile* file : {&FileCfg, &FileDat, &FileHdr, &FileInf, &FileCff}) {
        if (file->isOpen()) {
            file->flush();
            file->close();
        }
    }
}

bool ZuCmtrDevParam::LoadFromIni(const QString& fileName, const QString& group)
{
    LogMessages.clear();
    if (!LoadFromIniDef(fileName, group, true))
        return false;
    if (Comtrade1999 && ComtradeCff) {
        ComtradeCff = false;
        LogMessages.push_back(QStringLiteral(
            "Значение параметра Тип Comtrade CFF=1 несовместимо с Comtrade 1999 и будет проигнорировано"));
    }
    Resorter = new ResorterZuCmtrConv(this);
    const bool loaded = Resorter->LoadFromIni(fileName, group);
    Resorter->InfCodec = ComtradeUtf8 ? zu::CodecUtf8 : zu::CodecCP1251;
    return loaded;
}
