// The sorting dictionary and the bays.
#include "inicheck/dictionaryentries.h"
#include "inicheck/parts.h"

#include "zucmtr/texts.h"

#include <resorter/rcetables.h>

#include <QHash>
#include <QMap>
#include <QSet>

#include <tuple>

namespace inicheck {

namespace {

// First rows of the signal groups' families: the INF file has another key for each.
int SignalFamily(unsigned int signalGroup)
{
    int family = 0;
    for (const quint32 first :
         {SignalGroupCT, SignalGroupRPFirst, SignalGroupF, SignalGroupESFirst, SignalGroupOCSFirst})
        family += signalGroup >= first ? 1 : 0;
    return family;
}

class DictionaryCheck
{
public:
    DictionaryCheck(const Section& section_, Findings& findings_) : section(section_), findings(findings_) {}

    void Run()
    {
        for (const Family& family : Families) {
            CheckMaximum(family);
            CheckEmpty(family);
        }
        const std::vector<Signal> analog = SignalsOf(section, Analog);
        for (const Signal& one : analog)
            CheckSignal(one, Analog);
        CheckEqualNames(analog);
        CheckEquipment(analog);
        const std::vector<Signal> discrete = SignalsOf(section, Discrete);
        for (const Signal& one : discrete)
            CheckSignal(one, Discrete);
        CheckEqualNames(discrete);
        CheckBays();
    }

private:
    void Add(const Entry& entry, Severity severity, Effect effect, const QString& what, const QString& advice)
    {
        findings.push_back({entry.line, severity, effect, section.name, entry.key, what, advice});
    }

    void CheckMaximum(const Family& family)
    {
        bool good = false;
        MaximumOf(section, family, &good);
        const Entry* const entry = section.Find(QString::fromLatin1(family.maximum));
        if (entry != nullptr && !good)
            Add(*entry, Severity::Error, Effect::Refused,
                Tr("inicheck", "'%1' cannot be '%2'; the section does not load")
                    .arg(entry->key, entry->value),
                Tr("inicheck", "give the highest number of the keys %1...")
                    .arg(QLatin1String(family.prefix)));
    }

    void CheckEmpty(const Family& family)
    {
        for (const Entry* entry : EntriesOf(section, family)) {
            if (entry->value.isEmpty())
                Add(*entry, Severity::Warning, Effect::Dropped,
                    Tr("inicheck", "'%1' is empty and is skipped").arg(entry->key),
                    Tr("inicheck", "give a value, or remove the line"));
        }
    }

    void CheckSignal(const Signal& one, const Family& family)
    {
        const bool analog = family.prefix == Analog.prefix;
        if (one.name.isEmpty()) {
            Add(*one.entry, analog ? Severity::Error : Severity::Warning,
                analog ? Effect::Refused : Effect::Dropped,
                analog ? Tr("inicheck", "'%1' has no name; the section does not load").arg(one.entry->key)
                       : Tr("inicheck", "'%1' has no name and is ignored").arg(one.entry->key),
                Tr("inicheck", "write equipment:signal ahead of the comma"));
            return;
        }
        if (one.equipment.isEmpty() || one.signal.isEmpty())
            Add(*one.entry, Severity::Warning, Effect::None,
                Tr("inicheck", "the name '%1' is not equipment:signal").arg(one.name),
                Tr("inicheck", "write the name as the recorder does, with a colon"));
        CheckText(section, *one.entry, one.name, false, findings);
        CheckFields(one.fields, *one.entry, family);
        CheckParameters(one, analog);
    }

    void CheckFields(const QStringList& fields, const Entry& entry, const Family& family)
    {
        if (fields.size() > family.fields)
            Add(entry, Severity::Warning, Effect::None,
                Tr("inicheck", "'%1' behind comma %2 is ignored")
                    .arg(fields.mid(family.fields).join(QLatin1Char(',')), QString::number(family.fields)),
                Tr("inicheck", "blanks part the parameters; no name or text can hold a comma"));
    }

