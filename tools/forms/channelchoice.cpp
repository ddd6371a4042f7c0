#include "forms/channelchoice.h"

#include "text/texts.h"

#include <QRegularExpression>

#include <numeric>
#include <optional>
#include <utility>

using comtrade::Block;
using comtrade::Configuration;

namespace forms {

namespace {

// The pattern with its wildcards; all else stands for itself.
QRegularExpression ExpressionOf(const QString& pattern)
{
    QString text = QRegularExpression::escape(pattern);
    text.replace(QStringLiteral("\\*"), QStringLiteral(".*"))
        .replace(QStringLiteral("\\?"), QStringLiteral("."));
    return QRegularExpression(QStringLiteral("\\A(?:%1)\\z").arg(text),
                              QRegularExpression::CaseInsensitiveOption |
                                  QRegularExpression::UseUnicodePropertiesOption);
}

// The place that "A3" gives among the channels with that letter.
std::optional<size_t> PlaceOf(const QString& pattern, QChar letter, size_t count)
{
    bool isNumber = false;
    const qulonglong number = pattern.mid(1).toULongLong(&isNumber);
    if (!pattern.startsWith(letter, Qt::CaseInsensitive) || !isNumber || number < 1 || number > count)
        return std::nullopt;
    return static_cast<size_t>(number - 1);
}

// Marks the channels that a pattern means. A name counts before a place: a channel may be called A3.
template <class Channel>
bool MarkNamed(const std::vector<Channel>& channels, const QRegularExpression& expression,
               std::vector<bool>& marks)
{
    bool found = false;
    for (size_t i = 0; i < channels.size(); ++i) {
        if (expression.match(channels[i].name).hasMatch() ||
            (!channels[i].circuit.isEmpty() && expression.match(channels[i].circuit).hasMatch()))
            found = marks[i] = true;
    }
    return found;
}

bool MarkPlace(const QString& pattern, QChar letter, std::vector<bool>& marks)
{
    const std::optional<size_t> place = PlaceOf(pattern, letter, marks.size());
    if (place)
        marks[*place] = true;
    return place.has_value();
}

std::vector<size_t> Marked(const std::vector<bool>& marks)
{
    std::vector<size_t> places;
    for (size_t i = 0; i < marks.size(); ++i)
        if (marks[i])
            places.push_back(i);
    return places;
}

std::vector<size_t> Places(size_t count)
{
    std::vector<size_t> places(count);
    std::iota(places.begin(), places.end(), 0);
    return places;
}

template <class Channel>
void Keep(std::vector<Channel>& channels, const std::vector<size_t>& places)
{
    std::vector<Channel> kept;
    for (const size_t place : places) {
        kept.push_back(channels[place]);
        kept.back().number = static_cast<int>(kept.size());
    }
    channels = std::move(kept);
}

template <class Value>
void Copy(const std::vector<Value>& from, size_t channels, const std::vector<size_t>& places, size_t count,
          std::vector<Value>& to)
{
    for (size_t i = 0; i < count; ++i) {
        const Value* const row = from.data() + i * channels;
        Value* const kept = to.data() + i * places.size();
        for (size_t k = 0; k < places.size(); ++k)
            kept[k] = row[places[k]];
    }
}

} // namespace

ChannelSet AllChannels(const Configuration& config)
{
    return {Places(config.analog.size()), Places(config.states.size())};
}

ChannelSet Choose(const Configuration& config, const QStringList& patterns, const ChannelSet& places)
{
    if (patterns.isEmpty() && places.IsEmpty())
        return AllChannels(config);
    std::vector<bool> analog(config.analog.size());
    std::vector<bool> states(config.states.size());
    for (const size_t place : places.analog)
        analog.at(place) = true;
    for (const size_t place : places.states)
        states.at(place) = true;
    for (const QString& pattern : patterns) {
        const QRegularExpression expression = ExpressionOf(pattern);
        bool found = MarkNamed(config.analog, expression, analog);
        found = MarkNamed(config.states, expression, states) || found;
        if (!found && !MarkPlace(pattern, QLatin1Char('A'), analog) &&
            !MarkPlace(pattern, QLatin1Char('D'), states))
            throw NoSuchChannel(Tr("export", "no channel has the name, circuit or number '%1'").arg(pattern),
                                pattern);
    }
    return {Marked(analog), Marked(states)};
}

ChannelChoice::ChannelChoice(Stream& source_, ChannelSet set_)
    : source(source_), set(std::move(set_)), config(source.Config())
{
    Keep(config.analog, set.analog);
    Keep(config.states, set.states);
}

bool ChannelChoice::Next(Block& block)
{
    if (!source.Next(whole))
        return false;
    const Configuration& all = source.Config();
    block.Resize(whole.count, config);
    std::swap(block.numbers, whole.numbers);
    std::swap(block.times, whole.times);
    Copy(whole.analog, all.analog.size(), set.analog, whole.count, block.analog);
    Copy(whole.states, all.states.size(), set.states, whole.count, block.states);
    return true;
}

} // namespace forms
