// Whether the entries of one piece of equipment agree.
#pragma once

#include "inicheck/finding.h"
#include "inicheck/inilines.h"

#include <QHash>
#include <QString>

#include <set>

namespace inicheck {

class EquipmentCheck
{
public:
    /// What an entry says about its equipment.
    struct Entry
    {
        int line;
        QString level;
        QString equipmentGroup;
        QString signalGroup;
    };

    explicit EquipmentCheck(Findings& findings_) : findings(findings_) {}

    /// Compares an entry with the first one of the same equipment.
    void Check(const IniLine& line, const QString& equipment, const Entry& now);

private:
    Findings& findings;
    QHash<QString, Entry> first;
    std::set<QString> mixed; // equipment reported already
};

} // namespace inicheck
