#include "calls.h"

#include <array>
#include <cerrno>
#include <cstdarg>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

calls::Hook theHook;
bool secondsAreWhole = false;
long ahead = 0;

std::string PathOf(int file)
{
    std::array<char, 4096> path{};
    const ssize_t size =
        readlink(("/proc/self/fd/" + std::to_string(file)).c_str(), path.data(), path.size());
    return size > 0 ? std::string(path.data(), static_cast<size_t>(size)) : std::string();
}

// Whether the hook has the call fail.
bool Fails(const char* name, const std::string& path, const std::string& target = std::string())
{
    if (!theHook)
        return false;
    const calls::Hook hook = std::exchange(theHook, nullptr);
    const int error = hook({name, path, target});
    theHook = hook;
    if (error != 0)
        errno = error;
    return error != 0;
}

} // namespace

namespace calls {

bool Call::Writes() const
{
    return name != "open" && name != "pread" && name != "statx" && name != "flock";
}

Watch::Watch(Hook hook)
{
    theHook = std::move(hook);
}

Watch::~Watch()
{
    theHook = nullptr;
}

WholeSeconds::WholeSeconds()
{
    secondsAreWhole = true;
}

WholeSeconds::~WholeSeconds()
{
    secondsAreWhole = false;
}

Ahead::Ahead(long seconds_)
{
    ahead = seconds_;
}

Ahead::~Ahead()
{
    ahead = 0;
}

} // namespace calls

// The linker calls __wrap_X in the place of X, which is __real_X then.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {

int __real_clock_gettime(clockid_t, timespec*);
int __real_fchmod(int, mode_t);
int __real_fchown(int, uid_t, gid_t);
int __real_flock(int, int);
int __real_futimens(int, const timespec*);
int __real_link(const char*, const char*);
int __real_linkat(int, const char*, int, const char*, int);
int __real_mkdir(const char*, mode_t);
int __real_open(const char*, int, ...);
ssize_t __real_pread(int, void*, size_t, off_t);
int __real_rename(const char*, const char*);
int __real_renameat2(int, const char*, int, const char*, unsigned int);
int __real_statx(int, const char*, int, unsigned int, struct statx*);
time_t __real_time(time_t*);
int __real_unlink(const char*);
ssize_t __real_write(int, const void*, size_t);

int __wrap_clock_gettime(clockid_t clock, timespec* now)
{
    const int result = __real_clock_gettime(clock, now);
    now->tv_sec += ahead;
    return result;
}

int __wrap_fchmod(int file, mode_t mode)
{
    return Fails("fchmod", PathOf(file)) ? -1 : __real_fchmod(file, mode);
}

int __wrap_fchown(int file, uid_t user, gid_t group)
{
    return Fails("fchown", PathOf(file)) ? -1 : __real_fchown(file, user, group);
}

int __wrap_flock(int file, int operation)
{
    return Fails("flock", PathOf(file)) ? -1 : __real_flock(file, operation);
}

int __wrap_fsync(int file) // does not wait for the disk: thousands of waits take minutes
{
    return Fails("fsync", PathOf(file)) ? -1 : 0;
}

int __wrap_futimens(int file, const timespec* times)
{
    return Fails("futimens", PathOf(file)) ? -1 : __real_futimens(file, times);
}

int __wrap_link(const char* from, const char* to)
{
    return Fails("link", from, to) ? -1 : __real_link(from, to);
}

int __wrap_linkat(int fromDirectory, const char* from, int toDirectory, const char* to, int flags)
{
    return Fails("linkat", from, to) ? -1 : __real_linkat(fromDirectory, from, toDirectory, to, flags);
}

int __wrap_mkdir(const char* path, mode_t mode)
{
    return Fails("mkdir", path) ? -1 : __real_mkdir(path, mode);
}

int __wrap_open(const char* path, int flags, ...)
{
    mode_t mode = 0;
    if ((flags & O_CREAT) != 0) {
        va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    const char* const name = (flags & O_CREAT) != 0 ? "create" : "open";
    return Fails(name, path) ? -1 : __real_open(path, flags, mode);
}

ssize_t __wrap_pread(int file, void* buffer, size_t count, off_t from)
{
    return Fails("pread", PathOf(file)) ? -1 : __real_pread(file, buffer, count, from);
}

int __wrap_rename(const char* from, const char* to)
{
    return Fails("rename", from, to) ? -1 : __real_rename(from, to);
}

int __wrap_renameat2(int fromDirectory, const char* from, int toDirectory, const char* to, unsigned int flags)
{
    return Fails("renameat2", from, to) ? -1 : __real_renameat2(fromDirectory, from, toDirectory, to, flags);
}

int __wrap_statx(int directory, const char* path, int flags, unsigned int mask, struct statx* status)
{
    if (Fails("statx", *path == '\0' ? PathOf(directory) : path))
        return -1;
    const int result = __real_statx(directory, path, flags, mask, status);
    if (secondsAreWhole) {
        status->stx_mtime.tv_nsec = 0;
        status->stx_ctime.tv_nsec = 0;
    }
    return result;
}

time_t __wrap_time(time_t* result)
{
    return __real_time(result) + ahead;
}

int __wrap_unlink(const char* path)
{
    return Fails("unlink", path) ? -1 : __real_unlink(path);
}

ssize_t __wrap_write(int file, const void* bytes, size_t count)
{
    return Fails("write", PathOf(file)) ? -1 : __real_write(file, bytes, count);
}

} // extern "C"
// NOLINTEND(bugprone-reserved-identifier)
