#include "zucmtr/run/batch.h"

#include "zucmtr/run/worker.h"
#include "zucmtr/terminal/interrupt.h"

#include <algorithm>
#include <chrono>
#include <new>
#include <thread>

namespace {

// That recording may be larger than all that follow, so one alone does not end the run.
constexpr size_t MostWithoutRoom = 2;

// Waits for its threads however the block is left.
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

void Batch::Run(const std::function<void(const BatchItem&)>& report,
                const std::function<void(size_t)>& waiting)
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
            break; // the threads started so far do the work
        }
    }
    try {
        ReportDone(report, waiting);
    } catch (...) {
        const std::lock_guard<std::mutex> lock(mutex);
        stopped = true; // the threads finish their current recordings
        throw;
    }
}

void Batch::Work(Worker& worker) noexcept
{
    std::exception_ptr failed;
    try {
        while (Task* task = Take(worker)) {
            task->item = worker.Work(recordings[task->number]);
            Finish(*task);
        }
    } catch (...) {
        failed = std::current_exception();
    }
    const std::lock_guard<std::mutex> lock(mutex);
    if (failed) {
        stopped = true;
        failure = failed;
    }
    --working;
    changed.notify_all();
}

// The directory relative to that of the output, and the name; nothing if memory is short.
std::optional<QString> Batch::PlaceOf(const Worker& worker, const Recording& recording)
{
    try {
        const RecordPlace place = worker.PlaceOf(recording);
        return place.below + QLatin1Char('/') + place.name;
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

// Recordings whose records would be the same files are converted one after the other, in the order of the
// list, so that always the first of them gets the names. Null if no further one is to be started.
Batch::Task* Batch::Take(const Worker& worker)
{
    std::list<Task> taken(1);
    Task* const task = &taken.front();
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (stopped || interrupt::Came() || next == recordings.size())
            return nullptr;
        task->number = next++;
        started.splice(started.end(), taken);
    }
    // Reading the file may take time, and nobody else has to wait for it.
    std::optional<QString> place = PlaceOf(worker, recordings[task->number]);
    std::unique_lock<std::mutex> lock(mutex);
    task->place = std::move(place);
    changed.notify_all();
    changed.wait(lock, [&] { return IsItsTurn(*task); });
    return task;
}

// Whether no earlier recording that is being worked on may have the same place. An unknown place may be any.
bool Batch::IsItsTurn(const Task& task) const
{
    return std::all_of(started.begin(), started.end(), [&](const Task& other) {
        return other.number >= task.number || other.isDone ||
               (other.place && task.place && *other.place != *task.place);
    });
}

void Batch::Finish(Task& task)
{
    const std::lock_guard<std::mutex> lock(mutex);
    CountRoom(task.item);
    if (withoutRoom >= MostWithoutRoom || (failFast && task.item.state == ItemState::Failed))
        stopped = true;
    task.isDone = true;
    ++done;
    changed.notify_all();
}

// Only a record that was written shows that there is room again.
void Batch::CountRoom(const BatchItem& item)
{
    if (item.state == ItemState::Failed && item.noRoom)
        ++withoutRoom;
    else if (item.state == ItemState::Converted)
        withoutRoom = 0;
}

size_t Batch::NotStartedForRoom() const
{
    return withoutRoom >= MostWithoutRoom ? recordings.size() - next : 0;
}

void Batch::ReportDone(const std::function<void(const BatchItem&)>& report,
                       const std::function<void(size_t)>& waiting)
{
    constexpr std::chrono::milliseconds patience{100};
    std::unique_lock<std::mutex> lock(mutex);
    while (working > 0 || (!started.empty() && started.front().isDone)) {
        if (!started.empty() && started.front().isDone) {
            std::list<Task> first;
            first.splice(first.end(), started, started.begin());
            lock.unlock();
            report(first.front().item);
            lock.lock();
        } else {
            changed.wait_for(lock, patience);
        }
        const size_t count = done;
        lock.unlock();
        waiting(count);
        lock.lock();
    }
    if (failure)
        std::rethrow_exception(failure);
}
