// The marks of a container.
#include "validate/rules.h"

#include <QStringList>

namespace validate {

namespace {

using comtrade::DataType;
using comtrade::Revision;

constexpr Rule ContainerRevision = {
    reason::ContainerRevision, Severity::Warning,
    QT_TRANSLATE_NOOP(
        "validate",
        "a container (.cff) came with revision 2013, this is revision %1; older readers do not know it")};
constexpr Rule UnknownSection = {
    reason::UnknownSection, Severity::Warning,
    QT_TRANSLATE_NOOP("validate", "there is no section '%1'; the sections are CFG, INF, HDR and DAT")};
constexpr Rule SectionOrder = {
    reason::SectionOrder, Severity::Warning,
    QT_TRANSLATE_NOOP("validate", "section %1 follows %2; the order is CFG, INF, HDR, DAT")};
constexpr Rule DataMarkDiffers = {
    reason::DataMarkDiffers, Severity::Error,
    QT_TRANSLATE_NOOP("validate", "the mark is '%1', but the configuration says %2 data; it should be '%3'")};

const QStringList& Order()
{
    static const QStringList order = {QStringLiteral("CFG"), QStringLiteral("INF"), QStringLiteral("HDR"),
                                      QStringLiteral("DAT")};
    return order;
}

void CheckDataMark(const comtrade::MarkLine& line, const comtrade::Configuration& configuration,
                   Report& report)
{
    const bool isAscii = configuration.dataType == DataType::Ascii;
    if (isAscii == (line.mark.dataBytes < 0))
        return;
    report.Add(DataMarkDiffers, {line.line, 0},
               {QString::fromLatin1(line.text).trimmed(), NameOf(configuration.dataType),
                isAscii ? QStringLiteral("--- file type: DAT ASCII ---")
                        : QStringLiteral("--- file type: DAT BINARY: N ---")});
}

} // namespace

void CheckMarks(const Pieces& pieces, const comtrade::Configuration& configuration, Report& report)
{
    if (configuration.revision != Revision::R2013)
        report.Add(ContainerRevision, {}, {QString::number(static_cast<int>(configuration.revision))});
    QString before;
    for (const comtrade::MarkLine& line : pieces.marks) {
        const QString& kind = line.mark.kind;
        if (!Order().contains(kind)) {
            report.Add(UnknownSection, {line.line, 0}, {kind});
            continue;
        }
        if (Order().indexOf(kind) < Order().indexOf(before))
            report.Add(SectionOrder, {line.line, 0}, {kind, before});
        before = kind;
        if (kind == QLatin1String("DAT"))
            CheckDataMark(line, configuration, report);
    }
}

} // namespace validate
