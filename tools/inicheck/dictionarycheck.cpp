#include "inicheck/checks.h"
#include "inicheck/dictionarykinds.h"
#include "inicheck/entryparameters.h"
#include "inicheck/equipmentcheck.h"

#include "text/texts.h"

#include <QHash>

namespace inicheck {

namespace {

// The entries of one kind, each by itself and compared with those before it.
class SignalCheck
{
public:
    SignalCheck(const EntryKind& kind, Findings& findings_)
        : isAnalog(&kind == &AnalogEntries()), findings(findings_), parameters(kind, findings_),
          equipments(findings_)
    {}

    void Check(const IniLine& line)
    {
        const QStringList fields = line.value.split(QLatin1Char(','));
        const QString name = fields[0].trimmed();
        if (name.isEmpty()) {
            Say(line, isAnalog ? Severity::Error : Severity::Warning, reason::NoSignal,
                isAnalog ? Tr("check", "it has no signal before the first comma: the section does not load")
                         : Tr("check", "dropped: it has no signal before the first comma"));
            return;
        }
        CheckName(line, name);
        if (fields.size() > 2)
            Say(line, Severity::Warning, reason::ExtraFields,
                Tr("check", "what follows the second comma is ignored"));
        if (fields.size() < 2)
            Say(line, Severity::Warning, reason::NoParameters,
                Tr("check", "it has no parameters, so its channel stays unsorted; add '%1'")
                    .arg(parameters.Wanted()));
        else if (parameters.Check(line, fields[1].trimmed()) && isAnalog)
            CheckEquipment(line, name, fields[1].trimmed());
    }

private:
    void Say(const IniLine& line, Severity severity, const char* reason, const QString& text)
    {
        findings.push_back(AboutEntry(line, severity, reason, text));
    }

    void CheckName(const IniLine& line, const QString& name)
    {
        const int colon = name.indexOf(QLatin1Char(':'));
        if (colon < 0 || name.left(colon).trimmed().isEmpty() || name.mid(colon + 1).trimmed().isEmpty())
            Say(line, Severity::Warning, reason::NotEquipmentSignal,
                Tr("check", "'%1' is not 'equipment:signal'; write the channel's name as the recorder does")
                    .arg(name));
        const auto earlier = names.constFind(name);
        if (earlier != names.constEnd())
            Say(line, Severity::Warning, reason::SignalTwice,
                Tr("check", "'%1' is in line %2 too: a record would have the channel twice; take one out")
                    .arg(name, QString::number(*earlier)));
        else
            names.insert(name, line.number);
        CheckRecordText(line.number, line.key, name, findings);
    }

    void CheckEquipment(const IniLine& line, const QString& name, const QString& text)
    {
        const QString equipment = name.section(QLatin1Char(':'), 0, 0).trimmed();
        equipments.Check(line, equipment,
                         {line.number, parameters.Value(text, "V_L"), parameters.Value(text, "E_G"),
                          parameters.Value(text, "S_G")});
    }

    const bool isAnalog;
    Findings& findings;
    EntryParameters parameters;
    EquipmentCheck equipments;
    QHash<QString, int> names; // and their lines
};

} // namespace

void CheckDictionary(const IniLines& ini, const QString& section, Findings& findings)
{
    for (const EntryKind* kind : {&AnalogEntries(), &DiscreteEntries()}) {
        SignalCheck check(*kind, findings); // an analog and a discrete channel may share a name
        for (const IniLine* line : ReadEntries(ini, section, *kind, findings))
            check.Check(*line);
    }
    CheckBays(ini, section, findings);
}

} // namespace inicheck
