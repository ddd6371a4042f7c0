// index.html: the page with everything but the entries.
#pragma once

#include "archivepage/archivepage.h"

#include <QByteArray>
#include <QStringList>

namespace archivepage {

/// The names of a piece's scripts.
struct PieceNames
{
    int count = 0;
    bool isTimed = true; ///< its entries have a time
    QString entries;
    QString details;
    QString words;
    QStringList pictures;
};

class Site
{
public:
    /// root: the directory from which the paths of the entries are.
    Site(const Settings& settings_, const QString& root_) : settings(settings_), root(root_) {}

    void Add(const PieceNames& names);
    QByteArray Page() const;

private:
    const Settings settings;
    const QString root;
    QByteArray timed; // JSON of the pieces, separated by commas
    QByteArray untimed;
};

} // namespace archivepage
