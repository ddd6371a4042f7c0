// The converter object: statics, devices and their getters.
#include "service/zucmtrconverter.h"

#include "config/QSettingsRu.h"

#include <QMutexLocker>

#include <memory>

QString ZuCmtrConverter::SoftwareRevision = QStringLiteral("VELTORINE(ZuComtradeConverter)");

// Deliberate: the text names the conversion, whichever call got the bad number.
static QString BadNumberText()
{
    return QStringLiteral("ConvertToComtrade: DevID>=m_DevParams.size()");
}

ZuCmtrConverter::ZuCmtrConverter() : DefaultParam(nullptr) {}

bool ZuCmtrConverter::LoadFromIniDefault(const QString& fileName, const QString& group)
{
    if (DefaultParam != nullptr)
        return false;
    WriteToLog(QStringLiteral(">Параметры по умолчанию для преобразования ZU в Comtrade"));
    DefaultParam = new ZuCmtrDevParamDefault;
    const bool loaded = DefaultParam->LoadFromIniDef(fileName, group, false);
    if (!loaded)
        LastError = DefaultParam->LastError;
    return loaded;
}

bool ZuCmtrConverter::LoadFromIni(const QString& fileName, const QString& group, unsigned int* devId)
{
    if (DefaultParam == nullptr)
        return false;
    const auto release = [](ZuCmtrDevParam* device) {
        device->Clear();
        delete device;
    };
    std::unique_ptr<ZuCmtrDevParam, decltype(release)> device(new ZuCmtrDevParam, release);
    device->SetDefaultParam(DefaultParam);
    WriteToLog(QLatin1Char('>') + group);
    if (!device->LoadFromIni(fileName, group))
        return false;
    if (!device->PreResort())
        WriteToLog(QStringLiteral("Ошибка при предварительной сортировке каналов"));
    m_DevParams.push_back(device.get());
    device.release(); // the converter owns it from here
    *devId = static_cast<unsigned int>(m_DevParams.size() - 1);
    return true;
}

ZuCmtrDevParam* ZuCmtrConverter::FindDevice(unsigned int devId)
{
    if (devId < m_DevParams.size())
        return m_DevParams[devId];
    const QMutexLocker lock(&Mutex);
    LastError = BadNumberText();
    return nullptr;
}

bool ZuCmtrConverter::GetDevLastError(unsigned int devId, QString& text)
{
    const ZuCmtrDevParam* device = FindDevice(devId);
    if (device == nullptr)
        return false;
    text = device->LastError;
    return true;
}

bool ZuCmtrConverter::PopDevMessage(unsigned int devId, QString& text)
{
    if (devId >= m_DevParams.size()) {
        // Deliberate: this getter stores the text without the mutex that the others take.
        LastError = BadNumberText();
        return false;
    }
    ZuCmtrDevParam* device = m_DevParams[devId];
    if (device->LogMessages.empty())
        return false;
    text = device->PopLogMessages();
    return true;
}

unsigned int ZuCmtrConverter::GetDevMsgCount(unsigned int devId)
{
    const ZuCmtrDevParam* device = FindDevice(devId);
    return device != nullptr ? static_cast<unsigned int>(device->LogMessages.size()) : 0;
}

unsigned int ZuCmtrConverter::GetDevWaitTime(unsigned int devId)
{
    const ZuCmtrDevParam* device = FindDevice(devId);
    return device != nullptr ? device->WaitTime : 0;
}

void ZuCmtrConverter::Clear()
{
    delete DefaultParam; // the pointer stays: the converter itself is deleted next
    for (ZuCmtrDevParam* device : m_DevParams) {
        device->Clear();
        delete device;
    }
    m_DevParams.clear();
    QSettingsRu::Clear();
}
