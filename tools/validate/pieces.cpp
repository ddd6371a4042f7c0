#include "validate/pieces.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace validate {

namespace {

constexpr qint64 LargestText = qint64{256} << 20; // bytes; the reader of records refuses more
constexpr qint64 DataHead = 4096;                 // bytes of the data that are looked at
constexpr qint64 LineStep = 4096;

std::optional<Piece> WholeFile(const QString& path)
{
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly) || file.size() > LargestText)
        return std::nullopt;
    return Piece{path, 0, file.readAll()};
}

// The file with the same name and this ending, in whatever case; empty if there is none.
QString Beside(const QString& path, const QString& ending)
{
    const QFileInfo info(path);
    const QString name = info.completeBaseName() + QLatin1Char('.') + ending;
    const QString exact = info.path() + QLatin1Char('/') + name;
    QString found;
    for (const QString& one : info.dir().entryList(QDir::Files)) {
        if (one.compare(name, Qt::CaseInsensitive) == 0 && (found.isEmpty() || one == name))
            found = path.chopped(info.fileName().size()) + one;
    }
    return found.isEmpty() && QFileInfo::exists(exact) ? exact : found;
}

Pieces OfFiles(const QString& path)
{
    Pieces pieces;
    pieces.configuration = WholeFile(path);
    pieces.header = WholeFile(Beside(path, QStringLiteral("hdr")));
    pieces.information = WholeFile(Beside(path, QStringLiteral("inf")));
    pieces.data.file = Beside(path, QStringLiteral("dat"));
    QFile data(pieces.data.file);
    if (!pieces.data.file.isEmpty() && data.open(QIODevice::ReadOnly))
        pieces.data.bytes = data.read(DataHead);
    return pieces;
}

// Puts the section into its place; null if its text does not count.
Piece* SectionOf(Pieces& pieces, const QString& kind, const Piece& empty)
{
    std::optional<Piece>* const place = kind == QLatin1String("CFG")   ? &pieces.configuration
                                        : kind == QLatin1String("HDR") ? &pieces.header
                                        : kind == QLatin1String("INF") ? &pieces.information
                                                                       : nullptr;
    if (place == nullptr)
        return nullptr;
    if (!*place)
        *place = empty;
    return &**place;
}

QByteArray WithoutEnd(QByteArray line)
{
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    return line;
}

Pieces OfContainer(const QString& path)
{
    Pieces pieces;
    pieces.isContainer = true;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return pieces;
    Piece* section = nullptr;
    qint64 number = 0;
    qint64 bytes = 0;
    bool atLineStart = true;
    while (!file.atEnd() && bytes <= LargestText) {
        const QByteArray line = file.readLine(LineStep);
        bytes += line.size();
        number += atLineStart ? 1 : 0;
        const std::optional<comtrade::Mark> mark = atLineStart ? comtrade::MarkOf(line) : std::nullopt;
        atLineStart = line.endsWith('\n');
        if (!mark) {
            if (section != nullptr)
                section->bytes += line;
            continue;
        }
        pieces.marks.push_back({*mark, WithoutEnd(line), number});
        section = SectionOf(pieces, mark->kind, {path, number, QByteArray()});
        if (mark->kind != QLatin1String("DAT"))
            continue;
        pieces.data = {path, number, file.peek(DataHead)};
        if (mark->dataBytes < 0 || !file.seek(file.pos() + mark->dataBytes))
            break; // ASCII data go to the end
    }
    return pieces;
}

} // namespace

Pieces PiecesOf(const QString& path)
{
    return QFileInfo(path).suffix().compare(QLatin1String("cff"), Qt::CaseInsensitive) == 0
               ? OfContainer(path)
               : OfFiles(path);
}

} // namespace validate
