#include "zucmtr/watch/directoryevents.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace {

// Writing is not watched: a growing recording would cause the directories to be scanned all the time.
// Permissions are, as a file that could not be read may be readable now.
constexpr uint32_t events = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ATTRIB | IN_DELETE_SELF |
                            IN_MOVE_SELF | IN_ONLYDIR;

} // namespace

DirectoryEvents::DirectoryEvents() : queue(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {}

// The system gives a directory that is already watched the same number again. So this also notices when
// another directory has taken the name of one.
bool DirectoryEvents::Watch(const QStringList& directories)
{
    unwatched = 0;
    if (!queue.IsOpen()) {
        unwatched = directories.size();
        return false;
    }
    QSet<int> now;
    bool fresh = false;
    for (const QString& directory : directories) {
        const int number =
            inotify_add_watch(queue.Number(), QFile::encodeName(directory).constData(), events);
        if (number >= 0) {
            fresh = fresh || !watches.contains(number);
            now.insert(number);
        } else if (errno == ENOSPC ||
                   errno == ENOMEM) { // other failures, such as a missing directory, are reported by the scan
            ++unwatched;
        }
    }
    for (const int number : watches - now)
        inotify_rm_watch(queue.Number(), number);
    watches = now;
    return fresh;
}

bool DirectoryEvents::Wait(std::chrono::milliseconds time, const std::vector<int>& others, bool& isOtherReady)
{
    std::vector<pollfd> files = {{queue.Number(), POLLIN, 0}};
    for (const int other : others)
        files.push_back({other, POLLIN, 0});
    if (poll(files.data(), files.size(), static_cast<int>(time.count())) <= 0)
        return false;
    isOtherReady =
        std::any_of(files.begin() + 1, files.end(), [](const pollfd& file) { return file.revents != 0; });
    alignas(inotify_event) std::array<char, 65536> buffer{};
    bool heard = false;
    ssize_t size = read(queue.Number(), buffer.data(), buffer.size());
    while (size > 0) {
        for (ssize_t at = 0; at < size;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
            heard = heard || (event->mask & IN_IGNORED) == 0; // the last event of a watch that was removed
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
        }
        size = read(queue.Number(), buffer.data(), buffer.size());
    }
    return heard;
}
