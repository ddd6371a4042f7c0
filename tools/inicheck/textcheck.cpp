// Texts that come out as something else, or that make a record which cannot be read.
#include "inicheck/parts.h"

#include "zucmtr/texts.h"

#include <QRegularExpression>

namespace inicheck {

namespace {

bool HasLineEnd(const QString& text)
{
    for (const QChar character : text) {
        if (character.category() == QChar::Other_Control || character.category() == QChar::Separator_Line ||
            character.category() == QChar::Separator_Paragraph)
            return true;
    }
    return false;
}

bool IsQuoted(const QString& text)
{
    const auto is = [&text](char quote) {
        return text.length() >= 2 && text.startsWith(QLatin1Char(quote)) && text.endsWith(QLatin1Char(quote));
    };
    return is('"') || is('\'');
}

} // namespace

void CheckText(const Section& section, const Entry& entry, const QString& text, bool inName,
               Findings& findings)
{
    static const QRegularExpression place(QStringLiteral("%L?[0-9]"));
    static const QRegularExpression escape(QStringLiteral("\\\\[nrtx0\"\\\\]"));
    const auto add = [&](Severity severity, const QString& what, const QString& advice) {
        findings.push_back({entry.line, severity, Effect::None, section.name, entry.key, what, advice});
    };
    if (inName && text.contains(QLatin1Char(',')))
        add(Severity::Warning,
            Tr("inicheck",
               "the comma in '%1' parts it into two fields of the CFG file or of the record's name")
                .arg(text),
            Tr("inicheck", "write it without a comma"));
    if (HasLineEnd(text))
        add(Severity::Warning,
            Tr("inicheck", "'%1' holds a control character or line end, which breaks the record's lines")
                .arg(entry.key),
            Tr("inicheck", "remove it"));
    if (place.match(text).hasMatch())
        add(Severity::Warning,
            Tr("inicheck",
               "'%1' holds a percent sign with a digit, which may become another text in the record")
                .arg(text),
            Tr("inicheck", "write it without the percent sign"));
    if (entry.whole.left(entry.whole.indexOf(QLatin1Char(';'))).count(QLatin1Char('"')) % 2 == 1 &&
        entry.whole.contains(QLatin1Char(';')))
        add(Severity::Warning,
            Tr("inicheck", "the ';' begins a comment also inside quotes: the value is '%1'").arg(text),
            Tr("inicheck", "write it without ';'"));
    else if (IsQuoted(text))
        add(Severity::Note, Tr("inicheck", "the quotes belong to the value '%1'").arg(text),
            Tr("inicheck", "remove them unless they are meant"));
    if (escape.match(text).hasMatch())
        add(Severity::Note,
            Tr("inicheck", "a backslash means nothing special: '%1' stays as it is").arg(text),
            Tr("inicheck", "write the character itself"));
}

} // namespace inicheck
