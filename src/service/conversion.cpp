// The conversion of one recording: the steps from its name to the committed record.
#include "service/zucmtrconverter.h"

#include "base/chainnames.h"
#include "preparation/segmentchain.h"
#include "recording/zufileformat.h"
#include "service/outputfiles.h"

#include <QFile>

#include <new>

namespace {

bool CheckArguments(const QString& fileName, const QString& outDir, ZuCmtrDevParam* dev)
{
    if (!QFile::exists(fileName)) {
        dev->LastError = QStringLiteral("Файл не существует [%1]").arg(fileName);
        return false;
    }
    if (!QFile::exists(outDir)) {
        // Deliberate: the message names the recorder file, not the missing directory.
        dev->LastError = QStringLiteral("Каталог не существует [%1]").arg(fileName);
        return false;
    }
    if (fileName.length() < 4 || !zu::IsFirstFileName(fileName)) {
        dev->LastError = QStringLiteral("Плохое имя файла [%1]").arg(fileName);
        return false;
    }
    return true;
}

bool WriteFailed(ZuCmtrDevParam* dev, const QString& tmpName)
{
    dev->LastError = QStringLiteral("Ошибка записи в [%1]").arg(tmpName);
    return false;
}

// The order matters: the CFG writer leaves coefficients and texts that the HDR and INF writers read.
bool WriteAll(ZuCmtrConverter& converter, std::vector<ZuFileFormat*>* files, ZuCmtrDevParam* dev)
{
    if (!converter.WriteCfg(files, dev))
        return WriteFailed(dev, dev->TmpNameCfg);
    if (!converter.WriteDat(files, dev))
        return WriteFailed(dev, dev->TmpNameDat);
    if (dev->Comtrade1999)
        return true;
    if (!converter.WriteHdr(files, dev))
        return WriteFailed(dev, dev->TmpNameHdr);
    if (!converter.WriteInf(files, dev))
        return WriteFailed(dev, dev->TmpNameInf);
    return true;
}

} // namespace

bool ZuCmtrConverter::ConvertToComtrade(const QString& fileName, const QString& outDir, unsigned int devId)
{
    ZuCmtrDevParam* dev = FindDevice(devId);
    if (dev == nullptr)
        return false;
    dev->ClearLog();
    if (!CheckArguments(fileName, outDir, dev))
        return false;
    try {
        return Convert(fileName, outDir, dev);
    } catch (const std::bad_alloc&) {
        // The chain has been released by now, so there is memory for the text.
        dev->LastError = QStringLiteral("чтение файла, ошибка выделения памяти");
        return false;
    }
}

bool ZuCmtrConverter::Convert(const QString& fileName, const QString& outDir, ZuCmtrDevParam* dev)
{
    SegmentChain chain(*dev); // releases every segment, however this function is left
    if (!chain.Load(fileName) || !chain.Check())
        return false;
    chain.Prepare();
    if (!outputfiles::Name(chain.First().OutName, outDir, dev))
        return WriteFailed(dev, dev->TmpNameCfg);
    if (!WriteAll(*this, chain.Files(), dev))
        return false;
    outputfiles::Commit(*this, dev);
    if (dev->DeleteSource)
        chain.RemoveSources();
    dev->LogMessages.push_back(
        QStringLiteral("Преобразование в Comtrade выполнено успешно, файл %1").arg(chain.First().OutName));
    return true;
}
