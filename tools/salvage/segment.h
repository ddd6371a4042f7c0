// One recorder file of a damaged recording: which of its channels are whole.
//
// A recorder file has no checksums. A channel is whole if the library's own classes load it and nothing
// around it shows that it is not what the recorder wrote.
#pragma once

#include "text/error.h"

#include <QString>

#include <vector>

namespace salvage {

/// A file that could not be read just now, which says nothing about what is in it.
class Unreadable : public text::Error
{
public:
    using text::Error::Error;
};

enum class Kind { Analog, Discrete, Other };

/// A section whose header can be read.
struct Section
{
    Kind kind = Kind::Other;
    size_t number = 0; // among those of its kind, from 0: that of the channel in all files of the recording
    QString name;
    qint64 begin = 0; // where it is in the file, bytes
    qint64 end = 0;
    bool isWhole = false;
    bool isApart = true; // the library reads nothing of it beyond its end
    quint32 points = 0;  // samples and samples per second of an analog channel
    float rate = 0;

    bool IsChannel() const { return kind != Kind::Other; }

    /// Whether its bytes alone are the whole channel.
    bool CanBeTaken() const { return isWhole && isApart; }
};

struct Segment
{
    QString path;
    bool hasHeader = false;        // a good one; otherwise nothing else is known
    QString identity;              // of the recorder
    qint32 zone = 0;               // seconds
    quint32 duration = 0;          // microseconds, by the header
    size_t count = 0;              // of sections, by the header
    std::vector<Section> sections; // in file order; fewer than `count` where the others are lost

    /// Whether the header of each section is there.
    bool KnowsAll() const { return hasHeader && sections.size() == count; }

    /// Whether the library can use all of its channels.
    bool IsWhole() const;
};

/// Reads the file, of which one channel at a time is in memory. Not whole are
/// - a channel that the library does not load, and one whose number of samples or rate differs from that of
///   most others;
/// - what comes after a bad channel, unless the headers lead from there to the very end of the file;
/// - the channel before a hole (zeros), if its last sample or change is zero or its last change is not later
///   than the one before: the hole may have begun in it.
/// Throws Unreadable, and std::bad_alloc if memory is short.
Segment ReadSegment(const QString& path);

} // namespace salvage
