#include "forms/ahead.h"

#include <system_error>
#include <utility>

using comtrade::Block;

namespace forms {

void Ahead::Start()
{
    isStarted = true;
    try {
        thread = std::thread([this] { Run(); });
    } catch (const std::system_error&) {
        isDirect = true;
    }
}

void Ahead::Run()
{
    std::exception_ptr thrown;
    try {
        Block block;
        while (source.Next(block) && Put(block)) {
        }
    } catch (...) {
        thrown = std::current_exception();
    }
    const std::lock_guard<std::mutex> lock(mutex);
    failure = thrown;
    hasEnded = true;
    changed.notify_all();
}

// Adds a block and leaves another one in its place. False if no more are wanted.
bool Ahead::Put(Block& block)
{
    std::unique_lock<std::mutex> lock(mutex);
    changed.wait(lock, [this] { return ready.size() < Depth || isStopped; });
    if (isStopped)
        return false;
    ready.push_back(std::move(block));
    block = Block();
    if (!used.empty()) {
        block = std::move(used.back());
        used.pop_back();
    }
    changed.notify_all();
    return true;
}

bool Ahead::Next(Block& block)
{
    if (!isStarted)
        Start();
    if (isDirect)
        return source.Next(block);
    std::unique_lock<std::mutex> lock(mutex);
    changed.wait(lock, [this] { return !ready.empty() || hasEnded || isStopped; });
    if (ready.empty()) {
        if (failure)
            std::rethrow_exception(failure);
        return false;
    }
    used.push_back(std::move(block));
    block = std::move(ready.front());
    ready.erase(ready.begin());
    changed.notify_all();
    return true;
}

void Ahead::Stop()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        isStopped = true;
        changed.notify_all();
    }
    if (thread.joinable())
        thread.join();
}

} // namespace forms
