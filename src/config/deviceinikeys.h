// The rules of a device's ini keys, for programs that explain an ini file.
#pragma once

#include <vector>

/// One key, as LoadFromIniDef reads it.
struct DeviceKeyRule
{
    const char* key; ///< UTF-8
    bool obligatory; ///< the defaults section does not load without it
    bool isText;     ///< else a whole number from lowest to highest, where -1 counts as absent
    int lowest;
    int highest;
    bool onlyWhenRenaming; ///< asked for only while signals are renamed
};

/// All keys in reading order.
std::vector<DeviceKeyRule> DeviceKeyRules();
