#include "zucmtr/watch/commandminder.h"

#include "explain/system.h"
#include "text/reasons.h"
#include "text/texts.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using systemfile::Descriptor;

// Between SIGTERM and SIGKILL.
constexpr std::chrono::milliseconds Grace{2000};

// Of what the command has written, the end is kept: that is where programs say why they failed.
constexpr int MostOutput = 2000; // bytes
constexpr int PipeSize = 65536;  // bytes, of what one read may find

extern "C" void OnChild(int /*number*/) {}

// The signals that the program handles are its own affair: it closes the channel when it ends.
void TakeSignals()
{
    struct sigaction action = {};
    action.sa_handler = SIG_IGN;
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE})
        sigaction(number, &action, nullptr);
    action.sa_handler = OnChild;
    sigaction(SIGCHLD, &action, nullptr);
    sigset_t child;
    sigemptyset(&child);
    sigaddset(&child, SIGCHLD);
    sigprocmask(SIG_BLOCK, &child, nullptr); // but for the moments when it is waited for
}

void GiveSignalsBack()
{
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGCHLD, SIGXFSZ})
        sigaction(number, &action, nullptr);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

// --max-memory is for the recordings.
void GiveMemoryBack()
{
    rlimit limit = {};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == limit.rlim_max)
        return;
    limit.rlim_cur = limit.rlim_max;
    if (setrlimit(RLIMIT_AS, &limit) != 0)
        return; // it has to make do with that
}

Descriptor InputOf(const QByteArray& bytes)
{
    Descriptor file(memfd_create("zucmtr-input", MFD_CLOEXEC));
    for (int at = 0; file.IsOpen() && at < bytes.size();) {
        const ssize_t size =
            write(file.Number(), bytes.constData() + at, static_cast<size_t>(bytes.size() - at));
        if (size <= 0)
            return Descriptor();
        at += static_cast<int>(size);
    }
    if (file.IsOpen())
        lseek(file.Number(), 0, SEEK_SET);
    return file;
}

class Minder
{
public:
    Minder(const RecordCommand::Order& order_, int channel_) : order(order_), channel(channel_) {}

    RecordCommand::Outcome Run();

private:
    bool Start();
    [[noreturn]] void Become(const Descriptor& input, int output, int failure, pid_t minder) const;
    void Watch();
    void Wait(Clock::time_point until);
    void TakeOutput();
    bool HasEnded() const;
    void Send(int signal) const;
    void Fail(const char* reason, const QString& text);
    void Judge(int status);

    const RecordCommand::Order& order;
    const int channel;
    pid_t command = -1;
    Descriptor output;
    QByteArray text;
    bool isOver = false; // the time
    bool isWanted = true;
    RecordCommand::Outcome outcome;
};

RecordCommand::Outcome Minder::Run()
{
    const Clock::time_point begin = Clock::now();
    TakeSignals();
    if (Start()) {
        Watch();
        Send(SIGKILL); // its number is not given to another process as long as it is not waited for
        int status = 0;
        waitpid(command, &status, 0);
        TakeOutput();
        Judge(status);
    }
    outcome.output = QString::fromUtf8(text);
    outcome.seconds = std::chrono::duration<double>(Clock::now() - begin).count();
    return outcome;
}

void Minder::Fail(const char* reason, const QString& error)
{
    outcome.reason = QLatin1String(reason);
    outcome.error = error;
}

// Returns once the program runs, or has failed to.
bool Minder::Start()
{
    std::array<int, 2> outputs{};
    std::array<int, 2> failures{};
    const Descriptor input = InputOf(order.input);
    if (!input.IsOpen() || pipe2(outputs.data(), O_CLOEXEC | O_NONBLOCK) != 0 ||
        pipe2(failures.data(), O_CLOEXEC) != 0) {
        Fail(reason::CommandNotStarted, explain::SystemText(errno));
        return false;
    }
    output = Descriptor(outputs[0]);
    Descriptor written(outputs[1]);
    const Descriptor failure(failures[0]);
    Descriptor failed(failures[1]);
    const pid_t minder = getpid();
    command = fork();
    if (command == 0)
        Become(input, written.Number(), failed.Number(), minder);
    int error = command < 0 ? errno : 0;
    if (command > 0) {
        setpgid(command, command);
        written = Descriptor();
        failed = Descriptor();
        if (read(failure.Number(), &error, sizeof error) != static_cast<ssize_t>(sizeof error))
            return true;
        waitpid(command, nullptr, 0);
    }
    Fail(reason::CommandNotStarted,
         Tr("exec", "'%1' could not be started: %2").arg(order.words.first(), explain::SystemText(error)));
    return false;
}

