// What became of the recordings, on the disk: an append-only file of lines, each written to the disk
// before the program goes on. A line that a crash has cut off is passed over; the recording it was
// to tell of is converted once more.
#pragma once

#include "text/error.h"
#include "zucmtr/watch/watchscan.h"

#include <QByteArray>
#include <QFile>
#include <QHash>
#include <QString>

#include <memory>

class WatchJournal
{
public:
    enum class Verdict { Unknown, Begun, Failed, Killed, Withdrawn, Converted, PutAway, GivenUp };

    /// The journal cannot be written, now.
    class Unwritable : public text::Error
    {
    public:
        using text::Error::Error;
    };

    /// Another process has the journal, or has put another one in its place; likewise.
    class Taken : public text::Error
    {
    public:
        using text::Error::Error;
    };

    /// Reads the journal, or begins one. Throws ConfigurationError if it is another kind of file, Unwritable
    /// and Taken.
    explicit WatchJournal(const QString& path_);

    /// What became of the recording in this state. Of another print of it nothing is known; nor, after its
    /// files were written to or got other permissions, of one that was given up or converted in part.
    Verdict VerdictOn(const QString& recording, const Fingerprint& fingerprint) const;

    /// How often something became of the recording in this state.
    struct Counts
    {
        int unended = 0;  // the program came to no end of it
        int failures = 0; // it failed, since the last verdict on it
        int kills = 0;    // its own process was killed, likewise
    };
    Counts CountsOf(const QString& recording, const Fingerprint& fingerprint) const;

    /// Notes it and waits for the disk. Throws Unwritable, and nothing is noted; or Taken.
    void NoteBegun(const QString& recording, const QByteArray& print);

    /// The same for what became of it. If they throw Unwritable, it is noted in memory, and written by the
    /// next call that can.
    void NoteFailed(const QString& recording, const QByteArray& print);
    void NoteKilled(const QString& recording, const QByteArray& print);
    void NoteWithdrawn(const QString& recording, const QByteArray& print); // begun, but not for its own sake
    /// leftOut: a bad file of it is not in the record; it is converted again should that be mended.
    void NoteConverted(const QString& recording, const Fingerprint& fingerprint, const QString& recordName,
                       bool leftOut);
    void NotePutAway(const QString& recording, const QByteArray& print);
    void NoteGivenUp(const QString& recording, const Fingerprint& fingerprint);

    /// Writes what could not be written. A journal that was removed or cut is made anew of what is known.
    /// Throws Unwritable, and Taken.
    void Flush();

    /// Forgets which recordings were given up, until the journal is read again.
    void ForgetGivenUp();

    /// Closes the file in a copy of the process; the lock stays with the other.
    void LetGo();

    /// Whether it has far more lines than recordings.
    bool IsLong() const { return lines > 4 * entries.size() + 1000; }

    /// Writes the journal anew without lines that say nothing any more, if these are the greater part: those
    /// that later ones replace, and those of recordings that are gone. A directory that has none of its
    /// recordings any more may be a file system that is not there yet; its lines stay.
    void Compact();

private:
    struct Entry
    {
        QByteArray print;
        Verdict verdict = Verdict::Unknown;
        QString record{}; // name of that of a converted one
        QString access{}; // with which the verdict holds; empty: with any
        int unended = 0;  // times
        int failures = 0; // times
        int kills = 0;    // times
    };

    void Open();
    void Read();
    void Take(const QByteArray& line);
    void Set(const QString& path, const Entry& entry);
    const Entry* Find(const QString& recording, const QByteArray& print) const;
    void Note(const QString& recording, const Entry& entry);
    void KeepInPlace();
    void MakeAnew();
    void Append(const QByteArray& bytes);
    [[noreturn]] void FailToWrite(int error) const;
    static QByteArray LinesOf(const QString& recording, const Entry& entry);
    QByteArray AllLines() const;
    QByteArray LinesThatCount() const;
    bool Prepare(QFile& fresh, const QByteArray& bytes);
    void Use(std::unique_ptr<QFile> fresh);

    const QString path;
    std::unique_ptr<QFile> file;
    qint64 size = 0;               // bytes that were left in it
    bool isNamed = true;           // its name is on the disk
    QByteArray unwritten;          // lines
    QHash<QString, Entry> entries; // by absolute path
    int lines = 0;                 // in the file
};
