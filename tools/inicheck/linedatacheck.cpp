#include "inicheck/linedatacheck.h"

#include "analysis/linedata.h"
#include "analysis/linematch.h"
#include "inicheck/dictionarykinds.h"
#include "inicheck/entryparameters.h"
#include "inicheck/inilines.h"
#include "inicheck/nearest.h"
#include "text/texts.h"

#include <algorithm>
#include <vector>

namespace inicheck {

namespace {

// What the ini file says of a name that a section of lines.ini may have.
struct Known
{
    QString name;
    QString shown;  // in records; empty: the name
    QString device; // section
    bool isLine = false;
    bool hasCurrents = false;
    bool hasVoltages = false;
};

class KnownNames
{
public:
    KnownNames(const IniLines& ini, const QStringList& devices)
    {
        for (const QString& device : devices) {
            for (const EntryKind* kind : {&AnalogEntries(), &DiscreteEntries()})
                AddEntries(ini, device, *kind);
            for (const IniLine* line : ReadEntries(ini, device, BayEntries(), ignored))
                AddBay(*line, device);
        }
    }

    const std::vector<Known>& All() const { return all; }

    const Known* Find(const QString& name) const
    {
        const auto found = std::find_if(all.begin(), all.end(), [&](const Known& one) {
            return analysis::IsSameName(one.name, name) ||
                   (!one.shown.isEmpty() && analysis::IsSameName(one.shown, name));
        });
        return found == all.end() ? nullptr : &*found;
    }

    QStringList Names() const
    {
        QStringList names;
        for (const Known& one : all)
            names << one.name;
        return names;
    }

private:
    Known& Of(const QString& name, const QString& device)
    {
        const auto found = std::find_if(all.begin(), all.end(), [&](const Known& one) {
            return one.name == name && one.device == device;
        });
        if (found != all.end())
            return *found;
        all.emplace_back();
        all.back().name = name;
        all.back().device = device;
        return all.back();
    }

    void AddEntries(const IniLines& ini, const QString& device, const EntryKind& kind)
    {
        EntryParameters parameters(kind, ignored);
        for (const IniLine* line : ReadEntries(ini, device, kind, ignored)) {
            const QString text = line->value.section(QLatin1Char(','), 1).trimmed();
            Known& known =
                Of(line->value.section(QLatin1Char(','), 0, 0).section(QLatin1Char(':'), 0, 0).trimmed(),
                   device);
            const QString group = parameters.Value(text, "S_G");
            known.isLine = known.isLine || parameters.Value(text, "E_G") == QLatin1String("L");
            known.hasCurrents = known.hasCurrents || group == QLatin1String("CT");
            known.hasVoltages = known.hasVoltages || group == QLatin1String("VT");
        }
    }

    void AddBay(const IniLine& line, const QString& device)
    {
        const QStringList fields = line.value.split(QLatin1Char(','));
        Of(fields[0].trimmed(), device).shown = fields.value(1).trimmed();
    }

    std::vector<Known> all;
    Findings ignored; // what is wrong with the dictionary is reported elsewhere
};

QString Quoted(const QString& name)
{
    return QLatin1Char('\'') + name + QLatin1Char('\'');
}

QString MatchText(const analysis::Line& line, const Known& known)
{
    QStringList parts;
    if (line.IsKnown())
        parts << Tr("check", "%1 km").arg(line.length);
    parts << Tr("check", "equipment of [%1]").arg(known.device);
    if (!known.shown.isEmpty() && known.shown != known.name)
        parts << Tr("check", "'%1' in records").arg(known.shown);
    if (!line.voltages.isEmpty())
        parts << Tr("check", "voltages of '%1'").arg(line.voltages);
    else if (!known.hasVoltages)
        parts << Tr("check", "no voltages of its own: 'voltages' names the circuit that has them");
    if (!line.zones.empty())
        parts << Tr("check", "zones: %1").arg(line.zones.size());
    return QStringLiteral("[%1]: ").arg(line.circuit) + parts.join(QStringLiteral("; "));
}

void CheckReference(const analysis::Line& line, const char* key, const QString& name, const KnownNames& names,
                    Findings& findings)
{
    if (name.isEmpty() || names.Find(name) != nullptr)
        return;
    const QString text = Tr("check", "[%1] %2: the ini file has no equipment and no bay '%3'")
                             .arg(line.circuit, QLatin1String(key), name);
    findings.push_back({line.row, Severity::Warning, reason::UnknownCircuit,
                        text + MeantText(Nearest(name, names.Names()))});
}

void CheckSection(const analysis::Line& line, const KnownNames& names, Findings& findings)
{
    const Known* known = names.Find(line.circuit);
    if (known == nullptr) {
        const QString text =
            Tr("check", "[%1] is no equipment of the dictionary and no bay; it serves records that "
                        "have a circuit of this name, and nothing else")
                .arg(line.circuit);
        findings.push_back({line.row, Severity::Warning, reason::LineNotMatched,
                            text + MeantText(Nearest(line.circuit, names.Names()))});
    } else {
        findings.push_back({line.row, Severity::Note, reason::LineMatched, MatchText(line, *known)});
    }
    if (line.missing == analysis::NeededLineKeys())
        findings.push_back({line.row, Severity::Note, reason::KeyMissing,
                            Tr("check", "[%1] is yet to be filled in: %2")
                                .arg(line.circuit, line.missing.join(QLatin1String(", ")))});
    CheckReference(line, "voltages", line.voltages, names, findings);
    CheckReference(line, "parallel", line.parallel, names, findings);
}

// One note about all lines of the dictionary that have no section.
void CheckMissing(const analysis::Lines& lines, const KnownNames& names, Findings& findings)
{
    QStringList missing;
    for (const Known& known : names.All()) {
        const bool isThere = std::any_of(lines.begin(), lines.end(), [&](const analysis::Line& line) {
            return names.Find(line.circuit) == &known;
        });
        if (known.isLine && known.hasCurrents && !isThere)
            missing << Quoted(known.name);
    }
    if (!missing.isEmpty())
        findings.push_back({0, Severity::Note, reason::LineMissing,
                            Tr("check", "lines of the dictionary without a section: %1")
                                .arg(missing.join(QLatin1String(", ")))});
}

} // namespace

Findings CheckLineData(const QString& lineFile, const QString& ini, const QStringList& devices)
{
    const analysis::LineFile file = analysis::ReadLineFile(lineFile);
    const KnownNames names{IniLines(ini), devices};
    Findings findings;
    for (const analysis::LineProblem& problem : file.problems)
        findings.push_back({problem.row, problem.isError ? Severity::Error : Severity::Warning,
                            problem.reason, problem.text});
    for (const analysis::Line& line : file.lines)
        CheckSection(line, names, findings);
    CheckMissing(file.lines, names, findings);
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding& a, const Finding& b) { return a.line < b.line; });
    return findings;
}

} // namespace inicheck
