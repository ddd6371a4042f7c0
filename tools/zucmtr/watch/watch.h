// Converts recordings as they arrive in directories: the loop of 'zucmtr watch'.
#pragma once

#include "zucmtr/run/batchitem.h"
#include "zucmtr/watch/commandqueue.h"
#include "zucmtr/watch/journalcopy.h"
#include "zucmtr/watch/recorderstatus.h"
#include "zucmtr/watch/watchinput.h"
#include "zucmtr/watch/watchjournal.h"
#include "zucmtr/watch/watchtrouble.h"

#include <QJsonObject>
#include <QMap>
#include <QStringList>

#include <chrono>
#include <functional>

class Worker;

struct WatchOrder
{
    QStringList directories;
    QString out;
    QString archive; // empty: none
    bool recursive = false;
    bool mirror = false;                // the directories of the recordings are mirrored below out
    QStringList excluded;               // directories below
    bool once = false;                  // end when nothing is left to do
    std::chrono::milliseconds quiet{0}; // how long a recording has to stay as it is to count as complete
    std::chrono::milliseconds rescan{0};
    std::chrono::milliseconds retryAfter{0}; // after the first failure; doubled after each further one
    int attempts = 1;                        // of a recording, before it is given up
    bool retryGivenUp = false;               // of earlier runs
    bool reportsSummary = false;             // what happened is part of the event of a record
    QString recorder;                        // its name
    CommandOrder command;                    // after each record
    JournalCopy* copy = nullptr;             // in a catalogue, if there is one
};

class Watch
{
public:
    Watch(const WatchOrder& order_, Worker& worker_, WatchJournal& journal_);

    /// Prints each event as a JSON object on a line of its own. Returns after a signal, or with `once` when
    /// nothing is left to do. True if no recording failed and every directory can be read. Throws
    /// WatchJournal::Taken, and at the end, unless a signal has arrived, WatchJournal::Unwritable.
    bool Run();

private:
    using Clock = std::chrono::steady_clock;

    // A run with --once ends after this many recordings in a row for which there was no room.
    static constexpr int TroublesBorne = 2;

    // A recording that is not converted yet.
    struct Waiting
    {
        Recording recording;
        Fingerprint fingerprint;
        Clock::time_point due;
        int failures = 0;
        int kills = 0;           // of its process, by others
        bool isHeldUp = false;   // it met the trouble that is on
        bool isDoubtful = false; // may bring the program down, or found no room: after the others
    };

    void Start();
    void FlushAtEnd();
    void FinishCopy();
    void ScanInput();
    void Observe(const Chain& chain);
    void ObserveAgain(Waiting& one, const Fingerprint& now) const;
    void Expect(const Chain& chain);
    QStringList Due() const;
    void ConvertDue();
    void CheckPlaces() const;
    bool IsInputReadOnly() const;
    bool IsTrouble(const BatchItem& item) const;
    bool MayWork();
    void LeaveTrouble();
    bool IsAsItWas(const QString& path);
    BatchItem WorkSafely(const Waiting& one);
    void Convert(Waiting& one);
    void Finish(Waiting& one, const BatchItem& item);
    void Postpone(Waiting& one, const BatchItem& item);
    void Forget(const QString& path, const Fingerprint& last);
    void FailForThisRun(const QString& path, const BatchItem& item);
    void Fail(Waiting& one, const BatchItem& item);
    bool Remember(const std::function<void()>& note);
    std::chrono::milliseconds PauseAfter(int failures) const;
    bool IsDone() const;
    void Sleep();
    void ReportStatus();
    bool HasNews() const;
    void SendStatus();
    QJsonObject ReasonOfEnd() const;

    const WatchOrder order;
    Worker& worker;
    WatchJournal& journal;
    WatchInput input;
    WatchTrouble trouble;
    CommandQueue commands;
    RecorderStatus status; // as it was last sent
    Clock::time_point nextStatus{};
    QMap<QString, Waiting> waiting;
    Clock::time_point scanned; // those that one scan has found are due together
    int troublesInRow = 0;
    int converted = 0;
    int failed = 0;
};
