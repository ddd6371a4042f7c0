#include "salvage/write.h"

#include "explain/system.h"
#include "recording/zufilelayout.h"
#include "text/texts.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>

namespace salvage {

namespace {

class Copy
{
public:
    Copy(const Segment& segment_, const QString& path) : segment(segment_), from(segment.path), to(path)
    {
        if (!from.open(QIODevice::ReadOnly))
            FailToRead();
        if (!to.open(QIODevice::WriteOnly))
            FailToWrite();
    }

    void Make(const Choice& choice)
    {
        std::vector<const Section*> sections;
        for (const Section& section : segment.sections) {
            if (section.IsChannel() ? choice.Has(section) : section.isWhole)
                sections.push_back(&section);
        }
        QByteArray header = Read(sizeof(ZuFileHeader));
        if (header.size() != sizeof(ZuFileHeader))
            FailToRead();
        const auto count = static_cast<uint16_t>(sections.size());
        header.replace(offsetof(ZuFileHeader, channelCount), sizeof count,
                       reinterpret_cast<const char*>(&count), sizeof count);
        Write(header);
        for (const Section* section : sections)
            CopyBytes(section->begin, std::min(section->end, from.size()));
        if (!to.flush())
            FailToWrite();
    }

private:
    [[noreturn]] void FailToRead() const
    {
        throw Unreadable(Tr("salvage", "'%1' could not be read: %2")
                             .arg(segment.path, explain::SystemText(from.errorString())));
    }

    [[noreturn]] void FailToWrite() const
    {
        const int code = errno;
        throw WriteError(Tr("salvage", "what is whole of the recording could not be written to '%1': %2; "
                                       "free space in the directory for temporary files")
                             .arg(to.fileName(), explain::SystemText(to.errorString())),
                         code);
    }

    QByteArray Read(qint64 size)
    {
        QByteArray bytes = from.read(size);
        if (from.error() != QFileDevice::NoError)
            FailToRead();
        return bytes;
    }

    void Write(const QByteArray& bytes)
    {
        if (to.write(bytes) != bytes.size())
            FailToWrite();
    }

    void CopyBytes(qint64 begin, qint64 end)
    {
        constexpr qint64 step = 1 << 20;
        if (!from.seek(begin))
            FailToRead();
        for (qint64 position = begin; position < end;) {
            const QByteArray bytes = Read(std::min(step, end - position));
            if (bytes.isEmpty()) // the file became shorter
                FailToRead();
            Write(bytes);
            position += bytes.size();
        }
    }

    const Segment& segment;
    QFile from;
    QFile to;
};

} // namespace

QString Write(const std::vector<Segment>& segments, const Choice& choice, const QString& directory)
{
    const auto place = [&](const Segment& segment) {
        return directory + QLatin1Char('/') + QFileInfo(segment.path).fileName();
    };
    for (const Segment& segment : segments)
        Copy(segment, place(segment)).Make(choice);
    return place(segments.front());
}

} // namespace salvage
