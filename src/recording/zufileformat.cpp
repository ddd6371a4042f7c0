// A recorder file: reading and checking its header and sections.
#include "recording/zufileformat.h"

#include "recording/fieldtext.h"
#include "recording/recorderfile.h"
#include "recording/samplememory.h"

#include <QFile>
#include <QFileInfo>
#include <QTextCodec>

#include <cstring>
#include <memory>
#include <type_traits>

namespace {

constexpr char ReadFailure[] = "Ошибка при чтении файла";
constexpr char FormatFailure[] = "Ошибка формата файла";
constexpr char ValueFailure[] = "Ошибка значения параметра";

constexpr quint32 DurationLimit = 0x10000000; // microseconds
constexpr quint16 ChannelLimit = 4096;
constexpr int MicrosecondsPerSecond = 1000000;

// Zone offset in seconds, or -1 if the value is not understood.
qint32 ZoneSeconds(qint16 timeZone)
{
    // Deliberate: the sign is dropped, so that west reads as east.
    const int value = std::abs(int(timeZone));
    if (value % 1800 == 0) // 0, or seconds
        return value;
    if (value % 30 == 0) // minutes
        return value * 60;
    if (value <= 29) // hours
        return value * 3600;
    return -1;
}

bool IsMicroseconds(qint32 value)
{
    return value >= -MicrosecondsPerSecond && value < MicrosecondsPerSecond;
}

void TakeFromSeconds(qint32& microseconds, quint32& seconds)
{
    if (microseconds >= 0)
        return;
    microseconds += MicrosecondsPerSecond;
    seconds -= 1;
}

} // namespace

ZuFileFormat::ZuFileFormat()
    : Header{}, m_SecHeader{}, StartMicroseconds(0), TrigMicroseconds(0), TimeZoneSeconds(0),
      SegmentDuration(0), ChannelCount(0), SampleRate(2400.0), SegmentTimeBase(0), SamplesPerPeriod(0),
      ShiftTwoThirds(0), ShiftOneThird(0)
{}

ZuFileFormat::~ZuFileFormat()
{
    Clear();
}

void ZuFileFormat::Clear()
{
    const auto release = [](auto& channels) {
        for (auto* channel : channels) {
            channel->Clear();
            delete channel;
        }
        channels.clear();
    };
    release(AnChannels);
    release(DiChannels);
    samples.reset();
}

bool ZuFileFormat::Fail(const char* text, const QString& detail)
{
    ErrorText = QString::fromUtf8(text);
    ErrorDetail = detail;
    return false;
}

bool ZuFileFormat::Load(const QString& fileName)
{
    return LoadParts(fileName, false);
}

bool ZuFileFormat::LoadHeader(const QString& fileName)
{
    return LoadParts(fileName, true);
}

bool ZuFileFormat::LoadParts(const QString& fileName, bool headerAlone)
{
    zu::RecorderFile file(fileName);
    if (!file.exists()) {
        ErrorText = QStringLiteral("Файл не найден");
        return false;
    }
    // Opening a pipe would wait for its writer.
    const bool regular = QFileInfo(fileName).isFile();
    if (!regular || !file.OpenForReading()) {
        ErrorText = QStringLiteral("Ошибка открытия файла");
        return false;
    }
    ErrorDetail = QLatin1String("");
    if (!ReadFile(file, headerAlone)) {
        if (!ErrorDetail.isEmpty())
            ErrorText += QStringLiteral(" [%2]").arg(ErrorDetail);
        return false;
    }
    StartCircuit = QString();
    StartCondition = QString();
    StartSetting = QString();
    return true;
}

bool ZuFileFormat::ReadFile(QFile& file, bool headerAlone)
{
    if (file.read(reinterpret_cast<char*>(&Header), sizeof Header) != qint64(sizeof Header))
        return Fail(ReadFailure, QStringLiteral("ZuFileHeader"));
    if (std::memcmp(Header.version, "40", sizeof Header.version) != 0)
        return Fail(FormatFailure, QStringLiteral("Ver"));
    QTextCodec* codec = zu::CodecOfTitle(Header.title);
    if (codec == nullptr)
        return Fail(FormatFailure, QStringLiteral("не определить TextCodec"));
    Title = zu::TextOf(Header.title, sizeof Header.title, codec);
    Comment = zu::FieldText(Header.comment, &Header + 1, codec);
    Identity = zu::FieldText(Header.identity, &Header + 1, codec);
    return ReadTimes() && CheckCounts() && (headerAlone || ReadSections(file, codec));
}

