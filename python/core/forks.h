// What a child process must know that a fork has made of a process with threads.
#pragma once

namespace core {

/// Has copies in the children of this process. Locks are there as they were: held by threads that a child has
/// not, for ever.
class Forkable
{
public:
    Forkable() = default;
    virtual ~Forkable() = default;
    Forkable(const Forkable&) = delete;
    Forkable& operator=(const Forkable&) = delete;

    /// Called by the thread that forks, usually with the interpreter's lock: they must not wait.
    virtual void BeforeFork() {}
    virtual void InParent() {}
    virtual void InChild() = 0;
};

/// The last member of a Forkable: it is called while it is complete.
class ForkableIsComplete
{
public:
    explicit ForkableIsComplete(Forkable& object_);
    ~ForkableIsComplete();
    ForkableIsComplete(const ForkableIsComplete&) = delete;
    ForkableIsComplete& operator=(const ForkableIsComplete&) = delete;

private:
    Forkable& object;
};

} // namespace core
