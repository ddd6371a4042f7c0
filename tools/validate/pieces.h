// The texts of a record as they stand in its files, with the lines where they start.
#pragma once

#include "comtrade/container.h"

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

struct Pieces
{
    bool isContainer = false;
    std::optional<Piece> configuration;
    std::optional<Piece> header;
    std::optional<Piece> information;
    Piece data;                            ///< only the first few thousand bytes
    std::vector<comtrade::MarkLine> marks; ///< of a container
};

/// The pieces of a record that can be opened. What is forgiven on the way is for its reader to report.
/// Throws comtrade::Error.
Pieces PiecesOf(const QString& path);

} // namespace validate
