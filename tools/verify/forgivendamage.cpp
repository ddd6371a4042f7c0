#include "verify/forgivendamage.h"

#include <algorithm>
#include <array>

namespace verify {

namespace {

bool IsLoss(const comtrade::Finding& finding)
{
    static const std::array<QLatin1String, 6> words = {
        QLatin1String("samplesLacking"), QLatin1String("samplesLeftOver"), QLatin1String("dataUnreadable"),
        QLatin1String("countsDiffer"),   QLatin1String("dataTypeDiffers"), QLatin1String("sectionLacking")};
    return finding.severity == Severity::Error &&
           std::find(words.begin(), words.end(), QLatin1String(finding.reason)) != words.end();
}

bool IsKnown(const comtrade::Findings& wrong, const comtrade::Finding& finding)
{
    return std::any_of(wrong.All().begin(), wrong.All().end(), [&](const comtrade::Finding& one) {
        return QLatin1String(one.reason) == QLatin1String(finding.reason);
    });
}

} // namespace

void AddForgivenDamage(const comtrade::Findings& forgiven, bool isConverters, comtrade::Findings& wrong)
{
    const comtrade::Findings known = wrong;
    for (const comtrade::Finding& finding : forgiven.All()) {
        const bool isDamage = isConverters ? finding.severity != Severity::Note : IsLoss(finding);
        if (isDamage && !IsKnown(known, finding))
            wrong.Add(finding);
    }
}

} // namespace verify
