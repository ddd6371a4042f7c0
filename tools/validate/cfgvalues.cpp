// What the channels of a CFG text say.
#include "validate/rules.h"

#include <QStringList>

#include <cmath>
#include <limits>

namespace validate {

namespace {

using comtrade::AnalogChannel;
using comtrade::DataType;
using comtrade::Revision;

constexpr Rule NoChannels = {reason::NoChannels, Severity::Warning,
                             QT_TRANSLATE_NOOP("validate", "there is no channel; a record has at least one")};
constexpr Rule ChannelNumbering = {
    reason::ChannelNumbering, Severity::Warning,
    QT_TRANSLATE_NOOP("validate", "the channel has number %1, and is number %2 of its kind; channels are "
                                  "numbered from 1 in the order of their lines")};
constexpr Rule ZeroMultiplier = {
    reason::ZeroMultiplier, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "the multiplier a is 0, so that all values of the channel are b; give the value of "
                      "one unit of the data")};
constexpr Rule LimitsBeyondType = {
    reason::LimitsBeyondType, Severity::Note,
    QT_TRANSLATE_NOOP("validate", "%1 is %2, which %3 data cannot hold: they go from %4 to %5")};
constexpr Rule RatioZero = {
    reason::RatioZero, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "%1 is %2; the ratio of the transformer needs a number above 0 (1 if there is no "
                      "transformer), or primary and secondary values cannot be converted")};
constexpr Rule SkewTooLarge = {
    reason::SkewTooLarge, Severity::Note,
    QT_TRANSLATE_NOOP("validate",
                      "the skew is %1 microseconds, more than the %2 from one sample to the next")};

struct Range
{
    double least;
    double most;
};

// The codes that data of a type can hold.
Range RangeOf(DataType type, Revision revision)
{
    constexpr double ascii = 99999;
    constexpr double largestFloat = std::numeric_limits<float>::max();
    switch (type) {
    case DataType::Binary:
        return {-32767, 32767};
    case DataType::Binary32:
        return {-2147483647.0, 2147483647.0};
    case DataType::Float32:
        return {-largestFloat, largestFloat};
    case DataType::Ascii:
        break;
    }
    return revision == Revision::R2013 ? Range{-largestFloat, largestFloat} : Range{-ascii, ascii};
}

QString Text(double number)
{
    return QString::number(number, 'g', 10);
}

class Channels
{
public:
    explicit Channels(const CheckedConfiguration& checked)
        : configuration(checked.configuration), report(checked.report),
          range(RangeOf(configuration.dataType, configuration.revision))
    {
        for (const comtrade::SampleRate& rate : configuration.rates)
            fastest = std::max(fastest, rate.hertz);
    }

    void CheckNumber(const comtrade::Place& place, int number, size_t index)
    {
        if (number != static_cast<int>(index) + 1)
            report.Add(ChannelNumbering, PositionOf(place, 0),
                       {QString::number(number), QString::number(index + 1)});
    }

    void CheckAnalog(const comtrade::Place& place, const AnalogChannel& channel)
    {
        if (channel.a == 0)
            report.Add(ZeroMultiplier, PositionOf(place, 5));
        if (fastest > 0 && std::abs(channel.skew) * fastest > 1e6)
            report.Add(SkewTooLarge, PositionOf(place, 7), {Text(channel.skew), Text(1e6 / fastest)});
        CheckLimits(place, channel);
        CheckRatio(place, 10, channel.primary);
        CheckRatio(place, 11, channel.secondary);
    }

private:
    void CheckLimits(const comtrade::Place& place, const AnalogChannel& channel)
    {
        CheckLimit(place, 8, channel.min);
        CheckLimit(place, 9, channel.max);
    }

    void CheckLimit(const comtrade::Place& place, int field, double limit)
    {
        if (limit < range.least || limit > range.most)
            report.Add(LimitsBeyondType, PositionOf(place, field),
                       {field == 8 ? QStringLiteral("min") : QStringLiteral("max"), Text(limit),
                        NameOf(configuration.dataType), Text(range.least), Text(range.most)});
    }

    void CheckRatio(const comtrade::Place& place, int field, double factor)
    {
        if (place.fields.size() > field && !(factor > 0))
            report.Add(RatioZero, PositionOf(place, field),
                       {field == 10 ? QStringLiteral("primary") : QStringLiteral("secondary"), Text(factor)});
    }

    const comtrade::Configuration& configuration;
    Report& report;
    const Range range;
    double fastest = 0; // samples per second
};

} // namespace

void CheckChannels(const CheckedConfiguration& checked)
{
    const comtrade::Configuration& configuration = checked.configuration;
    const comtrade::Places& places = checked.places;
    if (configuration.analog.empty() && configuration.states.empty())
        checked.report.Add(NoChannels, PositionOf(places.counts, 0));
    Channels channels(checked);
    for (size_t i = 0; i < std::min(places.analog.size(), configuration.analog.size()); ++i) {
        channels.CheckNumber(places.analog[i], configuration.analog[i].number, i);
        channels.CheckAnalog(places.analog[i], configuration.analog[i]);
    }
    for (size_t i = 0; i < std::min(places.states.size(), configuration.states.size()); ++i)
        channels.CheckNumber(places.states[i], configuration.states[i].number, i);
}

} // namespace validate
