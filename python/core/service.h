// The library's converter in a process where any thread may convert.
#pragma once

#include "core/forks.h"
#include "zucmtr/host/host.h"
#include "zucmtr/host/recordform.h"
#include "zucmtr/run/batchitem.h"
#include "zucmtr/run/worker.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace core {

/// There is one converter in a process, with the defaults of one ini file, and setting it up must not meet a
/// conversion. Threads with the same choice convert at once, each with a worker of its own; another choice
/// waits until they are done. The workers stay for the next call. A child process that was made by a fork
/// while one was at work has half a converter: there everything throws.
class Service : public Forkable
{
public:
    static Service& Instance();

    /// Converts one recording as the order says. Throws ConfigurationError.
    BatchItem Convert(const DeviceChoice& choice, const WorkOrder& order, const Recording& recording);

    /// Does work that starts a converter of its own.
    void Alone(const std::function<void()>& work);

private:
    struct Setup;
    class Running;

    std::unique_lock<std::mutex> Lock();
    void WaitForOthers(std::unique_lock<std::mutex>& lock);
    void BeforeFork() override;
    void InParent() override;
    void InChild() override;

    std::mutex mutex;
    std::condition_variable changed;
    std::unique_ptr<Setup> setup;
    int running = 0; // conversions
    int waiting = 0; // for the converter to be idle; no conversion starts meanwhile
    bool isLockedForFork = false;
    bool isBroken = false; // by a fork
    const ForkableIsComplete complete{*this};
};

} // namespace core
