// Records on their way from one form into another.
//
//     RecordStream -> ChannelChoice -> TimeWindow -> Resampling -> a Writer for the form
//
// Each stage is a stream itself, so that a record of any length passes through in blocks.
#pragma once

#include "comtrade/record.h"

#include <QByteArray>

namespace forms {

/// Records, block by block, and the configuration that says what they are.
class Stream
{
public:
    Stream() = default;
    virtual ~Stream() = default;
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    /// Channels, rates and times of what this stage delivers; complete before the first block.
    virtual const comtrade::Configuration& Config() const = 0;

    /// The next records; false after the last one. Throws comtrade::Error for malformed data.
    virtual bool Next(comtrade::Block& block) = 0;
};

/// A record on disk as a stream.
class RecordStream : public Stream
{
public:
    explicit RecordStream(const QString& path, const comtrade::ReadingOptions& options = {})
        : record(path, options)
    {}

    const comtrade::Configuration& Config() const override { return record.Config(); }
    bool Next(comtrade::Block& block) override { return record.Next(block); }
    const comtrade::Record& Record() const { return record; }

private:
    comtrade::Record record;
};

/// Takes the records of a stream and makes files of them.
class Writer
{
public:
    Writer() = default;
    virtual ~Writer() = default;
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    /// Throws text::Error if the form cannot hold a value, or the disk the file.
    virtual void Write(const comtrade::Block& block) = 0;

    /// Completes the files. They are not whole without it.
    virtual void Finish() = 0;
};

} // namespace forms