    void CheckParameters(const Signal& one, bool analog)
    {
        if (one.fields.size() < 2) {
            Add(*one.entry, Severity::Note, Effect::Dropped,
                Tr("inicheck", "'%1' has no parameters and stays unsorted").arg(one.name),
                analog ? Tr("inicheck", "add V_L=, E_G= and S_G= behind a comma")
                       : Tr("inicheck", "add V_L=, E_G=, D_G= and S_T= behind a comma"));
            return;
        }
        const QStringList unknown = UnknownWords(one.fields[1], analog);
        if (!one.parameters) {
            Add(*one.entry, Severity::Warning, Effect::Dropped,
                Tr("inicheck", "bad parameters, '%1' stays unsorted: %2")
                    .arg(one.name, (FaultsOf(one.fields[1], analog) + unknown).join(QStringLiteral("; "))),
                Tr("inicheck", "correct them"));
        } else if (!unknown.isEmpty()) {
            Add(*one.entry, Severity::Warning, Effect::None, unknown.join(QStringLiteral("; ")),
                Tr("inicheck", "correct or remove it"));
        }
    }

    void CheckEqualNames(const std::vector<Signal>& entries)
    {
        QHash<QString, const Entry*> first;
        for (const Signal& one : entries) {
            const Entry*& known = first[one.name];
            if (known == nullptr)
                known = one.entry;
            else if (!one.name.isEmpty())
                Add(*one.entry, Severity::Warning, Effect::None,
                    Tr("inicheck",
                       "the signal '%1' is here already as '%2' in line %3; sorted entries of one "
                       "name write its channel twice")
                        .arg(one.name, known->key, QString::number(known->line)),
                    Tr("inicheck", "remove one of the two"));
        }
    }

    // Entries of one record of the INF file should select one key. No more than a note for each piece of
    // equipment: the names are the recorder's, and the ini file can have no others.
    void CheckEquipment(const std::vector<Signal>& entries)
    {
        QMap<std::tuple<unsigned int, unsigned int, QString>, const Signal*> first;
        QSet<const Signal*> mixed;
        for (const Signal& one : entries) {
            if (!one.parameters)
                continue;
            const Parameters& own = *one.parameters;
            const Signal*& other =
                first[std::make_tuple(own.voltageLevel, own.equipmentGroup, one.equipment)];
            if (other == nullptr)
                other = &one;
            const unsigned int known = other->parameters->signalGroup;
            if (SignalFamily(known) == SignalFamily(own.signalGroup) || mixed.contains(other))
                continue;
            mixed.insert(other);
            Add(*one.entry, Severity::Note, Effect::None,
                Tr("inicheck",
                   "the equipment '%1' has %2 here and %3 in line %4; the INF file has one key for "
                   "them all")
                    .arg(one.equipment, QLatin1String(gst_sg[own.signalGroup]), QLatin1String(gst_sg[known]),
                         QString::number(other->entry->line)),
                Tr("inicheck", "give them separate equipment names, in the recorder too"));
        }
    }

    void CheckBays()
    {
        QHash<QString, const Entry*> first;
        for (const Entry* entry : EntriesOf(section, Bays)) {
            if (!entry->value.isEmpty())
                CheckBay(*entry, FieldsOf(entry->value), first);
        }
    }

    void CheckBay(const Entry& entry, const QStringList& fields, QHash<QString, const Entry*>& first)
    {
        const Entry* const known = first.value(fields[0], nullptr);
        const bool blank = fields.size() == 1 || (fields[1].isEmpty() && fields.value(2).isEmpty());
        if (known != nullptr && fields.size() > 1) {
            Add(entry, Severity::Warning, Effect::Dropped,
                Tr("inicheck", "the bay '%1' is here already as '%2' in line %3, which counts")
                    .arg(fields[0], known->key, QString::number(known->line)),
                Tr("inicheck", "remove one of the two"));
            return;
        }
        if (blank) {
            Add(entry, Severity::Warning, Effect::Dropped,
                Tr("inicheck", "the bay '%1' has neither display text nor circuit and is ignored")
                    .arg(fields[0]),
                Tr("inicheck", "write name,display text,circuit"));
            return;
        }
        first.insert(fields[0], &entry);
        if (fields[0].isEmpty() || fields[1].isEmpty())
            Add(entry, Severity::Warning, Effect::None,
                fields[0].isEmpty()
                    ? Tr("inicheck", "'%1' has no bay name").arg(entry.key)
                    : Tr("inicheck", "the bay '%1' has no display text: the INF file shows an empty name")
                          .arg(fields[0]),
                Tr("inicheck", "write name,display text,circuit"));
        CheckText(section, entry, fields[1], false, findings);
        CheckFields(fields, entry, Bays);
    }

    const Section& section;
    Findings& findings;
};

} // namespace

void CheckDictionary(const Section& section, Findings& findings)
{
    DictionaryCheck(section, findings).Run();
}

} // namespace inicheck
