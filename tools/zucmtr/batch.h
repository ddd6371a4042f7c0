// A run over many recordings by several workers at once, told in the order of the list.
#pragma once

#include "batchitem.h"
#include "recordinglist.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

class Worker;

class Batch
{
public:
    /// One thread a worker. With failFast no recording is begun after the first that failed; nor is one after
    /// an interrupt.
    Batch(std::vector<std::unique_ptr<Worker>>& workers_, const std::vector<Recording>& recordings_,
          bool failFast_);

    /// Calls told with each recording that was begun, in the order of the list, and waiting about ten times a
    /// second with the number of those that are done; both in the calling thread. Throws std::system_error if
    /// no thread can be started.
    void Run(const std::function<void(const BatchItem&)>& told, const std::function<void(size_t)>& waiting);

private:
    struct Task
    {
        size_t number;
        QString recordName;
    };

    void Work(Worker& worker);
    bool Take(const Worker& worker, Task& task);
    void Finish(const Task& task, BatchItem item);
    void Tell(const std::function<void(const BatchItem&)>& told, const std::function<void(size_t)>& waiting);

    std::vector<std::unique_ptr<Worker>>& workers;
    const std::vector<Recording>& recordings;
    const bool failFast;

    std::mutex mutex;
    std::condition_variable changed;
    size_t next = 0;    // recording that is begun next
    size_t working = 0; // threads that have not ended
    size_t done = 0;
    bool stopped = false;
    std::map<QString, std::deque<size_t>> turns; // of a record's name: the recordings at hand, in order
    std::map<size_t, BatchItem> finished;        // and not told yet
};
