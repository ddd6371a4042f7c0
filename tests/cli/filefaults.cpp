// Loaded into the program before the C library: calls that fail or wait, as the environment says.
//   FAULT_CALL      open, read (of whatever kind) or stat
//   FAULT_NAME      name of the file
//   FAULT_NTH       the call of that kind on files of that name, counted from 1, that fails
//   FAULT_ONWARDS   if set, all later ones fail, too
//   FAULT_ERROR     errno
//   HELD_NAME       opening a file of this name waits until the file of the path HELD_UNTIL is there
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sched.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#define VISIBLE __attribute__((visibility("default")))

namespace {

std::atomic<long> counted{0};

bool HasName(const char* path, const char* variable)
{
    const char* name = std::getenv(variable);
    const char* slash = std::strrchr(path, '/');
    return name != nullptr && std::strcmp(slash == nullptr ? path : slash + 1, name) == 0;
}

bool Fails(const char* call, const char* path)
{
    const char* which = std::getenv("FAULT_CALL");
    if (which == nullptr || std::strcmp(which, call) != 0 || !HasName(path, "FAULT_NAME"))
        return false;
    const long nth = std::atol(std::getenv("FAULT_NTH"));
    const long now = ++counted;
    if (now < nth || (now > nth && std::getenv("FAULT_ONWARDS") == nullptr))
        return false;
    errno = std::atoi(std::getenv("FAULT_ERROR"));
    return true;
}

bool Fails(const char* call, int file)
{
    std::array<char, 4096> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    return readlink(link.c_str(), path.data(), path.size() - 1) > 0 && Fails(call, path.data());
}

template <class Function>
Function Next(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

int Open(const char* name, const char* path, int flags, mode_t mode)
{
    if (HasName(path, "HELD_NAME")) {
        while (access(std::getenv("HELD_UNTIL"), F_OK) != 0)
            sched_yield();
    }
    return Fails("open", path) ? -1 : Next<int (*)(const char*, int, ...)>(name)(path, flags, mode);
}

mode_t ModeOf(int flags, va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

} // namespace

extern "C" {

VISIBLE int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Open("open", path, flags, mode);
}

VISIBLE int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Open("open64", path, flags, mode);
}

VISIBLE ssize_t read(int file, void* buffer, size_t count)
{
    return Fails("read", file) ? -1 : Next<ssize_t (*)(int, void*, size_t)>("read")(file, buffer, count);
}

VISIBLE ssize_t pread64(int file, void* buffer, size_t count, off64_t from)
{
    return Fails("read", file)
               ? -1
               : Next<ssize_t (*)(int, void*, size_t, off64_t)>("pread64")(file, buffer, count, from);
}

VISIBLE ssize_t pread(int file, void* buffer, size_t count, off_t from)
{
    return Fails("read", file)
               ? -1
               : Next<ssize_t (*)(int, void*, size_t, off_t)>("pread")(file, buffer, count, from);
}

VISIBLE int statx(int directory, const char* path, int flags, unsigned int mask, struct statx* status)
{
    if (*path == '\0' ? Fails("stat", directory) : Fails("stat", path))
        return -1;
    using Statx = int (*)(int, const char*, int, unsigned int, struct statx*);
    return Next<Statx>("statx")(directory, path, flags, mask, status);
}
}
