#include "zucmtr/watch/watchinput.h"

#include "base/chainnames.h"
#include "text/texts.h"
#include "zucmtr/files/archivecopies.h"
#include "zucmtr/files/chainfiles.h"
#include "zucmtr/files/staging.h"
#include "zucmtr/files/systemfile.h"
#include "zucmtr/watch/watch.h"
#include "zucmtr/watch/watchevents.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>

#include <algorithm>

namespace {

constexpr std::chrono::milliseconds LongestWait{200}; // a signal may arrive just before the wait

// A scan of very many files takes long; afterwards nothing is scanned for at least this many times as long.
// The long rest keeps the use of the processor well below 5 %; the short one applies while recordings arrive,
// and to the first event noticed.
constexpr int ShortRest = 4;
constexpr int LongRest = 40;

// Up to this many of a kind are reported one by one, more of them as one event with some examples.
constexpr int MostSingle = 3;

QByteArray StateOf(const Scan& scan)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (const Chain& chain : scan.chains)
        hash.addData(chain.recording.path.toUtf8() + chain.fingerprint.print + chain.fingerprint.access);
    return hash.result();
}

} // namespace

bool WatchInput::IsTimeToScan() const
{
    return Clock::now() >= NextScan();
}

WatchInput::Clock::time_point WatchInput::NextScan() const
{
    Clock::time_point next = changed ? earliestScan : rescan;
    for (const Orphan& orphan : orphans) {
        if (!orphan.isReported)
            next = std::min(next, std::max(orphan.due, earliestScan));
    }
    return next;
}

std::vector<Chain> WatchInput::NewScan()
{
    start = Clock::now();
    hasHeard = changed;
    changed = false;
    Scan scan = ScanDirectories(order.directories, order.recursive, order.excluded);
    if (events.Watch(scan.directories))
        changed = true; // only another scan finds what arrived between the scan and the watch
    const QByteArray now = StateOf(scan);
    isNew = now != state;
    state = now;
    ReportUnwatched();
    ReportUnreadable(scan.unreadable);
    ReportRecovered(scan.directories);
    ReportOrphans(scan.directories);
    isFirst = false;
    return std::move(scan.chains);
}

void WatchInput::ScanDone()
{
    const Clock::time_point end = Clock::now();
    earliestScan = end + (end - start) * (isNew || !hasHeard ? ShortRest : LongRest);
    rescan = std::max(end + (end - start) * (isNew ? ShortRest : LongRest), end + order.rescan);
}

bool WatchInput::Wait(Clock::time_point until, const std::vector<int>& others)
{
    bool isOtherReady = false;
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(until - Clock::now()) +
                      std::chrono::milliseconds(1);
    if (events.Wait(std::min(std::max(left, std::chrono::milliseconds(0)), LongestWait), others,
                    isOtherReady))
        changed = true;
    return isOtherReady;
}

bool WatchInput::NeedsAnotherScan() const
{
    return isBack || std::any_of(orphans.begin(), orphans.end(),
                                 [](const Orphan& orphan) { return !orphan.isReported; });
}

// Spelt as on the command line.
QString WatchInput::AsGiven(const QString& path) const
{
    const auto [top, below] = Divided(path);
    return below.isEmpty() ? path : QDir(top).filePath(below);
}

// The watched directory that holds the path, as on the command line, and the path from there; empty if none
// does.
std::pair<QString, QString> WatchInput::Divided(const QString& path) const
{
    for (const QString& top : order.directories) {
        const QString whole = Normalised(top);
        if (path.startsWith(whole + QLatin1Char('/')))
            return {top, path.mid(whole.size() + 1)};
    }
    return {};
}

