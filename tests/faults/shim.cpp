#include "shim.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace {

shim::Plan thePlan;
std::string theDirectory;
std::string struckPath;
shim::Kind struckKind = shim::All;
long counted = 0;
bool armed = false;
std::string openPaths[1024]; // by file descriptor, of files below the directory

template <class Function>
Function Next(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

// Counts a call; true if it is the one that has to fail.
bool Strikes(shim::Kind kind, const std::string& path)
{
    if (!armed || path.compare(0, theDirectory.size(), theDirectory) != 0 || (thePlan.kinds & kind) == 0)
        return false;
    ++counted;
    if (thePlan.onwards && counted > thePlan.nth) {
        errno = thePlan.error;
        return true;
    }
    if (counted != thePlan.nth)
        return false;
    struckPath = path;
    struckKind = kind;
    if (thePlan.action != nullptr) {
        armed = false;
        thePlan.action();
        armed = true;
    }
    if (thePlan.error != 0)
        errno = thePlan.error;
    return thePlan.error != 0 || thePlan.shortCount;
}

std::string PathOf(int descriptor)
{
    return descriptor >= 0 && descriptor < 1024 ? openPaths[descriptor] : std::string();
}

int Opened(int descriptor, const char* path)
{
    if (armed && descriptor >= 0 && descriptor < 1024)
        openPaths[descriptor] = path;
    return descriptor;
}

mode_t ModeOf(int flags, va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

} // namespace

void shim::Arm(const char* directory, const Plan& plan)
{
    thePlan = plan;
    theDirectory = directory;
    struckPath.clear();
    counted = 0;
    armed = true;
}

long shim::Disarm()
{
    armed = false;
    return counted;
}

const char* shim::Struck()
{
    return struckPath.c_str();
}

shim::Kind shim::StruckKind()
{
    return struckKind;
}

extern "C" {

__attribute__((visibility("default"))) int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    if (Strikes(shim::Open, path))
        return -1;
    static const auto next = Next<int (*)(const char*, int, ...)>("open64");
    return Opened(next(path, flags, mode), path);
}

__attribute__((visibility("default"))) int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    if (Strikes(shim::Open, path))
        return -1;
    static const auto next = Next<int (*)(const char*, int, ...)>("open");
    return Opened(next(path, flags, mode), path);
}

__attribute__((visibility("default"))) ssize_t read(int descriptor, void* buffer, size_t count)
{
    static const auto next = Next<ssize_t (*)(int, void*, size_t)>("read");
    if (Strikes(shim::Read, PathOf(descriptor))) {
        if (thePlan.error != 0)
            return -1;
        count = (count + 1) / 2;
    }
    return next(descriptor, buffer, count);
}

__attribute__((visibility("default"))) ssize_t write(int descriptor, const void* buffer, size_t count)
{
    static const auto next = Next<ssize_t (*)(int, const void*, size_t)>("write");
    if (Strikes(shim::Write, PathOf(descriptor))) {
        if (thePlan.error != 0)
            return -1;
        count = (count + 1) / 2;
    }
    return next(descriptor, buffer, count);
}

__attribute__((visibility("default"))) int close(int descriptor)
{
    static const auto next = Next<int (*)(int)>("close");
    const bool strikes = Strikes(shim::Close, PathOf(descriptor));
    const int error = errno;
    if (descriptor >= 0 && descriptor < 1024)
        openPaths[descriptor].clear();
    const int result = next(descriptor); // a failing close still frees the descriptor
    if (strikes && thePlan.error != 0) {
        errno = error;
        return -1;
    }
    return result;
}

__attribute__((visibility("default"))) int rename(const char* from, const char* to)
{
    static const auto next = Next<int (*)(const char*, const char*)>("rename");
    return Strikes(shim::Rename, from) ? -1 : next(from, to);
}

__attribute__((visibility("default"))) int renameat2(int fromDirectory, const char* from, int toDirectory,
                                                     const char* to, unsigned int flags)
{
    static const auto next = Next<int (*)(int, const char*, int, const char*, unsigned int)>("renameat2");
    return Strikes(shim::Rename, from) ? -1 : next(fromDirectory, from, toDirectory, to, flags);
}

__attribute__((visibility("default"))) char* mkdtemp(char* pattern)
{
    static const auto next = Next<char* (*)(char*)>("mkdtemp");
    return Strikes(shim::MakeDirectory, pattern) ? nullptr : next(pattern);
}

__attribute__((visibility("default"))) int unlink(const char* path)
{
    static const auto next = Next<int (*)(const char*)>("unlink");
    return Strikes(shim::Unlink, path) ? -1 : next(path);
}

__attribute__((visibility("default"))) int fsync(int descriptor)
{
    static const auto next = Next<int (*)(int)>("fsync");
    if (Strikes(shim::Sync, PathOf(descriptor)))
        return -1;
    return armed && thePlan.skipSync ? 0 : next(descriptor);
}

__attribute__((visibility("default"))) int fdatasync(int descriptor)
{
    static const auto next = Next<int (*)(int)>("fdatasync");
    return Strikes(shim::Sync, PathOf(descriptor)) ? -1 : next(descriptor);
}
}
