// Loaded into the program before the C library: notes, stops, kills or fails its file calls below given
// directories. Configured by the environment:
//
//     TORTURE_DIRECTORIES   absolute paths, separated by ':'; only calls on paths below these count
//     TORTURE_KINDS         kinds of calls that count, separated by ',' (the names in kindNames); unset: all
//     TORTURE_PLAN          "kill N", "stop N" (SIGSTOP), "fail N ERRNO", "from N ERRNO" (call N and all
//     later
//                           ones) or "short N" (half of the bytes); N counts from 1; unset: nothing happens
//     TORTURE_LOG           file to which each call is appended, a line of fields separated by tabs:
//                           kind, path, second path, device:inode, offset, length, position in the data file,
//                           flags; a call that was struck has kind "struck" and its kind as second path
//     TORTURE_DATA          file to which the written bytes are appended
//
// The shim's own calls go to the kernel directly, so that they are not seen by itself.
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <mutex>
#include <sstream>
#include <string>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/uio.h>
#include <type_traits>
#include <unistd.h>
#include <vector>

#define VISIBLE __attribute__((visibility("default")))

namespace {

enum Kind {
    Open,
    Create,
    Read,
    Write,
    Close,
    Stat,
    List,
    Rename,
    Link,
    Unlink,
    MakeDirectory,
    RemoveDirectory,
    Truncate,
    Attribute,
    Sync,
    Copy,
    Lock,
    Map,
    Print, // what goes to standard output; never counted
    KindCount
};

const std::array<const char*, KindCount> kindNames = {
    "open",  "create", "read",     "write",     "close", "stat", "list", "rename", "link", "unlink",
    "mkdir", "rmdir",  "truncate", "attribute", "sync",  "copy", "lock", "map",    "print"};

struct Call
{
    Kind kind;
    std::string path;
    std::string second = {};
    int file = -1;        // the descriptor worked on, or the resulting one
    long flags = 0;       // of open, rename
    long long length = 0; // bytes asked for or done
    long long offset = -1;
    const void* data = nullptr;
};

template <class Function>
Function Next(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

std::string Variable(const char* name)
{
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

std::vector<std::string> Split(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);)
        parts.push_back(part);
    return parts;
}

// A descriptor for the shim itself, with a number that the program does not get.
int OpenOwn(const std::string& path)
{
    if (path.empty())
        return -1;
    const auto file = static_cast<int>(
        syscall(SYS_openat, AT_FDCWD, path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666));
    const auto moved = static_cast<int>(syscall(SYS_fcntl, file, F_DUPFD_CLOEXEC, 700));
    syscall(SYS_close, file);
    return moved;
}

class Shim
{
public:
    Shim()
        : directories(Split(Variable("TORTURE_DIRECTORIES"), ':')), log(OpenOwn(Variable("TORTURE_LOG"))),
          data(OpenOwn(Variable("TORTURE_DATA")))
    {
        std::istringstream plan(Variable("TORTURE_PLAN"));
        plan >> action >> nth >> error;
        const std::string kinds = Variable("TORTURE_KINDS");
        for (size_t kind = 0; kind < Print; ++kind)
            counts.at(kind) = kinds.empty();
        for (const std::string& name : Split(kinds, ','))
            for (size_t kind = 0; kind < Print; ++kind)
                counts.at(kind) = counts.at(kind) || name == kindNames.at(kind);
    }

    bool Concerns(const std::string& path) const
    {
        for (const std::string& directory : directories)
            if (path.compare(0, directory.size(), directory) == 0 &&
                (path.size() == directory.size() || path[directory.size()] == '/'))
                return true;
        return false;
    }

    // What happens to the call: whether it fails (with errno set), and whether it takes half of its bytes.
    struct Fate
    {
        bool fails = false;
        bool isShort = false;
    };

    Fate Meet(const Call& call)
    {
        if (action.empty() || !counts.at(call.kind))
            return {};
        ++counted;
        if (counted != nth && !(action == "from" && counted > nth))
            return {};
        Note({Print, call.path, kindNames.at(call.kind)}, "struck");
        if (action == "kill")
            syscall(SYS_kill, getpid(), SIGKILL);
        if (action == "stop")
            syscall(SYS_kill, getpid(), SIGSTOP);
        if (action == "short")
            return {false, true};
        if (action != "fail" && action != "from")
            return {};
        errno = error;
        return {true, false};
    }

