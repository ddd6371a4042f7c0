#include "watch.h"

#include "batchitem.h"
#include "console.h"
#include "interrupt.h"
#include "worker.h"

#include <QDateTime>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>
#include <QTimer>

#include <algorithm>
#include <csignal>

namespace {

constexpr std::chrono::milliseconds signalPeriod{100}; // how soon a signal is noticed

double Seconds(std::chrono::milliseconds time)
{
    return std::chrono::duration<double>(time).count();
}

const char* ReasonOfEnd()
{
    switch (interrupt::Signal()) {
    case SIGTERM:
        return "SIGTERM";
    case SIGINT:
        return "SIGINT";
    default:
        return "done";
    }
}

} // namespace

Watch::Watch(const WatchOrder& order_, Worker& worker_, WatchJournal& journal_)
    : order(order_), worker(worker_), journal(journal_)
{
    QObject::connect(&watcher, &QFileSystemWatcher::directoryChanged, &watcher, [this] { changed = true; });
}

void Watch::Tell(const char* event, QJsonObject object)
{
    object["time"] = QDateTime::currentDateTime()
                         .toOffsetFromUtc(QDateTime::currentDateTime().offsetFromUtc())
                         .toString(Qt::ISODateWithMs);
    object["event"] = QLatin1String(event);
    PrintLine(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
}

bool Watch::Run()
{
    interrupt::Install();
    Tell("started", {{"directories", QJsonArray::fromStringList(order.directories)},
                     {"quietSeconds", Seconds(order.quiet)}});
    journal.DropGone();
    while (!interrupt::Came()) {
        Look();
        ConvertDue();
        if (order.once && Settled())
            break;
        Sleep();
    }
    Tell("stopped", {{"reason", ReasonOfEnd()}, {"converted", converted}, {"failed", failed}});
    return failed == 0;
}

void Watch::Look()
{
    changed = false;
    const Scan scan = ScanDirectories(order.directories, order.recursive, order.excluded);
    WatchDirectories(scan.directories);
    QStringList bad;
    for (const Refusal& refusal : scan.unreadable) {
        bad << refusal.path;
        if (!unreadable.contains(refusal.path))
            Tell("unreadable", {{"directory", refusal.path}, {"error", refusal.text}});
    }
    unreadable = bad;
    QSet<QString> there;
    for (const Chain& chain : scan.chains) {
        there << chain.recording.path;
        Observe(chain);
    }
    for (auto one = waiting.begin(); one != waiting.end();)
        one = there.contains(one.key()) ? std::next(one) : waiting.erase(one);
}

void Watch::Observe(const Chain& chain)
{
    const QString& path = chain.recording.path;
    const auto known = waiting.find(path);
    if (known != waiting.end() && known->print == chain.print)
        return;
    if (journal.VerdictOn(path, chain.print) != WatchJournal::Verdict::Unknown)
        return;
    if (known == waiting.end())
        Tell("found", {{"file", path}});
    waiting.insert(path, {chain.recording, chain.print, Clock::now() + order.quiet, 0});
}

void Watch::WatchDirectories(const QStringList& directories)
{
    const QStringList watched = watcher.directories();
    for (const QString& directory : directories) {
        if (!watched.contains(directory))
            watcher.addPath(directory); // where that fails, as beyond the system's limit, the rescan does it
    }
}

void Watch::ConvertDue()
{
    for (const QString& path : waiting.keys()) {
        if (interrupt::Came())
            return;
        Waiting& one = waiting[path];
        if (one.due > Clock::now())
            continue;
        const QByteArray print = PrintOf(path);
        if (print != one.print) { // it grew while others were converted, or is gone
            one.print = print;
            one.due = Clock::now() + order.quiet;
            one.failures = 0;
            continue;
        }
        Convert(one);
    }
}

void Watch::Convert(Waiting& one)
{
    Tell("converting", {{"file", one.recording.path}});
    const BatchItem item = worker.Work(one.recording);
    QJsonObject object = JsonOf(item);
    object.remove("status");
    if (item.state == ItemState::Failed) {
        Fail(one, object);
        return;
    }
    object.remove("error");
    journal.Note(one.recording.path, one.print, WatchJournal::Verdict::Converted);
    ++converted;
    Tell("converted", object);
    waiting.remove(QString(one.recording.path));
}

void Watch::Fail(Waiting& one, const QJsonObject& item)
{
    QJsonObject object = item;
    ++one.failures;
    object["attempt"] = one.failures;
    const bool isLast = one.failures >= order.attempts;
    const std::chrono::milliseconds pause = order.retryAfter * (1 << std::min(one.failures - 1, 16));
    object["retrySeconds"] = isLast ? QJsonValue() : QJsonValue(Seconds(pause));
    if (!isLast) {
        Tell("failed", object);
        one.due = Clock::now() + pause;
        return;
    }
    ++failed;
    // A run for once leaves the recording to the next run.
    if (!order.once)
        journal.Note(one.recording.path, one.print, WatchJournal::Verdict::GivenUp);
    Tell("failed", object);
    if (order.once)
        one.due = Clock::time_point::max();
    else
        waiting.remove(QString(one.recording.path));
}

bool Watch::Settled() const
{
    return std::all_of(waiting.begin(), waiting.end(),
                       [](const Waiting& one) { return one.due == Clock::time_point::max(); });
}

// Until a recording is due, the directories change, the time of a rescan comes, or a signal does.
void Watch::Sleep()
{
    Clock::time_point end = Clock::now() + order.rescan;
    for (const Waiting& one : waiting)
        end = std::min(end, one.due);
    QEventLoop loop;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    while (!changed && !interrupt::Came() && Clock::now() < end) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
        timer.start(std::min(signalPeriod, left + std::chrono::milliseconds(1)));
        loop.exec();
    }
}
