#include "validate/validate.h"

#include "comtrade/text.h"
#include "explain/file.h"
#include "text/texts.h"
#include "validate/rules.h"

#include <QFileInfo>

#include <algorithm>
#include <set>
#include <tuple>

namespace validate {

namespace {

using comtrade::Finding;
using comtrade::Findings;
using comtrade::Record;

constexpr Rule RecordUnreadable = {reason::RecordUnreadable, Severity::Error,
                                   QT_TRANSLATE_NOOP("validate", "the record cannot be read: %1")};
constexpr Rule DataUnreadable = {reason::DataUnreadable, Severity::Error,
                                 QT_TRANSLATE_NOOP("validate", "the data cannot be read to their end: %1")};

// A message starts with the name of the file it is about, as the line of the finding does.
QString WithoutName(const QString& message, const QString& file)
{
    if (!message.startsWith(file))
        return message;
    QString rest = message.mid(file.size());
    while (rest.startsWith(QLatin1Char(':')) || rest.startsWith(QLatin1Char(',')) ||
           rest.startsWith(QLatin1Char(' ')))
        rest.remove(0, 1);
    return rest;
}

void CheckTexts(const Pieces& pieces, const Record& record, const comtrade::ReadingOptions& options,
                Findings& findings)
{
    const auto check = [&](const std::optional<Piece>& piece, TextKind kind) {
        if (!piece)
            return;
        Report report(findings, piece->file, piece->linesBefore);
        const bool isData = kind == TextKind::Data;
        const bool isGiven = isData || !options.encoding.isEmpty();
        const QString encoding = isGiven ? options.encoding : comtrade::EncodingOf(piece->bytes);
        CheckText(*piece, kind, record.Config().revision, encoding, report);
    };
    check(pieces.configuration, TextKind::Configuration);
    check(pieces.header, TextKind::Header);
    check(pieces.information, TextKind::Information);
    if (record.Config().dataType == comtrade::DataType::Ascii)
        check(pieces.data, TextKind::Data);
}

void CheckConfiguration(const CheckedConfiguration& checked)
{
    CheckFields(checked);
    CheckChannels(checked);
    CheckTimes(checked);
}

void CheckData(const CheckedConfiguration& checked, const Pieces& pieces, Record& record, Findings& findings)
{
    const bool isAscii = checked.configuration.dataType == comtrade::DataType::Ascii;
    // The samples of ASCII data are lines of their file.
    Report report(findings, pieces.data.file, isAscii ? pieces.data.linesBefore : 0);
    DataCheck check(checked, report);
    try {
        comtrade::Block block;
        while (record.Next(block))
            check.Take(block);
    } catch (const comtrade::Error& error) {
        report.Add(DataUnreadable, {}, {WithoutName(error.Message(), pieces.data.file)});
    }
    check.Finish();
}

void CheckWhole(const QString& path, const comtrade::ReadingOptions& options, Findings& findings)
{
    Record record(path, options);
    const Pieces pieces = PiecesOf(path);
    Report report(findings, path);
    const CheckedConfiguration checked{record.Config(), record.Places(), report};
    if (pieces.isContainer)
        CheckMarks(pieces, record.Config(), report);
    CheckTexts(pieces, record, options, findings);
    CheckConfiguration(checked);
    if (pieces.information) {
        Report information(findings, pieces.information->file, pieces.information->linesBefore);
        CheckInformation(record.InformationText(), record.Places(), information);
    }
    const size_t beforeData = record.Forgiven().All().size();
    CheckData(checked, pieces, record, findings);
    // What the reader forgives in the data has the number of its sample for a line.
    const bool hasLines = record.Config().dataType == comtrade::DataType::Ascii;
    findings.Add(record.Forgiven(), beforeData, hasLines ? pieces.data.linesBefore : 0);
}

// How a finding is ordered: configuration, header, information and data, by the endings of their names.
int PlaceInRecord(const Finding& finding)
{
    static const QStringList order = {QStringLiteral("cfg"), QStringLiteral("cff"), QStringLiteral("hdr"),
                                      QStringLiteral("inf"), QStringLiteral("dat")};
    return order.indexOf(QFileInfo(finding.file).suffix().toLower());
}

std::vector<Finding> Ordered(std::vector<Finding> findings)
{
    const auto key = [](const Finding& finding) {
        return std::make_tuple(PlaceInRecord(finding), finding.line, finding.column);
    };
    std::stable_sort(findings.begin(), findings.end(),
                     [&](const Finding& one, const Finding& other) { return key(one) < key(other); });
    return findings;
}

// Adds how many there are to the last one of a kind of which only the first were kept.
std::vector<Finding> WithCounts(const Findings& findings)
{
    std::vector<Finding> all = Ordered(findings.All());
    std::set<std::pair<QString, QString>> counted;
    for (auto finding = all.rbegin(); finding != all.rend(); ++finding) {
        const qint64 count = findings.CountOf(finding->file, finding->reason);
        if (count > Findings::MostOfAKind &&
            counted.insert({finding->file, QLatin1String(finding->reason)}).second)
            finding->text = Tr("validate", "%1 (and %2 more of this kind in the file)")
                                .arg(finding->text)
                                .arg(count - Findings::MostOfAKind);
    }
    return all;
}

} // namespace

std::vector<Finding> Validate(const QString& path, const comtrade::ReadingOptions& options)
{
    Findings findings;
    const QString unreadable = explain::NotARecord(path);
    if (!unreadable.isEmpty()) {
        Finding finding;
        finding.file = path;
        finding.severity = Severity::Error;
        finding.reason = explain::WordOf(path, reason::RecordUnreadable);
        finding.text = unreadable;
        return {finding};
    }
    try {
        CheckWhole(path, options, findings);
    } catch (const comtrade::Error& error) {
        Report(findings, path).Add(RecordUnreadable, {}, {WithoutName(error.Message(), path)});
    }
    return WithCounts(findings);
}

} // namespace validate