bool ZuFileFormat::ReadTimes()
{
    TimeZoneSeconds = ZoneSeconds(Header.timeZone);
    if (TimeZoneSeconds < 0)
        return Fail(FormatFailure, QStringLiteral("не определить TimeZone"));
    StartMicroseconds = Header.startMicroseconds;
    TrigMicroseconds = Header.trigMicroseconds;
    if (!IsMicroseconds(StartMicroseconds))
        return Fail(ValueFailure, QStringLiteral("время начала данных"));
    if (!IsMicroseconds(TrigMicroseconds))
        return Fail(ValueFailure, QStringLiteral("время начала аварии"));

    quint32 startTime = Header.startTime;
    quint32 trigTime = Header.trigTime;
    TakeFromSeconds(StartMicroseconds, startTime);
    TakeFromSeconds(TrigMicroseconds, trigTime);
    Header.startTime = startTime;
    Header.trigTime = trigTime;
    StartTime = QDateTime::fromSecsSinceEpoch(startTime, Qt::OffsetFromUTC, TimeZoneSeconds);
    TrigTime = QDateTime::fromSecsSinceEpoch(trigTime, Qt::OffsetFromUTC, TimeZoneSeconds);
    return true;
}

bool ZuFileFormat::CheckCounts()
{
    SegmentDuration = Header.duration;
    ChannelCount = Header.channelCount;
    if (SegmentDuration >= DurationLimit)
        return Fail(ValueFailure, QStringLiteral("продолжительность процесса в микросекундах"));
    if (ChannelCount >= ChannelLimit)
        return Fail(ValueFailure, QStringLiteral("количество каналов"));
    if (Header.hdrSize != qint64(sizeof Header))
        return Fail(ValueFailure, QStringLiteral("hdrSize"));
    return true;
}

bool ZuFileFormat::ReadSections(QFile& file, QTextCodec* codec)
{
    samples = std::make_shared<zu::SampleMemory>(file.size());
    for (unsigned int section = 0; section < ChannelCount; ++section) {
        const qint64 start = file.pos();
        if (!ReadSection(file, codec))
            return false;
        // A seek beyond the end shows up as a short read of the next section header.
        file.seek(start + qint64(m_SecHeader.descrLength) + m_SecHeader.dataLength);
    }
    return true;
}

bool ZuFileFormat::ReadSection(QFile& file, QTextCodec* codec)
{
    if (file.read(reinterpret_cast<char*>(&m_SecHeader), sizeof m_SecHeader) != qint64(sizeof m_SecHeader))
        return Fail(ReadFailure, QStringLiteral("ZuFileSectionHeader"));
    if (m_SecHeader.descrLength < sizeof m_SecHeader)
        return Fail(FormatFailure, QStringLiteral("плохой m_SecHeader.descrLength"));
    if (m_SecHeader.type == ZuSectionAnalog)
        return LoadChannel(file, codec, AnChannels, "Ошибка загрузки параметров аналогового канала");
    if (m_SecHeader.type == ZuSectionDiscrete)
        return LoadChannel(file, codec, DiChannels, "Ошибка загрузки параметров дискретного канала");
    if (m_SecHeader.type > ZuSectionLastKnown)
        return Fail(ValueFailure, QStringLiteral("тип секции (канала)"));
    return true;
}

template <class Channel>
bool ZuFileFormat::LoadChannel(QFile& file, QTextCodec* codec, std::vector<Channel*>& channels,
                               const char* failure)
{
    const auto release = [](Channel* channel) {
        channel->Clear();
        delete channel;
    };
    std::unique_ptr<Channel, decltype(release)> channel(new Channel, release);
    if constexpr (std::is_same_v<Channel, AnChannelData>)
        channel->ShareMemory(samples);
    if (!channel->Load(file, &m_SecHeader, codec))
        return Fail(failure, channel->ErrorText);
    channels.push_back(channel.get());
    channel.release(); // the file owns it from here
    return true;
}
