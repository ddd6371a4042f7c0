#include "inicheck/checks.h"

#include "text/texts.h"

#include <QRegularExpression>

namespace inicheck {

namespace {

bool IsComment(const IniLine& line)
{
    return line.text.startsWith(QLatin1Char(';')) || line.text.startsWith(QLatin1Char('#'));
}

bool LooksLikeSection(const IniLine& line)
{
    return line.kind != LineKind::Section && line.text.startsWith(QLatin1Char('['));
}

void CheckSection(const IniLines& ini, const IniLine& line, Findings& findings)
{
    if (line.section.trimmed() != line.section)
        findings.push_back(
            {line.number, Severity::Warning, reason::BlanksInSectionName,
             Tr("check", "the blanks belong to the section's name '%1'; take them out").arg(line.section)});
    const int first = ini.LineOfSection(line.section);
    if (first != line.number)
        findings.push_back({line.number, Severity::Warning, reason::SectionTwice,
                            Tr("check", "section [%1] starts in line %2 already; both are one, and of equal "
                                        "keys the last counts: put them together")
                                .arg(line.section, QString::number(first))});
}

void CheckEntry(const IniLines& ini, const IniLine& line, Findings& findings)
{
    const IniLine* counting = ini.Find(line.section, line.key);
    if (counting != &line && !IsComment(line))
        findings.push_back(
            {line.number, Severity::Warning, reason::KeyTwice,
             Tr("check", "ignored: '%1' is in line %2 again, and the last one counts; take one of them out")
                 .arg(line.key, QString::number(counting->number))});
    if (line.value.size() > 1 && line.value.startsWith(QLatin1Char('"')) &&
        line.value.endsWith(QLatin1Char('"')))
        findings.push_back(
            {line.number, Severity::Warning, reason::QuotationMarks,
             Tr("check", "the quotation marks belong to the value of '%1'; take them out").arg(line.key)});
}

void CheckStray(const IniLine& line, Findings& findings)
{
    if (IsComment(line))
        return;
    const bool entry = line.kind == LineKind::Outside;
    findings.push_back({line.number, Severity::Warning,
                        entry ? reason::LineOutsideSection : reason::StrayLine,
                        entry ? Tr("check", "ignored: it comes before the first section; move it into one")
                              : Tr("check", "ignored: it is neither a section nor 'key = value'; start it "
                                            "with ';' if it is a comment")});
}

} // namespace

void CheckLines(const IniLines& ini, Findings& findings)
{
    if (ini.HasByteOrderMark())
        findings.push_back({1, Severity::Note, reason::ByteOrderMark,
                            Tr("check", "the file starts with a byte order mark, which is skipped; save it "
                                        "without one for other programs")});
    if (const auto& other = ini.OtherEncoding())
        findings.push_back({1, Severity::Note, reason::ByteOrderMark, EncodingText(*other)});
    for (const int number : ini.BadlyEncoded())
        findings.push_back({number, Severity::Error, reason::NotUtf8,
                            Tr("check", "it is not UTF-8, its letters are lost; save the file in UTF-8")});
    for (const IniLine& line : ini.All()) {
        if (LooksLikeSection(line))
            findings.push_back(
                {line.number, Severity::Warning, reason::BrokenHeading,
                 Tr("check",
                    "it opens no section, as ']' is not its last character: what follows belongs to [%1]")
                     .arg(line.section)});
        else if (line.kind == LineKind::Section)
            CheckSection(ini, line, findings);
        else if (line.kind == LineKind::Entry)
            CheckEntry(ini, line, findings);
        else if (line.kind == LineKind::Outside || line.kind == LineKind::Stray)
            CheckStray(line, findings);
    }
}

void CheckRecordText(int line, const QString& what, const QString& text, Findings& findings)
{
    if (text.contains(QLatin1Char(',')) || text.contains(QLatin1Char('\n')) ||
        text.contains(QLatin1Char('\r')))
        findings.push_back(
            {line, Severity::Error, reason::CommaInText,
             Tr("check",
                "%1 '%2' holds a comma or a line end: no program opens a record with it; take it out")
                 .arg(what, text)});
    static const QRegularExpression place(QStringLiteral("%L?[0-9]"));
    if (place.match(text).hasMatch())
        findings.push_back({line, Severity::Error, reason::PercentInText,
                            Tr("check", "%1 '%2' holds a '%' with a digit, which is replaced by another "
                                        "value when the record is written; take it out")
                                .arg(what, text)});
}

} // namespace inicheck
