// What became of the recordings, on the disk: a database with a row for each of them, written to the disk
// before the program goes on.
#pragma once

#include "zucmtr/files/database.h"
#include "zucmtr/files/systemfile.h"
#include "zucmtr/watch/watchscan.h"
#include "zucmtr/watch/watchtrouble.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <memory>

class WatchJournal
{
public:
    enum class Verdict { Unknown, Begun, Failed, Killed, Withdrawn, Converted, PutAway, GivenUp };

    /// What is known of a recording.
    struct Entry
    {
        QByteArray print;
        Verdict verdict = Verdict::Unknown;
        QString record{}; // name of that of a converted one
        QString access{}; // with which the verdict holds; empty: with any
        QString noted{};  // when, in UTC
        int unended = 0;  // times
        int failures = 0; // times
        int kills = 0;    // times
    };

    /// The journal cannot be written, now.
    class Unwritable : public PassingTrouble
    {
    public:
        using PassingTrouble::PassingTrouble;
    };

    /// Another process has the journal, or has put another one in its place; likewise.
    class Taken : public PassingTrouble
    {
    public:
        using PassingTrouble::PassingTrouble;
    };

    /// Reads the journal, or begins one. Throws ConfigurationError if it is another kind of file or damaged,
    /// Unwritable and Taken.
    explicit WatchJournal(const QString& path_);
    ~WatchJournal();
    WatchJournal(const WatchJournal&) = delete;
    WatchJournal& operator=(const WatchJournal&) = delete;

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

    /// Notes it and waits for the disk. Throws Unwritable: it is noted in memory as withdrawn, so that Flush
    /// throws until there is room for it; or Taken.
    void NoteBegun(const QString& recording, const QByteArray& print);

    /// The same for what became of it. If they throw Unwritable, it is noted in memory, and written by the
    /// next call that can.
    /// Failed, Killed, Withdrawn (it was started, but failed for no fault of its own) or PutAway.
    void Note(const QString& recording, const QByteArray& print, Verdict verdict);
    /// leftOut: a bad file of it is not in the record; it is converted again should that be mended.
    void NoteConverted(const QString& recording, const Fingerprint& fingerprint, const QString& recordName,
                       bool leftOut);
    void NoteGivenUp(const QString& recording, const Fingerprint& fingerprint);

    /// Writes what could not be written. A journal that was removed or damaged is made anew of what is known.
    /// Throws Unwritable, and Taken.
    void Flush();

    /// Forgets which recordings were given up, until the journal is read again.
    void ForgetGivenUp();

    /// Forgets recordings that are gone; the next Flush writes that. A directory that has none of its
    /// recordings any more may be a file system that is not there yet; they are kept.
    void ForgetGone();

    /// Closes the lock in a copy of the process, which may do nothing else with the journal; the other has it
    /// still.
    void LetGo();

private:
    using Entries = QHash<QString, Entry>; // by absolute path

    // What the path of the open journal leads to.
    enum class Place { Own, Other, Empty, Unknown };

    systemfile::Descriptor Claimed(const QString& at, int flags = 0) const;
    void Load();
    void TakeOverText();
    std::unique_ptr<Database> Connected() const;
    Place FindPlace() const;
    const Entry* Find(const QString& recording, const QByteArray& print) const;
    void Note(const QString& recording, const Entry& entry);
    void Withdraw(const QString& first, const QByteArray& print);
    void Save(const Entries& changed);
    void MakeAnew(const Entries& changed);
    [[noreturn]] void FailToWrite(const QString& reason) const;

    const QString path;
    systemfile::Descriptor file;        // that is locked
    std::unique_ptr<Database> database; // none after the journal was made anew
    Entries entries;
    Entries unwritten; // those that are gone as put away
};
