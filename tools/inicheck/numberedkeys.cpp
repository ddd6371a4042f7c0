#include "inicheck/numberedkeys.h"

#include <config/QSettingsRu.h>

#include <QVariant>

#include <algorithm>
#include <limits>

namespace inicheck {

qint64 NumberIn(const Family& family, const QString& key)
{
    const QString prefix = QString::fromLatin1(family.prefix);
    const QString digits = key.mid(prefix.length());
    if (!key.startsWith(prefix) || digits.isEmpty())
        return -1;
    const bool plain = std::all_of(digits.begin(), digits.end(), [](QChar digit) {
        return digit >= QLatin1Char('0') && digit <= QLatin1Char('9');
    });
    bool ok = false;
    const qint64 number = digits.toLongLong(&ok);
    return !plain ? -1 : ok ? number : std::numeric_limits<qint64>::max();
}

bool IsCanonical(const Family& family, const QString& key)
{
    const qint64 number = NumberIn(family, key);
    return number >= 1 && number <= std::numeric_limits<int>::max() &&
           QSettingsRu::NumberedKey(QString::fromLatin1(family.prefix), static_cast<unsigned int>(number)) ==
               key;
}

unsigned int MaximumOf(const Section& section, const Family& family, bool* good)
{
    constexpr unsigned int Absent = std::numeric_limits<unsigned int>::max();
    *good = true;
    const Entry* const entry = section.Find(QString::fromLatin1(family.maximum));
    if (entry == nullptr)
        return 0;
    bool ok = false;
    const unsigned int maximum = QVariant(entry->value).toUInt(&ok);
    if (maximum == Absent) // as the library takes it, also where the file says so
        return 0;
    *good = ok;
    return maximum;
}

std::vector<const Entry*> EntriesOf(const Section& section, const Family& family)
{
    bool good = false;
    const unsigned int maximum = MaximumOf(section, family, &good);
    std::vector<const Entry*> entries;
    for (auto key = section.last.begin(); good && key != section.last.end(); ++key) {
        if (IsCanonical(family, key.key()) && NumberIn(family, key.key()) <= maximum)
            entries.push_back(&section.entries[key.value()]);
    }
    std::sort(entries.begin(), entries.end(), [&family](const Entry* left, const Entry* right) {
        return NumberIn(family, left->key) < NumberIn(family, right->key);
    });
    return entries;
}

} // namespace inicheck
