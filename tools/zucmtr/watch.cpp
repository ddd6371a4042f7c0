#include "watch.h"

#include "console.h"
#include "interrupt.h"
#include "sourcefiles.h"
#include "texts.h"
#include "worker.h"

#include <QDateTime>
#include <QEventLoop>
#include <QJsonArray>
#include <QSet>
#include <QTimer>

#include <algorithm>
#include <csignal>

namespace {

constexpr std::chrono::milliseconds signalPeriod{100}; // how soon a signal is noticed

// A look into directories with very many files takes long: so many times as long it rests, at least.
constexpr int restAfterLook = 4;

// How often the program may have come to no end of a recording, by a crash or a power failure, beyond the
// attempts. A recording that brings the program down every time must not keep it from the others.
constexpr int crashesBorne = 8;

double Seconds(std::chrono::milliseconds time)
{
    return std::chrono::duration<double>(time).count();
}

QJsonObject ReasonOfEnd()
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
        return both(reason::Done, Tr("watch", "nothing is left to do"));
    }
}

// What is told of a recording, without what the kind of the event says.
QJsonObject EventOf(const BatchItem& item)
{
    QJsonObject object = JsonOf(item);
    object.remove("status");
    return object;
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
    PrintJson(object);
}

bool Watch::Run()
{
    interrupt::Install();
    Tell("started", {{"directories", QJsonArray::fromStringList(order.directories)},
                     {"quietSeconds", Seconds(order.quiet)}});
    if (order.retryGivenUp)
        journal.ForgetGivenUp();
    journal.Compact();
    while (!interrupt::Came()) {
        if (IsTimeToLook())
            Look();
        ConvertDue();
        if (order.once && waiting.isEmpty())
            break;
        if (journal.IsLong())
            journal.Compact();
        Sleep();
    }
    QJsonObject end = ReasonOfEnd();
    end["converted"] = converted;
    end["failed"] = failed;
    Tell("stopped", end);
    return failed == 0 && unreadable.isEmpty();
}

bool Watch::IsTimeToLook() const
{
    return Clock::now() >= (changed ? lookAgain : rescan);
}

void Watch::Look()
{
    const Clock::time_point start = Clock::now();
    changed = false;
    const Scan scan = ScanDirectories(order.directories, order.recursive, order.excluded);
    WatchDirectories(scan.directories);
    TellUnreadable(scan.unreadable);
    QSet<QString> there;
    for (const Chain& chain : scan.chains) {
        there << chain.recording.path;
        Observe(chain);
    }
    for (auto one = waiting.begin(); one != waiting.end();)
        one = there.contains(one.key()) ? std::next(one) : waiting.erase(one);
    const Clock::time_point end = Clock::now();
    lookAgain = end + (end - start) * restAfterLook;
    rescan = std::max(lookAgain, end + order.rescan);
}

void Watch::TellUnreadable(const std::vector<Refusal>& refusals)
{
    QStringList now;
    for (const Refusal& refusal : refusals) {
        now << refusal.path;
        if (!unreadable.contains(refusal.path))
            Tell(
                "unreadable",
                {{"path", refusal.path}, {"reason", QLatin1String(refusal.reason)}, {"error", refusal.text}});
    }
    unreadable = now;
}

void Watch::Observe(const Chain& chain)
{
    using Verdict = WatchJournal::Verdict;
    const QString& path = chain.recording.path;
    const auto known = waiting.find(path);
    if (known != waiting.end() && known->print == chain.print)
        return;
    const Verdict verdict = journal.VerdictOn(path, chain.print);
    if (verdict == Verdict::Converted || verdict == Verdict::GivenUp) {
        waiting.remove(path);
        return;
    }
    if (known == waiting.end())
        Tell("found", {{"file", path}});
    Expect(chain);
}

void Watch::Expect(const Chain& chain)
{
    const QString& path = chain.recording.path;
    const int begun = journal.Begun(path, chain.print);
    if (begun >= order.attempts + crashesBorne) {
        const QString text = Tr("watch", "not converted: the program came to no end of it %1 times");
        BatchItem item;
        item.recording = chain.recording;
        item.Fail(reason::NeverEnded, text.arg(begun));
        QJsonObject object = EventOf(item);
        object["attempt"] = begun;
        object["retrySeconds"] = QJsonValue();
        GiveUp(path, chain.print, object);
        waiting.remove(path);
        return;
    }
    Waiting one{chain.recording, chain.print, Clock::now() + order.quiet, 0, begun > 0};
    if (!order.once && begun > 0) {
        one.failures = std::min(begun, order.attempts - 1); // one attempt at least
        one.due += PauseAfter(begun);
    }
    waiting.insert(path, one);
}

