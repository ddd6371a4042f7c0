// The texts of a record as they stand in its files, with the lines where they start.
#pragma once

#include "comtrade/mark.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace validate {

/// A file of a record, or a section of a container.
struct Piece
{
    QString file;
    qint64 linesBefore = 0; ///< of the container
    QByteArray bytes;
};

/// A line of a container that separates sections.
struct MarkLine
{
    comtrade::Mark mark;
    QByteArray text; ///< as written, without its end
    qint64 number = 0;
};

struct Pieces
{
    bool isContainer = false;
    std::optional<Piece> configuration;
    std::optional<Piece> header;
    std::optional<Piece> information;
    Piece data; ///< only the first few thousand bytes
    std::vector<MarkLine> marks;
};

/// The pieces of a record whose configuration or container has this path. What cannot be read is left out:
/// the reader of records says why.
Pieces PiecesOf(const QString& path);

} // namespace validate
