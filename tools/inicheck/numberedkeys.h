// The three families of numbered keys of a device's section.
#pragma once

#include "inicheck/initext.h"

#include <QString>

#include <vector>

namespace inicheck {

struct Family
{
    const char* prefix;  // of the keys
    const char* maximum; // key with the highest number that is looked at
    int fields;          // that a value has at most
};

constexpr Family Analog = {"A", "nAnMax", 2};
constexpr Family Discrete = {"D", "nDiMax", 2};
constexpr Family Bays = {"BAY", "nBayMax", 3};
constexpr Family Families[] = {Analog, Discrete, Bays};

/// The number behind the family's prefix; -1 if the key is not one of the family, however it is spelt.
qint64 NumberIn(const Family& family, const QString& key);

/// Whether the library looks for a key of this spelling.
bool IsCanonical(const Family& family, const QString& key);

/// The highest number that is looked at. *good tells whether the library accepts the value.
unsigned int MaximumOf(const Section& section, const Family& family, bool* good);

/// The entries that the library reads, by rising number; each is the one that counts.
std::vector<const Entry*> EntriesOf(const Section& section, const Family& family);

} // namespace inicheck