void Watch::WatchDirectories(const QStringList& directories)
{
    QSet<QString> known;
    for (const QString& directory : watcher.directories())
        known << directory;
    QStringList fresh;
    for (const QString& directory : directories) {
        if (!known.contains(directory))
            fresh << directory;
    }
    if (fresh.isEmpty())
        return;
    // Where that fails, as beyond the system's limit, the rescan does it. What came after the look and before
    // the watcher was there, only another look finds.
    const int failures = watcher.addPaths(fresh).size();
    changed = changed || failures < fresh.size();
}

// Those that brought the program down come last.
QStringList Watch::Due() const
{
    const Clock::time_point now = Clock::now();
    QStringList first;
    QStringList last;
    for (auto one = waiting.begin(); one != waiting.end(); ++one) {
        if (one->due <= now)
            (one->wasBegun ? last : first) << one.key();
    }
    return first + last;
}

void Watch::ConvertDue()
{
    for (const QString& path : Due()) {
        if (interrupt::Came())
            return;
        if (IsAsItWas(path))
            Convert(waiting[path]);
    }
}

// It may have grown while others were converted, or be gone.
bool Watch::IsAsItWas(const QString& path)
{
    Waiting& one = waiting[path];
    const QByteArray print = PrintOf(path);
    if (print == one.print)
        return true;
    one.print = print;
    one.due = Clock::now() + order.quiet;
    one.failures = 0;
    if (print.isEmpty())
        waiting.remove(path);
    return false;
}

// What the journal says must be true after a power failure, too: the record is on the disk before.
BatchItem Watch::Work(const Recording& recording) const
{
    BatchItem item = worker.Work(recording);
    if (item.state == ItemState::Failed || item.fate != SourceFate::Kept)
        return item;
    try {
        sourcefiles::Sync(item.files, item.directory);
    } catch (const sourcefiles::Error& error) {
        item.Fail(reason::NotOnDisk, QString::fromUtf8(error.what()));
    }
    return item;
}

void Watch::Convert(Waiting& one)
{
    const QString path = one.recording.path;
    journal.NoteBegun(path, one.print);
    Tell("converting", {{"file", path}});
    const BatchItem item = Work(one.recording);
    QJsonObject object = EventOf(item);
    const QString replaced = item.written ? journal.OtherOf(item.recordName, path) : QString();
    if (!replaced.isEmpty())
        object["replaced"] = replaced;
    if (item.state == ItemState::Failed) {
        Fail(one, object);
        return;
    }
    object.remove("reason");
    object.remove("error");
    Note(one, item);
    ++converted;
    Tell("converted", object);
    waiting.remove(path);
}

void Watch::Note(const Waiting& one, const BatchItem& item)
{
    if (item.fate == SourceFate::Kept)
        journal.NoteConverted(one.recording.path, one.print, item.recordName);
    else
        journal.NotePutAway(one.recording.path, one.print);
}

void Watch::Fail(Waiting& one, QJsonObject object)
{
    ++one.failures;
    object["attempt"] = one.failures;
    if (one.failures >= order.attempts) {
        const QString path = one.recording.path;
        object["retrySeconds"] = QJsonValue();
        GiveUp(path, one.print, object);
        waiting.remove(path);
        return;
    }
    const std::chrono::milliseconds pause = PauseAfter(one.failures);
    object["retrySeconds"] = Seconds(pause);
    Tell("failed", object);
    one.due = Clock::now() + pause;
}

void Watch::GiveUp(const QString& path, const QByteArray& print, const QJsonObject& object)
{
    journal.NoteGivenUp(path, print);
    ++failed;
    Tell("failed", object);
}

std::chrono::milliseconds Watch::PauseAfter(int failures) const
{
    return order.retryAfter * (1 << std::min(failures - 1, 16));
}

// Until a recording is due, it is time to look into the directories, or a signal has come.
void Watch::Sleep()
{
    Clock::time_point end = rescan;
    for (const Waiting& one : waiting)
        end = std::min(end, one.due);
    QEventLoop loop;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    while (!IsTimeToLook() && !interrupt::Came() && Clock::now() < end) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
        timer.start(std::min(signalPeriod, left + std::chrono::milliseconds(1)));
        loop.exec();
    }
}
