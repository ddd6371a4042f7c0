#include "validate/pieces.h"

#include "comtrade/recordfiles.h"

#include <QFile>

namespace validate {

namespace {

QByteArray HeadOf(const QString& path, qint64 offset)
{
    constexpr qint64 head = 4096; // bytes
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.seek(offset) ? file.read(head) : QByteArray();
}

std::optional<Piece> WholeFile(const QString& path)
{
    if (path.isEmpty())
        return std::nullopt;
    return Piece{path, 0, comtrade::ReadText(path)};
}

Pieces OfFiles(const QString& path)
{
    comtrade::Findings ignored;
    const comtrade::RecordFiles files = comtrade::FilesOf(path, &ignored);
    Pieces pieces;
    pieces.configuration = WholeFile(path);
    pieces.header = WholeFile(files.header);
    pieces.information = WholeFile(files.information);
    pieces.data = {files.data, 0, HeadOf(files.data, 0)};
    return pieces;
}

std::optional<Piece> SectionOf(const QString& path, const comtrade::Section& section)
{
    if (section.firstLine == 0)
        return std::nullopt;
    return Piece{path, section.firstLine - 1, section.text};
}

Pieces OfContainer(const QString& path)
{
    comtrade::Findings ignored;
    const comtrade::Container container = comtrade::ReadContainer(path, &ignored);
    Pieces pieces;
    pieces.isContainer = true;
    pieces.configuration = SectionOf(path, container.configuration);
    pieces.header = SectionOf(path, container.header);
    pieces.information = SectionOf(path, container.information);
    pieces.data = {path, container.dataLine - 1, HeadOf(path, container.dataOffset)};
    pieces.marks = container.marks;
    return pieces;
}

} // namespace

Pieces PiecesOf(const QString& path)
{
    return path.endsWith(QLatin1String(".cff"), Qt::CaseInsensitive) ? OfContainer(path) : OfFiles(path);
}

} // namespace validate
