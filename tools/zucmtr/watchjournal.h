// What became of the recordings, on the disk: an append-only file of one line a recording, each written to
// the disk before the program goes on. A line that a crash has cut off is passed over; the recording it was
// to tell of is converted once more.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QHash>
#include <QString>

#include <memory>

class WatchJournal
{
public:
    enum class Verdict { Unknown, Begun, Converted, PutAway, GivenUp };

    /// Reads the journal, or begins one. Throws ConfigurationError if it cannot be written, if it is another
    /// kind of file, or if another process has it.
    explicit WatchJournal(const QString& path_);

    /// What became of the recording with this print; of another print of it nothing is known.
    Verdict VerdictOn(const QString& recording, const QByteArray& print) const;

    /// How often the recording with this print was begun since the last verdict on it: more than the running
    /// program knows of if earlier ones ended in the middle.
    int Begun(const QString& recording, const QByteArray& print) const;

    /// The other recording of which a record with this name was made last; empty if there is none.
    QString OtherOf(const QString& recordName, const QString& recording) const;

    /// Note it and wait for the disk. Throw std::runtime_error (UTF-8 text) if that fails.
    void NoteBegun(const QString& recording, const QByteArray& print);
    void NoteConverted(const QString& recording, const QByteArray& print, const QString& recordName);
    void NotePutAway(const QString& recording, const QByteArray& print);
    void NoteGivenUp(const QString& recording, const QByteArray& print);

    /// Forgets which recordings were given up, until the journal is read again.
    void ForgetGivenUp();

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
        int begun = 0;
        QString recordName; // of a converted one
    };

    void Open();
    void Read();
    void Take(const QByteArray& line);
    void Set(const QString& path, const Entry& entry);
    void Note(const QString& recording, const Entry& entry);
    void Append(const QByteArray& bytes);
    QByteArray LinesThatCount(int& count) const;
    void Replace(const QByteArray& bytes);

    const QString path;
    std::unique_ptr<QFile> file;
    QHash<QString, Entry> entries;  // by absolute path
    QHash<QString, QString> pathOf; // of record names: the recording that was converted last
    int lines = 0;                  // in the file
};
