// The exported functions: each forwards to the one converter.
#include "service/zucmtrlib.h"

#include "service/zucmtrconverter.h"

static ZuCmtrConverter* pConv = nullptr;
static const QString NoError(QLatin1String("")); // handed out by reference while there is no converter

bool ZuCmtrConverterInit()
{
    if (pConv != nullptr)
        return false;
    try {
        pConv = new ZuCmtrConverter;
    } catch (...) {
        return false;
    }
    return true;
}

void ZuCmtrConverterExit()
{
    if (pConv == nullptr)
        return;
    pConv->Clear();
    delete pConv;
    pConv = nullptr;
}

bool ZuCmtrLoadFromIniDefault(const QString& fileName, const QString& group)
{
    return pConv != nullptr && pConv->LoadFromIniDefault(fileName, group);
}

bool ZuCmtrLoadFromIni(const QString& fileName, const QString& group, unsigned int* devId)
{
    return pConv != nullptr && pConv->LoadFromIni(fileName, group, devId);
}

bool ZuCmtrConvertToComtrade(const QString& fileName, const QString& outDir, unsigned int devId)
{
    return pConv != nullptr && pConv->ConvertToComtrade(fileName, outDir, devId);
}

const QString& ZuCmtrGetLastError()
{
    return pConv != nullptr ? pConv->LastError : NoError;
}

void ZuCmtrSetLogFilePath(const QString& path)
{
    ZuCmtrConverter::LogFilePath = path;
}

QString ZuCmtrPopDevMessage(unsigned int devId)
{
    QString text;
    return pConv != nullptr && pConv->PopDevMessage(devId, text) ? text : QString(QLatin1String(""));
}

QString ZuCmtrGetDevLastError(unsigned int devId)
{
    QString text;
    return pConv != nullptr && pConv->GetDevLastError(devId, text) ? text : QString(QLatin1String(""));
}

unsigned int ZuCmtrGetDevMsgCount(unsigned int devId)
{
    return pConv != nullptr ? pConv->GetDevMsgCount(devId) : 0;
}

unsigned int ZuCmtrGetDevWaitTime(unsigned int devId)
{
    return pConv != nullptr ? pConv->GetDevWaitTime(devId) : 0;
}