void Minder::Become(const Descriptor& input, int written, int failure, pid_t minder) const
{
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != minder)
        _exit(127);
    GiveSignalsBack();
    GiveMemoryBack();
    fcntl(written, F_SETFL, fcntl(written, F_GETFL) & ~O_NONBLOCK);
    dup2(input.Number(), STDIN_FILENO);
    dup2(written, STDOUT_FILENO);
    dup2(written, STDERR_FILENO);
    unsetenv("NOTIFY_SOCKET"); // it speaks for itself, not for the service
    for (auto one = order.variables.begin(); one != order.variables.end(); ++one)
        setenv(one.key().toUtf8().constData(), one.value().toUtf8().constData(), 1);
    std::vector<QByteArray> words;
    for (const QString& word : order.words)
        words.push_back(QFile::encodeName(word));
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (QByteArray& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    const int error = errno;
    const ssize_t size = write(failure, &error, sizeof error);
    _exit(size > 0 ? 127 : 126);
}

void Minder::Send(int signal) const
{
    kill(-command, signal);
}

bool Minder::HasEnded() const
{
    siginfo_t info = {};
    return waitid(P_PID, static_cast<id_t>(command), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           info.si_pid == command;
}

void Minder::Watch()
{
    Clock::time_point end = Clock::now() + order.limit;
    bool isEnding = false;
    while (!HasEnded()) {
        Wait(end);
        const bool isLate = Clock::now() >= end;
        if (isLate && isEnding) {
            Send(SIGKILL);
            end = Clock::now() + Grace;
        } else if (isLate || (!isWanted && !isEnding)) {
            isOver = isLate;
            isEnding = true;
            Send(SIGTERM);
            end = Clock::now() + Grace;
        }
    }
}

// Until something is there to read, the command or the program has ended, or it is that time.
void Minder::Wait(Clock::time_point until)
{
    const auto left = std::max<Clock::duration>(until - Clock::now(), Clock::duration::zero());
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
    const timespec time = {seconds.count(),
                           std::chrono::duration_cast<std::chrono::nanoseconds>(left - seconds).count()};
    std::array<pollfd, 2> files = {
        {{output.Number(), POLLIN, 0}, {isWanted ? channel : -1, POLLIN | POLLRDHUP, 0}}};
    sigset_t none;
    sigemptyset(&none);
    if (ppoll(files.data(), files.size(), &time, &none) <= 0)
        return;
    if (files[0].revents != 0)
        TakeOutput();
    if (files[1].revents != 0)
        isWanted = false;
}

void Minder::TakeOutput()
{
    QByteArray part(PipeSize, '\0');
    const ssize_t size =
        output.IsOpen() ? read(output.Number(), part.data(), static_cast<size_t>(part.size())) : -1;
    if (size > 0)
        text = (text + part.left(static_cast<int>(size))).right(MostOutput);
    else if (size == 0)
        output = Descriptor(); // all who could write to it have ended
}

void Minder::Judge(int status)
{
    if (isOver)
        Fail(reason::CommandTimeout,
             Tr("exec", "the command took longer than %1 s and was ended; see --exec-timeout")
                 .arg(std::chrono::duration<double>(order.limit).count()));
    else if (WIFSIGNALED(status))
        Fail(reason::CommandKilled, Tr("exec", "the command was ended by signal %1").arg(WTERMSIG(status)));
    else if (WEXITSTATUS(status) != 0)
        Fail(reason::CommandFailed,
             Tr("exec", "the command ended with exit code %1").arg(WEXITSTATUS(status)));
}

} // namespace

void MindCommand(const RecordCommand::Order& order, int channel)
{
    Minder minder(order, channel);
    const RecordCommand::Outcome outcome = minder.Run();
    const QByteArray message = QJsonDocument(QJsonObject{{"reason", outcome.reason},
                                                         {"error", outcome.error},
                                                         {"output", outcome.output},
                                                         {"seconds", outcome.seconds}})
                                   .toJson(QJsonDocument::Compact);
    send(channel, message.constData(), static_cast<size_t>(message.size()), MSG_NOSIGNAL);
    _exit(0);
}
