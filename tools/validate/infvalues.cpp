// What the public sections of an INF text repeat of the configuration.
#include "validate/infrules.h"
#include "validate/rules.h"

#include <QRegularExpression>

#include <array>

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

// Keys of a channel's section in the order of the fields of its CFG line after the number.
constexpr std::array<const char*, 12> AnalogKeys = {"Channel_ID",
                                                    "Phase_ID",
                                                    "Monitored_Component",
                                                    "Channel_Units",
                                                    "Channel_Multiplier",
                                                    "Channel_Offset",
                                                    "Channel_Skew",
                                                    "Range_Minimum_Limit_Value",
                                                    "Range_Maximum_Limit_Value",
                                                    "Channel_Ratio_Primary",
                                                    "Channel_Ratio_Secondary",
                                                    "Data_Primary_Secondary"};
constexpr std::array<const char*, 4> StatusKeys = {"Channel_ID", "Phase_ID", "Monitored_Component",
                                                   "Normal_State"};

// Numbers are equal by value, texts but for their case.
bool IsSame(const QString& one, const QString& other)
{
    bool bothNumbers = false;
    bool isNumber = false;
    const double first = one.toDouble(&bothNumbers);
    const double second = other.toDouble(&isNumber);
    bothNumbers = bothNumbers && isNumber;
    return bothNumbers ? first == second : one.compare(other, Qt::CaseInsensitive) == 0;
}

void Compare(const InfSection& section, const QString& key, const QString& expected, Report& report)
{
    const auto found = section.entries.constFind(key.toLower());
    if (found != section.entries.constEnd() && !IsSame(found->value, expected.trimmed()))
        report.Add(InformationDiffers, {found->line, found->column}, {found->key, found->value, expected});
}

template <size_t Count>
void CompareChannel(const InfSection& section, const std::array<const char*, Count>& keys,
                    const comtrade::Place& place, Report& report)
{
    if (static_cast<size_t>(place.fields.size()) != Count + 1)
        return;
    for (size_t i = 0; i < Count; ++i)
        Compare(section, QLatin1String(keys[i]), place.fields[static_cast<int>(i) + 1], report);
}

void CompareDescription(const InfSection& section, const comtrade::Places& places, Report& report)
{
    const auto compare = [&](const char* key, const QString& expected) {
        Compare(section, QLatin1String(key), expected, report);
    };
    const auto count = [](const QString& field) { return field.chopped(field.isEmpty() ? 0 : 1); };
    compare("Station_Name", places.station.fields.value(0));
    compare("Recording_Device_ID", places.station.fields.value(1));
    compare("Revision_Year", places.station.fields.value(2));
    compare("Total_Channel_Count", places.counts.fields.value(0));
    compare("Analog_Channel_Count", count(places.counts.fields.value(1)));
    compare("Status_Channel_Count", count(places.counts.fields.value(2)));
    compare("Line_Frequency", places.frequency.fields.value(0));
    compare("Sample_Rate_Count", places.rateCount.fields.value(0));
    for (size_t i = 0; i < places.rates.size(); ++i) {
        const QString number = QString::number(i + 1);
        Compare(section, QStringLiteral("Sample_Rate_#") + number, places.rates[i].fields.value(0), report);
        Compare(section, QStringLiteral("End_Sample_Rate_#") + number, places.rates[i].fields.value(1),
                report);
    }
    compare("File_Start_Time", places.start.fields.join(QLatin1Char(',')));
    compare("Trigger_Time", places.trigger.fields.join(QLatin1Char(',')));
    compare("File_Type", places.dataType.fields.value(0));
    compare("Time_Multiplier", places.timeMultiplier.fields.value(0));
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
        CompareChannel(section, AnalogKeys, channels[number - 1], report);
    else
        CompareChannel(section, StatusKeys, channels[number - 1], report);
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
            CompareDescription(section, places, report);
        const QRegularExpressionMatch match = channel.match(section.name);
        if (match.hasMatch())
            CompareChannelSection(section, match, places, report);
    }
    for (const QString& name : missing)
        report.Add(NoRecordInformation, {}, {name});
}

} // namespace validate
