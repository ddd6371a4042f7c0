// What the ini file may say about a device, for those who look at an ini file without loading it. The rules
// are those of the table by which devices are loaded.
#pragma once

#include <vector>

struct DeviceKeyRule
{
    const char* key;    // UTF-8
    bool isText;        // otherwise a whole number
    int lowest;         // accepted numbers; of a text both are 0
    int highest;        //
    bool obligatory;    // in a section of defaults
    bool needsRenaming; // asked for only while signals are renamed
};

/// One rule for each key, in the order in which a section is read.
std::vector<DeviceKeyRule> DeviceKeyRules();
