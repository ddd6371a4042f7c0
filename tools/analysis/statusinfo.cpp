#include "analysis/statusinfo.h"

#include <QStringList>

#include <algorithm>

namespace analysis {

std::map<int, StatusInfo> StatusInfoOf(const QString& information)
{
    std::map<int, StatusInfo> channels;
    const QLatin1String statusSection("[Russian_Comtrade_Edition Status_Channel_");
    const auto first = information.indexOf(statusSection);
    if (first < 0)
        return channels;
    StatusInfo* open = nullptr;
    StatusInfo read;
    QString::size_type end = 0;
    // The sections of analog channels before it are passed over.
    for (auto begin = information.lastIndexOf(QLatin1Char('\n'), first) + 1; begin < information.size();
         begin = end + 1) {
        end = information.indexOf(QLatin1Char('\n'), begin);
        if (end < 0)
            end = information.size();
        const QStringView line = QStringView(information).mid(begin, end - begin).trimmed();
        if (line.startsWith(QLatin1Char('['))) {
            const bool isStatus = line.startsWith(statusSection);
            read = StatusInfo();
            open = isStatus ? &read : nullptr;
            continue;
        }
        const auto equals = std::find(line.begin(), line.end(), QLatin1Char('=')) - line.begin();
        if (open == nullptr || equals == line.size())
            continue;
        const QStringView key = line.left(equals).trimmed();
        const QStringView value = line.mid(equals + 1).trimmed();
        if (key == QLatin1String("Protection_Device_Group"))
            read.group = value.toString();
        else if (key == QLatin1String("Status_Signal_Type"))
            read.type = value.toString();
        else if (key == QLatin1String("Status_ID"))
            read.id = value.toString();
        else if (key == QLatin1String("Status_Channel_Number"))
            channels[value.toString().toInt()] = read; // the keys above come before it
    }
    return channels;
}

} // namespace analysis
