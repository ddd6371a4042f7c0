#include "forms/channeltitles.h"

#include <QHash>
#include <QStringList>

namespace forms {

namespace {

enum Length { Name, NameAndPlace, Numbered, Lengths };

// The titles of one channel, each longer than the one before.
struct Titles
{
    QString of[Lengths];
    int length = Name;

    const QString& Text() const { return of[length]; }
};

template <class Channel>
Titles TitlesOf(const Channel& channel, const QString& number, const QString& unit)
{
    const QString tail = unit.isEmpty() ? QString() : QStringLiteral(" [%1]").arg(unit);
    const QString name = channel.name.isEmpty() ? number : channel.name;
    QStringList place{name};
    for (const QString& part : {channel.circuit, channel.phase}) {
        if (!part.isEmpty())
            place += part;
    }
    const QString longer = place.join(QLatin1Char(' '));
    Titles titles;
    titles.of[Name] = name + tail;
    titles.of[NameAndPlace] = longer + tail;
    titles.of[Numbered] = number + QLatin1Char(' ') + longer + tail; // unique by its first word
    return titles;
}

// Makes the titles longer that another channel has as well. False if there are none.
bool Lengthen(std::vector<Titles>& channels)
{
    QHash<QString, int> times;
    for (const Titles& titles : channels)
        ++times[titles.Text()];
    bool isLonger = false;
    for (Titles& titles : channels) {
        if (times[titles.Text()] > 1 && titles.length < Numbered) {
            ++titles.length;
            isLonger = true;
        }
    }
    return isLonger;
}

} // namespace

std::vector<QString> ChannelTitles(const comtrade::Configuration& config, const QString& taken)
{
    Titles fixed;
    fixed.of[Numbered] = taken;
    fixed.length = Numbered;
    std::vector<Titles> columns{fixed};
    for (const comtrade::AnalogChannel& channel : config.analog)
        columns.push_back(TitlesOf(channel, QStringLiteral("A%1").arg(columns.size()), channel.unit));
    for (const comtrade::StateChannel& channel : config.states) {
        const size_t number = columns.size() - config.analog.size();
        columns.push_back(TitlesOf(channel, QStringLiteral("D%1").arg(number), QString()));
    }
    while (Lengthen(columns)) {
    }
    std::vector<QString> titles;
    for (size_t i = 1; i < columns.size(); ++i)
        titles.push_back(columns[i].Text());
    return titles;
}

} // namespace forms
