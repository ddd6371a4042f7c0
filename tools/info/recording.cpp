// A recorder's recording, read with the library's own classes.
#include "explain/file.h"
#include "explain/library.h"
#include "info/description.h"
#include "info/values.h"

#include "recording/anchanneldata.h"
#include "recording/dichanneldata.h"
#include "recording/zufileformat.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "service/segmentchain.h"
#include "service/zucmtrconverter.h"
#include "service/zucmtrdevparam.h"
#include "zucmtr/texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextCodec>

#include <cstring>
#include <exception>
#include <limits>

namespace info {

namespace {

// A device without ini file: all that reading a recording needs.
struct PlainDevice : ZuCmtrDevParam
{
    PlainDevice() { Resorter = new ResorterZuCmtrConv(this); }
    ~PlainDevice() { Clear(); }
    PlainDevice(const PlainDevice&) = delete;
    PlainDevice& operator=(const PlainDevice&) = delete;
};

QString SegmentPath(const QString& first, size_t number)
{
    if (number == 0)
        return first;
    return first.chopped(1) + QLatin1String(ZuCmtrConverter::ZuExtensions[number - 1]);
}

// Continuation files that lie beside the first one and are numbered behind the chain.
QStringList LeftOut(const QString& first, size_t inChain)
{
    QStringList names;
    for (size_t number = inChain; number <= std::size(ZuCmtrConverter::ZuExtensions); ++number) {
        const QString path = SegmentPath(first, number);
        if (QFile::exists(path))
            names << QFileInfo(path).fileName();
    }
    return names;
}

void AddChainEnd(Description& description, const QString& path, size_t segments, const ZuCmtrDevParam& device)
{
    for (const QString& note : device.LogMessages)
        description.notes << explain::LibraryText(note);
    const size_t most = std::size(ZuCmtrConverter::ZuExtensions) + 1;
    QString reason;
    if (!device.LogMessages.empty())
        reason = Tr("info", "%1 cannot continue it").arg(QFileInfo(SegmentPath(path, segments)).fileName());
    else if (segments == most)
        reason = Tr("info", "it has all the files that a recording can have");
    else
        reason = Tr("info", "there is no %1").arg(QFileInfo(SegmentPath(path, segments)).fileName());
    description.Add(QStringLiteral("chainEnd"), Tr("info", "Chain ends because"), reason);
    const QStringList left = LeftOut(path, segments);
    if (!left.isEmpty())
        description.notes << Tr("info", "not part of the recording: %1").arg(left.join(QLatin1String(", ")));
}

Table SegmentTable(const QString& path, const std::vector<ZuFileFormat*>& files)
{
    Table table{QStringLiteral("segments"),
                Tr("info", "Segments"),
                {"file", "start", "seconds", "points", "bytes"},
                {Tr("info", "File"), Tr("info", "First sample"), Tr("info", "Duration"), Tr("info", "Points"),
                 Tr("info", "Size")},
                {}};
    for (size_t i = 0; i < files.size(); ++i) {
        ZuFileFormat& file = *files[i];
        const QFileInfo onDisk(SegmentPath(path, i));
        table.rows.push_back({TextCell(onDisk.fileName()), MomentCell(file.StartTime, file.StartMicroseconds),
                              SecondsCell(file.SegmentDuration), CountCell(file.GetNumPointsAn()),
                              BytesCell(onDisk.size())});
    }
    return table;
}

Table AnalogTable(const ZuFileFormat& first)
{
    Table table{QStringLiteral("analog"),
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

Table DiscreteTable(const ZuFileFormat& first)
{
    Table table{QStringLiteral("discrete"),
                Tr("info", "Discrete channels"),
                {"number", "name", "changes", "inverted", "bytes"},
                {Tr("info", "No."), Tr("info", "Name"), Tr("info", "Changes"), Tr("info", "Inverted"),
                 Tr("info", "Size")},
                {}};
    qint64 number = 0;
    for (const DiChannelData* channel : first.DiChannels)
        table.rows.push_back({CountCell(++number), TextCell(channel->Name), CountCell(channel->ChangeCount),
                              FlagCell(channel->Inverted), BytesCell(channel->m_DataLength)});
    return table;
}

// The recorder's code page, as the title tells it.
QString CodePage(const ZuFileFormat& file)
{
    static const QByteArray inCp1251 = ZuCmtrConverter::codec_CP1251->fromUnicode(QStringLiteral("Данные"));
    const bool windows =
        std::memcmp(file.Header.title, inCp1251.constData(), static_cast<size_t>(inCp1251.size())) == 0;
    return windows ? QStringLiteral("Windows-1251") : QStringLiteral("CP866");
}

void AddStart(Description& description, ZuFileFormat& first, ZuCmtrDevParam& device)
{
    description.Add(QStringLiteral("startComment"), Tr("info", "Start comment"), first.Comment);
    first.RenameAllChannelsName(&device);
    try {
        first.ParseComment(&device);
    } catch (const std::out_of_range&) {
        description.notes << Tr("info",
                                "the start comment has two values where three belong: the library gives up "
                                "such a recording with an exception");
        return;
    }
    description.Add(QStringLiteral("startCondition"), Tr("info", "Condition"), first.StartCondition);
    if (!first.StartCircuit.isEmpty())
        description.Add(QStringLiteral("startCircuit"), Tr("info", "Circuit"), first.StartCircuit);
    if (!first.StartSetting.isEmpty())
        description.Add(QStringLiteral("startSetting"), Tr("info", "Setting"), first.StartSetting);
}

void AddMoments(Description& description, const ZuFileFormat& first)
{
    const Cell start = MomentCell(first.StartTime, first.StartMicroseconds);
    const Cell trigger = MomentCell(first.TrigTime, first.TrigMicroseconds);
    description.Add(QStringLiteral("start"), Tr("info", "First sample"), start.value, start.text);
    description.Add(QStringLiteral("trigger"), Tr("info", "Trigger"), trigger.value, trigger.text);
}

void DescribeChain(Description& description, const QString& path)
{
    PlainDevice device;
    SegmentChain chain(device);
    if (!chain.Load(path)) {
        description.error = explain::NotLoaded(path, device.LastError);
        return;
    }
    ZuFileFormat& first = chain.First();
    description.Add(QStringLiteral("identity"), Tr("info", "Recorder"), first.Identity);
    description.Add(QStringLiteral("title"), Tr("info", "Title"), first.Title.trimmed());
    description.Add(QStringLiteral("codePage"), Tr("info", "Code page"), CodePage(first));
    AddMoments(description, first);
    AddStart(description, first, device);
    chain.CutAtDifference();
    const std::vector<ZuFileFormat*>& files = *chain.Files();
    const bool good = chain.CheckChannels() && chain.SumTotals();
    if (good) {
        const Cell length = SecondsCell(device.TotalTime);
        description.Add(QStringLiteral("seconds"), Tr("info", "Duration"), length.value, length.text);
        description.Add(QStringLiteral("rate"), Tr("info", "Sampling rate"), device.SampleRate,
                        Tr("info", "%1 Hz").arg(device.SampleRate));
        description.Add(QStringLiteral("samples"), Tr("info", "Samples"), device.TotalSamples,
                        QString::number(device.TotalSamples));
    } else {
        description.error = explain::LibraryText(device.LastError);
    }
    description.Add(
        QStringLiteral("channels"), Tr("info", "Channels"), QJsonValue(first.ChannelCount),
        Tr("info", "%1 analog, %2 discrete").arg(first.AnChannels.size()).arg(first.DiChannels.size()));
    AddChainEnd(description, path, files.size(), device);
    description.tables = {SegmentTable(path, files), AnalogTable(first), DiscreteTable(first)};
}

// What can be told of a first file that does not load: its size, and its header's times if they are there.
void AddRemains(Description& description, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const Cell size = BytesCell(file.size());
    description.Add(QStringLiteral("bytes"), Tr("info", "Size"), size.value, size.text);
    ZuFileHeader header;
    if (file.read(reinterpret_cast<char*>(&header), sizeof header) != qint64{sizeof header}) {
        description.notes << Tr("info",
                                "a recording begins with a header of %1 bytes; was the copy interrupted?")
                                 .arg(sizeof header);
        return;
    }
    description.Add(QStringLiteral("channels"), Tr("info", "Channels"), QJsonValue(header.channelCount),
                    Tr("info", "%1 in the header").arg(header.channelCount));
}

} // namespace

Description DescribeRecording(const QString& path)
{
    Description description;
    description.file = path;
    description.kind = QStringLiteral("recording");
    description.error = explain::Unreadable(path); // opening a pipe would wait for its writer
    if (!description.error.isEmpty())
        return description;
    try {
        DescribeChain(description, path);
    } catch (const std::out_of_range&) {
        description.error =
            Tr("info", "its files have analog channels and no discrete one, so that they cannot be "
                       "compared; the library gives up such a recording with an exception");
    }
    if (!description.error.isEmpty() && description.facts.empty() && explain::BeginsAsRecording(path))
        AddRemains(description, path);
    return description;
}

} // namespace info
