#include "inicheck/checks.h"

#include "explain/file.h"
#include "recording/zufileformat.h"
#include "text/texts.h"

#include <QHash>
#include <QRegularExpression>

namespace inicheck {

namespace {

// Signals of one kind by the names that the recorder gives them, each with its line in the ini file.
QHash<QString, int> SignalsOf(const IniLines& ini, const QString& section, const char* prefix)
{
    const QRegularExpression pattern(QStringLiteral("\\A%1[0-9]+\\z").arg(QLatin1String(prefix)));
    QHash<QString, int> signalLines;
    for (const IniLine* line : ini.EntriesOf(section)) {
        const QString name = line->value.section(QLatin1Char(','), 0, 0).trimmed();
        if (pattern.match(line->key).hasMatch() && !name.isEmpty() && !signalLines.contains(name))
            signalLines.insert(name, line->number);
    }
    return signalLines;
}

class RecordingCheck
{
public:
    RecordingCheck(const QString& path_, Findings& findings_) : path(path_), findings(findings_) {}

    template <class Channel>
    void Compare(QHash<QString, int> signalLines, const std::vector<Channel*>& channels)
    {
        QStringList unknown;
        for (const Channel* channel : channels) {
            CheckRecordText(0, Tr("check", "%1: the channel").arg(path), channel->Name, findings);
            if (!known.contains(channel->Name) && !signalLines.contains(channel->Name))
                unknown << channel->Name;
            known.insert(channel->Name, 0);
            signalLines.remove(channel->Name);
        }
        for (auto signal = signalLines.constBegin(); signal != signalLines.constEnd(); ++signal)
            findings.push_back({signal.value(), Severity::Warning, reason::ChannelMissing,
                                Tr("check", "%1 has no channel '%2'").arg(path, signal.key())});
        if (!unknown.isEmpty())
            findings.push_back(
                {0, Severity::Warning, reason::ChannelsUnknown,
                 Tr("check", "%1: the dictionary does not know %2 channels, which come after the others: %3")
                     .arg(path)
                     .arg(unknown.size())
                     .arg(unknown.join(QLatin1String(", ")))});
    }

private:
    const QString path;
    Findings& findings;
    QHash<QString, int> known; // channels seen so far
};

} // namespace

void CheckRecording(const IniLines& ini, const QString& section, const QString& recording, Findings& findings)
{
    ZuFileFormat file;
    if (!file.Load(recording)) {
        findings.push_back(
            {0, Severity::Error, reason::RecordingUnreadable,
             recording + QStringLiteral(": ") + explain::NotLoaded(recording, file.ErrorText)});
        return;
    }
    RecordingCheck(recording, findings).Compare(SignalsOf(ini, section, "A"), file.AnChannels);
    RecordingCheck(recording, findings).Compare(SignalsOf(ini, section, "D"), file.DiChannels);
}

} // namespace inicheck
