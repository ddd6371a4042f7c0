#include "core/forks.h"

#include <pthread.h>

#include <mutex>
#include <set>

namespace core {

namespace {

// Never destroyed: a thread may still be at work when the process ends.
struct Registry
{
    std::mutex mutex; // held while the process forks
    std::set<Forkable*> objects;
};

Registry& Everything()
{
    static auto* const registry = new Registry;
    return *registry;
}

void Prepare()
{
    Everything().mutex.lock();
    for (Forkable* object : Everything().objects)
        object->BeforeFork();
}

void GoOnInParent()
{
    for (Forkable* object : Everything().objects)
        object->InParent();
    Everything().mutex.unlock();
}

void GoOnInChild()
{
    for (Forkable* object : Everything().objects)
        object->InChild();
    Everything().mutex.unlock();
}

} // namespace

ForkableIsComplete::ForkableIsComplete(Forkable& object_) : object(object_)
{
    static const int registered = pthread_atfork(Prepare, GoOnInParent, GoOnInChild);
    static_cast<void>(registered);
    const std::lock_guard lock(Everything().mutex);
    Everything().objects.insert(&object);
}

ForkableIsComplete::~ForkableIsComplete()
{
    const std::lock_guard lock(Everything().mutex);
    Everything().objects.erase(&object);
}

} // namespace core
