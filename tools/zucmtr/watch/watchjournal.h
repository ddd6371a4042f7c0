// What became of the recordings: a database with a row for each of them, written to the disk before the
// program goes on.
#pragma once

#include "sql/sqlite.h"
#include "zucmtr/files/systemfile.h"
#include "zucmtr/watch/watchscan.h"
#include "zucmtr/watch/watchtrouble.h"

#include <QByteArray>
#include <QHash>
#include <QMap>
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
        QString access{}; // for which the verdict holds; empty: for any
        QString noted{};  // when, in UTC
        int unended = 0;  // how often the program ended while working on it
        int failures = 0; // how often it failed, since the last verdict on it
        int kills = 0;    // how often its own process was killed, since then too

        bool operator==(const Entry& other) const;
    };

    /// What is to be done after a record, such as a command to be run.
    struct Task
    {
        enum class State { Waiting, GivenUp, Done };
        QString file;  // first file of the recording
        QString input; // of what is done; the journal does not look at it
        QString noted{};
        int failures = 0;
        State state = State::Waiting;

        bool operator==(const Task& other) const;
    };

    using Entries = QHash<QString, Entry>; // by absolute path
    using Tasks = QMap<qint64, Task>;      // by number, in the order in which they were added

    struct Contents
    {
        Entries entries;
        Tasks tasks;
    };

    /// The journal cannot be written at the moment.
    class Unwritable : public PassingTrouble
    {
    public:
        using PassingTrouble::PassingTrouble;
    };

    /// Another process is using the journal, or has put another one in its place.
    class Taken : public PassingTrouble
    {
    public:
        using PassingTrouble::PassingTrouble;
    };

    /// Reads the journal, or starts a new one. Throws ConfigurationError if it is another kind of file or
    /// damaged, Unwritable and Taken.
    explicit WatchJournal(const QString& path_);
    ~WatchJournal();
    WatchJournal(const WatchJournal&) = delete;
    WatchJournal& operator=(const WatchJournal&) = delete;

    /// What became of the recording in this state. Nothing is known of one with another fingerprint. The
    /// verdict on one that was given up or converted in part is Unknown if its files have been written to or
    /// have got other permissions since.
    Entry Known(const QString& recording, const Fingerprint& fingerprint) const;

    /// Notes the start of an attempt and waits for the disk. Throws Taken, or Unwritable: then it is noted in
    /// memory as withdrawn, so that Flush throws until there is room for it.
    void NoteBegun(const QString& recording, const QByteArray& print);

    /// The same for what became of the recording: Failed, Killed, Withdrawn (it was started, but failed for
    /// no fault of its own) or PutAway. After Unwritable it is noted in memory and written by the next call
    /// that can.
    void Note(const QString& recording, const QByteArray& print, Verdict verdict);

    /// The same for Converted and GivenUp. leftOut: a bad file of it is not in the record; it is converted
    /// again if that file is repaired.
    void NoteConverted(const QString& recording, const Fingerprint& fingerprint, const QString& recordName,
                       bool leftOut);
    void NoteGivenUp(const QString& recording, const Fingerprint& fingerprint);

    /// What is not done yet, and what was given up.
    const Tasks& ToDo() const { return tasks; }

    /// Adds a task to what the next Note writes, so that a record and its task are noted together, or
    /// neither.
    void AddTask(const Task& task);

    /// Notes that the task is done, or what else became of it: that it failed once more, and whether it is
    /// given up. After Unwritable as Note.
    void NoteTask(qint64 number, const Task& task);

    /// Writes what could not be written. A journal that was removed or damaged is written again from what is
    /// known. Throws Unwritable, and Taken.
    void Flush();

    /// Forgets which recordings and tasks were given up, until the journal is read again.
    void ForgetGivenUp();

    /// Forgets recordings that are gone; the next Flush writes that. A directory that has none of its
    /// recordings any more may be a file system that is not there yet; they are kept.
    void ForgetGone();

    /// What is on the disk. Throws sql::Failure.
    Contents Stored() const;

    /// What was written since the last call; entries that were put away and tasks that are done are over. The
    /// first call gives nothing, and has it collected from then on.
    Contents TakeNews();

    /// Whether TakeNews has anything.
    bool HasNews() const { return !news.entries.isEmpty() || !news.tasks.isEmpty(); }

    /// Closes the lock in a forked process, which may do nothing else with the journal; the parent keeps it.
    void LetGo();

private:
    // What the path of the open journal leads to.
    enum class Place { Own, Other, Empty, Unknown };

    systemfile::Descriptor Claimed(const QString& at, int flags = 0) const;
    void Load();
    void TakeOverText();
    std::unique_ptr<sql::Sqlite> Connected() const;
    Place FindPlace() const;
    void Note(const QString& recording, const Entry& entry);
    void Withdraw(const QString& first, const QByteArray& print);
    void Save(const Entries& changed);
    void Saved(const Entries& changed);
    void MakeAnew(const Entries& changed);
    [[noreturn]] void FailToWrite(const QString& reason) const;

    const QString path;
    systemfile::Descriptor file;           // that is locked
    std::unique_ptr<sql::Sqlite> database; // none after the journal was written again
    Entries entries;
    Entries unwritten; // those that are gone count as put away
    Tasks tasks;
    Tasks unwrittenTasks;
    Contents news; // that somebody has not taken yet
    bool isNewsWanted = false;
};
