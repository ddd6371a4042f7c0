// A dictionary against the channels of a recording.
#include "inicheck/dictionaryentries.h"
#include "inicheck/inicheck.h"
#include "inicheck/nearest.h"

#include "zucmtr/texts.h"

#include <QHash>
#include <QSet>

namespace inicheck {

namespace {

// Equal for names that differ in case, blanks or look-alike letters only.
QString Likeness(const QString& name)
{
    return WithLatinLetters(name).toLower().remove(QLatin1Char(' '));
}

QSet<QString> SetOf(const QStringList& names)
{
    QSet<QString> set;
    for (const QString& name : names)
        set.insert(name);
    return set;
}

Finding OfLacking(const Section& section, const Signal& one, const QString& file, const QString& meant)
{
    return {one.entry->line,
            Severity::Warning,
            Effect::None,
            section.name,
            one.entry->key,
            Tr("inicheck", "%1 has no channel '%2'").arg(file, one.name),
            meant.isEmpty() ? Tr("inicheck", "write the name as the recorder does, or remove the line")
                            : Tr("inicheck", "did you mean '%1'?").arg(meant)};
}

// Channels of one kind.
void CheckChannels(const Section& section, const Family& family, const QString& file,
                   const QStringList& channels, Findings& findings)
{
    const std::vector<Signal> entries = SignalsOf(section, family);
    if (entries.empty()) // the order is the recording's
        return;
    const QSet<QString> present = SetOf(channels);
    QHash<QString, QString> alike;
    for (const QString& channel : channels)
        alike.insert(Likeness(channel), channel);
    QSet<QString> known;
    for (const Signal& one : entries) {
        known.insert(one.name);
        if (!one.name.isEmpty() && !present.contains(one.name))
            findings.push_back(OfLacking(section, one, file, alike.value(Likeness(one.name))));
    }
    for (const QString& channel : channels) {
        if (!known.contains(channel))
            findings.push_back({0, Severity::Note, Effect::None, section.name, QString(),
                                Tr("inicheck", "the dictionary does not know the channel '%1', which is "
                                               "written behind the sorted ones")
                                    .arg(channel),
                                Tr("inicheck", "add it to the dictionary if it is to be sorted"), file});
    }
}

} // namespace

Findings CheckRecording(const IniText& text, const QString& device, const Channels& channels)
{
    Findings findings;
    const Section& section = *text.Find(device);
    CheckChannels(section, Analog, channels.file, channels.analog, findings);
    CheckChannels(section, Discrete, channels.file, channels.discrete, findings);
    return findings;
}

} // namespace inicheck
