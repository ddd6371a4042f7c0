#include "validate/report.h"

#include "text/language.h"

namespace validate {

namespace {

// Values come from the record and may hold a %1 of their own, so that they are put in all at once.
QString Filled(const QString& text, const QStringList& values)
{
    QString filled;
    for (int i = 0; i < text.size(); ++i) {
        const int number = text[i] == QLatin1Char('%') ? text.mid(i + 1, 1).toInt() : 0;
        if (number < 1 || number > values.size()) {
            filled += text[i];
            continue;
        }
        filled += values[number - 1];
        ++i;
    }
    return filled;
}

} // namespace

Report::Report(comtrade::Findings& findings_, const QString& file_, qint64 linesBefore_)
    : findings(findings_), file(file_), linesBefore(linesBefore_)
{}

void Report::Add(const Rule& rule, const Position& position, const QStringList& values)
{
    comtrade::Finding finding;
    finding.file = file;
    finding.line = position.line > 0 ? position.line + linesBefore : 0;
    finding.column = position.column;
    finding.severity = rule.severity;
    finding.reason = rule.reason;
    finding.text = Filled(text::Translated("validate", rule.text), values);
    findings.Add(finding);
}

} // namespace validate
