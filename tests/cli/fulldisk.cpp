// Loaded into the program before the C library: the disk has no room for files whose paths start as FULL_DISK
// says, or no more than FULL_DISK_ROOM bytes for each, if that is given.
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <dlfcn.h>
#include <string>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace {

bool IsBelow(const std::string& path)
{
    const std::string begin = std::getenv("FULL_DISK");
    return path.compare(0, begin.size(), begin) == 0;
}

size_t Room()
{
    const char* room = std::getenv("FULL_DISK_ROOM");
    return room == nullptr ? 0 : std::strtoul(room, nullptr, 10);
}

bool IsFull(int file, size_t count)
{
    std::array<char, 4096> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const ssize_t size = readlink(link.c_str(), path.data(), path.size());
    struct stat status = {};
    return size > 0 && IsBelow(std::string(path.data(), static_cast<size_t>(size))) &&
           fstat(file, &status) == 0 && static_cast<size_t>(status.st_size) + count > Room();
}

int Free(const char* name, const char* path, struct statvfs* status)
{
    const int result =
        reinterpret_cast<int (*)(const char*, struct statvfs*)>(dlsym(RTLD_NEXT, name))(path, status);
    std::array<char, PATH_MAX> whole{};
    if (result == 0 && realpath(path, whole.data()) != nullptr && IsBelow(whole.data())) {
        status->f_bfree = Room() / status->f_frsize;
        status->f_bavail = status->f_bfree;
    }
    return result;
}

} // namespace

extern "C" __attribute__((visibility("default"))) ssize_t write(int file, const void* bytes, size_t count)
{
    if (IsFull(file, count)) {
        errno = ENOSPC;
        return -1;
    }
    using Write = ssize_t (*)(int, const void*, size_t);
    return reinterpret_cast<Write>(dlsym(RTLD_NEXT, "write"))(file, bytes, count);
}

extern "C" __attribute__((visibility("default"))) int statvfs(const char* path, struct statvfs* status)
{
    return Free("statvfs", path, status);
}

extern "C" __attribute__((visibility("default"))) int statvfs64(const char* path, struct statvfs64* status)
{
    return Free("statvfs64", path, reinterpret_cast<struct statvfs*>(status)); // one layout on 64 bits
}
