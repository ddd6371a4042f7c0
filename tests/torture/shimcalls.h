// The calls of the C library that the shim intercepts; included by shim.cpp alone.
#pragma once

extern "C" {

#define OPEN(name)                                                                                           \
    VISIBLE int name(const char* path, int flags, ...)                                                       \
    {                                                                                                        \
        va_list arguments;                                                                                   \
        va_start(arguments, flags);                                                                          \
        const mode_t mode = ModeOf(flags, arguments);                                                        \
        va_end(arguments);                                                                                   \
        return DoOpenPlain(#name, path, flags, mode);                                                        \
    }
OPEN(open)
OPEN(open64)

#define OPEN_AT(name)                                                                                        \
    VISIBLE int name(int directory, const char* path, int flags, ...)                                        \
    {                                                                                                        \
        va_list arguments;                                                                                   \
        va_start(arguments, flags);                                                                          \
        const mode_t mode = ModeOf(flags, arguments);                                                        \
        va_end(arguments);                                                                                   \
        return DoOpenAt(#name, directory, path, flags, mode);                                                \
    }
OPEN_AT(openat)
OPEN_AT(openat64)

VISIBLE int creat(const char* path, mode_t mode)
{
    return DoOpenPlain("open", path, O_CREAT | O_WRONLY | O_TRUNC, mode);
}

VISIBLE int creat64(const char* path, mode_t mode)
{
    return DoOpenPlain("open64", path, O_CREAT | O_WRONLY | O_TRUNC, mode);
}

VISIBLE int __open_2(const char* path, int flags)
{
    return DoOpenPlain("open", path, flags, 0);
}

VISIBLE int __open64_2(const char* path, int flags)
{
    return DoOpenPlain("open64", path, flags, 0);
}

VISIBLE int __openat_2(int directory, const char* path, int flags)
{
    return DoOpenAt("openat", directory, path, flags, 0);
}

VISIBLE int __openat64_2(int directory, const char* path, int flags)
{
    return DoOpenAt("openat64", directory, path, flags, 0);
}

VISIBLE std::FILE* fopen(const char* path, const char* mode)
{
    return DoOpenStream("fopen", path, mode);
}

VISIBLE std::FILE* fopen64(const char* path, const char* mode)
{
    return DoOpenStream("fopen64", path, mode);
}

VISIBLE int mkostemp64(char* path, int flags)
{
    const auto next = Next<int (*)(char*, int)>("mkostemp64");
    Call call{Create, PathOf(path)};
    call.flags = O_CREAT | createdFlag;
    return Do(
        call, [&](const Call&) { return next(path, flags); },
        [&](Call& done, int result) {
            done.path = PathOf(path);
            done.file = result;
        });
}

VISIBLE int mkostemp(char* path, int flags)
{
    return mkostemp64(path, flags);
}

VISIBLE int mkstemp(char* path)
{
    return mkostemp64(path, 0);
}

VISIBLE int mkstemp64(char* path)
{
    return mkostemp64(path, 0);
}

VISIBLE char* mkdtemp(char* path)
{
    const auto next = Next<char* (*)(char*)>("mkdtemp");
    return Do(
        {MakeDirectory, PathOf(path)}, [&](const Call&) { return next(path); },
        [&](Call& done, const char*) { done.path = PathOf(path); });
}

VISIBLE int close(int file)
{
    const auto next = Next<int (*)(int)>("close");
    return Do({Close, PathOf(file)}, [&](const Call&) { return next(file); });
}

VISIBLE ssize_t read(int file, void* buffer, size_t count)
{
    const auto next = Next<ssize_t (*)(int, void*, size_t)>("read");
    return DoBytes(Read, file, nullptr, count, -1, [&](size_t size) { return next(file, buffer, size); });
}

VISIBLE ssize_t __read_chk(int file, void* buffer, size_t count, size_t /*room*/)
{
    return read(file, buffer, count);
}

VISIBLE ssize_t pread64(int file, void* buffer, size_t count, off64_t offset)
{
    const auto next = Next<ssize_t (*)(int, void*, size_t, off64_t)>("pread64");
    return DoBytes(Read, file, nullptr, count, offset,
                   [&](size_t size) { return next(file, buffer, size, offset); });
}

VISIBLE ssize_t pread(int file, void* buffer, size_t count, off_t offset)
{
    return pread64(file, buffer, count, offset);
}

VISIBLE ssize_t readv(int file, const iovec* parts, int count)
{
    const auto next = Next<ssize_t (*)(int, const iovec*, int)>("readv");
    return DoBytes(Read, file, nullptr, 1, -1, [&](size_t) { return next(file, parts, count); });
}

VISIBLE ssize_t write(int file, const void* buffer, size_t count)
{
    const auto next = Next<ssize_t (*)(int, const void*, size_t)>("write");
    return DoBytes(Write, file, buffer, count, -1, [&](size_t size) { return next(file, buffer, size); });
}

VISIBLE ssize_t pwrite64(int file, const void* buffer, size_t count, off64_t offset)
{
    const auto next = Next<ssize_t (*)(int, const void*, size_t, off64_t)>("pwrite64");
    return DoBytes(Write, file, buffer, count, offset,
                   [&](size_t size) { return next(file, buffer, size, offset); });
}

VISIBLE ssize_t pwrite(int file, const void* buffer, size_t count, off_t offset)
{
    return pwrite64(file, buffer, count, offset);
}

VISIBLE ssize_t writev(int file, const iovec* parts, int count)
{
    if (file != STDOUT_FILENO && !TheShim().Concerns(PathOf(file)))
        return Next<ssize_t (*)(int, const iovec*, int)>("writev")(file, parts, count);
    const std::string bytes = Joined(parts, count);
    return write(file, bytes.data(), bytes.size());
}

VISIBLE ssize_t copy_file_range(int from, off64_t* fromOffset, int to, off64_t* toOffset, size_t count,
                                unsigned int flags)
{
    const auto next =
        Next<ssize_t (*)(int, off64_t*, int, off64_t*, size_t, unsigned int)>("copy_file_range");
    return DoCopy(to, toOffset, count,
                  [&](size_t size) { return next(from, fromOffset, to, toOffset, size, flags); });
}

VISIBLE ssize_t sendfile64(int to, int from, off64_t* offset, size_t count)
{
    const auto next = Next<ssize_t (*)(int, int, off64_t*, size_t)>("sendfile64");
    return DoCopy(to, nullptr, count, [&](size_t size) { return next(to, from, offset, size); });
}

VISIBLE ssize_t sendfile(int to, int from, off_t* offset, size_t count)
{
    return sendfile64(to, from, offset, count);
}

// Blocks shared by two files would be bytes that nobody wrote: failing this makes the program copy them.
VISIBLE int ioctl(int file, unsigned long request, ...)
{
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    constexpr unsigned long clone = _IOW(0x94, 9, int);
    if (request == clone && TheShim().Concerns(PathOf(file))) {
        errno = EOPNOTSUPP;
        return -1;
    }
    return Next<int (*)(int, unsigned long, ...)>("ioctl")(file, request, argument);
}

// Bytes written through a mapping are not seen; it is noted, so that the reader of the log can complain.
VISIBLE void* mmap64(void* address, size_t length, int protection, int flags, int file, off64_t offset)
{
    const auto next = Next<void* (*)(void*, size_t, int, int, int, off64_t)>("mmap64");
    if (file >= 0 && (flags & MAP_SHARED) != 0 && (protection & PROT_WRITE) != 0) {
        const std::string path = PathOf(file);
        if (TheShim().Concerns(path))
            TheShim().Note({Map, path, {}, file}, kindNames.at(Map));
    }
    return next(address, length, protection, flags, file, offset);
}

VISIBLE int ftruncate64(int file, off64_t length)
{
    const auto next = Next<int (*)(int, off64_t)>("ftruncate64");
    return DoTruncate(PathOf(file), file, length, [&] { return next(file, length); });
}

VISIBLE int ftruncate(int file, off_t length)
{
    return ftruncate64(file, length);
}

VISIBLE int truncate64(const char* path, off64_t length)
{
    const auto next = Next<int (*)(const char*, off64_t)>("truncate64");
    return DoTruncate(PathOf(path), -1, length, [&] { return next(path, length); });
}

VISIBLE int truncate(const char* path, off_t length)
{
    return truncate64(path, length);
}

VISIBLE int fallocate64(int file, int mode, off64_t offset, off64_t length)
{
    const auto next = Next<int (*)(int, int, off64_t, off64_t)>("fallocate64");
    const bool grows = (mode & FALLOC_FL_KEEP_SIZE) == 0;
    return DoTruncate(PathOf(file), file, grows ? -(offset + length) : 0,
                      [&] { return next(file, mode, offset, length); });
}

VISIBLE int posix_fallocate64(int file, off64_t offset, off64_t length)
{
    return fallocate64(file, 0, offset, length) == 0 ? 0 : errno;
}

VISIBLE int posix_fallocate(int file, off_t offset, off_t length)
{
    return posix_fallocate64(file, offset, length);
}

VISIBLE int rename(const char* from, const char* to)
{
    const auto next = Next<int (*)(const char*, const char*)>("rename");
    return DoRename(from, AT_FDCWD, to, AT_FDCWD, 0, [&] { return next(from, to); });
}

VISIBLE int renameat(int fromDirectory, const char* from, int toDirectory, const char* to)
{
    const auto next = Next<int (*)(int, const char*, int, const char*)>("renameat");
    return DoRename(from, fromDirectory, to, toDirectory, 0,
                    [&] { return next(fromDirectory, from, toDirectory, to); });
}

VISIBLE int renameat2(int fromDirectory, const char* from, int toDirectory, const char* to,
                      unsigned int flags)
{
    const auto next = Next<int (*)(int, const char*, int, const char*, unsigned int)>("renameat2");
    return DoRename(from, fromDirectory, to, toDirectory, flags,
                    [&] { return next(fromDirectory, from, toDirectory, to, flags); });
}

VISIBLE int link(const char* from, const char* to)
{
    const auto next = Next<int (*)(const char*, const char*)>("link");
    return Do({Link, PathOf(from), PathOf(to)}, [&](const Call&) { return next(from, to); });
}

VISIBLE int linkat(int fromDirectory, const char* from, int toDirectory, const char* to, int flags)
{
    const auto next = Next<int (*)(int, const char*, int, const char*, int)>("linkat");
    return Do({Link, PathOf(from, fromDirectory), PathOf(to, toDirectory)},
              [&](const Call&) { return next(fromDirectory, from, toDirectory, to, flags); });
}

VISIBLE int unlink(const char* path)
{
    const auto next = Next<int (*)(const char*)>("unlink");
    return DoPath(Unlink, path, AT_FDCWD, [&] { return next(path); });
}

VISIBLE int unlinkat(int directory, const char* path, int flags)
{
    const auto next = Next<int (*)(int, const char*, int)>("unlinkat");
    return DoPath((flags & AT_REMOVEDIR) != 0 ? RemoveDirectory : Unlink, path, directory,
                  [&] { return next(directory, path, flags); });
}

VISIBLE int remove(const char* path)
{
    struct stat status = {};
    const bool directory =
        syscall(SYS_newfstatat, AT_FDCWD, path, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
    return directory ? rmdir(path) : unlink(path);
}

VISIBLE int rmdir(const char* path)
{
    const auto next = Next<int (*)(const char*)>("rmdir");
    return DoPath(RemoveDirectory, path, AT_FDCWD, [&] { return next(path); });
}

VISIBLE int mkdir(const char* path, mode_t mode)
{
    const auto next = Next<int (*)(const char*, mode_t)>("mkdir");
    return DoPath(MakeDirectory, path, AT_FDCWD, [&] { return next(path, mode); });
}

VISIBLE int mkdirat(int directory, const char* path, mode_t mode)
{
    const auto next = Next<int (*)(int, const char*, mode_t)>("mkdirat");
    return DoPath(MakeDirectory, path, directory, [&] { return next(directory, path, mode); });
}

VISIBLE int fsync(int file)
{
    const auto next = Next<int (*)(int)>("fsync");
    return DoFile(Sync, file, [&] { return next(file); });
}

VISIBLE int fdatasync(int file)
{
    const auto next = Next<int (*)(int)>("fdatasync");
    return DoFile(Sync, file, [&] { return next(file); });
}

VISIBLE int syncfs(int file)
{
    const auto next = Next<int (*)(int)>("syncfs");
    Call call{Sync, PathOf(file), {}, file};
    call.flags = 1; // everything
    return Do(call, [&](const Call&) { return next(file); });
}

#define STAT(name, type)                                                                                     \
    VISIBLE int name(const char* path, struct type* status)                                                  \
    {                                                                                                        \
        const auto next = Next<int (*)(const char*, struct type*)>(#name);                                   \
        return DoPath(Stat, path, AT_FDCWD, [&] { return next(path, status); });                             \
    }
STAT(stat, stat)
STAT(stat64, stat64)
STAT(lstat, stat)
STAT(lstat64, stat64)

#define FILE_STAT(name, type)                                                                                \
    VISIBLE int name(int file, struct type* status)                                                          \
    {                                                                                                        \
        const auto next = Next<int (*)(int, struct type*)>(#name);                                           \
        return DoFile(Stat, file, [&] { return next(file, status); });                                       \
    }
FILE_STAT(fstat, stat)
FILE_STAT(fstat64, stat64)

#define STAT_AT(name, type)                                                                                  \
    VISIBLE int name(int directory, const char* path, struct type* status, int flags)                        \
    {                                                                                                        \
        const auto next = Next<int (*)(int, const char*, struct type*, int)>(#name);                         \
        return DoPath(Stat, path, directory, [&] { return next(directory, path, status, flags); });          \
    }
STAT_AT(fstatat, stat)
STAT_AT(fstatat64, stat64)

VISIBLE int statx(int directory, const char* path, int flags, unsigned int mask, struct statx* status)
{
    const auto next = Next<int (*)(int, const char*, int, unsigned int, struct statx*)>("statx");
    return DoPath(Stat, path, directory, [&] { return next(directory, path, flags, mask, status); });
}

VISIBLE int access(const char* path, int mode)
{
    const auto next = Next<int (*)(const char*, int)>("access");
    return DoPath(Stat, path, AT_FDCWD, [&] { return next(path, mode); });
}

VISIBLE int faccessat(int directory, const char* path, int mode, int flags)
{
    const auto next = Next<int (*)(int, const char*, int, int)>("faccessat");
    return DoPath(Stat, path, directory, [&] { return next(directory, path, mode, flags); });
}

VISIBLE DIR* opendir(const char* path)
{
    const auto next = Next<DIR* (*)(const char*)>("opendir");
    return Do({List, PathOf(path)}, [&](const Call&) { return next(path); });
}

VISIBLE DIR* fdopendir(int file)
{
    const auto next = Next<DIR* (*)(int)>("fdopendir");
    return Do({List, PathOf(file)}, [&](const Call&) { return next(file); });
}

VISIBLE int flock(int file, int operation)
{
    const auto next = Next<int (*)(int, int)>("flock");
    return DoFile(Lock, file, [&] { return next(file, operation); });
}

// Locks of a part of a file, as databases take them; to give one back does not fail.
VISIBLE int fcntl64(int file, int command, ...)
{
    va_list arguments;
    va_start(arguments, command);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    const auto next = Next<int (*)(int, int, ...)>("fcntl64");
    const bool locks = command == F_SETLK || command == F_SETLKW || command == F_OFD_SETLK;
    if (!locks || static_cast<const struct flock*>(argument)->l_type == F_UNLCK)
        return next(file, command, argument);
    return DoFile(Lock, file, [&] { return next(file, command, argument); });
}

VISIBLE int chmod(const char* path, mode_t mode)
{
    const auto next = Next<int (*)(const char*, mode_t)>("chmod");
    return DoPath(Attribute, path, AT_FDCWD, [&] { return next(path, mode); });
}

VISIBLE int fchmod(int file, mode_t mode)
{
    const auto next = Next<int (*)(int, mode_t)>("fchmod");
    return DoFile(Attribute, file, [&] { return next(file, mode); });
}

VISIBLE int chown(const char* path, uid_t owner, gid_t group)
{
    const auto next = Next<int (*)(const char*, uid_t, gid_t)>("chown");
    return DoPath(Attribute, path, AT_FDCWD, [&] { return next(path, owner, group); });
}

VISIBLE int fchown(int file, uid_t owner, gid_t group)
{
    const auto next = Next<int (*)(int, uid_t, gid_t)>("fchown");
    return DoFile(Attribute, file, [&] { return next(file, owner, group); });
}

VISIBLE int utimensat(int directory, const char* path, const struct timespec* times, int flags)
{
    const auto next = Next<int (*)(int, const char*, const struct timespec*, int)>("utimensat");
    return DoPath(Attribute, path, directory, [&] { return next(directory, path, times, flags); });
}

VISIBLE int futimens(int file, const struct timespec* times)
{
    const auto next = Next<int (*)(int, const struct timespec*)>("futimens");
    return DoFile(Attribute, file, [&] { return next(file, times); });
}

} // extern "C"
