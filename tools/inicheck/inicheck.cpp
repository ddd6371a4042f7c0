#include "inicheck/inicheck.h"

#include "inicheck/parts.h"

#include <algorithm>

namespace inicheck {

Findings Check(const IniText& text, const Choice& choice)
{
    Findings findings;
    CheckLines(text, findings);
    const Section& defaults = *text.Find(choice.defaults);
    CheckDefaults(defaults, findings);
    CheckKeyNames(defaults, {true, choice.devices.contains(choice.defaults)}, findings);
    for (const QString& name : choice.devices) {
        const Section& device = *text.Find(name);
        if (&device != &defaults) {
            CheckKeyNames(device, {false, true}, findings);
            CheckDevice(device, defaults, findings);
        }
        CheckDictionary(device, findings);
    }
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding& left, const Finding& right) { return left.line < right.line; });
    return findings;
}

} // namespace inicheck
