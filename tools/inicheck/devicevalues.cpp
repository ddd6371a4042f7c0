// The values of a device's keys.
#include "inicheck/parts.h"

#include "zucmtr/texts.h"

#include <config/deviceinikeys.h>
#include <service/zucmtrdevparamdefault.h>

#include <QVariant>

namespace inicheck {

namespace {

const QString RenameKey = QStringLiteral("Переименовать сигналы Comtrade");
const QString CffKey = QStringLiteral("Тип Comtrade CFF");
const QString Revision1999Key = QStringLiteral("Тип Comtrade 1999");

// Texts that become fields of the CFG file's first line or of the output's name.
bool IsField(const QString& key)
{
    return key == QStringLiteral("Объект") || key == QStringLiteral("Источник") ||
           key == QStringLiteral("Субъект");
}

enum class State { Absent, Good, Bad };

// As the library takes the value.
State StateOf(const DeviceKeyRule& rule, const Entry* entry)
{
    if (entry == nullptr)
        return State::Absent;
    if (rule.isText)
        return entry->value.isEmpty() ? State::Absent : State::Good;
    bool ok = false;
    const int number = QVariant(entry->value).toInt(&ok);
    if (number == -1)
        return State::Absent;
    return ok && number >= rule.lowest && number <= rule.highest ? State::Good : State::Bad;
}

const DeviceKeyRule* RuleOf(const std::vector<DeviceKeyRule>& rules, const QString& key)
{
    for (const DeviceKeyRule& rule : rules) {
        if (key == QString::fromUtf8(rule.key))
            return &rule;
    }
    return nullptr;
}

// A section over its defaults (null: over what is built in).
class Values
{
public:
    Values(const Section& section_, const Section* defaults_, Findings& findings_)
        : section(section_), defaults(defaults_), findings(findings_), rules(DeviceKeyRules())
    {}

    void Check()
    {
        for (const DeviceKeyRule& rule : rules)
            CheckKey(rule, section.Find(QString::fromUtf8(rule.key)));
        if (defaults != nullptr)
            CheckRevision();
    }

private:
    void Add(int line, Severity severity, Effect effect, const QString& key, const QString& what,
             const QString& advice)
    {
        findings.push_back({line, severity, effect, section.name, key, what, advice});
    }

    // The flag in force.
    bool Flag(const QString& key, bool builtIn) const
    {
        for (const Section* place : {&section, defaults}) {
            const Entry* const entry = place != nullptr ? place->Find(key) : nullptr;
            if (StateOf(*RuleOf(rules, key), entry) == State::Good)
                return entry->value.toInt() != 0;
        }
        return builtIn;
    }

    void CheckKey(const DeviceKeyRule& rule, const Entry* entry)
    {
        const QString key = QString::fromUtf8(rule.key);
        if (rule.needsRenaming && !Flag(RenameKey, ZuCmtrDevParamDefault().RenameSignals)) {
            if (entry != nullptr && entry->value != QStringLiteral("0"))
                Add(entry->line, Severity::Note, Effect::Dropped, key,
                    Tr("inicheck", "'%1' is not looked at while '%2' is 0").arg(key, RenameKey),
                    Tr("inicheck", "rename the signals, or remove the line"));
            return;
        }
        switch (StateOf(rule, entry)) {
        case State::Bad:
            AddBad(rule, key, *entry);
            return;
        case State::Absent:
            AddAbsent(rule, key, entry);
            return;
        case State::Good:
            if (rule.isText)
                CheckText(section, *entry, entry->value, IsField(key), findings);
            else
                CheckWidth(key, *entry);
        }
    }

    void AddBad(const DeviceKeyRule& rule, const QString& key, const Entry& entry)
    {
        const QString range =
            Tr("inicheck", "give a whole number from %1 to %2").arg(rule.lowest).arg(rule.highest);
        Add(entry.line, Severity::Error, Effect::Refused, key,
            Tr("inicheck", "'%1' cannot be '%2'; the section does not load").arg(key, entry.value), range);
    }

    void AddAbsent(const DeviceKeyRule& rule, const QString& key, const Entry* entry)
    {
        if (defaults == nullptr && rule.obligatory) {
            Add(entry != nullptr ? entry->line : section.lines.front(), Severity::Error, Effect::Refused, key,
                entry != nullptr
                    ? Tr("inicheck",
                         "'%1' counts as left out, and the defaults must have it; they do not load")
                          .arg(key)
                    : Tr("inicheck", "the defaults lack '%1' and do not load").arg(key),
                Tr("inicheck", "add %1=...").arg(key));
        } else if (entry != nullptr && defaults != nullptr) {
            Add(entry->line, Severity::Note, Effect::Defaulted, key,
                Tr("inicheck", "'%1' counts as left out: the value of the defaults is taken").arg(key),
                Tr("inicheck", "give a value, or remove the line"));
        }
    }

    // A number of more bits than fit is not refused.
    void CheckWidth(const QString& key, const Entry& entry)
    {
        const int number = QVariant(entry.value).toInt();
        if (entry.value.toLongLong() != number)
            Add(entry.line, Severity::Warning, Effect::None, key,
                Tr("inicheck", "'%1' is too large and is read as %2")
                    .arg(entry.value, QString::number(number)),
                Tr("inicheck", "give the number that is meant"));
    }

    void CheckRevision()
    {
        if (!Flag(CffKey, false) || !Flag(Revision1999Key, false))
            return;
        const Entry* const own = section.Find(CffKey);
        const Entry* const entry = own != nullptr ? own : section.Find(Revision1999Key);
        Add(entry != nullptr ? entry->line : section.lines.front(), Severity::Warning,
            own != nullptr ? Effect::Dropped : Effect::None, CffKey,
            Tr("inicheck", "'%1' does not go with '%2' and is ignored: separate files are written")
                .arg(CffKey, Revision1999Key),
            Tr("inicheck", "set one of the two to 0"));
    }

    const Section& section;
    const Section* defaults;
    Findings& findings;
    const std::vector<DeviceKeyRule> rules;
};

} // namespace

void CheckDefaults(const Section& section, Findings& findings)
{
    Values(section, nullptr, findings).Check();
}

void CheckDevice(const Section& section, const Section& defaults, Findings& findings)
{
    Values(section, &defaults, findings).Check();
}

} // namespace inicheck
