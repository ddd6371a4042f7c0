// A record that has some of its recording's channels: what was salvaged of a damaged one.
#include "verify/verifier.h"

#include "comtrade/record.h"
#include "config/QSettingsRu.h"
#include "device/zucmtrdevparam.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "text/error.h"
#include "verify/channellines.h"
#include "verify/recordfiles.h"
#include "verify/source.h"

#include <QSet>

#include <algorithm>

namespace verify {

namespace {

// The configuration of the record, in the form of the device if it is there in both.
QString ConfigurationOf(const Source& source, const QString& directory, const QString& recordName)
{
    const QString base =
        directory + QLatin1Char('/') + (recordName.isEmpty() ? source.RecordName() : recordName);
    QStringList paths = {base + QLatin1String(".cfg"), base + QLatin1String(".cff")};
    if (source.Owner().Param().ComtradeCff)
        std::reverse(paths.begin(), paths.end());
    return IsThere(paths[0]) ? paths[0] : paths[1];
}

// Marks the channel of this name, the first of several that is not marked yet. False if there is none.
bool Mark(std::vector<bool>& marked, const QStringList& names, const QString& name)
{
    int number = names.indexOf(name);
    while (number >= 0 && marked[static_cast<size_t>(number)])
        number = names.indexOf(name, number + 1);
    if (number >= 0)
        marked[static_cast<size_t>(number)] = true;
    return number >= 0;
}

// Which of the channels with these names are among the record's; nothing if one of the record's is not.
template <class Channel>
bool MarkAll(std::vector<bool>& marked, const QStringList& names, const std::vector<Channel>& channels)
{
    marked.assign(static_cast<size_t>(names.size()), false);
    return std::all_of(channels.begin(), channels.end(),
                       [&](const Channel& channel) { return Mark(marked, names, channel.name); });
}

// The names that the channels of the recording, so many of a kind, have in its record, in the order of the
// recording. Of a kind that it lacks the order is that of an earlier recording.
template <class ChannelAt>
QStringList NamesOf(size_t count, const std::vector<unsigned int>& order, const Device& device,
                    const ChannelAt& at)
{
    std::vector<QString> names(count);
    for (size_t i = 0; i < count; ++i)
        names.at(order.at(i)) = NameFields(at(i), i + 1, device)[1];
    QStringList list;
    for (const QString& name : names)
        list << name;
    return list;
}

// Names of the dictionary that are not among the known ones.
template <class Entry>
QStringList Further(const std::vector<Entry*>& entries, const QSet<QString>& known)
{
    QStringList names;
    for (const Entry* entry : entries) {
        if (!known.contains(entry->FullName))
            names << entry->FullName;
    }
    return names;
}

// Keys with a letter and a number, each without a value.
template <class Entry>
QString EmptyKeys(const QString& letter, const std::vector<Entry*>& entries, const QSet<QString>& names)
{
    QString lines;
    for (const Entry* entry : entries) {
        if (!names.contains(entry->FullName))
            lines += QSettingsRu::NumberedKey(letter, entry->Number) + QLatin1String("=\n");
    }
    return lines;
}

} // namespace

void Verifier::NameLost(salvage::Plan& plan) const
{
    salvage::Loss& loss = plan.loss;
    QSet<QString> known;
    size_t analogKnown = 0;
    for (const salvage::Section& section : plan.segments.front().sections) {
        known << section.name;
        analogKnown += section.kind == salvage::Kind::Analog ? 1 : 0;
    }
    const ResorterZuCmtrConv& resorter = *device.Param().Resorter;
    const QStringList analog = Further(resorter.AnDictionary, known);
    const QStringList names = analog + Further(resorter.DiDictionary, known);
    if (loss.nameless == 0 || loss.allAnalog || static_cast<size_t>(names.size()) != loss.nameless)
        return;
    loss.lost += names;
    loss.nameless = 0;
    loss.allAnalog = analogKnown + static_cast<size_t>(analog.size());
    loss.allDiscrete = loss.channels - *loss.allAnalog;
}

QString Verifier::KeysWithout(const salvage::Choice& choice, const salvage::Segment& first) const
{
    QSet<QString> analog;
    QSet<QString> discrete;
    for (const salvage::Section& section : first.sections) {
        if (choice.Has(section))
            (section.kind == salvage::Kind::Analog ? analog : discrete) << section.name;
    }
    const ResorterZuCmtrConv& resorter = *device.Param().Resorter;
    return EmptyKeys(QStringLiteral("A"), resorter.AnDictionary, analog) +
           EmptyKeys(QStringLiteral("D"), resorter.DiDictionary, discrete);
}

std::optional<salvage::Choice> Verifier::ChannelsThere(const QString& firstFile, const QString& directory,
                                                       const QString& recordName)
{
    const Source source(device, firstFile);
    salvage::Choice choice;
    const std::optional<QString> failure = text::FailureOf([&] {
        const comtrade::Record record(ConfigurationOf(source, directory, recordName));
        const comtrade::Configuration& there = record.Config();
        const QStringList analog = NamesOf(source.AnalogCount(), source.AnalogOrder(), device,
                                           [&](size_t i) -> auto& { return source.Analog(i); });
        const QStringList states = NamesOf(source.StateCount(), source.StateOrder(), device,
                                           [&](size_t i) -> auto& { return source.State(i); });
        if (!MarkAll(choice.analog, analog, there.analog) || !MarkAll(choice.discrete, states, there.states))
            choice = {};
    });
    const size_t all = source.AnalogCount() + source.StateCount();
    if (failure || choice.Channels() == 0 || choice.Channels() == all)
        return std::nullopt;
    return choice;
}

} // namespace verify
