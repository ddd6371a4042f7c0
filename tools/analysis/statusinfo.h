// What the INF file of a record says of its discrete channels: the sections Status_Channel of the Russian
// edition of COMTRADE.
#pragma once

#include <QString>

#include <map>

namespace analysis {

struct StatusInfo
{
    QString group; ///< Protection_Device_Group, such as "Relay_Protection"
    QString type;  ///< Status_Signal_Type, such as "Tripping"
    QString id;    ///< Status_ID, in the dictionary's form "equipment:signal"
};

/// By the number of the channel. Empty if the text has no such sections.
std::map<int, StatusInfo> StatusInfoOf(const QString& information);

} // namespace analysis
