#include "batch.h"

#include "interrupt.h"
#include "worker.h"

#include <chrono>
#include <new>
#include <thread>

namespace {

// Waits for its threads on every way out.
class Threads
{
public:
    ~Threads()
    {
        for (std::thread& thread : threads)
            thread.join();
    }
    std::vector<std::thread> threads;
};

} // namespace

Batch::Batch(std::vector<std::unique_ptr<Worker>>& workers_, const std::vector<Recording>& recordings_,
             bool failFast_)
    : workers(workers_), recordings(recordings_), failFast(failFast_)
{}

void Batch::Run(const std::function<void(const BatchItem&)>& told, const std::function<void(size_t)>& waiting)
{
    Threads running;
    for (const std::unique_ptr<Worker>& worker : workers) {
        {
            const std::lock_guard<std::mutex> lock(mutex);
            ++working;
        }
        try {
            running.threads.emplace_back([this, &worker] { Work(*worker); });
        } catch (const std::system_error&) {
            const std::lock_guard<std::mutex> lock(mutex);
            --working;
            if (running.threads.empty())
                throw;
            break; // the threads that there are do the work
        }
    }
    try {
        Tell(told, waiting);
    } catch (...) {
        const std::lock_guard<std::mutex> lock(mutex);
        stopped = true; // the threads end with the recordings at hand
        throw;
    }
}

void Batch::Work(Worker& worker)
{
    Task task;
    while (Take(worker, task))
        Finish(task, worker.Work(recordings[task.number]));
    const std::lock_guard<std::mutex> lock(mutex);
    --working;
    changed.notify_all();
}

// Recordings whose records have one name are converted one after the other, in the order of the list: the
// library writes all of a name to the same temporary files.
bool Batch::Take(const Worker& worker, Task& task)
{
    std::unique_lock<std::mutex> lock(mutex);
    if (stopped || interrupt::Came() || next == recordings.size())
        return false;
    task.number = next++;
    try {
        task.recordName = worker.RecordName(recordings[task.number].path);
    } catch (const std::bad_alloc&) {
        task.recordName.clear(); // as of one that cannot be read: those wait for each other
    }
    turns[task.recordName].push_back(task.number);
    changed.wait(lock, [&] { return turns[task.recordName].front() == task.number; });
    return true;
}

void Batch::Finish(const Task& task, BatchItem item)
{
    const std::lock_guard<std::mutex> lock(mutex);
    std::deque<size_t>& turn = turns[task.recordName];
    turn.pop_front();
    if (turn.empty())
        turns.erase(task.recordName);
    if (failFast && item.state == ItemState::Failed)
        stopped = true;
    finished.emplace(task.number, std::move(item));
    ++done;
    changed.notify_all();
}

void Batch::Tell(const std::function<void(const BatchItem&)>& told,
                 const std::function<void(size_t)>& waiting)
{
    constexpr std::chrono::milliseconds patience{100};
    size_t number = 0; // recording that is told next
    std::unique_lock<std::mutex> lock(mutex);
    while (working > 0 || !finished.empty()) {
        const auto first = finished.find(number);
        if (first != finished.end()) {
            const BatchItem item = std::move(first->second);
            finished.erase(first);
            ++number;
            lock.unlock();
            told(item);
            lock.lock();
        } else {
            changed.wait_for(lock, patience);
        }
        const size_t count = done;
        lock.unlock();
        waiting(count);
        lock.lock();
    }
}
