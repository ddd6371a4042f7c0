#include "inicheck/checks.h"
#include "inicheck/dictionarykinds.h"

#include "text/texts.h"

#include <QHash>

namespace inicheck {

namespace {

// bays: the lines of the bays before this one, by name.
void CheckBay(const IniLine& line, QHash<QString, int>& bays, Findings& findings)
{
    const QStringList fields = line.value.split(QLatin1Char(','));
    const QString name = fields[0].trimmed();
    const QString shown = fields.value(1).trimmed();
    const auto earlier = bays.constFind(name);
    if (shown.isEmpty() && fields.value(2).trimmed().isEmpty()) {
        findings.push_back(
            AboutEntry(line, Severity::Warning, reason::EmptyBay,
                       Tr("check", "ignored: it has neither a text to show nor a second circuit")));
        return;
    }
    if (earlier != bays.constEnd()) {
        findings.push_back(AboutEntry(
            line, Severity::Warning, reason::BayTwice,
            Tr("check", "ignored: the bay '%1' is in line %2 already").arg(name, QString::number(*earlier))));
        return;
    }
    bays.insert(name, line.number);
    if (fields.size() > 3)
        findings.push_back(AboutEntry(line, Severity::Warning, reason::ExtraFields,
                                      Tr("check", "what follows the third comma is ignored")));
    if (shown.isEmpty())
        findings.push_back(AboutEntry(
            line, Severity::Warning, reason::BayWithoutText,
            Tr("check",
               "it has no text to show, so the INF file shows none for '%1'; give one after the first comma")
                .arg(name)));
    CheckRecordText(line.number, line.key, shown, findings);
}

} // namespace

void CheckBays(const IniLines& ini, const QString& section, Findings& findings)
{
    QHash<QString, int> bays;
    for (const IniLine* line : ReadEntries(ini, section, BayEntries(), findings))
        CheckBay(*line, bays, findings);
}

} // namespace inicheck
