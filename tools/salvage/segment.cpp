#include "salvage/segment.h"

#include "base/numeric.h"
#include "explain/system.h"
#include "recording/anchanneldata.h"
#include "recording/dichanneldata.h"
#include "recording/fieldtext.h"
#include "recording/zufileformat.h"
#include "text/reasons.h"
#include "text/texts.h"

#include <QFile>

#include <algorithm>
#include <cstring>
#include <new>
#include <type_traits>

namespace salvage {

namespace {

class Reader
{
public:
    explicit Reader(const QString& path) : file(path) { segment.path = path; }

    Segment Read()
    {
        if (!file.open(QIODevice::ReadOnly))
            Fail();
        if (!ReadHeader())
            return segment;
        file.seek(sizeof(ZuFileHeader));
        ReadSections();
        ForgetUnproven();
        LeaveOutOdd();
        return segment;
    }

private:
    [[noreturn]] void Fail() const
    {
        throw Unreadable(Tr("salvage", "'%1' could not be read: %2")
                             .arg(segment.path, explain::SystemText(file.errorString())));
    }

    // An end of the file is none of these.
    void CheckReading() const
    {
        if (file.error() == QFileDevice::ReadError || file.error() == QFileDevice::ResourceError)
            Fail();
    }

    template <class Header>
    bool Take(Header& header)
    {
        const bool isThere =
            file.read(reinterpret_cast<char*>(&header), sizeof header) == qint64{sizeof header};
        CheckReading();
        return isThere;
    }

    bool ReadHeader()
    {
        ZuFileHeader raw{};
        if (!Take(raw))
            return false;
        ZuFileFormat head;
        segment.hasHeader = head.LoadHeader(segment.path);
        if (!segment.hasHeader) {
            // All its bytes were there just now.
            if (head.ErrorText.contains(QStringLiteral("чтени")) || head.ErrorDetail.isEmpty())
                Fail();
            return false;
        }
        codec = zu::CodecOfTitle(raw.title);
        segment.identity = head.Identity;
        segment.zone = head.TimeZoneSeconds;
        segment.duration = head.SegmentDuration;
        segment.count = head.ChannelCount;
        return true;
    }

    void ReadSections()
    {
        while (segment.sections.size() < segment.count) {
            const qint64 begin = file.pos();
            ZuFileSectionHeader header{};
            const bool isGood =
                Take(header) && header.descrLength >= sizeof header && header.type <= ZuSectionLastKnown;
            if (!isGood) {
                DoubtBefore(begin);
                return;
            }
            segment.sections.push_back(ReadSection(header, begin));
            file.seek(segment.sections.back().end);
        }
    }

    Section ReadSection(ZuFileSectionHeader& header, qint64 begin)
    {
        Section section;
        section.begin = begin;
        section.end = begin + qint64{header.descrLength} + qint64{header.dataLength};
        section.name = zu::FieldText(header.name, &header + 1, codec);
        if (header.type == ZuSectionAnalog) {
            AnChannelData channel;
            section.kind = Kind::Analog;
            section.isApart = header.descrLength >= sizeof header + sizeof(ZuAnChannelHeader);
            section.isWhole = Loads(channel, header);
            section.points = channel.m_HeaderAn.points;
            section.rate = channel.m_HeaderAn.Rate;
        } else if (header.type == ZuSectionDiscrete) {
            DiChannelData channel;
            section.kind = Kind::Discrete;
            section.isApart = header.descrLength >= sizeof header + sizeof(ZuDiChannelHeader);
            section.isWhole = Loads(channel, header);
        } else {
            section.isWhole = section.end <= file.size();
        }
        section.number = counts[static_cast<size_t>(section.kind)]++;
        return section;
    }

    template <class Channel>
    bool Loads(Channel& channel, ZuFileSectionHeader& header)
    {
        const bool loads = channel.Load(file, &header, codec);
        if constexpr (std::is_same_v<Channel, DiChannelData>)
            lastTimesRise = !loads || TimesRise(channel);
        channel.Clear();
        CheckReading();
        const char* word = reason::OfLibrary(channel.ErrorText, reason::RecordingUnreadable);
        if (!loads && std::strcmp(word, reason::OutOfMemory) == 0)
            throw std::bad_alloc();
        return loads;
    }

    // Where the header of the next section should be, there is none. If there are zeros, as after a failure
    // of power or an interrupted copy, they may have begun in the section before it.
    void DoubtBefore(qint64 position)
    {
        if (segment.sections.empty() || !IsZero(position, sizeof(ZuFileSectionHeader)))
            return;
        Section& last = segment.sections.back();
        const size_t size = last.kind == Kind::Analog ? sizeof(int16_t) : sizeof(ZuDiChangeRecord);
        if (IsZero(last.end - static_cast<qint64>(size), size) ||
            (last.kind == Kind::Discrete && !lastTimesRise))
            last.isWhole = false;
    }

    // Of the last two records; the state changes with time.
    static bool TimesRise(DiChannelData& channel)
    {
        if (channel.ChangeCount < 2)
            return true;
        ZuDiChangeRecord records[2];
        std::memcpy(records, channel.m_pData + (channel.ChangeCount - 2) * sizeof records[0], sizeof records);
        const uint32_t before = records[0].time;
        const uint32_t last = records[1].time;
        return before < last;
    }

    // Whether there are bytes, and nothing but zeros.
    bool IsZero(qint64 position, size_t size)
    {
        file.seek(position);
        const QByteArray bytes = file.read(static_cast<qint64>(size));
        CheckReading();
        return !bytes.isEmpty() && bytes.count('\0') == bytes.size();
    }

    // The length of a bad section may be what is wrong with it. Then the next header is somewhere else, and
    // what was read there may be anything.
    void ForgetUnproven()
    {
        std::vector<Section>& sections = segment.sections;
        const auto bad = std::find_if(sections.begin(), sections.end(), [](const Section& section) {
            return section.IsChannel() && !section.isWhole;
        });
        const bool isProven = !sections.empty() && segment.KnowsAll() && sections.back().end == file.size();
        if (bad != sections.end() && !isProven)
            sections.erase(bad + 1, sections.end());
    }

    // The library wants one rate and one number of samples in a file.
    void LeaveOutOdd()
    {
        const auto agree = [](const Section& a, const Section& b) {
            return a.points == b.points && zu::IsFloatEqual(a.rate, b.rate);
        };
        std::vector<Section*> channels;
        for (Section& section : segment.sections) {
            if (section.kind == Kind::Analog && section.isWhole)
                channels.push_back(&section);
        }
        const Section* usual = nullptr;
        ptrdiff_t most = 0;
        for (const Section* one : channels) {
            if (usual != nullptr && agree(*one, *usual))
                continue;
            const auto count = std::count_if(channels.begin(), channels.end(),
                                             [&](const Section* other) { return agree(*one, *other); });
            if (count > most) {
                usual = one;
                most = count;
            }
        }
        for (Section* one : channels) // none agrees, not even with itself, if its rate is not a number
            one->isWhole = usual != nullptr && agree(*one, *usual);
    }

    QFile file;
    QTextCodec* codec = nullptr;
    Segment segment;
    size_t counts[3] = {};     // of sections so far, by kind
    bool lastTimesRise = true; // of the last discrete channel
};

} // namespace

bool Segment::IsWhole() const
{
    return KnowsAll() && std::all_of(sections.begin(), sections.end(), [](const Section& section) {
               return section.isWhole || !section.IsChannel();
           });
}

Segment ReadSegment(const QString& path)
{
    return Reader(path).Read();
}

} // namespace salvage
