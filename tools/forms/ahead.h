// Blocks of a stream made in a thread of their own, while the ones before are worked on.
#pragma once

#include "forms/stream.h"

#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace forms {

/// Delivers what its source does, in the same order, with the same failure at the end. The source belongs to
/// the thread from the first Next until Stop. Without another thread, as where memory is short, it is asked
/// directly.
class Ahead : public Stream
{
public:
    /// The source must outlive it.
    explicit Ahead(Stream& source_) : source(source_) {}
    ~Ahead() override { Stop(); }

    const comtrade::Configuration& Config() const override { return source.Config(); }
    bool Next(comtrade::Block& block) override;

    /// Lets the thread end. No more blocks come.
    void Stop();

private:
    static constexpr size_t Depth = 4; // blocks that wait

    void Start();
    void Run();
    bool Put(comtrade::Block& block);

    Stream& source;
    bool isStarted = false;
    bool isDirect = false;
    std::thread thread;

    std::mutex mutex; // of what follows
    std::condition_variable changed;
    std::vector<comtrade::Block> ready; // in their order
    std::vector<comtrade::Block> used;  // whose memory is used again
    bool hasEnded = false;
    bool isStopped = false;
    std::exception_ptr failure;
};

} // namespace forms
