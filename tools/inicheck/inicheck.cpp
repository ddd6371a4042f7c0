#include "inicheck/inicheck.h"

#include "inicheck/checks.h"
#include "text/texts.h"

#include <algorithm>
#include <iterator>

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

// Devices do not inherit a dictionary from the defaults.
void CheckStrayDictionary(const IniLines& ini, const Question& question, Findings& findings)
{
    if (question.devices.contains(question.defaults))
        return;
    for (const IniLine* line : ini.EntriesOf(question.defaults)) {
        if (IsDictionaryKey(line->key))
            findings.push_back(
                {line->number, Severity::Warning, reason::DictionaryInDefaults,
                 Tr("check", "ignored: '%1' belongs in the section of a device").arg(line->key)});
    }
}

Findings Only(const QStringList& reasons, const Findings& all)
{
    Findings some;
    std::copy_if(all.begin(), all.end(), std::back_inserter(some),
                 [&](const Finding& finding) { return reasons.contains(QLatin1String(finding.reason)); });
    return some;
}

} // namespace

Findings Check(const Question& question)
{
    const IniLines ini(question.ini);
    if (const auto& other = ini.OtherEncoding();
        other && !other->isRecognised) // any other finding would be about misread letters
        return {{0, Severity::Error, reason::NotUtf8, EncodingText(*other)}};
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

Findings SpoilsRecords(const QString& ini, const QString& defaults, const QString& device)
{
    const IniLines lines(ini);
    Findings all;
    CheckIdentity(lines, device, defaults, all);
    CheckDictionary(lines, device, all);
    return Only({reason::CommaInText, reason::PercentInText}, all);
}

Findings SpoilsEveryRecord(const QString& ini, const QString& defaults, const QString& device)
{
    Findings findings;
    CheckIdentity(IniLines(ini), device, defaults, findings);
    return Only({reason::CommaInText}, findings);
}

} // namespace inicheck
