// Converts recordings as they come into directories: the loop behind 'zucmtr watch'.
#pragma once

#include "batchitem.h"
#include "watchjournal.h"
#include "watchscan.h"

#include <QFileSystemWatcher>
#include <QJsonObject>
#include <QMap>
#include <QStringList>

#include <chrono>

class Worker;

struct WatchOrder
{
    QStringList directories;
    bool recursive = false;
    QStringList excluded;               // directories below
    bool once = false;                  // end when nothing is left to do
    std::chrono::milliseconds quiet{0}; // how long a recording has to stay as it is to count as complete
    std::chrono::milliseconds rescan{0};
    std::chrono::milliseconds retryAfter{0}; // after the first failure; doubled after each further one
    int attempts = 1;                        // of a recording, before it is given up
    bool retryGivenUp = false;               // of earlier runs
};

class Watch
{
public:
    Watch(const WatchOrder& order_, Worker& worker_, WatchJournal& journal_);

    /// Tells each event as a JSON object and line. Returns after a signal, or with `once` when nothing is
    /// left to do. True if no recording failed and every directory can be looked into. Throws
    /// std::runtime_error (UTF-8 text) if the journal cannot be written.
    bool Run();

private:
    using Clock = std::chrono::steady_clock;

    // A recording that is not converted yet.
    struct Waiting
    {
        Recording recording;
        QByteArray print;
        Clock::time_point due;
        int failures = 0;
        bool wasBegun = false; // by a program that did not come to its end
    };

    bool IsTimeToLook() const;
    void Look();
    void TellUnreadable(const std::vector<Refusal>& refusals);
    void Observe(const Chain& chain);
    void Expect(const Chain& chain);
    void WatchDirectories(const QStringList& directories);
    QStringList Due() const;
    void ConvertDue();
    bool IsAsItWas(const QString& path);
    BatchItem Work(const Recording& recording) const;
    void Convert(Waiting& one);
    void Note(const Waiting& one, const BatchItem& item);
    void Fail(Waiting& one, QJsonObject object);
    void GiveUp(const QString& path, const QByteArray& print, const QJsonObject& object);
    std::chrono::milliseconds PauseAfter(int failures) const;
    void Sleep();
    static void Tell(const char* event, QJsonObject object);

    const WatchOrder order;
    Worker& worker;
    WatchJournal& journal;
    QFileSystemWatcher watcher;
    bool changed = false;          // the watcher has seen something
    Clock::time_point lookAgain{}; // not before, whatever has changed
    Clock::time_point rescan{};    // then in any case
    QMap<QString, Waiting> waiting;
    QStringList unreadable; // directories that were told
    int converted = 0;
    int failed = 0;
};
