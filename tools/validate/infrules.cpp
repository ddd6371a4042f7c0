// The lines and sections of an INF text.
#include "validate/infrules.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringList>

namespace validate {

namespace {

constexpr Rule LineOutsideSection = {
    reason::LineOutsideSection, Severity::Warning,
    QT_TRANSLATE_NOOP("validate", "the line comes before the first section, so that it belongs to none")};
constexpr Rule StrayLine = {
    reason::StrayLine, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "the line is neither a section in brackets nor 'name=value'; comments start with ';'")};
constexpr Rule BrokenHeading = {reason::BrokenHeading, Severity::Warning,
                                QT_TRANSLATE_NOOP("validate", "the heading of a section ends with ']'")};
constexpr Rule SectionTwice = {
    reason::SectionTwice, Severity::Warning,
    QT_TRANSLATE_NOOP("validate", "section [%1] is in line %2 already; readers take one of them")};
constexpr Rule KeyTwice = {
    reason::KeyTwice, Severity::Warning,
    QT_TRANSLATE_NOOP("validate", "'%1' is in line %2 of this section already; readers take one of them")};
constexpr Rule UnknownSection = {
    reason::UnknownSection, Severity::Warning,
    QT_TRANSLATE_NOOP("validate", "the standard has no public section [%1]; the headings of other sections "
                                  "start with another word than Public")};

class Reader
{
public:
    explicit Reader(Report& report_) : report(report_) {}

    void Take(const QString& line)
    {
        ++number;
        const QString text = line.trimmed();
        if (text.isEmpty() || text.startsWith(QLatin1Char(';')))
            return;
        if (text.startsWith(QLatin1Char('[')))
            TakeHeading(text);
        else if (sections.empty())
            report.Add(LineOutsideSection, {number, 0});
        else
            TakeEntry(line);
    }

    std::vector<InfSection> sections;

private:
    void TakeHeading(const QString& text)
    {
        static const QRegularExpression known(
            QStringLiteral("\\APublic (Record_Information|File_Description|Event_Information(_#[0-9]+)?|"
                           "(Analog|Status)_Channel_#[0-9]+)\\z"),
            QRegularExpression::CaseInsensitiveOption);
        if (!text.endsWith(QLatin1Char(']'))) {
            report.Add(BrokenHeading, {number, 0});
            sections.push_back({text.mid(1), number, {}});
            return;
        }
        const QString name = text.mid(1, text.size() - 2).simplified();
        const auto before = lineOfSection.constFind(name.toLower());
        if (before != lineOfSection.constEnd())
            report.Add(SectionTwice, {number, 0}, {name, QString::number(*before)});
        else if (name.startsWith(QLatin1String("Public "), Qt::CaseInsensitive) &&
                 !known.match(name).hasMatch())
            report.Add(UnknownSection, {number, 0}, {name});
        lineOfSection.insert(name.toLower(), number);
        sections.push_back({name, number, {}});
    }

    void TakeEntry(const QString& line)
    {
        const int equals = line.indexOf(QLatin1Char('='));
        const QString key = line.left(equals).trimmed();
        if (equals < 0 || key.isEmpty()) {
            report.Add(StrayLine, {number, 0});
            return;
        }
        InfSection& section = sections.back();
        const auto before = section.entries.constFind(key.toLower());
        if (before != section.entries.constEnd())
            report.Add(KeyTwice, {number, 0}, {key, QString::number(before->line)});
        section.entries.insert(key.toLower(), {key, line.mid(equals + 1).trimmed(), number, equals + 2});
    }

    Report& report;
    qint64 number = 0;
    QHash<QString, qint64> lineOfSection; // by the name in lower case
};

} // namespace

std::vector<InfSection> CheckSections(const QString& text, Report& report)
{
    static const QRegularExpression lineEnd(QStringLiteral("\r\n|\r|\n"));
    constexpr QChar endOfFile(0x1A);
    Reader reader(report);
    for (const QString& line : text.section(endOfFile, 0, 0).split(lineEnd))
        reader.Take(line);
    return reader.sections;
}

} // namespace validate
