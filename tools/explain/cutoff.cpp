#include "explain/cutoff.h"

#include "text/texts.h"

#include "recording/fieldtext.h"
#include "recording/zufilelayout.h"

#include <QFile>
#include <QLocale>

namespace explain {

namespace {

template <class Header>
bool Read(QFile& file, Header& header)
{
    return file.read(reinterpret_cast<char*>(&header), sizeof header) == qint64{sizeof header};
}

QString Bytes(qint64 count)
{
    // The separator between thousands belongs to the language of the text, not to the user's region.
    return QLocale(QLocale::English).toString(count).replace(QLatin1Char(','), Tr("file", ","));
}

class Walk
{
public:
    explicit Walk(const QString& path) : file(path) {}

    // Empty if nothing is cut off.
    QString Text()
    {
        ZuFileHeader header{};
        if (!file.open(QIODevice::ReadOnly))
            return QString();
        if (!Read(file, header))
            return Tr("file", "cut off: %1 of at least %2 bytes, in its header")
                .arg(Bytes(file.size()), Bytes(sizeof header));
        const QTextCodec* codec = zu::CodecOfTitle(header.title);
        for (int section = 0; codec != nullptr && section < header.channelCount; ++section) {
            const bool isLast = section + 1 == header.channelCount;
            QString text = OfSection(section, header.channelCount, isLast, codec);
            if (!text.isEmpty() || !isSound)
                return text;
        }
        return QString();
    }

private:
    QString OfSection(int number, int count, bool isLast, const QTextCodec* codec)
    {
        const qint64 start = file.pos();
        ZuFileSectionHeader header{};
        if (start > file.size() || !Read(file, header))
            return Tr("file", "cut off: %1 of at least %2 bytes, after %3 of its %4 channels")
                .arg(Bytes(file.size()), Bytes(start + qint64{sizeof header}), QString::number(number),
                     QString::number(count));
        const qint64 end = start + qint64{header.descrLength} + qint64{header.dataLength};
        isSound = header.descrLength >= sizeof header && header.type <= ZuSectionLastKnown && IsSound(header);
        if (!isSound || end <= file.size()) {
            file.seek(end);
            return QString();
        }
        const QString name = zu::FieldText(header.name, &header + 1, codec);
        const QString text = isLast ? Tr("file", "cut off: %1 of %2 bytes, in channel '%3'")
                                    : Tr("file", "cut off: %1 of at least %2 bytes, in channel '%3'");
        return text.arg(Bytes(file.size()), Bytes(end), name);
    }

    // Whether the size of plain data matches that of the samples or changes; a damaged size says nothing
    // about where the file should end.
    bool IsSound(const ZuFileSectionHeader& section)
    {
        ZuAnChannelHeader analog{};
        ZuDiChannelHeader discrete{};
        if (section.type == ZuSectionAnalog && Read(file, analog) && analog.compressed == 0)
            return section.dataLength == quint64{analog.points} * 2;
        if (section.type == ZuSectionDiscrete && Read(file, discrete))
            return section.dataLength >=
                   quint64{discrete.count} * sizeof(ZuDiChangeRecord); // spare bytes may follow
        return true;
    }

    QFile file;
    bool isSound = true; // the headers so far do not contradict themselves
};

} // namespace

QString CutOffText(const QString& path)
{
    return Walk(path).Text();
}

} // namespace explain
