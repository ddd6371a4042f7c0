// Loaded into the program before the C library: faults of the system, as the environment says.
//   END_AT          the process that opens a file of this name is ended by SIGKILL, or the signal END_BY
//   GONE_AT         the file of this name is removed when it is opened
//   UNSEEN          nothing of this name can be checked while the file that UNSEEN_WHILE names is there
//   UNUSABLE        the same, of directories that are written to, once the program has started
//   FULL            there is no room for files whose paths start so while the file FULL_WHILE is there
//   READ_ONLY       nothing in the directory of this path can be renamed while the file READ_ONLY_WHILE is
//   there NO_WATCHES      no directory is watched
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool HasName(const char* path, const char* variable)
{
    const char* name = std::getenv(variable);
    const char* slash = std::strrchr(path, '/');
    return name != nullptr && std::strcmp(slash == nullptr ? path : slash + 1, name) == 0;
}

// While the file that the second variable names is there.
bool IsHit(const char* path, const char* variable, const char* whileVariable)
{
    const char* marker = std::getenv(whileVariable);
    return marker != nullptr && HasName(path, variable) && access(marker, F_OK) == 0;
}

bool IsFull(int file)
{
    const char* begin = std::getenv("FULL");
    if (begin == nullptr || access(std::getenv("FULL_WHILE"), F_OK) != 0)
        return false;
    std::array<char, 4096> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    return readlink(link.c_str(), path.data(), path.size() - 1) > 0 &&
           std::strncmp(path.data(), begin, std::strlen(begin)) == 0;
}

// The directory, or a file in it.
bool IsReadOnly(const std::string& path)
{
    const char* directory = std::getenv("READ_ONLY");
    const char* marker = std::getenv("READ_ONLY_WHILE");
    struct stat status = {};
    return directory != nullptr && (path + '/').rfind(std::string(directory) + '/', 0) == 0 &&
           lstat(marker, &status) == 0;
}

template <class Function>
Function Next(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

int Open(const char* name, const char* path, int flags, mode_t mode)
{
    if (HasName(path, "END_AT"))
        raise(std::getenv("END_BY") == nullptr ? SIGKILL : std::atoi(std::getenv("END_BY")));
    if (HasName(path, "GONE_AT"))
        unlink(path);
    return Next<int (*)(const char*, int, ...)>(name)(path, flags, mode);
}

// The call that the program uses to check whether it can write; its start asks Qt.
int Stat(const char* name, const char* path, void* status)
{
    if (IsHit(path, "UNUSABLE", "UNUSABLE_WHILE")) {
        errno = EIO;
        return -1;
    }
    return Next<int (*)(const char*, void*)>(name)(path, status);
}

} // namespace

#define EXPORTED __attribute__((visibility("default")))

extern "C" {

EXPORTED int open(const char* path, int flags, ...)
{
    va_list more;
    va_start(more, flags);
    const auto mode = va_arg(more, mode_t);
    va_end(more);
    return Open("open", path, flags, mode);
}

EXPORTED int open64(const char* path, int flags, ...)
{
    va_list more;
    va_start(more, flags);
    const auto mode = va_arg(more, mode_t);
    va_end(more);
    return Open("open64", path, flags, mode);
}

EXPORTED int stat(const char* path, struct stat* status)
{
    return Stat("stat", path, status);
}

EXPORTED int stat64(const char* path, struct stat64* status)
{
    return Stat("stat64", path, status);
}

EXPORTED int statx(int directory, const char* path, int flags, unsigned int mask, struct statx* status)
{
    if (IsHit(path, "UNSEEN", "UNSEEN_WHILE")) {
        errno = EIO;
        return -1;
    }
    return Next<int (*)(int, const char*, int, unsigned int, struct statx*)>("statx")(directory, path, flags,
                                                                                      mask, status);
}

EXPORTED ssize_t write(int file, const void* bytes, size_t count)
{
    if (IsFull(file)) {
        errno = ENOSPC;
        return -1;
    }
    return Next<ssize_t (*)(int, const void*, size_t)>("write")(file, bytes, count);
}

EXPORTED ssize_t pwrite64(int file, const void* bytes, size_t count, off64_t offset)
{
    if (IsFull(file)) {
        errno = ENOSPC;
        return -1;
    }
    return Next<ssize_t (*)(int, const void*, size_t, off64_t)>("pwrite64")(file, bytes, count, offset);
}

EXPORTED int access(const char* path, int mode)
{
    if ((mode & W_OK) != 0 && IsReadOnly(path)) {
        errno = EROFS;
        return -1;
    }
    return Next<int (*)(const char*, int)>("access")(path, mode);
}

EXPORTED int renameat2(int fromDirectory, const char* from, int toDirectory, const char* to,
                       unsigned int flags)
{
    if (IsReadOnly(from)) {
        errno = EROFS;
        return -1;
    }
    return Next<int (*)(int, const char*, int, const char*, unsigned int)>("renameat2")(
        fromDirectory, from, toDirectory, to, flags);
}

EXPORTED int inotify_add_watch(int queue, const char* path, unsigned int mask)
{
    if (std::getenv("NO_WATCHES") != nullptr) {
        errno = ENOSPC;
        return -1;
    }
    return Next<int (*)(int, const char*, unsigned int)>("inotify_add_watch")(queue, path, mask);
}

} // extern "C"
