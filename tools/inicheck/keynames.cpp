// Keys that nobody asks for, and what may have been meant.
#include "inicheck/nearest.h"
#include "inicheck/numberedkeys.h"
#include "inicheck/parts.h"

#include "zucmtr/texts.h"

#include <config/QSettingsRu.h>
#include <config/deviceinikeys.h>

#include <limits>

namespace inicheck {

namespace {

QStringList DeviceKeys()
{
    QStringList keys;
    for (const DeviceKeyRule& rule : DeviceKeyRules())
        keys << QString::fromUtf8(rule.key);
    return keys;
}

QStringList Maxima()
{
    QStringList keys;
    for (const Family& family : Families)
        keys << QString::fromLatin1(family.maximum);
    return keys;
}

// The numbered key that a spelling like "a1" or "A001" means; empty if it means none.
QString NumberedKeyMeant(const QString& key)
{
    const QString plain = WithLatinLetters(key).toUpper().remove(QLatin1Char(' '));
    for (const Family& family : Families) {
        const qint64 number = NumberIn(family, plain);
        if (number >= 1 && number <= std::numeric_limits<int>::max())
            return QSettingsRu::NumberedKey(QString::fromLatin1(family.prefix),
                                            static_cast<unsigned int>(number));
    }
    return QString();
}

Finding Ignored(const Section& section, const Entry& entry, const QString& what, const QString& advice)
{
    return {entry.line, Severity::Warning, Effect::Dropped, section.name, entry.key, what, advice};
}

Finding OfUnknown(const Section& section, const Entry& entry, const QStringList& known)
{
    QString meant = NumberedKeyMeant(entry.key);
    if (meant.isEmpty() || meant == entry.key)
        meant = Nearest(entry.key, known);
    return Ignored(section, entry, Tr("inicheck", "the key '%1' is unknown and is ignored").arg(entry.key),
                   meant.isEmpty() ? Tr("inicheck", "remove it, or see the list of keys")
                                   : Tr("inicheck", "did you mean '%1'?").arg(meant));
}

// A numbered key of the right spelling: is it among those that are looked at?
void CheckNumber(const Section& section, const Entry& entry, const Family& family, Findings& findings)
{
    bool good = false;
    const unsigned int maximum = MaximumOf(section, family, &good);
    const qint64 number = NumberIn(family, entry.key);
    if (!good || number <= maximum)
        return;
    const QString key = QString::fromLatin1(family.maximum);
    findings.push_back(Ignored(
        section, entry,
        section.Find(key) == nullptr
            ? Tr("inicheck", "'%1' is ignored, for the section has no '%2'").arg(entry.key, key)
            : Tr("inicheck", "'%1' is ignored, for '%2' is %3").arg(entry.key, key, QString::number(maximum)),
        Tr("inicheck", "set %1=%2 or higher").arg(key, QString::number(number))));
}

const Family* FamilyOf(const QString& key)
{
    for (const Family& family : Families) {
        if (IsCanonical(family, key))
            return &family;
    }
    return nullptr;
}

} // namespace

void CheckKeyNames(const Section& section, Use use, Findings& findings)
{
    const QStringList keys = DeviceKeys();
    const QStringList maxima = Maxima();
    for (const Entry& entry : section.entries) {
        if (keys.contains(entry.key) || section.Find(entry.key) != &entry)
            continue;
        const Family* const family = FamilyOf(entry.key);
        if (family == nullptr && !maxima.contains(entry.key))
            findings.push_back(OfUnknown(section, entry, use.asDevice ? keys + maxima : keys));
        else if (!use.asDevice)
            findings.push_back(Ignored(
                section, entry, Tr("inicheck", "'%1' is ignored in a section of defaults").arg(entry.key),
                Tr("inicheck", "move it into the device's section")));
        else if (family != nullptr)
            CheckNumber(section, entry, *family, findings);
    }
}

} // namespace inicheck
