// A recorder's recording, read with the library's own classes.
#include "explain/file.h"
#include "explain/library.h"
#include "info/description.h"
#include "info/facts.h"
#include "info/recordingdata.h"
#include "info/salvageable.h"
#include "info/values.h"

#include "base/chainnames.h"
#include "device/zucmtrdevparam.h"
#include "preparation/segmentchain.h"
#include "recording/anchanneldata.h"
#include "recording/dichanneldata.h"
#include "recording/fieldtext.h"
#include "recording/zufileformat.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "text/texts.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstring>

namespace info {

namespace {

// A device without ini file: enough to read a recording.
struct PlainDevice : ZuCmtrDevParam
{
    PlainDevice() { Resorter = new ResorterZuCmtrConv(this); }
    ~PlainDevice() { Clear(); }
    PlainDevice(const PlainDevice&) = delete;
    PlainDevice& operator=(const PlainDevice&) = delete;
};

// Continuation files beside the first one whose numbers come after the chain's.
QStringList LeftOut(const QString& first, int inChain)
{
    QStringList names;
    for (int number = inChain; number <= zu::MostContinuations; ++number) {
        const QString path = zu::ContinuationName(first, number);
        if (QFile::exists(path))
            names << QFileInfo(path).fileName();
    }
    return names;
}

// Why a chain ends.
struct ChainEnd
{
    const char* word;
    QString text;
};

// wasCut: a file that could be read does not fit the first one.
ChainEnd EndOf(const QString& path, int segments, bool wasCut, const ZuCmtrDevParam& device)
{
    if (segments > zu::MostContinuations)
        return {reason::AllFiles, Tr("info", "it has all the files that a recording can have")};
    const QString next = QFileInfo(zu::ContinuationName(path, segments)).fileName();
    if (wasCut)
        return {reason::NextFileDiffers, Tr("info", "%1 differs from the first file").arg(next)};
    if (!device.LogMessages.empty())
        return {reason::NextFileUnreadable, Tr("info", "%1 cannot be read").arg(next)};
    return {reason::NoNextFile, Tr("info", "there is no %1").arg(next)};
}

void AddChainEnd(Description& description, const QString& path, int segments, bool wasCut,
                 const ZuCmtrDevParam& device)
{
    for (const QString& note : device.LogMessages)
        description.notes << explain::LibraryText(note);
    const ChainEnd end = EndOf(path, segments, wasCut, device);
    description.AddForPrograms("chainEnd", QLatin1String(end.word));
    description.Add("chainEndText", Tr("info", "Chain ends because"), end.text);
    const QStringList left = LeftOut(path, segments);
    if (!left.isEmpty())
        description.notes << Tr("info", "not part of the recording: %1").arg(left.join(QLatin1String(", ")));
}

Table SegmentTable(const std::vector<QString>& paths, const std::vector<ZuFileFormat*>& files)
{
    Table table{"segments",
                Tr("info", "Segments"),
                {"file", "start", "seconds", "points", "bytes"},
                {Tr("info", "File"), Tr("info", "First sample"), Tr("info", "Duration"), Tr("info", "Points"),
                 Tr("info", "Size")},
                {}};
    for (size_t i = 0; i < files.size(); ++i) {
        ZuFileFormat& file = *files[i];
        const QFileInfo onDisk(paths[i]);
        table.rows.push_back({TextCell(onDisk.fileName()), MomentCell(file.StartTime, file.StartMicroseconds),
                              SecondsCell(file.SegmentDuration / 1e6), CountCell(file.GetNumPointsAn()),
                              BytesCell(onDisk.size())});
    }
    return table;
}

Table AnalogTable(const ZuFileFormat& first)
{
    Table table{"analog",
                Tr("info", "Analog channels"),
                {"number", "name", "unit", "primary", "secondary", "rate", "points", "compressed", "bytes"},
                {Tr("info", "No."), Tr("info", "Name"), Tr("info", "Unit"), Tr("info", "Primary"),
                 Tr("info", "Secondary"), Tr("info", "Hz"), Tr("info", "Points"), Tr("info", "Compressed"),
                 Tr("info", "Size")},
                {}};
    qint64 number = 0;
    for (const AnChannelData* channel : first.AnChannels) {
        const ZuAnChannelHeader& header = channel->m_HeaderAn;
        table.rows.push_back({CountCell(++number), TextCell(channel->Name), TextCell(channel->Unit),
                              NumberCell(double(header.Primary)), NumberCell(double(header.Secondary)),
                              NumberCell(double(header.Rate)), CountCell(header.points),
                              FlagCell(header.compressed != 0), BytesCell(channel->m_DataLength)});
    }
    return table;
}

// The changes are those of the whole recording, empty if they cannot be counted.
Table DiscreteTable(const ZuFileFormat& first, const std::vector<qint64>& changes)
{
    Table table{"discrete",
                Tr("info", "Discrete channels"),
                {"number", "name", "changes", "inverted", "bytes"},
                {Tr("info", "No."), Tr("info", "Name"), Tr("info", "Changes"), Tr("info", "Inverted"),
                 Tr("info", "Size")},
                {}};
    for (size_t i = 0; i < first.DiChannels.size(); ++i) {
        const DiChannelData& channel = *first.DiChannels[i];
        table.rows.push_back({CountCell(static_cast<qint64>(i) + 1), TextCell(channel.Name),
                              changes.empty() ? UnknownCell() : CountCell(changes[i]),
                              FlagCell(channel.Inverted), BytesCell(channel.m_DataLength)});
    }
    return table;
}

// The recorder's code page, as the title shows it.
QString CodePage(const ZuFileFormat& file)
{
    return zu::CodecOfTitle(file.Header.title) == zu::CodecCP1251 ? QStringLiteral("Windows-1251")
                                                                  : QStringLiteral("CP866");
}

void AddStart(Description& description, ZuFileFormat& first, ZuCmtrDevParam& device)
{
    description.Add("startComment", Tr("info", "Start comment"), first.Comment);
    first.RenameAllChannelsName(&device);
    try {
        first.ParseComment(&device);
    } catch (const std::out_of_range&) {
        description.notes << Tr("info", "the start comment has two values instead of three: the library "
                                        "gives up such a recording with an exception");
        return;
    }
    description.Add("startCondition", Tr("info", "Condition"), first.StartCondition);
    if (!first.StartSetting.isEmpty())
        description.Add("startSetting", Tr("info", "Setting"), first.StartSetting);
}

void AddMoments(Description& description, const ZuFileFormat& first)
{
    description.Add("start", Tr("info", "First sample"),
                    MomentCell(first.StartTime, first.StartMicroseconds));
    description.Add("trigger", Tr("info", "Trigger"), MomentCell(first.TrigTime, first.TrigMicroseconds));
}

// The header's duration limits what the converter writes of each file.
void NoteLoss(Description& description, qint64 written, qint64 total)
{
    if (written < total)
        description.notes
            << Tr("info",
                  "by the durations in the headers of its files, its record will hold %1 of the %2 samples")
                   .arg(written)
                   .arg(total);
}

void DescribeChain(Description& description, const QString& path)
{
    PlainDevice device;
    SegmentChain chain(device);
    if (!chain.Load(path)) {
        description.Fail(reason::OfLibrary(device.LastError, reason::RecordingUnreadable),
                         explain::NotLoaded(path, device.LastError));
        return;
    }
    ZuFileFormat& first = chain.First();
    description.Add("identity", Tr("info", "Recorder"), first.Identity);
    description.Add("title", Tr("info", "Title"), first.Title.trimmed());
    description.Add("codePage", Tr("info", "Code page"), CodePage(first));
    AddMoments(description, first);
    AddStart(description, first, device);
    const std::vector<ZuFileFormat*>& files = *chain.Files();
    const size_t loaded = files.size();
    RecordingData data;
    if (chain.Check()) {
        const std::vector<Rate> rates = {{device.SampleRate, device.TotalSamples}};
        AddSampling(description, {rates, SecondsOfRates(rates)});
        data = WalkThrough(files, device.SampleRate, device.TotalSamples);
        NoteLoss(description, data.samples, device.TotalSamples);
    } else {
        description.Fail(reason::RecordingInconsistent, explain::LibraryText(device.LastError));
    }
    AddChannelCount(description, first.AnChannels.size(), first.DiChannels.size());
    AddChainEnd(description, path, static_cast<int>(files.size()), files.size() < loaded, device);
    description.tables = {SegmentTable(chain.Paths(), files), AnalogTable(first),
                          DiscreteTable(first, data.changes)};
}

// What can be said about a first file that does not load: its size, and its header's times if they are there.
void AddRemains(Description& description, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    description.Add("bytes", Tr("info", "Size"), BytesCell(file.size()));
    ZuFileHeader header;
    if (file.read(reinterpret_cast<char*>(&header), sizeof header) != qint64{sizeof header}) {
        description.notes << Tr("info",
                                "a recording starts with a header of %1 bytes; was the copy interrupted?")
                                 .arg(sizeof header);
        return;
    }
    description.Add("channels", Tr("info", "Channels"), QJsonValue(header.channelCount),
                    Tr("info", "%1 in the header").arg(header.channelCount));
}

// Whether something of the recording is not in the description that --salvage may convert.
bool IsDamaged(const Description& description)
{
    const auto isBadEnd = [](const Fact& fact) {
        return fact.key == QLatin1String("chainEnd") &&
               fact.value == QLatin1String(reason::NextFileUnreadable);
    };
    if (std::strcmp(description.reason, reason::OutOfMemory) == 0)
        return false;
    return !description.error.isEmpty() ||
           std::any_of(description.facts.begin(), description.facts.end(), isBadEnd);
}

} // namespace

void DescribeRecording(Description& description)
{
    const QString& path = description.file;
    const QString unreadable = explain::Unreadable(path); // opening a pipe would wait for its writer
    if (!unreadable.isEmpty()) {
        description.Fail(explain::WordOf(path, reason::RecordingUnreadable), unreadable);
        return;
    }
    try {
        DescribeChain(description, path);
    } catch (const std::out_of_range&) {
        description.Fail(reason::RecordingInconsistent,
                         Tr("info", "its files have analog channels and no discrete one, so that they cannot "
                                    "be compared; the library gives up such a recording with an exception"));
    }
    if (!description.error.isEmpty() && description.facts.empty() && explain::BeginsAsRecording(path))
        AddRemains(description, path);
    if (IsDamaged(description))
        AddSalvageable(description);
}

} // namespace info
