// A device: its message queue. The lifetime of its re-sorter is in resorter/deviceresorter.cpp.
#include "device/zucmtrdevparam.h"

const QString LoadIniError_NoParam(QStringLiteral("Отсутствует необходимый параметр: "));
const QString LoadIniError_ErrParam(QStringLiteral("Ошибка значения параметра: "));

ZuCmtrDevParam::ZuCmtrDevParam()
    : Resorter(nullptr), SampleRate(0.0), TotalTime(0), TotalSamples(0), DatBytes(0)
{}

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