    void Note(const Call& call, const char* name)
    {
        if (log < 0)
            return;
        struct stat status = {};
        if (call.file >= 0)
            syscall(SYS_fstat, call.file, &status);
        else if (call.kind == Link)
            syscall(SYS_newfstatat, AT_FDCWD, call.second.c_str(), &status, AT_SYMLINK_NOFOLLOW);
        std::ostringstream line;
        line << name << '\t' << call.path << '\t' << call.second << '\t' << status.st_dev << ':'
             << status.st_ino << '\t' << call.offset << '\t' << call.length << '\t' << Keep(call) << '\t'
             << call.flags << '\n';
        const std::string text = line.str();
        syscall(SYS_write, log, text.data(), text.size());
    }

    std::recursive_mutex mutex;

private:
    // Puts the bytes of a write into the data file; returns their position in it.
    long long Keep(const Call& call)
    {
        if (call.data == nullptr || data < 0)
            return -1;
        const long long position = kept;
        kept += syscall(SYS_write, data, call.data, static_cast<size_t>(call.length));
        return position;
    }

    const std::vector<std::string> directories;
    std::array<bool, KindCount> counts = {};
    std::string action;
    long nth = 0;
    long counted = 0;
    int error = 0;
    int log;
    int data;
    long long kept = 0;
};

Shim& TheShim()
{
    static auto* const shim = new Shim; // never destroyed: calls come until the very end
    return *shim;
}

std::string Normal(const std::string& path)
{
    std::string result;
    for (const std::string& part : Split(path, '/'))
        if (!part.empty() && part != ".")
            result += '/' + part;
    return result;
}

std::string LinkOf(const std::string& link)
{
    std::array<char, 4096> target = {};
    const long size = syscall(SYS_readlinkat, AT_FDCWD, link.c_str(), target.data(), target.size());
    return std::string(target.data(), size > 0 ? static_cast<size_t>(size) : 0);
}

std::string PathOf(int file)
{
    return LinkOf("/proc/self/fd/" + std::to_string(file));
}

std::string PathOf(const char* path, int directory = AT_FDCWD)
{
    if (path == nullptr || path[0] == '\0')
        return directory == AT_FDCWD ? std::string() : PathOf(directory);
    if (path[0] == '/')
        return Normal(path);
    return Normal((directory == AT_FDCWD ? LinkOf("/proc/self/cwd") : PathOf(directory)) + '/' + path);
}

// The return value of a failed call.
template <class Result>
Result Failure()
{
    if constexpr (std::is_pointer_v<Result>)
        return nullptr;
    else
        return static_cast<Result>(-1);
}

template <class Result>
bool Failed(Result result)
{
    return result == Failure<Result>();
}

// Makes the call unless its fate is to fail, and notes it if it was made. done fills in what is known only
// then.
template <class Function, class Done>
auto Do(Call call, Function function, Done done) -> decltype(function(call))
{
    using Result = decltype(function(call));
    Shim& shim = TheShim();
    if (!shim.Concerns(call.path) && (call.second.empty() || !shim.Concerns(call.second)))
        return function(call);
    const std::lock_guard<std::recursive_mutex> lock(shim.mutex);
    const int before = errno; // stays as it was if the call succeeds
    const Shim::Fate fate = shim.Meet(call);
    if (fate.fails && call.kind != Close)
        return Failure<Result>();
    if (fate.isShort && call.length > 1)
        call.length /= 2;
    if (!fate.fails)
        errno = before;
    const int error = errno;
    const Result result = function(call);
    const int after = errno;
    if (!Failed(result)) {
        done(call, result);
        shim.Note(call, kindNames.at(call.kind));
    }
    errno = after;
    if (fate.fails) { // a failing close still frees the descriptor
        errno = error;
        return Failure<Result>();
    }
    return result;
}

template <class Function>
auto Do(const Call& call, Function function) -> decltype(function(call))
{
    return Do(call, function, [](Call&, auto) {});
}

// The position of a file after reading or writing.
long long Position(int file)
{
    return syscall(SYS_lseek, file, 0, SEEK_CUR);
}

constexpr long createdFlag = 1L << 40; // in the flags of an open: the file was not there before

template <class Function>
auto DoOpen(const std::string& path, int flags, Function function)
{
    const bool creates = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    struct stat status = {};
    const bool wasThere =
        syscall(SYS_newfstatat, AT_FDCWD, path.c_str(), &status, 0) == 0 && (flags & O_TMPFILE) != O_TMPFILE;
    Call call{creates ? Create : Open, path};
    call.flags = flags | (wasThere ? 0 : createdFlag);
    return Do(call, function, [](Call& done, auto result) {
        if constexpr (std::is_pointer_v<decltype(result)>)
            done.file = fileno(result);
        else
            done.file = result;
    });
}

mode_t ModeOf(int flags, va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

int DoOpenAt(const char* name, int directory, const char* path, int flags, mode_t mode)
{
    const auto next = Next<int (*)(int, const char*, int, ...)>(name);
    return DoOpen(PathOf(path, directory), flags,
                  [&](const Call&) { return next(directory, path, flags, mode); });
}

int DoOpenPlain(const char* name, const char* path, int flags, mode_t mode)
{
    const auto next = Next<int (*)(const char*, int, ...)>(name);
    return DoOpen(PathOf(path), flags, [&](const Call&) { return next(path, flags, mode); });
}

std::FILE* DoOpenStream(const char* name, const char* path, const char* mode)
{
    const auto next = Next<std::FILE* (*)(const char*, const char*)>(name);
    const int flags = mode[0] == 'w' ? O_CREAT | O_TRUNC : mode[0] == 'a' ? O_CREAT | O_APPEND : 0;
    return DoOpen(PathOf(path), flags, [&](const Call&) { return next(path, mode); });
}

// A call on an open file that moves bytes; at is where, -1 for the file's position.
template <class Function>
ssize_t DoBytes(Kind kind, int file, const void* data, size_t count, long long at, Function function)
{
    const std::string path = PathOf(file);
    if (kind == Write && file == STDOUT_FILENO && !TheShim().Concerns(path)) {
        const ssize_t result = function(count);
        const int after = errno;
        if (result > 0)
            TheShim().Note({Print, path, {}, -1, 0, result, -1, data}, kindNames.at(Print));
        errno = after;
        return result;
    }
    Call call{kind, path, {}, file};
    call.length = static_cast<long long>(count);
    return Do(
        call, [&](const Call& known) { return function(static_cast<size_t>(known.length)); },
        [&](Call& done, ssize_t result) {
            done.length = result;
            done.offset = at >= 0 ? at : Position(file) - result;
            done.data = kind == Write ? data : nullptr;
        });
}

std::string Joined(const iovec* parts, int count)
{
    std::string bytes;
    for (int i = 0; i < count; ++i)
        bytes.append(static_cast<const char*>(parts[i].iov_base), parts[i].iov_len);
    return bytes;
}

// A copy inside the kernel is noted as the write that it amounts to.
template <class Function>
ssize_t DoCopy(int to, const off64_t* at, size_t count, Function function)
{
    std::string bytes;
    Call call{Copy, PathOf(to), {}, to};
    call.length = static_cast<long long>(count);
    return Do(
        call, [&](const Call& known) { return function(static_cast<size_t>(known.length)); },
        [&](Call& done, ssize_t result) {
            done.kind = Write;
            done.length = result;
            done.offset = (at != nullptr ? *at : Position(to)) - result;
            const std::string link = "/proc/self/fd/" + std::to_string(to);
            const auto file =
                static_cast<int>(syscall(SYS_openat, AT_FDCWD, link.c_str(), O_RDONLY | O_CLOEXEC));
            bytes.resize(static_cast<size_t>(result));
            syscall(SYS_pread64, file, bytes.data(), bytes.size(), done.offset);
            syscall(SYS_close, file);
            done.data = bytes.data();
        });
}

template <class Function>
int DoRename(const char* from, int fromDirectory, const char* to, int toDirectory, unsigned int flags,
             Function function)
{
    Call call{Rename, PathOf(from, fromDirectory), PathOf(to, toDirectory)};
    call.flags = flags;
    return Do(call, [&](const Call&) { return function(); });
}

template <class Function>
int DoPath(Kind kind, const char* path, int directory, Function function)
{
    return Do({kind, PathOf(path, directory)}, [&](const Call&) { return function(); });
}

template <class Function>
int DoFile(Kind kind, int file, Function function)
{
    return Do({kind, PathOf(file), {}, file}, [&](const Call&) { return function(); });
}

template <class Function>
int DoTruncate(const std::string& path, int file, off64_t length, Function function)
{
    Call call{Truncate, path, {}, file};
    call.length = length;
    return Do(call, [&](const Call&) { return function(); });
}

} // namespace

#include "shimcalls.h"
