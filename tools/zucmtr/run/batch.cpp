#include "zucmtr/run/batch.h"

#include "zucmtr/run/worker.h"
#include "zucmtr/terminal/interrupt.h"

#include <chrono>
#include <new>
#include <thread>

namespace {

// One may have been larger than all that follow, so one alone does not end the run.
constexpr size_t MostWithoutRoom = 2;

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
             const BatchOrder& order_)
    : workers(workers_), recordings(recordings_), order(order_)
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

// The directory below that of the output, and the name.
QString Batch::PlaceOf(const Worker& worker, const Recording& recording) const
{
    const QString directory = order.mirror ? recording.below : QString();
    try {
        return directory + QLatin1Char('/') + worker.RecordName(recording.path);
    } catch (const std::bad_alloc&) {
        return directory + QLatin1Char('/'); // as of those that cannot be read: they wait for each other
    }
}

// Recordings whose records would be the same files are converted one after the other, in the order of the
// list, so that it is always the first that gets them.
bool Batch::Take(const Worker& worker, Task& task)
{
    std::unique_lock<std::mutex> lock(mutex);
    if (stopped || interrupt::Came() || next == recordings.size())
        return false;
    task.number = next++;
    task.place = PlaceOf(worker, recordings[task.number]);
    turns[task.place].push_back(task.number);
    changed.wait(lock, [&] { return turns[task.place].front() == task.number; });
    return true;
}

void Batch::Finish(const Task& task, BatchItem item)
{
    const std::lock_guard<std::mutex> lock(mutex);
    std::deque<size_t>& turn = turns[task.place];
    turn.pop_front();
    if (turn.empty())
        turns.erase(task.place);
    CountRoom(item);
    if (withoutRoom >= MostWithoutRoom || (order.failFast && item.state == ItemState::Failed))
        stopped = true;
    finished.emplace(task.number, std::move(item));
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

size_t Batch::NotBegunForRoom() const
{
    return withoutRoom >= MostWithoutRoom ? recordings.size() - next : 0;
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
