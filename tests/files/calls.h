// The calls to the system that the code under test makes with files, for tests that fail one of them, end the
// process before it, or do something of their own before it.
#pragma once

#include <functional>
#include <string>

namespace calls {

struct Call
{
    std::string name;
    std::string path;   // also of an open file
    std::string target; // of a rename or a link
    /// Whether it can change something on a disk.
    bool Writes() const;
};

/// Called before each call: returns the errno to fail with, or 0 to let the call proceed. Its own calls are
/// not watched.
using Hook = std::function<int(const Call&)>;

/// Calls the hook as long as this object lives.
class Watch
{
public:
    explicit Watch(Hook hook);
    ~Watch();
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
};

/// File times without fractions of a second, as on some file systems, as long as this object lives.
class WholeSeconds
{
public:
    WholeSeconds();
    ~WholeSeconds();
    WholeSeconds(const WholeSeconds&) = delete;
    WholeSeconds& operator=(const WholeSeconds&) = delete;
};

/// The wall clock is ahead by this much as long as this object lives; that of the file systems is not.
class Ahead
{
public:
    explicit Ahead(long seconds_);
    ~Ahead();
    Ahead(const Ahead&) = delete;
    Ahead& operator=(const Ahead&) = delete;
};

} // namespace calls
