#include "comtrade/repeatedvalues.h"

#include <array>

namespace comtrade {

namespace {

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

template <size_t Count>
std::vector<RepeatedValue> ValuesOf(const std::array<const char*, Count>& keys, const Place& channel)
{
    std::vector<RepeatedValue> values;
    for (size_t i = 0; i < Count && static_cast<size_t>(channel.fields.size()) == Count + 1; ++i)
        values.push_back({QLatin1String(keys[i]), channel.fields[static_cast<int>(i) + 1]});
    return values;
}

} // namespace

std::vector<RepeatedValue> DescriptionValues(const Places& places)
{
    const auto count = [&places](int field) {
        const QString text = places.counts.fields.value(field);
        return text.chopped(text.isEmpty() ? 0 : 1);
    };
    std::vector<RepeatedValue> values = {
        {QStringLiteral("Station_Name"), places.station.fields.value(0)},
        {QStringLiteral("Recording_Device_ID"), places.station.fields.value(1)},
        {QStringLiteral("Revision_Year"), places.station.fields.value(2)},
        {QStringLiteral("Total_Channel_Count"), places.counts.fields.value(0)},
        {QStringLiteral("Analog_Channel_Count"), count(1)},
        {QStringLiteral("Status_Channel_Count"), count(2)},
        {QStringLiteral("Line_Frequency"), places.frequency.fields.value(0)},
        {QStringLiteral("Sample_Rate_Count"), places.rateCount.fields.value(0)}};
    for (size_t i = 0; i < places.rates.size(); ++i) {
        const QString number = QString::number(i + 1);
        values.push_back({QStringLiteral("Sample_Rate_#") + number, places.rates[i].fields.value(0)});
        values.push_back({QStringLiteral("End_Sample_Rate_#") + number, places.rates[i].fields.value(1)});
    }
    values.push_back({QStringLiteral("File_Start_Time"), places.start.fields.join(QLatin1Char(','))});
    values.push_back({QStringLiteral("Trigger_Time"), places.trigger.fields.join(QLatin1Char(','))});
    values.push_back({QStringLiteral("File_Type"), places.dataType.fields.value(0)});
    values.push_back({QStringLiteral("Time_Multiplier"), places.timeMultiplier.fields.value(0)});
    return values;
}

std::vector<RepeatedValue> AnalogValues(const Place& channel)
{
    return ValuesOf(AnalogKeys, channel);
}

std::vector<RepeatedValue> StatusValues(const Place& channel)
{
    return ValuesOf(StatusKeys, channel);
}

bool IsSameValue(const QString& one, const QString& other)
{
    bool isFirst = false;
    bool isSecond = false;
    const double first = one.toDouble(&isFirst);
    const double second = other.toDouble(&isSecond);
    return isFirst && isSecond ? first == second : one.compare(other, Qt::CaseInsensitive) == 0;
}

} // namespace comtrade
