// Loaded into the program before the C library: notes each file that the program syncs to the disk in the
// file that SYNC_LOG names, one path per line.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <string>
#include <unistd.h>

namespace {

void Note(int file)
{
    std::array<char, 4096> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const ssize_t size = readlink(link.c_str(), path.data(), path.size());
    std::FILE* log = std::fopen(std::getenv("SYNC_LOG"), "ae");
    if (size <= 0 || log == nullptr)
        std::abort();
    std::fprintf(log, "%.*s\n", static_cast<int>(size), path.data());
    std::fclose(log);
}

int CallNext(const char* name, int file)
{
    Note(file);
    return reinterpret_cast<int (*)(int)>(dlsym(RTLD_NEXT, name))(file);
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) int fsync(int file)
{
    return CallNext("fsync", file);
}

__attribute__((visibility("default"))) int fdatasync(int file)
{
    return CallNext("fdatasync", file);
}

} // extern "C"
