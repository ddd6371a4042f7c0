// The rules of a device's ini keys, for programs that explain or write an ini file.
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <vector>

/// One key, as LoadFromIniDef reads it.
struct DeviceKeyRule
{
    const char* key;    ///< UTF-8
    const char* sample; ///< value in a new section of defaults, UTF-8; null: the key is left out
    bool obligatory;    ///< the defaults section does not load without it
    bool isText;        ///< else a whole number from lowest to highest, where -1 counts as absent
    int lowest;
    int highest;
    bool onlyWhenRenaming; ///< asked for only while signals are renamed
};

/// All keys in reading order.
std::vector<DeviceKeyRule> DeviceKeyRules();

/// The lines of a new section of defaults, its heading first: the keys in reading order, each with its value
/// in `values`, else with its sample; a key with neither is left out.
QStringList DefaultsLines(const QString& section, const QMap<QString, QString>& values);