void WatchInput::ReportUnreadable(const std::vector<Refusal>& refusals)
{
    QSet<QString> now;
    QMap<QByteArray, std::vector<const Refusal*>> all;
    QMap<QByteArray, std::vector<const Refusal*>> fresh;
    for (const Refusal& refusal : refusals) {
        now.insert(refusal.path);
        all[refusal.reason].push_back(&refusal);
        if (!unreadable.contains(refusal.path))
            fresh[refusal.reason].push_back(&refusal);
    }
    unreadable = now;
    for (auto kind = fresh.begin(); kind != fresh.end(); ++kind) {
        const int count = static_cast<int>(all[kind.key()].size());
        int& reported = reportedUnreadable[kind.key()];
        if (count > MostSingle && count < 2 * reported)
            continue;
        const bool isSum = count > MostSingle;
        reported = isSum ? count : 0;
        const std::vector<const Refusal*>& shown = isSum ? all[kind.key()] : *kind;
        for (size_t at = 0; at < (isSum ? 1 : shown.size()); ++at) {
            QJsonObject event{{"path", shown[at]->path},
                              {"reason", QLatin1String(shown[at]->reason)},
                              {"error", shown[at]->text},
                              {"count", isSum ? count : 1}};
            QJsonArray examples;
            for (size_t number = 1; isSum && number < MostSingle; ++number)
                examples << shown[number]->path;
            event["examples"] = examples;
            watchevents::Emit("unreadable", event);
        }
    }
}

void WatchInput::ReportUnwatched()
{
    if (isUnwatchedReported || events.Unwatched() == 0)
        return;
    isUnwatchedReported = true;
    const QString text =
        Tr("watch", "the system reports no changes of this many directories, as its limit is reached; they "
                    "are scanned every %1 seconds or more; raise fs.inotify.max_user_watches");
    watchevents::Emit("unwatched", {{"count", events.Unwatched()},
                                    {"text", text.arg(std::chrono::duration<double>(order.rescan).count())}});
}

void WatchInput::ReportOrphans(const QStringList& directories)
{
    QHash<QString, Orphan> now;
    for (const QString& directory : directories) {
        for (const QString& path : OrphansIn(directory))
            ObserveOrphan(path, now);
    }
    orphans = now;
}

// Files that are copied one after the other may arrive in any order.
void WatchInput::ObserveOrphan(const QString& path, QHash<QString, Orphan>& now) const
{
    systemfile::Identity file;
    if (systemfile::Identify(path, file) == ENOENT)
        return;
    Orphan orphan = orphans.value(path);
    const bool isSame =
        orphans.contains(path) && orphan.size == file.size && orphan.modified == file.modified;
    if (!isSame)
        orphan = {file.size, file.modified, Clock::now() + order.quiet, orphan.isReported};
    if (!orphan.isReported && Clock::now() >= orphan.due) {
        orphan.isReported = true;
        const QString first = AsGiven(zu::FirstFileOf(path));
        watchevents::Emit("orphan",
                          {{"file", AsGiven(path)},
                           {"first", first},
                           {"text", Tr("watch", "it continues a recording whose first file %1 is not there, "
                                                "so it is not converted; bring that back")
                                        .arg(first)}});
    }
    now.insert(path, orphan);
}

// Recovers what was left of the recordings of a directory.
sourcefiles::Recovered WatchInput::TakeUpLeft(const QString& directory) const
{
    sourcefiles::Recovered left = sourcefiles::Recover(directory);
    const QString below = Divided(directory).second; // the same below --out and --archive
    if (isFirst && order.mirror)
        Staging::RemoveLeft(QDir(order.out).filePath(below));
    if (isFirst && !order.archive.isEmpty())
        left.removed += sourcefiles::RemoveParts(QDir(order.archive).filePath(below));
    return left;
}

void WatchInput::ReportRecovered(const QStringList& directories)
{
    sourcefiles::Recovered all;
    for (const QString& directory : directories)
        all += TakeUpLeft(directory);
    isBack = !all.back.isEmpty();
    changed = changed || isBack;
    if (all.back.isEmpty() && all.removed.isEmpty() && (all.notes.isEmpty() || !isFirst))
        return;
    for (QStringList* paths : {&all.back, &all.removed}) {
        for (QString& path : *paths)
            path = AsGiven(path);
    }
    watchevents::Emit("leftovers", {{"back", QJsonArray::fromStringList(all.back)},
                                    {"removed", QJsonArray::fromStringList(all.removed)},
                                    {"notes", QJsonArray::fromStringList(all.notes)}});
}
