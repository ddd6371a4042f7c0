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

// The words of this comparison for what a reader forgives.
const char* WordOf(const comtrade::Finding& finding)
{
    struct Row
    {
        const char* theirs;
        const char* ours;
    };
    static constexpr std::array<Row, 8> rows = {{{reason::SampleCutOff, reason::DataUnreadable},
                                                 {reason::BytesLeftOver, reason::SamplesLeftOver},
                                                 {reason::ZerosLeftOver, reason::SamplesLeftOver},
                                                 {reason::LinesLeftOver, reason::SamplesLeftOver},
                                                 {reason::SectionMark, reason::SamplesLeftOver},
                                                 {reason::SamplesLeftOver, reason::SamplesLeftOver},
                                                 {reason::SamplesLacking, reason::SamplesLacking},
                                                 {reason::SectionLacking, reason::PieceMissing}}};
    const auto* const row = std::find_if(rows.begin(), rows.end(), [&](const Row& one) {
        return QLatin1String(one.theirs) == QLatin1String(finding.reason);
    });
    return row != rows.end() ? row->ours : reason::PiecesDiffer;
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
    for (comtrade::Finding finding : forgiven.All()) {
        const bool isDamage = isConverters ? finding.severity != Severity::Note : IsLoss(finding);
        finding.reason = WordOf(finding);
        if (isDamage && !IsKnown(known, finding))
            wrong.Add(finding);
    }
}

} // namespace verify
