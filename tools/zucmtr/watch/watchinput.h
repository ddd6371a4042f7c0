// The watched directories: when they are scanned, and what the scan reports besides recordings - what cannot
// be read, continuation files without a first file, files that a killed run has left.
#pragma once

#include "zucmtr/files/asidefiles.h"
#include "zucmtr/watch/directoryevents.h"
#include "zucmtr/watch/watchscan.h"

#include <QHash>
#include <QMap>
#include <QSet>

#include <chrono>

struct WatchOrder;

class WatchInput
{
public:
    using Clock = std::chrono::steady_clock;

    explicit WatchInput(const WatchOrder& order_) : order(order_) {}

    bool IsTimeToLook() const;

    /// Scans the directories, and prints what has come to be reported. The recordings that are there.
    std::vector<Chain> Look();

    /// To be called when what Look gave is dealt with: how long it rests depends on how long that took.
    void Looked();

    /// Waits until something happens in the directories, a signal comes, or it is that time; not long.
    void Wait(Clock::time_point until);

    /// When the directories are scanned in any case.
    Clock::time_point NextLook() const;

    /// Whether every directory and name could be read.
    bool IsWhole() const { return unreadable.isEmpty(); }

    /// Whether another scan has to come: files got their names back, or a continuation file is not reported
    /// yet, as its first file may still come.
    bool NeedsAnotherLook() const;

private:
    // A continuation file without a first file.
    struct Orphan
    {
        std::int64_t size = 0;
        std::int64_t modified = 0;
        Clock::time_point due; // when it has stayed as it is for long enough to be reported
        bool isTold = false;
    };

    void TellUnreadable(const std::vector<Refusal>& refusals);
    void TellUnwatched();
    void TellOrphans(const QStringList& directories);
    void ObserveOrphan(const QString& path, QHash<QString, Orphan>& now) const;
    void TellLeft(const QStringList& directories);
    QString AsGiven(const QString& path) const;
    QString BelowOf(const QString& directory) const;
    sourcefiles::Recovered TakeUpLeft(const QString& directory) const;

    const WatchOrder& order;
    DirectoryEvents events;
    bool isFirst = true;
    bool changed = false;  // something was heard
    bool hasHeard = false; // before the last scan
    bool isBack = false;   // files got their names back
    bool isNew = false;    // the last scan found what the one before had not
    QByteArray state;      // of what the last scan found
    Clock::time_point start{};
    Clock::time_point lookAgain{}; // not before, whatever has changed
    Clock::time_point rescan{};    // then in any case
    QSet<QString> unreadable;
    QMap<QByteArray, int> unreadableTold; // how many of a reason there were when that was told
    bool isUnwatchedTold = false;
    QHash<QString, Orphan> orphans;
};
