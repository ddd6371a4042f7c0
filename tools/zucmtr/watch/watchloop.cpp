// The loop of 'zucmtr watch': how it starts, sleeps and ends, and what it reports of itself.
#include "text/error.h"
#include "text/texts.h"
#include "zucmtr/files/staging.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/interrupt.h"
#include "zucmtr/watch/servicemanager.h"
#include "zucmtr/watch/watch.h"
#include "zucmtr/watch/watchevents.h"

#include <QFileInfo>
#include <QJsonArray>

#include <algorithm>
#include <csignal>

using watchevents::Emit;

namespace {

constexpr std::chrono::milliseconds TroublePause{500}; // the shortest time between two checks of it

// How long the journal's copy is waited for: after a signal, and with --once.
constexpr std::chrono::milliseconds LongestEnd{2000};
constexpr std::chrono::milliseconds LongestCopy{20000};

double Seconds(std::chrono::milliseconds time)
{
    return std::chrono::duration<double>(time).count();
}

} // namespace

bool Watch::Run()
{
    Start();
    while (!interrupt::Came()) {
        if (input.IsTimeToScan())
            ScanInput();
        ConvertDue();
        commands.Step();
        if (order.copy != nullptr)
            order.copy->Step(journal);
        LeaveTrouble();
        ReportStatus();
        if (order.once && IsDone())
            break;
        Sleep();
    }
    servicemanager::Stopping();
    commands.Stop();
    FinishCopy();
    QJsonObject end = ReasonOfEnd();
    end["converted"] = converted;
    end["failed"] = failed;
    end["waiting"] = waiting.size();
    Emit("stopped", end);
    FlushAtEnd();
    SendStatus();
    return failed == 0 && commands.Failed() == 0 && waiting.isEmpty() && input.IsWhole();
}

// The next run goes on with a copy that is not written.
void Watch::FinishCopy()
{
    if (order.copy != nullptr)
        order.copy->Finish(journal, interrupt::Came() ? LongestEnd : LongestCopy);
}

// A program that is being ended does not wait for a disk: the next run repeats what was not written.
void Watch::FlushAtEnd()
{
    try {
        journal.Flush();
    } catch (const WatchJournal::Unwritable& error) {
        if (!interrupt::Came())
            throw;
        Complain(text::MessageOf(error));
    }
}

void Watch::Start()
{
    if (!statuschannel::IsUsed()) // the service has done so
        interrupt::Install();
    Emit("started", {{"directories", QJsonArray::fromStringList(order.directories)},
                     {"quietSeconds", Seconds(order.quiet)}});
    servicemanager::Ready();
    status.recorder = order.recorder;
    status.since = QDateTime::currentDateTime();
    SendStatus();
    if (order.retryGivenUp)
        journal.ForgetGivenUp();
    journal.ForgetGone();
    commands.Start();
    Staging::RemoveLeft(order.out);
}

QJsonObject Watch::ReasonOfEnd() const
{
    const auto both = [](const char* word, const QString& text) {
        return QJsonObject{{"reason", QLatin1String(word)}, {"text", text}};
    };
    switch (interrupt::Signal()) {
    case SIGTERM:
        return both(reason::Terminated, Tr("watch", "ended by SIGTERM"));
    case SIGINT:
        return both(reason::Interrupted, Tr("watch", "ended by Ctrl-C"));
    default:
        break;
    }
    if (trouble.IsOn())
        return both(reason::Trouble, Tr("watch", "the next run goes on: %1").arg(trouble.Message()));
    return both(reason::Done, Tr("watch", "nothing is left to do"));
}

bool Watch::IsDone() const
{
    const bool isHeldUp =
        trouble.IsOn() && (waiting.isEmpty() || troublesInRow == 0 || troublesInRow >= TroublesBorne);
    return (isHeldUp || (waiting.isEmpty() && !input.NeedsAnotherScan())) && commands.IsIdle();
}

// Waits until a recording is due, it is time to scan the directories, or a signal has arrived.
void Watch::Sleep()
{
    Clock::time_point end = input.NextScan();
    const bool waits = trouble.IsOn() && !order.once;
    // To show that the trouble is over, a recording may be needed that is not due yet: no reason to hurry.
    const Clock::time_point next = std::max(trouble.Next(), Clock::now() + TroublePause);
    if (waits)
        end = std::min(end, next);
    end = std::min(end, commands.Next());
    if (order.copy != nullptr)
        end = std::min(end, order.copy->Next(journal));
    const std::vector<int> others = {commands.Descriptor(),
                                     order.copy != nullptr ? order.copy->Descriptor() : -1};
    if (statuschannel::IsUsed())
        end = std::min(end, nextStatus);
    for (const Waiting& one : waiting)
        end = std::min(end, waits ? std::max(one.due, trouble.Next()) : one.due);
    while (!input.IsTimeToScan() && !interrupt::Came() && Clock::now() < end) {
        if (input.Wait(std::min(end, input.NextScan()), others))
            return;
    }
}

void Watch::ReportStatus()
{
    if (!trouble.IsOn())
        servicemanager::SetStatus(Tr("watch", "%1 converted, %2 given up, %3 waiting")
                                      .arg(converted)
                                      .arg(failed)
                                      .arg(waiting.size()));
    if (statuschannel::IsUsed() && (HasNews() || Clock::now() >= nextStatus))
        SendStatus();
}

bool Watch::HasNews() const
{
    return status.converted != converted || status.failed != failed || status.pending != waiting.size() ||
           status.troubleReason != trouble.Word() || status.commandsDone != commands.Done() ||
           status.commandsFailed != commands.Failed() || status.commandsPending != commands.Waiting();
}

void Watch::SendStatus()
{
    if (!statuschannel::IsUsed())
        return;
    status.converted = converted;
    status.failed = failed;
    status.pending = waiting.size();
    status.commandsDone = commands.Done();
    status.commandsFailed = commands.Failed();
    status.commandsPending = commands.Waiting();
    status.troubleReason = trouble.Word();
    status.troubleText = trouble.IsOn() ? trouble.Message() : QString();
    status.troubleSince = trouble.Since();
    for (const QString& directory : {order.out, order.archive}) {
        if (!directory.isEmpty())
            status.freeBytes[QFileInfo(directory).absoluteFilePath()] = FreeBytes(directory);
    }
    statuschannel::Send(status);
    nextStatus =
        Clock::now() + std::chrono::milliseconds(static_cast<int64_t>(statuschannel::Every() * 1000));
}
