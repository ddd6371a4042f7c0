#include "forms/information.h"

#include "comtrade/repeatedvalues.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

using comtrade::RepeatedValue;

namespace forms {

namespace {

// Goes through the lines of a text, section by section.
class Walk
{
public:
    Walk(const comtrade::Places& configuration_, const std::optional<ChannelSet>& chosen_)
        : configuration(configuration_), chosen(chosen_)
    {}

    Information Of(const QString& text)
    {
        QStringList lines;
        for (const QString& line : text.split(QLatin1Char('\n')))
            Take(line, lines);
        result.text = lines.join(QLatin1Char('\n'));
        if (text.endsWith(QLatin1Char('\n')) && !result.text.endsWith(QLatin1Char('\n')))
            result.text += QLatin1Char('\n'); // it went with the last section
        return result;
    }

private:
    void Take(const QString& line, QStringList& lines)
    {
        static const QRegularExpression heading(QStringLiteral("\\A\\s*\\[([^\\]]*)\\]"));
        const QRegularExpressionMatch match = heading.match(line);
        const std::optional<QString> kept = match.hasMatch() ? Open(line, match.captured(1))
                                            : isKept         ? Entry(line)
                                                             : std::nullopt;
        if (kept)
            lines << *kept;
    }

    // The heading of the section under its new name; nothing if the section goes.
    std::optional<QString> Open(const QString& line, const QString& name)
    {
        static const QRegularExpression channel(
            QStringLiteral("\\APublic (Analog|Status)_Channel_#([0-9]+)\\z"),
            QRegularExpression::CaseInsensitiveOption);
        values.clear();
        isDescription = name.compare(QLatin1String("Public File_Description"), Qt::CaseInsensitive) == 0;
        const QRegularExpressionMatch match = channel.match(name);
        const bool isPublic = name.startsWith(QLatin1String("Public "), Qt::CaseInsensitive);
        isKept = isPublic || !chosen;
        result.isEquipmentLeftOut = result.isEquipmentLeftOut || !isKept;
        if (isDescription)
            values = comtrade::DescriptionValues(configuration);
        if (!match.hasMatch())
            return isKept ? std::optional<QString>(line) : std::nullopt;
        const bool isAnalog = match.captured(1).compare(QLatin1String("Analog"), Qt::CaseInsensitive) == 0;
        const std::optional<size_t> place = PlaceOf(isAnalog, match.captured(2).toUInt());
        isKept = place.has_value();
        if (!isKept)
            return std::nullopt;
        values = isAnalog ? comtrade::AnalogValues(configuration.analog[*place])
                          : comtrade::StatusValues(configuration.states[*place]);
        return QString(line).replace(QLatin1Char('#') + match.captured(2),
                                     QLatin1Char('#') + QString::number(*place + 1));
    }

    // Where the channel with this number of the source is among those of the configuration.
    std::optional<size_t> PlaceOf(bool isAnalog, size_t number) const
    {
        const size_t count = isAnalog ? configuration.analog.size() : configuration.states.size();
        size_t place = number - 1;
        if (chosen) {
            const std::vector<size_t>& places = isAnalog ? chosen->analog : chosen->states;
            const auto found = std::find(places.begin(), places.end(), place);
            if (found == places.end())
                return std::nullopt;
            place = static_cast<size_t>(found - places.begin());
        }
        return number > 0 && place < count ? std::optional<size_t>(place) : std::nullopt;
    }

    // The line with the value of the configuration; nothing for a rate that is gone.
    std::optional<QString> Entry(const QString& line) const
    {
        static const QRegularExpression rate(QStringLiteral("\\A(End_)?Sample_Rate_#[0-9]+\\z"),
                                             QRegularExpression::CaseInsensitiveOption);
        const int equals = line.indexOf(QLatin1Char('='));
        const QString key = line.left(equals).trimmed();
        const auto found = std::find_if(values.begin(), values.end(), [&](const RepeatedValue& one) {
            return equals > 0 && one.key.compare(key, Qt::CaseInsensitive) == 0;
        });
        if (found == values.end())
            return isDescription && rate.match(key).hasMatch() ? std::nullopt : std::optional<QString>(line);
        const QString value = line.mid(equals + 1).trimmed();
        if (comtrade::IsSameValue(value, found->value))
            return line;
        const QString end = line.endsWith(QLatin1Char('\r')) ? QStringLiteral("\r") : QString();
        return line.left(equals + 1) + found->value + end;
    }

    const comtrade::Places& configuration;
    const std::optional<ChannelSet>& chosen;
    std::vector<RepeatedValue> values; // of the section
    bool isDescription = false;
    bool isKept = true;
    Information result;
};

} // namespace

Information InformationFor(const QString& text, const comtrade::Places& configuration,
                           const std::optional<ChannelSet>& chosen)
{
    return Walk(configuration, chosen).Of(text);
}

} // namespace forms
