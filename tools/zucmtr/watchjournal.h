// What became of the recordings, on the disk: an append-only file of one line a recording, each written to
// the disk before the program goes on. A line that a crash has cut off is passed over; the recording it was
// to tell of is converted once more.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QHash>
#include <QString>

class WatchJournal
{
public:
    enum class Verdict { Unknown, Converted, GivenUp };

    /// Reads the journal, or begins one. Throws ConfigurationError if it cannot be written, or if another
    /// process has it.
    explicit WatchJournal(const QString& path);

    /// What became of the recording with this print; of another print of it nothing is known.
    Verdict VerdictOn(const QString& recording, const QByteArray& print) const;

    /// Notes it and waits for the disk. Throws std::runtime_error (UTF-8 text) if that fails.
    void Note(const QString& recording, const QByteArray& print, Verdict verdict);

    /// Writes the journal anew without the recordings that are gone, if these are the greater part.
    void DropGone();

private:
    struct Entry
    {
        QByteArray print;
        Verdict verdict;
    };

    void Open();
    void Read();
    void Append(const QByteArray& bytes);
    static QByteArray LineOf(const QString& recording, const Entry& entry);

    QFile file;
    QHash<QString, Entry> entries; // by absolute path
};
