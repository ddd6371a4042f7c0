#include "comtrade/container.h"

#include "comtrade/binaryrecord.h"
#include "comtrade/forgiving.h"
#include "comtrade/text.h"
#include "explain/system.h"

#include <QFile>

#include <algorithm>
#include <limits>

namespace comtrade {

namespace {

constexpr qint64 LargestText = qint64{256} << 20; // bytes of all texts; no real ones come near it
constexpr int LongestPiece = 4096;                // of a line that is delivered in one piece

// A file line by line, whatever ends them. A long line comes in pieces.
class LineScanner
{
public:
    explicit LineScanner(QFile& file_) : file(file_) {}

    // False at the end.
    bool Next(QByteArray& piece)
    {
        isStart = !isInside;
        number += isStart ? 1 : 0;
        Fill();
        if (at == buffer.size())
            return false;
        int end = at;
        const int limit = static_cast<int>(std::min<qint64>(at + LongestPiece, buffer.size()));
        while (end < limit && buffer[end] != '\n' && buffer[end] != '\r')
            ++end;
        isInside = end == limit && limit < buffer.size();
        while (end < limit && buffer[end] == '\r')
            ++end;
        if (end < limit && buffer[end] == '\n')
            ++end;
        piece = buffer.mid(at, end - at);
        at = end;
        return true;
    }

    bool IsAtLineStart() const { return isStart; } // of the piece
    qint64 Number() const { return number; }       // of its line

    qint64 Position() const { return file.pos() - (buffer.size() - at); } // after the piece

    void Seek(qint64 position)
    {
        file.seek(position);
        buffer.clear();
        at = 0;
        isInside = false;
    }

private:
    void Fill()
    {
        constexpr int step = 1 << 16;
        if (buffer.size() - at > LongestPiece)
            return;
        buffer.remove(0, at);
        at = 0;
        buffer += file.read(step);
    }

    QFile& file;
    QByteArray buffer;
    int at = 0;
    qint64 number = 0;
    bool isInside = false;
    bool isStart = true;
};

QByteArray WithoutEnd(QByteArray line)
{
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    return line;
}

class ContainerReader
{
public:
    ContainerReader(const QString& path_, Findings* forgiven_) : path(path_), forgiven(forgiven_), file(path_)
    {
        if (!file.open(QIODevice::ReadOnly))
            throw Error(
                Tr("comtrade", "%1: %2")
                    .arg(path,
                         Tr("comtrade", "cannot be read: %1").arg(explain::SystemText(file.errorString()))));
    }

    Container Read()
    {
        LineScanner lines(file);
        QByteArray line;
        while (lines.Next(line)) {
            const std::optional<Mark> mark = lines.IsAtLineStart() ? MarkOf(line) : std::nullopt;
            if (!mark)
                AddText(line, lines.Number());
            else if (!TakeMark(*mark, line, lines))
                break;
        }
        RemarkLacking();
        return container;
    }

private:
    void AddText(const QByteArray& line, qint64 number)
    {
        textBytes += line.size();
        if (textBytes > LargestText && !isInData)
            throw Error(Tr("comtrade", "%1: %2")
                            .arg(path, Tr("comtrade", "has texts that are too large for a record")));
        if (section != nullptr)
            section->text.append(line);
        if (container.marks.empty() && !line.trimmed().isEmpty() && !hasTextBefore) {
            hasTextBefore = true;
            Forgive(forgiven, path, number, 0,
                    {Severity::Error, reason::SectionMark,
                     Tr("comtrade", "the file does not start with a section mark"),
                     Tr("comtrade", "what precedes the first mark is left out")});
        }
    }

    // False if what follows is not needed.
    bool TakeMark(const Mark& mark, const QByteArray& line, LineScanner& lines)
    {
        const bool isLineKnown = !isAfterBinary;
        container.marks.push_back({mark, WithoutEnd(line), isLineKnown ? lines.Number() : 0});
        CheckForm(container.marks.back());
        isInData = mark.kind == QLatin1String("DAT");
        if (!isInData) {
            section = SectionOf(mark.kind, lines.Number());
            return true;
        }
        section = nullptr;
        if (container.dataOffset >= 0) {
            ForgiveTwice(mark.kind);
            return true;
        }
        container.dataOffset = lines.Position();
        container.dataBytes = mark.dataBytes;
        container.dataLine = lines.Number() + 1;
        if (mark.dataBytes >= 0 && mark.dataBytes <= file.size() - lines.Position()) {
            isAfterBinary = true;
            lines.Seek(lines.Position() + mark.dataBytes);
            return true;
        }
        // Data are usually the last section, and there may be gigabytes of them.
        return container.configuration.firstLine == 0 || HasMarkAtEnd();
    }

    Section* SectionOf(const QString& kind, qint64 number)
    {
        Section* const found = kind == QLatin1String("CFG")   ? &container.configuration
                               : kind == QLatin1String("HDR") ? &container.header
                               : kind == QLatin1String("INF") ? &container.information
                                                              : nullptr;
        if (found != nullptr && found->firstLine != 0) {
            ForgiveTwice(kind);
            return nullptr;
        }
        if (found != nullptr)
            found->firstLine = number + 1;
        return found;
    }

    // Whether there is a mark in the last part of the file, after the position.
    bool HasMarkAtEnd()
    {
        constexpr qint64 part = 1 << 18;
        const qint64 from = std::max(container.dataOffset, file.size() - part);
        QFile end(path);
        if (!end.open(QIODevice::ReadOnly) || !end.seek(from))
            return false;
        LineScanner lines(end);
        QByteArray line;
        while (lines.Next(line))
            if (lines.IsAtLineStart() && MarkOf(line))
                return true;
        return false;
    }

