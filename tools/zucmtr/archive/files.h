// The recordings and records below directories, with the files that make up each.
#pragma once

#include "catalogue/entry.h"

#include <QStringList>

#include <vector>

namespace archive {

struct Found
{
    catalogue::Kind kind = catalogue::Kind::Recording;
    QString path;                         ///< absolute
    std::vector<catalogue::Piece> pieces; ///< by name, without their contents' hashes
};

/// A directory, or a file, that could not be looked at.
struct Unlisted
{
    QString path;
    QString text;
};

struct Listing
{
    std::vector<Found> found; ///< by path
    QStringList
        continuations; ///< paths of all files with the name of a continuation, of a recording or astray
    std::vector<Unlisted> unlisted;
};

/// Whether the path is in one of the directories that could not be looked through.
bool IsUnlisted(const QString& path, const std::vector<Unlisted>& unlisted);

/// Looks through a directory and those below it. Hidden directories and links to directories are left out.
Listing List(const QString& directory);

/// The files of one recording or record as they are now; none if it is not there.
std::vector<catalogue::Piece> PiecesOf(const QString& path, catalogue::Kind kind);

/// The same, where they were these a moment ago: the directory, which may be large, is listed only if names
/// have come that may belong to it.
std::vector<catalogue::Piece> PiecesOf(const QString& path, catalogue::Kind kind,
                                       const std::vector<catalogue::Piece>& known);

/// Reads the files through and fills in the hashes. Throws text::Error.
void HashPieces(const QString& path, std::vector<catalogue::Piece>& pieces);

} // namespace archive
