// The watched directories: when they are scanned, and what the scan reports besides recordings: what cannot
// be read, continuation files without a first file, files left by a killed run.
#pragma once

#include "zucmtr/files/asidefiles.h"
#include "zucmtr/watch/directoryevents.h"
#include "zucmtr/watch/watchscan.h"

#include <QHash>
#include <QMap>
#include <QSet>

#include <chrono>
#include <utility>
#include <vector>

struct WatchOrder;

class WatchInput
{
public:
    using Clock = std::chrono::steady_clock;

    explicit WatchInput(const WatchOrder& order_) : order(order_) {}

    bool IsTimeToScan() const;

    /// Scans the directories. Returns the recordings, and reports what else is new.
    std::vector<Chain> NewScan();

    /// To be called when all that NewScan returned is dealt with: the next pause depends on how long that
    /// took.
    void ScanDone();

    /// Waits until something happens in the directories, a signal arrives, or it is that time; not long. True
    /// at once if one of the others, descriptors of which -1 is none, can be read.
    bool Wait(Clock::time_point until, const std::vector<int>& others);

    /// When the directories will be scanned in any case.
    Clock::time_point NextScan() const;

    /// Whether every directory and name could be read.
    bool IsWhole() const { return unreadable.isEmpty(); }

    /// Whether another scan is needed: files got their names back, or a continuation file is not reported
    /// yet, as its first file may still arrive.
    bool NeedsAnotherScan() const;

private:
    // A continuation file without a first file.
    struct Orphan
    {
        std::int64_t size = 0;
        std::int64_t modified = 0;
        Clock::time_point due; // when it will have been unchanged long enough to be reported
        bool isReported = false;
    };

    void ReportUnreadable(const std::vector<Refusal>& refusals);
    void ReportUnwatched();
    void ReportOrphans(const QStringList& directories);
    void ObserveOrphan(const QString& path, QHash<QString, Orphan>& now) const;
    void ReportRecovered(const QStringList& directories);
    QString AsGiven(const QString& path) const;
    std::pair<QString, QString> Divided(const QString& path) const;
    sourcefiles::Recovered TakeUpLeft(const QString& directory) const;

    const WatchOrder& order;
    DirectoryEvents events;
    bool isFirst = true;
    bool changed = false;  // an event was noticed
    bool hasHeard = false; // before the last scan
    bool isBack = false;   // files got their names back
    bool isNew = false;    // the last scan found something that the one before had not
    QByteArray state;      // of what the last scan found
    Clock::time_point start{};
    Clock::time_point earliestScan{}; // no scan before this, whatever has changed
    Clock::time_point rescan{};       // a scan in any case then
    QSet<QString> unreadable;
    QMap<QByteArray, int> reportedUnreadable; // how many there were of a reason when it was last reported
    bool isUnwatchedReported = false;
    QHash<QString, Orphan> orphans;
};
