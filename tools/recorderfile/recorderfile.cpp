#include "recorderfile/recorderfile.h"

#include "recorderfile/compress.h"
#include "recording/zufilelayout.h"

#include <QFile>
#include <QTextCodec>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace recorderfile {

namespace {

template <typename Struct>
void Append(QByteArray& out, const Struct& part)
{
    out.append(reinterpret_cast<const char*>(&part), static_cast<int>(sizeof part));
}

// Copies as much of the bytes as the field holds; the rest of the field is the filler.
template <size_t size>
void FillField(char (&field)[size], const QByteArray& bytes, char filler = '\0')
{
    std::memset(field, filler, size);
    std::memcpy(field, bytes.constData(), std::min(size, static_cast<size_t>(bytes.size())));
}

uint32_t Size(const QByteArray& bytes)
{
    return static_cast<uint32_t>(bytes.size());
}

uint32_t DurationOf(const Recording& recording)
{
    for (const Recording::Section& section : recording.sections)
        if (const auto* channel = std::get_if<AnalogChannel>(&section)) {
            const double seconds = static_cast<double>(channel->samples.size()) / double{channel->rate};
            return static_cast<uint32_t>(std::llround(seconds * 1e6));
        }
    return 1000000;
}

void AppendHeader(QByteArray& out, const Recording& recording)
{
    ZuFileHeader header = {};
    FillField(header.version, recording.version);
    FillField(header.title, EncodeText(recording.title, recording.codePage), ' ');
    FillField(header.comment, EncodeText(recording.comment, recording.codePage));
    FillField(header.identity, EncodeText(recording.identity, recording.codePage));
    header.startTime = recording.startTime;
    header.startMicroseconds = recording.startMicroseconds;
    header.trigTime = recording.trigTime;
    header.trigMicroseconds = recording.trigMicroseconds;
    header.duration = recording.duration.value_or(DurationOf(recording));
    header.channelCount = recording.channelCount.value_or(static_cast<uint16_t>(recording.sections.size()));
    header.timeZone = recording.timeZone;
    header.hdrSize = recording.hdrSize;
    Append(out, header);
}

void AppendSectionHeader(QByteArray& out, uint16_t type, const QByteArray& name, uint32_t descrLength,
                         uint32_t dataLength)
{
    ZuFileSectionHeader header = {};
    header.type = type;
    FillField(header.name, name);
    header.descrLength = descrLength;
    header.dataLength = dataLength;
    Append(out, header);
}

QByteArray PlainSamples(const std::vector<int16_t>& samples)
{
    return QByteArray(reinterpret_cast<const char*>(samples.data()),
                      static_cast<int>(samples.size() * sizeof(int16_t)));
}

QByteArray DataArea(const AnalogChannel& channel)
{
    if (channel.rawData)
        return *channel.rawData;
    return channel.compressed ? CompressSamples(channel.samples, channel.blockSamples)
                              : PlainSamples(channel.samples);
}

void AppendSection(QByteArray& out, const AnalogChannel& channel, CodePage codePage)
{
    const QByteArray data = DataArea(channel);
    const uint32_t descrLength =
        sizeof(ZuFileSectionHeader) + sizeof(ZuAnChannelHeader) + channel.extraDescription;
    AppendSectionHeader(out, ZuSectionAnalog, EncodeText(channel.name, codePage),
                        channel.descrLength.value_or(descrLength), channel.dataLength.value_or(Size(data)));
    ZuAnChannelHeader header = {};
    header.points = channel.points.value_or(static_cast<uint32_t>(channel.samples.size()));
    header.Rate = channel.rate;
    header.ZeroCode = channel.zeroCode;
    header.Primary = channel.primary;
    header.Secondary = channel.secondary;
    header.Scale = channel.scale;
    header.SkewSeconds = channel.skewSeconds;
    FillField(header.unit, EncodeText(channel.unit, codePage));
    header.compressed = channel.compressed;
    header.Offset = channel.offset;
    header.CodeRange = channel.codeRange;
    FillField(header.remark, EncodeText(channel.remark, codePage));
    Append(out, header);
    out.append(QByteArray(static_cast<int>(channel.extraDescription), '\xEE'));
    out.append(data);
}

void AppendSection(QByteArray& out, const DiscreteChannel& channel, CodePage codePage)
{
    QByteArray records;
    for (const Change& change : channel.changes)
        Append(records, ZuDiChangeRecord{change.value, change.time});
    records.append(channel.spareBytes);

    const uint32_t descrLength = sizeof(ZuFileSectionHeader) + sizeof(ZuDiChannelHeader);
    AppendSectionHeader(out, ZuSectionDiscrete, EncodeText(channel.name, codePage),
                        channel.descrLength.value_or(descrLength),
                        channel.dataLength.value_or(Size(records)));
    const uint32_t count = channel.count.value_or(static_cast<uint32_t>(channel.changes.size()));
    Append(out, ZuDiChannelHeader{count, channel.inverted});
    out.append(records);
}

void AppendSection(QByteArray& out, const OtherSection& section, CodePage codePage)
{
    AppendSectionHeader(out, section.type, EncodeText(section.name, codePage),
                        section.descrLength.value_or(uint32_t{sizeof(ZuFileSectionHeader)}),
                        section.dataLength.value_or(Size(section.data)));
    out.append(section.data);
}

} // namespace

Recording& Recording::Add(Section section)
{
    sections.push_back(std::move(section));
    return *this;
}

QByteArray EncodeText(const QString& text, CodePage codePage)
{
    return QTextCodec::codecForName(codePage == CodePage::Cp866 ? "CP866" : "CP1251")->fromUnicode(text);
}

QByteArray Encode(const Recording& recording)
{
    QByteArray out;
    AppendHeader(out, recording);
    for (const Recording::Section& section : recording.sections)
        std::visit([&](const auto& content) { AppendSection(out, content, recording.codePage); }, section);
    return out;
}

bool WriteFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

} // namespace recorderfile
