// The commands that --exec has run after the records: one at a time, in the order of the records, beside the
// conversions. Those that failed wait for their turn apart from the others. What is not done is in the
// journal, so that a later run does it: a command that was running when the program was killed runs twice.
#pragma once

#include "zucmtr/run/batchitem.h"
#include "zucmtr/watch/recordcommand.h"
#include "zucmtr/watch/watchjournal.h"

#include <QHash>
#include <QStringList>

#include <chrono>
#include <functional>
#include <memory>

struct CommandOrder
{
    QStringList words;                         // program and arguments; empty: nothing is run
    std::chrono::milliseconds limit{0};        // of each
    int retries = 0;                           // after the first failure
    std::chrono::milliseconds firstPause{0};   // before the first retry; doubled for each further one
    std::chrono::milliseconds longestPause{0}; // never longer than this, or than the first one
    bool once = false;                         // each is tried once in this run
    QString recorder;                          // name of the recorder
};

class CommandQueue
{
public:
    using Clock = std::chrono::steady_clock;

    /// Notes something in the journal; false if that has to wait.
    using Remember = std::function<bool(const std::function<void()>& note)>;

    CommandQueue(const CommandOrder& order_, WatchJournal& journal_, Remember remember_);

    /// Takes the commands that earlier runs have left.
    void Start();

    /// Adds the command for a record to what the journal notes next; nothing if there is no command.
    void Add(const BatchItem& item);

    /// Takes up a command that has ended, and starts the next one. Does not wait.
    void Step();

    /// Ends the command that is running; a later run has it run again.
    void Stop() { running.reset(); }

    /// Whether nothing runs, and nothing is left to be tried in a run with `once`.
    bool IsIdle() const { return !running && Next() == Clock::time_point::max(); }

    /// When Step has something to do, besides the end of the command that is running.
    Clock::time_point Next() const;

    /// Can be read when the running command has ended; -1 if none runs.
    int Descriptor() const { return running ? running->Descriptor() : -1; }

    int Done() const { return done; }
    int Failed() const { return failed; } // that were given up, or with `once` failed
    int Waiting() const;

private:
    void Finish();
    void Begin(qint64 number);
    void ReportFailure(const WatchJournal::Task& task, const RecordCommand::Outcome& outcome, bool isLast);
    std::chrono::milliseconds PauseAfter(int failures) const;

    const CommandOrder order;
    WatchJournal& journal;
    const Remember remember;
    QHash<qint64, Clock::time_point> due; // of those that have failed; the others are due
    std::unique_ptr<RecordCommand> running;
    qint64 current = 0; // number of the running one
    int done = 0;
    int failed = 0;
};
