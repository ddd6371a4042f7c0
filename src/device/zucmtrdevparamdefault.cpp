// Built-in parameter values and their copying. The ini keys are read in config/deviceinikeys.cpp.
#include "device/zucmtrdevparamdefault.h"

ZuCmtrDevParamDefault::ZuCmtrDevParamDefault()
    : PowerSystem(QStringLiteral("PowerSystem")), Subject(QStringLiteral("Subject")),
      Object(QStringLiteral("Object")), Source(QStringLiteral("Source")),
      SoftwareVersion(QStringLiteral("0.0")), Model(QStringLiteral("MK7.06")), ZuVersion(1), WaitTime(60000),
      DeleteSource(false), TimeCode(QStringLiteral("+3")), ComtradeBin(false), ComtradeCff(false),
      ComtradeUtf8(false), RenameSignals(true), AdditionalIndexes(false), Comtrade1999(false)
{}

void ZuCmtrDevParamDefault::SetDefaultParam(ZuCmtrDevParamDefault* defaults)
{
    const QString ownError = LastError;
    *this = *defaults;
    LastError = ownError;
}
