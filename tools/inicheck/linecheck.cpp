// Lines, headings and repeated keys.
#include "inicheck/parts.h"

#include "zucmtr/texts.h"

#include <QHash>

namespace inicheck {

namespace {

QString Shortened(const QString& line)
{
    constexpr int Longest = 60;
    return line.length() <= Longest ? line : line.left(Longest) + QStringLiteral("...");
}

Finding OfOddLine(const OddLine& line)
{
    const QString shown = Shortened(line.text);
    switch (line.kind) {
    case OddLine::AheadOfSections:
        return {line.line,
                Severity::Warning,
                Effect::Dropped,
                {},
                {},
                Tr("inicheck", "'%1' stands ahead of the first section and is ignored").arg(shown),
                Tr("inicheck", "move it into a section")};
    case OddLine::EmptyHeading:
        return {line.line,
                Severity::Error,
                Effect::None,
                {},
                {},
                Tr("inicheck", "a section without a name; the lines up to the next section are ignored"),
                Tr("inicheck", "name the section")};
    case OddLine::BrokenHeading:
        return {
            line.line,
            Severity::Error,
            Effect::Dropped,
            line.section,
            {},
            Tr("inicheck", "'%1' opens no section; the lines below it go to the section above").arg(shown),
            Tr("inicheck", "leave nothing behind the closing bracket, not even a comment")};
    case OddLine::NoKey:
        break;
    }
    return {line.line,
            Severity::Warning,
            Effect::Dropped,
            line.section,
            {},
            Tr("inicheck", "'%1' is no key=value and is ignored").arg(shown),
            Tr("inicheck", "begin a comment with ';', or add what is missing")};
}

void CheckEncoding(const IniText& text, Findings& findings)
{
    if (text.utf16)
        findings.push_back({1,
                            Severity::Error,
                            Effect::None,
                            {},
                            {},
                            Tr("inicheck", "the file is in UTF-16, which is not read reliably"),
                            Tr("inicheck", "save it as UTF-8")});
    if (text.byteOrderMark)
        findings.push_back({1,
                            Severity::Note,
                            Effect::None,
                            {},
                            {},
                            Tr("inicheck", "the file begins with a byte order mark, which is skipped"),
                            Tr("inicheck", "save it as UTF-8 without the mark for other programs")});
    for (const int line : text.notUtf8)
        findings.push_back({line,
                            Severity::Error,
                            Effect::None,
                            {},
                            {},
                            Tr("inicheck", "the line is not UTF-8; what is not is read as '?' signs"),
                            Tr("inicheck", "save the file as UTF-8")});
}

void CheckHeadings(const Section& section, Findings& findings)
{
    for (size_t i = 1; i < section.lines.size(); ++i)
        findings.push_back({section.lines[i],
                            Severity::Warning,
                            Effect::None,
                            section.name,
                            {},
                            Tr("inicheck", "section [%1] is here already since line %2; both are one section")
                                .arg(section.name, QString::number(section.lines.front())),
                            Tr("inicheck", "join them, or give the second one its own name")});
    if (section.name != section.name.trimmed())
        findings.push_back({section.lines.front(),
                            Severity::Warning,
                            Effect::None,
                            section.name,
                            {},
                            Tr("inicheck", "the blanks belong to the section's name '%1'").arg(section.name),
                            Tr("inicheck", "remove them inside the brackets")});
}

void CheckRepeats(const Section& section, Findings& findings)
{
    for (size_t i = 0; i < section.entries.size(); ++i) {
        const Entry& entry = section.entries[i];
        const Entry& last = *section.Find(entry.key);
        if (last.line != entry.line)
            findings.push_back(
                {entry.line, Severity::Warning, Effect::Dropped, section.name, entry.key,
                 Tr("inicheck", "'%1' comes again in line %2, which counts; this one is ignored")
                     .arg(entry.key, QString::number(last.line)),
                 Tr("inicheck", "remove one of the two")});
    }
}

} // namespace

void CheckLines(const IniText& text, Findings& findings)
{
    CheckEncoding(text, findings);
    for (const OddLine& line : text.oddLines)
        findings.push_back(OfOddLine(line));
    for (const Section& section : text.sections) {
        CheckHeadings(section, findings);
        CheckRepeats(section, findings);
    }
}

} // namespace inicheck
