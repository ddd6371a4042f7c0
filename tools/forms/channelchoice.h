// Some of the channels of a record.
#pragma once

#include "forms/export.h"
#include "forms/stream.h"
#include "text/error.h"

#include <QStringList>

#include <vector>

namespace forms {

/// A pattern that no channel has.
class NoSuchChannel : public text::Error
{
public:
    NoSuchChannel(const QString& sentence, const QString& pattern_) : text::Error(sentence), pattern(pattern_)
    {}
    const QString pattern;
};

/// All channels.
ChannelSet AllChannels(const comtrade::Configuration& config);

/// The channels whose name or circuit a pattern matches, or whose place it gives: A3 is the third analog
/// channel, D5 the fifth discrete one. * stands for any letters, ? for one; letters match in either case.
/// Those of `places` are chosen besides; all of them if neither is given. Throws NoSuchChannel for the first
/// pattern that matches nothing.
ChannelSet Choose(const comtrade::Configuration& config, const QStringList& patterns,
                  const ChannelSet& places);

/// Delivers the channels of a set, counted from 1.
class ChannelChoice : public Stream
{
public:
    /// The source must outlive it.
    ChannelChoice(Stream& source_, ChannelSet set_);

    const comtrade::Configuration& Config() const override { return config; }
    bool Next(comtrade::Block& block) override;

private:
    Stream& source;
    const ChannelSet set;
    comtrade::Configuration config;
    comtrade::Block whole;
};

} // namespace forms
