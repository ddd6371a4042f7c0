// The marks of a container.
#include "validate/rules.h"

#include <QHash>
#include <QStringList>

namespace validate {

namespace {

using comtrade::DataType;
using comtrade::Revision;

constexpr Rule ContainerRevision = {
    reason::ContainerRevision, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "a record in one file came with revision 2013, this is revision %1; older readers "
                      "do not know it")};
constexpr Rule UnknownSection = {
    reason::UnknownSection, Severity::Warning,
    QT_TRANSLATE_NOOP("validate", "there is no section '%1'; the sections are CFG, INF, HDR and DAT")};
constexpr Rule SectionTwice = {
    reason::SectionTwice, Severity::Error,
    QT_TRANSLATE_NOOP("validate",
                      "section %1 starts in line %2 already; readers take one of them, or both for one")};
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

void CheckDataMark(const MarkLine& line, const comtrade::Configuration& configuration, Report& report)
{
    const bool isAscii = configuration.dataType == DataType::Ascii;
    if (isAscii == (line.mark.dataBytes < 0))
        return;
    report.Add(DataMarkDiffers, {line.number, 0},
               {QString::fromLatin1(line.text).trimmed(), NameOf(configuration.dataType),
                isAscii ? QStringLiteral("--- file type: DAT ASCII ---")
                        : QStringLiteral("--- file type: DAT BINARY: N ---")});
}

} // namespace

void CheckMarks(const Pieces& pieces, const comtrade::Configuration& configuration, Report& report)
{
    if (configuration.revision != Revision::R2013)
        report.Add(ContainerRevision, {}, {QString::number(static_cast<int>(configuration.revision))});
    QHash<QString, qint64> lines;
    QString before;
    for (const MarkLine& line : pieces.marks) {
        const QString& kind = line.mark.kind;
        if (!Order().contains(kind)) {
            report.Add(UnknownSection, {line.number, 0}, {kind});
            continue;
        }
        if (lines.contains(kind))
            report.Add(SectionTwice, {line.number, 0}, {kind, QString::number(lines[kind])});
        else if (Order().indexOf(kind) < Order().indexOf(before))
            report.Add(SectionOrder, {line.number, 0}, {kind, before});
        lines.insert(kind, line.number);
        before = kind;
        if (kind == QLatin1String("DAT"))
            CheckDataMark(line, configuration, report);
    }
}

} // namespace validate
