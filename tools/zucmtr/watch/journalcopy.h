// The copy of the journal in a catalogue, for those who ask about all recorders in one place.
//
// The journal itself stays in its own file: a catalogue may be on a server that is away, and may be made anew
// at any time, while a recording must not wait, be forgotten or be converted twice. A process of its own
// writes the copy; whatever keeps that waiting keeps nobody else.
#pragma once

#include "zucmtr/watch/journalcopier.h"

#include <QDateTime>

#include <chrono>
#include <memory>

class JournalCopy
{
public:
    using Clock = std::chrono::steady_clock;

    /// Starts the process: to be called before there are a journal and a Host. firstPause: after the first
    /// failure; pauses double up to a minute.
    JournalCopy(const QString& catalogue, const journalcopier::Name& name,
                std::chrono::milliseconds firstPause);

    /// Takes up an answer, and passes on what is new. Does not wait.
    void Step(WatchJournal& journal);

    /// Waits, no longer than that, until the copy is the same as the journal; then ends the process. One that
    /// is not the same follows in the next run.
    void Finish(WatchJournal& journal, std::chrono::milliseconds longest);

    /// When Step has something to do, besides an answer.
    Clock::time_point Next(const WatchJournal& journal) const;

    /// Can be read when there is an answer; -1 if nothing was asked.
    int Descriptor() const { return isAsked ? process->Descriptor() : -1; }

private:
    enum class Known { Nothing, Place, All }; // of the journal, in the copy

    void StartAgain(WatchJournal& journal);
    void Ask(journalcopier::Request request, const WatchJournal::Contents& contents = {});
    bool IsAnswered(std::chrono::milliseconds longest) const;
    void Hear();
    void Fail(const QString& reason);
    void FailWithoutProcess();

    SideProcess::Task task;
    std::unique_ptr<SideProcess> process; // none: it has ended, and is started again after a pause
    const std::chrono::milliseconds firstPause;
    std::chrono::milliseconds pause;
    Known known = Known::Nothing;
    journalcopier::Request request = journalcopier::Request::Open; // that was asked last
    bool isAsked = false;
    bool isOver = false;       // nothing is copied any more
    int failures = 0;          // in a row
    Clock::time_point due{};   // no request before this
    Clock::time_point begin{}; // of the failures
};
