// What the public sections of an INF text repeat of the configuration.
#include "comtrade/repeatedvalues.h"
#include "validate/infrules.h"
#include "validate/rules.h"

#include <QRegularExpression>

namespace validate {

namespace {

constexpr Rule InformationDiffers = {
    reason::InformationDiffers, Severity::Warning,
    QT_TRANSLATE_NOOP("validate", "%1 is '%2', but the configuration says '%3'; they must be the same")};
constexpr Rule ChannelUnknown = {
    reason::InformationDiffers, Severity::Warning,
    QT_TRANSLATE_NOOP("validate", "the section is about channel %1 of %2 in the configuration")};
constexpr Rule NoRecordInformation = {
    reason::SectionLacking, Severity::Note,
    QT_TRANSLATE_NOOP("validate", "there is no section [Public %1], which the standard requires")};

void Compare(const InfSection& section, const std::vector<comtrade::RepeatedValue>& values, Report& report)
{
    for (const comtrade::RepeatedValue& expected : values) {
        const auto found = section.entries.constFind(expected.key.toLower());
        if (found != section.entries.constEnd() &&
            !comtrade::IsSameValue(found->value, expected.value.trimmed()))
            report.Add(InformationDiffers, {found->line, found->column},
                       {found->key, found->value, expected.value});
    }
}

void CompareChannelSection(const InfSection& section, const QRegularExpressionMatch& match,
                           const comtrade::Places& places, Report& report)
{
    const bool isAnalog = match.captured(1).compare(QLatin1String("Analog"), Qt::CaseInsensitive) == 0;
    const std::vector<comtrade::Place>& channels = isAnalog ? places.analog : places.states;
    const size_t number = match.captured(2).toUInt();
    if (number < 1 || number > channels.size())
        report.Add(ChannelUnknown, {section.line, 0}, {match.captured(2), QString::number(channels.size())});
    else if (isAnalog)
        Compare(section, comtrade::AnalogValues(channels[number - 1]), report);
    else
        Compare(section, comtrade::StatusValues(channels[number - 1]), report);
}

} // namespace

void CheckInformation(const QString& text, const comtrade::Places& places, Report& report)
{
    static const QRegularExpression channel(QStringLiteral("\\APublic (Analog|Status)_Channel_#([0-9]+)\\z"),
                                            QRegularExpression::CaseInsensitiveOption);
    const std::vector<InfSection> sections = CheckSections(text, report);
    QStringList missing = {QStringLiteral("Record_Information"), QStringLiteral("File_Description")};
    for (const InfSection& section : sections) {
        for (int i = missing.size() - 1; i >= 0; --i)
            if (section.name.compare(QLatin1String("Public ") + missing[i], Qt::CaseInsensitive) == 0)
                missing.removeAt(i);
        if (section.name.compare(QLatin1String("Public File_Description"), Qt::CaseInsensitive) == 0)
            Compare(section, comtrade::DescriptionValues(places), report);
        const QRegularExpressionMatch match = channel.match(section.name);
        if (match.hasMatch())
            CompareChannelSection(section, match, places, report);
    }
    for (const QString& name : missing)
        report.Add(NoRecordInformation, {}, {name});
}

} // namespace validate
