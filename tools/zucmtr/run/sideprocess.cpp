#include "zucmtr/run/sideprocess.h"

#include "explain/system.h"
#include "text/error.h"
#include "text/texts.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <new>
#include <set>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// The program's ends of all lines: a process that kept another one's open would keep that one from noticing
// that it is to end.
std::set<int>& Lines()
{
    static std::set<int> lines;
    return lines;
}

bool SendAll(int line, const char* bytes, size_t size)
{
    while (size > 0) {
        const ssize_t sent = send(line, bytes, size, MSG_NOSIGNAL);
        if (sent < 0 && errno != EINTR)
            return false;
        if (sent > 0) {
            bytes += sent;
            size -= static_cast<size_t>(sent);
        }
    }
    return true;
}

bool ReceiveAll(int line, char* bytes, size_t size)
{
    while (size > 0) {
        const ssize_t received = recv(line, bytes, size, 0);
        if (received == 0 || (received < 0 && errno != EINTR))
            return false;
        if (received > 0) {
            bytes += received;
            size -= static_cast<size_t>(received);
        }
    }
    return true;
}

bool Send(int line, const QByteArray& message)
{
    const auto size = static_cast<quint32>(message.size());
    std::array<char, sizeof size> head{};
    std::memcpy(head.data(), &size, sizeof size);
    return SendAll(line, head.data(), head.size()) &&
           SendAll(line, message.constData(), static_cast<size_t>(message.size()));
}

bool Receive(int line, QByteArray& message)
{
    std::array<char, sizeof(quint32)> head{};
    if (!ReceiveAll(line, head.data(), head.size()))
        return false;
    quint32 size = 0;
    std::memcpy(&size, head.data(), sizeof size);
    message.resize(static_cast<int>(size));
    return ReceiveAll(line, message.data(), size);
}

// Shared by a process that works and the one that looks after it.
struct State
{
    std::atomic<bool> isAtWork{false};
};

[[noreturn]] void Serve(int line, State& state, const SideProcess::Task& task)
{
    std::unique_ptr<SideProcess::Clerk> clerk = task.begin();
    QByteArray message;
    while (Receive(line, message)) {
        state.isAtWork = true;
        const QByteArray answer = clerk->Answer(message);
        state.isAtWork = false;
        if (!Send(line, answer))
            break;
    }
    clerk.reset();
    _exit(0);
}

void EndWith(pid_t parent)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(1); // it had ended before the signal was asked for
}

// Starts the process that works, and another one whenever it crashes.
[[noreturn]] void Supervise(int line, const SideProcess::Task& task)
{
    void* memory = mmap(nullptr, sizeof(State), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        _exit(1);
    State& state = *new (memory) State;
    while (true) {
        const pid_t self = getpid();
        const pid_t process = fork();
        if (process < 0)
            _exit(1);
        if (process == 0) {
            EndWith(self);
            Serve(line, state, task);
        }
        int status = 0;
        while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
        }
        if (WIFEXITED(status))
            _exit(0);
        if (state.isAtWork.exchange(false) && !Send(line, task.crashed(WTERMSIG(status))))
            _exit(0);
    }
}

} // namespace

SideProcess::SideProcess(const Task& task)
{
    std::array<int, 2> ends{};
    const pid_t program = getpid();
    process = socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) == 0 ? fork() : -1;
    if (process < 0)
        throw text::Error(
            Tr("crew", "no further process can be started: %1").arg(explain::SystemText(errno)));
    if (process == 0) {
        EndWith(program);
        // The program ends it after the last message, whatever signal all processes get.
        std::signal(SIGINT, SIG_IGN);
        std::signal(SIGTERM, SIG_IGN);
        close(ends[0]);
        for (const int other : Lines())
            close(other);
        if (task.letGo)
            task.letGo();
        Supervise(ends[1], task);
    }
    close(ends[1]);
    line = ends[0];
    Lines().insert(line);
}

SideProcess::~SideProcess()
{
    Lines().erase(line);
    close(line);
    while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
    }
}

bool SideProcess::Ask(const QByteArray& message) const
{
    return Send(line, message);
}

bool SideProcess::Hear(QByteArray& answer) const
{
    return Receive(line, answer);
}

void SideProcess::Kill() const
{
    kill(process, SIGKILL); // the process that works ends with it
}
