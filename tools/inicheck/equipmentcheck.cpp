#include "inicheck/equipmentcheck.h"

#include "inicheck/dictionarykinds.h"

#include "resorter/ResorterZuCmtrConv.h"
#include "text/texts.h"

namespace inicheck {

namespace {

bool Mixes(const QString& first, const QString& second)
{
    const std::set<QString> pair = {first, second};
    return pair ==
           std::set<QString>{QLatin1String(gst_sg[SignalGroupVT]), QLatin1String(gst_sg[SignalGroupCT])};
}

} // namespace

void EquipmentCheck::Check(const IniLine& line, const QString& equipment, const Entry& now)
{
    const auto found = first.constFind(equipment);
    if (found == first.constEnd()) {
        first.insert(equipment, now);
        return;
    }
    if (found->level != now.level || found->equipmentGroup != now.equipmentGroup)
        findings.push_back(AboutEntry(
            line, Severity::Warning, reason::EquipmentDiffers,
            Tr("check",
               "'%1' is V_L=%2 E_G=%3 here and V_L=%4 E_G=%5 in line %6; one equipment has one of each")
                .arg(equipment, now.level, now.equipmentGroup, found->level, found->equipmentGroup,
                     QString::number(found->line))));
    else if (Mixes(found->signalGroup, now.signalGroup) && mixed.insert(equipment).second)
        findings.push_back(AboutEntry(
            line, Severity::Note, reason::VoltagesAndCurrents,
            Tr("check",
               "'%1' has voltages and currents (line %2), which share one record of the INF file with the "
               "key of the first; where both are needed, give the currents another name in the recorder")
                .arg(equipment, QString::number(found->line))));
}

} // namespace inicheck