    void CheckForm(MarkLine line)
    {
        if (HasByteOrderMark(line.text)) {
            Forgive(forgiven, path, line.line, 0,
                    {Severity::Warning, reason::ByteOrderMark,
                     Tr("comtrade", "a byte order mark precedes the text"),
                     Tr("comtrade", "it is left out")});
            line.text.remove(0, 3);
        }
        const Slip slip{line.mark.isExact ? Severity::Note : Severity::Error, reason::SectionMark,
                        Tr("comtrade", "the section mark '%1' is not written as '--- file type: %2 ---'")
                            .arg(QString::fromUtf8(line.text).trimmed(), line.mark.kind),
                        Tr("comtrade", "read as one")};
        const bool isDat = line.mark.kind == QLatin1String("DAT");
        const QByteArray head = QByteArrayLiteral("--- file type: ") + line.mark.kind.toLatin1();
        if (!line.mark.isExact)
            Forgive(forgiven, path, line.line, 0, slip);
        else if (!line.text.startsWith(head + (isDat ? " " : " ---")))
            Remark(forgiven, path, line.line, 0, slip);
    }

    void ForgiveTwice(const QString& kind)
    {
        Forgive(forgiven, path, container.marks.back().line, 0,
                {Severity::Error, reason::SectionMark,
                 Tr("comtrade", "there is more than one %1 section").arg(kind),
                 Tr("comtrade", "the first one is taken")});
    }

    void RemarkLacking()
    {
        const std::pair<const char*, const Section*> optional[] = {{"HDR", &container.header},
                                                                   {"INF", &container.information}};
        for (const auto& [kind, one] : optional)
            if (one->firstLine == 0 && container.dataOffset >= 0)
                Remark(forgiven, path, 0, 0,
                       {Severity::Note, reason::SectionLacking,
                        Tr("comtrade", "there is no %1 section").arg(QLatin1String(kind)),
                        Tr("comtrade", "read as an empty one")});
    }

    const QString path;
    Findings* const forgiven;
    QFile file;
    Container container;
    Section* section = nullptr;
    qint64 textBytes = 0;
    bool isInData = false;
    bool isAfterBinary = false; // whose bytes hold line ends by chance
    bool hasTextBefore = false;
};

// Whether a section ends at the position: a mark follows, or nothing but line ends and the DOS end mark.
bool IsEndAt(QFile& file, qint64 position)
{
    constexpr int part = 256;
    if (position < 0 || position > file.size() || !file.seek(position))
        return false;
    const QByteArray next = file.read(part);
    int at = 0;
    while (at < next.size() && (next[at] == '\r' || next[at] == '\n' || next[at] == '\x1A'))
        ++at;
    return (at == next.size() && file.atEnd()) || MarkOf(next.mid(at, next.indexOf('\n', at) - at));
}

// Bytes of the data by the configuration; negative: it does not say.
qint64 BytesByConfiguration(const Configuration& configuration)
{
    if (configuration.dataType == DataType::Ascii || configuration.SampleCount() <= 0)
        return -1;
    const auto size = static_cast<qint64>(BinaryRecordSize(configuration, configuration.dataType));
    constexpr qint64 most = std::numeric_limits<qint64>::max();
    return configuration.SampleCount() > most / size ? -1 : configuration.SampleCount() * size;
}

// Where binary data end at the next mark; negative: with the file.
qint64 BytesToMark(const Container& container, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(container.dataOffset))
        return -1;
    LineScanner lines(file);
    QByteArray line;
    for (qint64 before = container.dataOffset; lines.Next(line); before = lines.Position())
        if (lines.IsAtLineStart() && MarkOf(line))
            return before - container.dataOffset;
    return -1;
}

} // namespace

Container ReadContainer(const QString& path, Findings* forgiven)
{
    return ContainerReader(path, forgiven).Read();
}

qint64 DataLength(const QString& path, const Container& container, const Configuration& configuration,
                  Findings* forgiven)
{
    const qint64 said = container.dataBytes;
    if (configuration.dataType == DataType::Ascii && said < 0)
        return -1;
    const qint64 line = container.dataLine - 1;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return said;
    const qint64 there = file.size() - container.dataOffset;
    if (forgiven == nullptr && said > there)
        throw Error(
            Tr("comtrade", "%1: %2")
                .arg(path,
                     Tr("comtrade", "holds %1 bytes of data where its mark says %2").arg(there).arg(said)));
    const qint64 wanted = BytesByConfiguration(configuration);
    if (said >= 0 && (IsEndAt(file, container.dataOffset + said) || forgiven == nullptr))
        return said;
    const bool fits = wanted >= 0 && IsEndAt(file, container.dataOffset + wanted);
    const qint64 found = fits ? wanted : BytesToMark(container, path);
    const qint64 bytes = found >= 0 ? found : there;
    Forgive(
        forgiven, path, line, 0,
        {Severity::Error, reason::SectionMark,
         said < 0
             ? Tr("comtrade", "the section mark does not say how many bytes of binary data follow")
             : Tr("comtrade", "the section mark says %1 bytes of data, but they do not end there").arg(said),
         Tr("comtrade", "%1 bytes are taken").arg(bytes)});
    return configuration.dataType == DataType::Ascii ? -1 : bytes;
}

} // namespace comtrade
