// The parameters of a dictionary entry, as they may be spelt.
#pragma once

#include <QString>

struct ParameterKey
{
    const QString plain;
    const QString spaced;
};

inline const ParameterKey KeyVoltageLevel{QStringLiteral("V_L="), QStringLiteral("V_L =")};
inline const ParameterKey KeyEquipmentGroup{QStringLiteral("E_G="), QStringLiteral("E_G =")};
inline const ParameterKey KeySignalGroup{QStringLiteral("S_G="), QStringLiteral("S_G =")};
inline const ParameterKey KeyDeviceGroup{QStringLiteral("D_G="), QStringLiteral("D_G =")};
inline const ParameterKey KeyStatusType{QStringLiteral("S_T="), QStringLiteral("S_T =")};
inline const ParameterKey KeyVlInd{QStringLiteral("VL_IND="), QStringLiteral("VL_IND =")};
inline const ParameterKey KeyCimId{QStringLiteral("CIM_ID="), QStringLiteral("CIM_ID =")};
