#include "zucmtr/run/crew.h"

#include "explain/system.h"
#include "text/error.h"
#include "text/texts.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr size_t MostMembers = 256;
constexpr int TicksOfShow = 100; // ms

// What a message is about.
enum class Sort : char { Told, Failed };

bool WriteAll(int file, const char* bytes, size_t size)
{
    while (size > 0) {
        const ssize_t written = write(file, bytes, size);
        if (written < 0 && errno != EINTR)
            return false;
        if (written > 0) {
            bytes += written;
            size -= static_cast<size_t>(written);
        }
    }
    return true;
}

void Send(int mouth, Sort sort, const QByteArray& message)
{
    const auto size = static_cast<quint32>(message.size());
    QByteArray packed(1, static_cast<char>(sort));
    packed.append(reinterpret_cast<const char*>(&size), sizeof size);
    packed.append(message);
    if (!WriteAll(mouth, packed.constData(), static_cast<size_t>(packed.size())))
        _exit(1); // the program has ended
}

} // namespace

// In memory that all processes see.
struct Crew::Shared
{
    struct Place
    {
        std::atomic<size_t> from{0};
        std::atomic<size_t> to{0};
        std::atomic<size_t> current{0};
        std::atomic<bool> isAtWork{false}; // on `current`
    };

    std::atomic<size_t> next{0};
    std::atomic<size_t> done{0};
    std::atomic<bool> isToEnd{false};
    std::array<Place, MostMembers> places;
};

struct Crew::Child
{
    size_t number = 0;
    pid_t process = 0;
    int ear = -1;
    QByteArray heard{}; // the beginning of a message
    bool isOver = false;
};

Crew::Member::Member(Crew& crew, size_t number_, Pieces first_, int mouth_)
    : shared(*crew.shared), lost(crew.lost), count(crew.task.count), together(crew.task.together),
      number(number_), first(std::move(first_)), mouth(mouth_)
{}

Crew::Member::Pieces Crew::Member::Take()
{
    Shared::Place& place = shared.places.at(number);
    place.isAtWork = false;
    if (IsToEnd())
        return {0, 0};
    Pieces pieces = std::exchange(first, {0, 0});
    if (pieces.first == pieces.second) {
        pieces.first = std::min(shared.next.fetch_add(together), count);
        pieces.second = std::min(pieces.first + together, count);
    }
    place.from = pieces.first;
    place.to = pieces.second;
    return pieces;
}

bool Crew::Member::Begin(size_t piece)
{
    if (lost.count(piece) > 0)
        return false;
    Shared::Place& place = shared.places.at(number);
    place.current = piece;
    place.isAtWork = true;
    return true;
}

void Crew::Member::Done()
{
    ++shared.done;
}

bool Crew::Member::IsToEnd() const
{
    return shared.isToEnd;
}

void Crew::Member::Tell(const QByteArray& message)
{
    Send(mouth, Sort::Told, message);
}

Crew::Crew(Task task_) : task(std::move(task_)), shared(nullptr)
{
    void* memory = mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        throw std::bad_alloc();
    shared = new (memory) Shared;
}

Crew::~Crew()
{
    for (const Child& child : children) { // left by an exception
        if (!child.isOver) {
            kill(child.process, SIGKILL);
            waitpid(child.process, nullptr, 0);
            close(child.ear);
        }
    }
    munmap(shared, sizeof(Shared));
}

void Crew::Work(size_t number, Member::Pieces first, int mouth)
{
    try {
        Member member(*this, number, std::move(first), mouth);
        task.work(member);
    } catch (const std::exception& error) {
        Send(mouth, Sort::Failed, text::MessageOf(error).toUtf8());
        _exit(1);
    }
    _exit(0);
}

void Crew::Start(size_t number, Member::Pieces first)
{
    std::array<int, 2> ends{};
    const pid_t program = getpid();
    const pid_t process = pipe2(ends.data(), O_CLOEXEC) == 0 ? fork() : -1;
    if (process < 0)
        throw text::Error(
            Tr("crew", "no further process can be started: %1").arg(explain::SystemText(errno)));
    if (process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != program)
            _exit(1); // it had ended before the signal was asked for
        Work(number, std::move(first), ends[1]);
    }
    close(ends[1]);
    Child child;
    child.number = number;
    child.process = process;
    child.ear = ends[0];
    children.push_back(child);
}

void Crew::Hear(Child& child)
{
    std::array<char, 65536> part{};
    const ssize_t size = read(child.ear, part.data(), part.size());
    if (size < 0 && errno == EINTR)
        return;
    if (size <= 0) {
        Bury(child);
        return;
    }
    child.heard.append(part.data(), static_cast<int>(size));
    constexpr int head = 1 + static_cast<int>(sizeof(quint32));
    while (child.heard.size() >= head) {
        quint32 length = 0;
        std::memcpy(&length, child.heard.constData() + 1, sizeof length);
        if (child.heard.size() - head < static_cast<int>(length))
            return;
        const QByteArray message = child.heard.mid(head, static_cast<int>(length));
        const Sort sort = static_cast<Sort>(child.heard.at(0));
        child.heard.remove(0, head + static_cast<int>(length));
        if (sort == Sort::Told) {
            task.hear(message);
        } else {
            failure = message;
            shared->isToEnd = true;
        }
    }
}

// It has closed its end, so that it is about to end.
void Crew::Bury(Child& child)
{
    int status = 0;
    while (waitpid(child.process, &status, 0) < 0 && errno == EINTR) {
    }
    close(child.ear);
    child.isOver = true;
    if ((WIFEXITED(status) && WEXITSTATUS(status) == 0) || !failure.isEmpty())
        return;
    Shared::Place& place = shared->places.at(child.number);
    if (place.isAtWork) {
        lost.insert(place.current);
        losses.push_back({place.current, status});
        ++shared->done;
    }
    place.isAtWork = false;
    if (!shared->isToEnd && place.from < place.to)
        Start(child.number, {place.from, place.to});
}

void Crew::Listen()
{
    std::vector<pollfd> ears;
    std::vector<size_t> places;
    for (size_t i = 0; i < children.size(); ++i) {
        if (!children[i].isOver) {
            ears.push_back({children[i].ear, POLLIN, 0});
            places.push_back(i);
        }
    }
    poll(ears.data(), ears.size(), TicksOfShow);
    for (size_t i = 0; i < ears.size(); ++i) {
        if (ears[i].revents != 0) {
            Child child = std::move(children[places[i]]); // Bury may add another one
            Hear(child);
            children[places[i]] = std::move(child);
        }
    }
}

std::vector<Crew::Loss> Crew::Do(size_t members)
{
    const size_t runs = (task.count + task.together - 1) / task.together;
    for (size_t i = 0; i < std::min({members, runs, MostMembers}); ++i)
        Start(i, {0, 0});
    const auto isOver = [](const Child& child) { return child.isOver; };
    while (!std::all_of(children.begin(), children.end(), isOver)) {
        if (task.isToEnd())
            shared->isToEnd = true;
        task.show(shared->done);
        Listen();
    }
    if (!failure.isEmpty())
        throw text::Error(QString::fromUtf8(failure));
    return losses;
}
