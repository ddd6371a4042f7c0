// Data that are read back while they are still being written.
#pragma once

#include "forms/digest.h"

#include <QString>

#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

namespace forms {

/// Follows the writer of a data file in a thread of its own. What it reads comes from the file, as it would
/// after the end.
class ReadingBack
{
public:
    /// config: of the record; offset: of its data in the file. The configuration must outlive it.
    ReadingBack(const QString& path_, qint64 offset, const comtrade::Configuration& config_);
    ~ReadingBack();
    ReadingBack(const ReadingBack&) = delete;
    ReadingBack& operator=(const ReadingBack&) = delete;

    /// The file is written up to here, which is the end of a record.
    void Written(qint64 bytes);

    /// The digest of all that was written, whose last byte was told; nothing if it could not be read.
    std::optional<Digest> Finish();

private:
    void Run();
    void Read(qint64 from, qint64 to);
    void Stop(bool isWanted);

    const QString path;
    const comtrade::Configuration& config;
    Digest digest;
    bool hasFailed = false;
    qint64 read;

    std::mutex mutex; // of what follows
    std::condition_variable changed;
    qint64 written;
    bool hasEnded = false;
    bool isStopped = false;
    std::thread thread;
};

} // namespace forms
