// A device: message queue, life of the re-sorter and of the output files.
#include "device/zucmtrdevparam.h"

#include "resorter/ResorterZuCmtrConv.h"
#include "service/zucmtrconverter.h"

ZuCmtrDevParam::ZuCmtrDevParam()
    : Resorter(nullptr), SampleRate(0.0), TotalTime(0), TotalSamples(0), DatBytes(0)
{}

bool ZuCmtrDevParam::PreResort()
{
    return Resorter != nullptr && Resorter->PreResort();
}

QString ZuCmtrDevParam::PopLogMessages()
{
    if (LogMessages.empty())
        return QStringLiteral("");
    QString oldest = LogMessages.front();
    LogMessages.erase(LogMessages.begin());
    return oldest;
}

void ZuCmtrDevParam::ClearLog()
{
    LogMessages.clear();
    LastError = QString();
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
    Resorter->InfCodec = ComtradeUtf8 ? ZuCmtrConverter::codec_UTF8 : ZuCmtrConverter::codec_CP1251;
    return loaded;
}
