#include "recording/recorderfile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace {

constexpr qint64 SmallFile = 1 << 20; // bytes
// A small file is read in few pieces. In a large one the samples go straight to their places, and only the
// headers between them are read ahead.
constexpr qint64 AheadInSmall = 64 << 10;
constexpr qint64 AheadInLarge = 4 << 10;

} // namespace

bool zu::RecorderFile::OpenForReading()
{
    if (!open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    bytes = QFile::size();
    ahead.resize(static_cast<size_t>(std::min(bytes, bytes <= SmallFile ? AheadInSmall : AheadInLarge)));
    return true;
}

bool zu::RecorderFile::seek(qint64 position)
{
    // Not QFileDevice's, which has the system go there: the reads say where they are.
    return QIODevice::seek(position); // NOLINT(bugprone-parent-virtual-call)
}

qint64 zu::RecorderFile::ReadAt(qint64 position, char* data, qint64 count) const
{
    qint64 done = 0;
    while (done < count) {
        const ssize_t read = pread(handle(), data + done, static_cast<size_t>(count - done), position + done);
        if (read < 0 && errno == EINTR)
            continue;
        if (read < 0)
            return -1;
        if (read == 0)
            break;
        done += read;
    }
    return done;
}

qint64 zu::RecorderFile::readData(char* data, qint64 maxSize)
{
    const qint64 start = pos();
    qint64 done = 0;
    if (start >= aheadAt && start < aheadAt + aheadCount) {
        done = std::min(maxSize, aheadAt + aheadCount - start);
        std::memcpy(data, ahead.data() + (start - aheadAt), static_cast<size_t>(done));
    }
    const qint64 left = maxSize - done;
    if (left == 0)
        return done;
    const auto room = static_cast<qint64>(ahead.size());
    if (left >= room) {
        const qint64 read = ReadAt(start + done, data + done, left);
        return read < 0 ? -1 : done + read;
    }
    aheadCount = 0;
    const qint64 read = ReadAt(start + done, ahead.data(), room);
    if (read < 0)
        return -1;
    aheadAt = start + done;
    aheadCount = read;
    const qint64 more = std::min(left, read);
    std::memcpy(data + done, ahead.data(), static_cast<size_t>(more));
    return done + more;
}
