#include "comtrade/finding.h"

#include <algorithm>

namespace comtrade {

void Findings::Add(const Finding& finding)
{
    if (++counts[{finding.file, QLatin1String(finding.reason)}] <= MostOfAKind)
        findings.push_back(finding);
}

void Findings::Add(const Findings& others, size_t firstMoved, qint64 lines)
{
    std::map<std::pair<QString, QString>, qint64> kept;
    for (size_t i = 0; i < others.findings.size(); ++i) {
        Finding finding = others.findings[i];
        if (i >= firstMoved && finding.line > 0)
            finding.line += lines;
        Add(finding);
        ++kept[{finding.file, QLatin1String(finding.reason)}];
    }
    for (const auto& [kind, count] : others.counts)
        counts[kind] += count - kept[kind];
}

qint64 Findings::CountOf(const QString& file, const char* reason) const
{
    const auto found = counts.find({file, QLatin1String(reason)});
    return found != counts.end() ? found->second : 0;
}

Severity Findings::Heaviest() const
{
    Severity heaviest = Severity::Note;
    for (const Finding& finding : findings)
        heaviest = std::max(heaviest, finding.severity);
    return heaviest;
}

} // namespace comtrade
