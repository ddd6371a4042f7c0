// A run over many recordings by several workers at once, reported in the order of the list.
#pragma once

#include "zucmtr/host/recordinglist.h"
#include "zucmtr/run/batchitem.h"

#include <condition_variable>
#include <exception>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

class Worker;

class Batch
{
public:
    /// One thread per worker. No recording is started after an interrupt, or after two in a row for which a
    /// disk had no room; with failFast none after the first that failed.
    Batch(std::vector<std::unique_ptr<Worker>>& workers_, const std::vector<Recording>& recordings_,
          bool failFast_);

    /// Calls report for each recording that was started, in the order of the list, and waiting about ten
    /// times a second with the number of those that are done; both in the calling thread. Throws
    /// std::system_error if no thread can be started, and std::bad_alloc if there is no memory to start a
    /// recording: those already started are finished and reported first.
    void Run(const std::function<void(const BatchItem&)>& report, const std::function<void(size_t)>& waiting);

    /// Number of recordings that were not started because a disk is full.
    size_t NotStartedForRoom() const;

private:
    // A recording that was started. All its memory is allocated by then, so that nothing can fail at its end.
    struct Task
    {
        size_t number = 0;
        std::optional<QString> place; // of the record, once it is known
        bool isDone = false;
        BatchItem item;
    };

    void Work(Worker& worker) noexcept;
    static std::optional<QString> PlaceOf(const Worker& worker, const Recording& recording);
    Task* Take(const Worker& worker);
    bool IsItsTurn(const Task& task) const;
    void Finish(Task& task);
    void CountRoom(const BatchItem& item);
    void ReportDone(const std::function<void(const BatchItem&)>& report,
                    const std::function<void(size_t)>& waiting);

    std::vector<std::unique_ptr<Worker>>& workers;
    const std::vector<Recording>& recordings;
    const bool failFast;

    std::mutex mutex;
    std::condition_variable changed;
    size_t next = 0;    // recording that is started next
    size_t working = 0; // threads that have not ended
    size_t done = 0;
    size_t withoutRoom = 0; // recordings in a row for which a disk had none
    bool stopped = false;
    std::list<Task> started;    // and not reported yet, in the order of the list of recordings
    std::exception_ptr failure; // of a thread that could not start a recording
};
