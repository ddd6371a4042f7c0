#include "inicheck/inicheck.h"

#include "inicheck/checks.h"
#include "zucmtr/texts.h"

#include <algorithm>

namespace inicheck {

namespace {

void CheckDevice(const IniLines& ini, const Question& question, const QString& device, Findings& findings)
{
    if (device != question.defaults)
        CheckParameters(ini, device, question.defaults, findings);
    CheckDictionary(ini, device, findings);
    for (const QString& recording : question.recordings)
        CheckRecording(ini, device, recording, findings);
}

// A dictionary among the defaults is one that no device has.
void CheckStrayDictionary(const IniLines& ini, const Question& question, Findings& findings)
{
    if (question.devices.contains(question.defaults))
        return;
    for (const IniLine* line : ini.EntriesOf(question.defaults)) {
        if (IsDictionaryKey(line->key))
            findings.push_back(
                {line->number, Severity::Warning, reason::DictionaryInDefaults,
                 Tr("check", "ignored: '%1' belongs into the section of a device").arg(line->key)});
    }
}

} // namespace

Findings Check(const Question& question)
{
    const IniLines ini(question.ini);
    Findings findings;
    CheckLines(ini, findings);
    CheckParameters(ini, question.defaults, question.defaults, findings);
    CheckStrayDictionary(ini, question, findings);
    for (const QString& device : question.devices)
        CheckDevice(ini, question, device, findings);
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding& a, const Finding& b) { return a.line < b.line; });
    return findings;
}

} // namespace inicheck
