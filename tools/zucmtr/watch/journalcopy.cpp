#include "zucmtr/watch/journalcopy.h"

#include "text/texts.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/watch/watchevents.h"

#include <algorithm>
#include <poll.h>

using journalcopier::Request;

namespace {

constexpr std::chrono::milliseconds ShortestPause{10};
constexpr std::chrono::milliseconds LongestPause{60000};

double Seconds(std::chrono::steady_clock::duration time)
{
    return std::chrono::duration<double>(time).count();
}

QByteArray CrashText(int signal)
{
    return Tr("watch", "the process that writes it has ended (signal %1)").arg(signal).toUtf8();
}

} // namespace

JournalCopy::JournalCopy(const QString& catalogue, const journalcopier::Name& name,
                         std::chrono::milliseconds firstPause_)
    : task{[catalogue, name] { return journalcopier::New(catalogue, name); }, CrashText, {}},
      process(std::make_unique<SideProcess>(task)), firstPause(std::max(firstPause_, ShortestPause)),
      pause(firstPause)
{}

// What the copy has is unknown after a failure; then it gets all of the journal, and writes what differs.
void JournalCopy::Step(WatchJournal& journal)
{
    if (isAsked && IsAnswered(std::chrono::milliseconds(0)))
        Hear();
    if (isAsked || isOver || Clock::now() < due)
        return;
    if (process == nullptr)
        StartAgain(journal);
    if (process == nullptr)
        return;
    if (known == Known::Nothing) {
        Ask(Request::Open);
    } else if (known == Known::Place) {
        journal.TakeNews(); // they are in the journal
        try {
            Ask(Request::All, journal.Stored());
        } catch (const std::exception& error) { // somebody else reads it
            Fail(text::MessageOf(error));
        }
    } else if (journal.HasNews()) {
        Ask(Request::News, journal.TakeNews());
    }
}

// Somebody has ended it, or the system for lack of memory. The new one must not keep the journal's lock if
// the program is killed.
void JournalCopy::StartAgain(WatchJournal& journal)
{
    task.letGo = [&journal] { journal.LetGo(); };
    try {
        process = std::make_unique<SideProcess>(task);
    } catch (const text::Error& error) {
        Fail(error.Message());
    }
}

void JournalCopy::Finish(WatchJournal& journal, std::chrono::milliseconds longest)
{
    const Clock::time_point end = Clock::now() + longest;
    const int failuresBefore = failures;
    due = Clock::time_point::min(); // once more, whatever the pause
    Step(journal);
    while (isAsked && failures == failuresBefore && Clock::now() < end) {
        IsAnswered(std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()));
        Step(journal);
    }
    if (isAsked)
        process->Kill();
    isOver = true;
}

JournalCopy::Clock::time_point JournalCopy::Next(const WatchJournal& journal) const
{
    const bool isNeeded = known != Known::All || journal.HasNews();
    return isAsked || isOver || !isNeeded ? Clock::time_point::max() : due;
}

void JournalCopy::Ask(Request request_, const WatchJournal::Contents& contents)
{
    request = request_;
    isAsked = process->Ask(journalcopier::Packed(request, contents));
    if (!isAsked)
        FailWithoutProcess();
}

bool JournalCopy::IsAnswered(std::chrono::milliseconds longest) const
{
    pollfd line = {process->Descriptor(), POLLIN, 0};
    return poll(&line, 1, static_cast<int>(std::max<int64_t>(longest.count(), 0))) > 0;
}

void JournalCopy::Hear()
{
    QByteArray failure;
    isAsked = false;
    if (!process->Hear(failure)) {
        FailWithoutProcess();
        return;
    }
    if (!failure.isEmpty()) {
        Fail(QString::fromUtf8(failure));
        return;
    }
    known = request == Request::Open ? Known::Place : Known::All;
    if (known == Known::All && failures > 0) {
        watchevents::Emit("copyCaughtUp", {{"seconds", Seconds(Clock::now() - begin)}});
        failures = 0;
    }
}

void JournalCopy::FailWithoutProcess()
{
    process.reset();
    Fail(Tr("watch", "the process that writes it has ended"));
}

void JournalCopy::Fail(const QString& reason)
{
    known = Known::Nothing;
    pause = failures == 0 ? firstPause : std::min(pause * 2, std::max(LongestPause, firstPause));
    due = Clock::now() + pause;
    ++failures;
    if (failures > 1)
        return;
    begin = Clock::now();
    const QString text =
        Tr("watch", "the journal's copy is not written: %1; the work goes on, and the copy follows")
            .arg(reason);
    watchevents::Emit("copyBehind", {{"text", text}, {"retrySeconds", Seconds(pause)}});
    Complain(text);
}
