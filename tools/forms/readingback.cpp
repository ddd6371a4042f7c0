#include "forms/readingback.h"

#include "comtrade/datareader.h"

#include <new>
#include <system_error>

using comtrade::Block;

namespace forms {

namespace {

constexpr qint64 Stretch = qint64{4} << 20; // bytes that are worth opening the file for

} // namespace

ReadingBack::ReadingBack(const QString& path_, qint64 offset, const comtrade::Configuration& config_)
    : path(path_), config(config_), digest(config.analog.size(), config.states.size()), read(offset),
      written(offset)
{
    try {
        thread = std::thread([this] { Run(); });
    } catch (const std::system_error&) {
        hasFailed = true; // all is read after the end
    }
}

ReadingBack::~ReadingBack()
{
    Stop(false);
}

void ReadingBack::Written(qint64 bytes)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const bool isWorthIt = bytes / Stretch > written / Stretch;
    written = bytes;
    if (isWorthIt)
        changed.notify_all();
}

std::optional<Digest> ReadingBack::Finish()
{
    Stop(true);
    return hasFailed ? std::nullopt : std::optional<Digest>(digest);
}

void ReadingBack::Stop(bool isWanted)
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        hasEnded = true;
        isStopped = isStopped || !isWanted;
        changed.notify_all();
    }
    if (thread.joinable())
        thread.join();
}

void ReadingBack::Run()
{
    for (bool isLast = false; !isLast && !hasFailed;) {
        qint64 end = 0;
        {
            std::unique_lock<std::mutex> lock(mutex);
            changed.wait(lock, [this] { return written - read >= Stretch || hasEnded; });
            if (isStopped)
                return;
            end = written;
            isLast = hasEnded;
        }
        try {
            if (end > read)
                Read(read, end);
        } catch (const std::bad_alloc&) {
            hasFailed = true;
        } catch (const comtrade::Error&) {
            hasFailed = true; // whoever reads all of it will say where
        }
        read = end;
    }
}

void ReadingBack::Read(qint64 from, qint64 to)
{
    comtrade::DataReader reader(path, from, to - from, config);
    Block block;
    while (reader.Next(block))
        digest.Add(block);
}

} // namespace forms
