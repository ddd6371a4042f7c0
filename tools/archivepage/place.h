// The directory of a page: what is written there, and what is removed.
#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>

namespace archivepage {

class Place
{
public:
    /// Makes the directory and those in it that are not there. Throws Error if index.html is not one of a
    /// page of this kind, or if a directory is a link to another place. No other program is at work there as
    /// long as this object lives, or Error is thrown.
    explicit Place(const QString& directory_);
    ~Place();
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

    /// Writes a piece, unless it is there; returns its name, which is of this kind and this content.
    QString Put(const QByteArray& kind, const QByteArray& content);

    /// Replaces the page at once, then removes the pieces that neither it nor the page before names.
    void PutIndex(const QByteArray& page);

    /// The names of the entries' pages that are there.
    const QSet<QString>& Pages() const { return pages; }

    /// Removes the entries' pages that are not among these names.
    void KeepPages(const QSet<QString>& names);

    /// The path of an entry's page.
    QString PagePath(const QString& name) const;

private:
    void Lock();
    void MakeDirectory(const QString& path);
    void RemoveUnfinished(const QStringList& files);
    QByteArray IndexThere() const;
    void RemoveOldPieces(const QByteArray& page, const QByteArray& before);

    const QString directory;
    int lock = -1; // descriptor
    QSet<QString> pages;
};

} // namespace archivepage
