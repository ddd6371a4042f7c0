#include "zucmtr/watch/service.h"

#include "explain/system.h"
#include "text/reasons.h"
#include "text/texts.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/interrupt.h"
#include "zucmtr/watch/recorderstatus.h"
#include "zucmtr/watch/servicemanager.h"
#include "zucmtr/watch/statusfile.h"
#include "zucmtr/watch/watchevents.h"

#include <QJsonArray>
#include <QSet>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr std::chrono::milliseconds LongestWait{200}; // a signal may arrive just before the wait
constexpr std::chrono::milliseconds FirstPause{1000}; // before a recorder is started again; then doubled
constexpr std::chrono::milliseconds LongestPause{60000};
constexpr std::chrono::milliseconds ShortestInterval{1000}; // between two writings of the status

// In the order of the states.
const char* const StateWords[] = {"waiting", "running", "misconfigured", "ended"};

std::atomic<bool> mustReload = false;

extern "C" void OnHangUp(int /*number*/)
{
    mustReload = true;
}

void InstallReload()
{
    struct sigaction action = {};
    action.sa_handler = OnHangUp;
    action.sa_flags = SA_RESTART;
    sigaction(SIGHUP, &action, nullptr);
}

QString TimeText(const QDateTime& time)
{
    return time.toOffsetFromUtc(time.offsetFromUtc()).toString(Qt::ISODateWithMs);
}

std::chrono::milliseconds PauseAfter(int failures)
{
    return std::min(FirstPause * (1 << std::min(failures - 1, 16)), LongestPause);
}

// What changes all the time is written with the rest.
bool HasChanged(QJsonObject before, QJsonObject now)
{
    for (QJsonObject* status : {&before, &now}) {
        status->remove("lastScan");
        status->remove("disks");
    }
    return before != now;
}

// The recorder's process reports why it does not start: the service has that in the status, too.
int Refuse(const QString& recorder, const char* reason, const QStringList& lines, int code)
{
    Complain(lines);
    RecorderStatus status;
    status.recorder = recorder;
    status.troubleReason = QLatin1String(reason);
    status.troubleText = lines.join(QLatin1Char('\n'));
    statuschannel::Send(status);
    return code;
}

int WorkIn(const QString& recorder, const std::function<int()>& work)
{
    try {
        const int code = work();
        return code == ExitDone && !OutputIsWhole() ? ExitFailed : code;
    } catch (const ConfigurationError& error) {
        return Refuse(recorder, reason::Misconfigured, error.Lines(), ExitUsage);
    } catch (const PassingTrouble& error) {
        return Refuse(recorder, reason::NotStarted, error.Message().split(QLatin1Char('\n')), ExitFailed);
    } catch (const std::exception& error) {
        return Refuse(recorder, reason::NotStarted, {text::MessageOf(error)}, ExitFailed);
    }
}

} // namespace

Service::Service(ServiceOrder order_, std::function<ServicePlan()> read_)
    : order(std::move(order_)), read(std::move(read_)), since(QDateTime::currentDateTime())
{}

int Service::Run()
{
    Begin();
    while (!interrupt::Came() && HasWork()) {
        if (mustReload.exchange(false))
            Reload();
        StartDue();
        Wait();
        TakeReports();
        TakeEnds();
        WriteStatus(false);
        TellManager();
    }
    EndAll();
    return interrupt::Came() ? static_cast<int>(ExitDone) : worst;
}

void Service::Begin()
{
    const ServicePlan plan = read();
    interrupt::Install();
    if (order.isNamed)
        InstallReload();
    watchevents::ShareLines();
    Follow(plan);
    TakeMistakes(plan, true);
    StartDue();
    WriteStatus(true);
    servicemanager::Ready();
}

// A recorder whose new settings cannot be used goes on with the old ones.
void Service::Reload()
{
    ServicePlan plan;
    try {
        plan = read();
    } catch (const ConfigurationError& error) {
        Complain(error.Lines());
        return;
    }
    const QStringList ended = EndMissing(plan);
    const QStringList started = Follow(plan);
    TakeMistakes(plan, false);
    QStringList mistakes;
    for (const QStringList& lines : plan.mistakes)
        mistakes << lines;
    watchevents::Emit("reloaded", {{"startedRecorders", QJsonArray::fromStringList(started)},
                                   {"endedRecorders", QJsonArray::fromStringList(ended)},
                                   {"mistakes", QJsonArray::fromStringList(mistakes)}});
    hasNews = true;
}

QStringList Service::EndMissing(const ServicePlan& plan)
{
    QSet<QString> there;
    for (const ServiceRecorder& recorder : plan.recorders)
        there << recorder.name;
    QStringList ended;
    for (auto one = recorders.begin(); one != recorders.end();) {
        auto& [name, recorder] = *one;
        const bool isThere = there.contains(name) || plan.mistakes.contains(name);
        if (!isThere)
            ended << name;
        recorder.isLeaving = !isThere;
        if (!isThere && recorder.process > 0)
            kill(recorder.process, SIGTERM);
        one = isThere || recorder.process > 0 ? std::next(one) : recorders.erase(one);
    }
    return ended;
}

// Returns the recorders that are started, or will be when their process of the old settings has ended.
QStringList Service::Follow(const ServicePlan& plan)
{
    QStringList started;
    for (const ServiceRecorder& recorder : plan.recorders) {
        One& one = recorders[recorder.name];
        const bool isRunning = one.process > 0;
        if (isRunning && one.settings == recorder.settings && !one.isStopping)
            continue;
        started << recorder.name;
        one.settings = recorder.settings;
        one.work = recorder.work;
        one.failures = 0;
        one.isStopping = isRunning;
        if (isRunning) {
            kill(one.process, SIGTERM);
        } else {
            one.state = State::Waiting;
            one.start = Clock::now();
        }
    }
    return started;
}

void Service::TakeMistakes(const ServicePlan& plan, bool isFirst)
{
    for (auto mistakes = plan.mistakes.begin(); mistakes != plan.mistakes.end(); ++mistakes) {
        Complain(*mistakes);
        One& one = recorders[mistakes.key()];
        if (one.process > 0)
            continue;
        Down(mistakes.key(), one, reason::Misconfigured, mistakes->join(QLatin1Char('\n')), false);
        if (isFirst)
            worst = ExitUsage;
    }
}

void Service::StartDue()
{
    for (auto& [name, one] : recorders) {
        if (one.state == State::Waiting && Clock::now() >= one.start)
            Start(name, one);
    }
}

void Service::Start(const QString& name, One& one)
{
    std::array<int, 2> ends{};
    const pid_t service = getpid();
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        Down(name, one, reason::NotStarted, explain::SystemText(errno), true);
        return;
    }
    one.channel = systemfile::Descriptor(ends[0]);
    const systemfile::Descriptor other(ends[1]);
    one.process = fork();
    if (one.process == 0)
        Become(name, one.work, other.Number(), service);
    if (one.process < 0) {
        Down(name, one, reason::NotStarted, explain::SystemText(errno), true);
        return;
    }
    one.state = State::Running;
    one.start = Clock::now();
    one.status = QJsonObject();
    hasNews = true;
}

void Service::Become(const QString& name, const std::function<int()>& work, int channel, pid_t service)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != service)
        _exit(ExitFailed); // it had ended before the signal was asked for
    interrupt::InstallPatiently();
    std::signal(SIGHUP, SIG_IGN);
    qunsetenv("NOTIFY_SOCKET");
    statuschannel::Use(channel, order.everySeconds);
    if (order.isNamed) {
        watchevents::Name(name);
        ComplainFor(name);
    }
    for (auto& [other, one] : recorders)
        one.channel = systemfile::Descriptor();
    _exit(WorkIn(name, work));
}

void Service::TakeReports()
{
    for (auto& [name, one] : recorders) {
        const QJsonObject before = one.status;
        if (!one.channel.IsOpen() || !statuschannel::Receive(one.channel.Number(), one.status))
            continue;
        one.seen = QDateTime::currentDateTime();
        hasNews = hasNews || HasChanged(before, one.status);
    }
}

void Service::TakeEnds()
{
    for (auto one = recorders.begin(); one != recorders.end();) {
        auto& [name, recorder] = *one;
        int status = 0;
        if (recorder.process > 0 && waitpid(recorder.process, &status, WNOHANG) == recorder.process)
            TakeEnd(name, recorder, status);
        one = recorder.isLeaving && recorder.process < 0 ? recorders.erase(one) : std::next(one);
    }
}

void Service::TakeEnd(const QString& name, One& one, int status)
{
    TakeReports(); // its last words
    one.process = -1;
    one.channel = systemfile::Descriptor();
    hasNews = true;
    const int code = WIFSIGNALED(status) ? static_cast<int>(ExitFailed) : WEXITSTATUS(status);
    worst = std::max(worst, code);
    if (one.isStopping || one.isLeaving || interrupt::Came()) {
        one.state = one.isStopping ? State::Waiting : State::Ended;
        one.isStopping = false;
        one.start = Clock::now();
        return;
    }
    const QString said = one.status["trouble"].toObject()["text"].toString();
    if (WIFSIGNALED(status))
        Down(name, one, reason::Crashed,
             Tr("service", "the recorder's process was ended by signal %1").arg(WTERMSIG(status)), true);
    else if (code == ExitUsage)
        Down(name, one, reason::Misconfigured, said, false);
    else if (order.ends)
        one.state = State::Ended;
    else
        Down(name, one, reason::NotStarted,
             said.isEmpty() ? Tr("service", "the recorder's process has ended with exit code %1").arg(code)
                            : said,
             true);
}

// Nothing is claimed of a recorder whose process is gone but why that is so.
void Service::Down(const QString& name, One& one, const char* reason, const QString& text, bool isTriedAgain)
{
    const bool isTried = isTriedAgain && !order.ends;
    if (Clock::now() - one.start > LongestPause)
        one.failures = 0; // it has worked
    const std::chrono::milliseconds pause = PauseAfter(++one.failures);
    one.process = -1;
    one.state = isTried ? State::Waiting : isTriedAgain ? State::Ended : State::Misconfigured;
    one.start = Clock::now() + pause;
    one.status["trouble"] = QJsonObject{
        {"reason", QLatin1String(reason)}, {"text", text}, {"since", TimeText(QDateTime::currentDateTime())}};
    hasNews = true;
    const double seconds = std::chrono::duration<double>(pause).count();
    QJsonObject event{{"reason", QLatin1String(reason)},
                      {"text", text},
                      {"retrySeconds", isTried ? QJsonValue(seconds) : QJsonValue()}};
    if (order.isNamed)
        event["recorder"] = name;
    watchevents::Emit("recorderDown", event);
}

bool Service::HasWork() const
{
    return std::any_of(recorders.begin(), recorders.end(), [](const auto& one) {
        return one.second.process > 0 || one.second.state == State::Waiting;
    });
}

void Service::Wait() const
{
    std::vector<pollfd> files;
    files.reserve(recorders.size());
    for (const auto& one : recorders)
        files.push_back({one.second.channel.Number(), POLLIN, 0});
    poll(files.data(), files.size(), static_cast<int>(LongestWait.count()));
}

// The recorders finish their current recordings.
void Service::EndAll()
{
    servicemanager::Stopping();
    for (auto& [name, one] : recorders) {
        one.isLeaving = false;
        if (one.process > 0)
            kill(one.process, SIGTERM);
    }
    while (std::any_of(recorders.begin(), recorders.end(),
                       [](const auto& one) { return one.second.process > 0; })) {
        Wait();
        TakeReports();
        TakeEnds();
        WriteStatus(false);
    }
    WriteStatus(true);
}

QJsonObject Service::Status() const
{
    QJsonArray list;
    for (const auto& [name, one] : recorders) {
        RecorderStatus none;
        none.recorder = name;
        QJsonObject status = JsonOf(none);
        for (auto value = one.status.begin(); value != one.status.end(); ++value)
            status[value.key()] = *value;
        status["state"] = QLatin1String(StateWords[static_cast<int>(one.state)]);
        status["process"] = one.process > 0 ? QJsonValue(one.process) : QJsonValue();
        status["seen"] = one.seen.isValid() ? QJsonValue(TimeText(one.seen)) : QJsonValue();
        list << status;
    }
    return {{"since", TimeText(since)},
            {"updated", TimeText(QDateTime::currentDateTime())},
            {"everySeconds", order.everySeconds},
            {"process", getpid()},
            {"recorders", list}};
}

void Service::WriteStatus(bool now)
{
    const std::chrono::milliseconds every(static_cast<int64_t>(order.everySeconds * 1000));
    const Clock::duration age = Clock::now() - written;
    if (order.status.isEmpty() ||
        !(now || age >= every || (hasNews && age >= std::min(every, ShortestInterval))))
        return;
    written = Clock::now();
    hasNews = false;
    QString error;
    const bool isWritten = statusfile::Write(order.status, Status(), error);
    if (!isWritten && !isStatusLost)
        Complain(Tr("service", "--status: '%1' cannot be written: %2").arg(order.status, error));
    isStatusLost = !isWritten;
}

// The first trouble, or what has been done.
void Service::TellManager() const
{
    int converted = 0;
    int failed = 0;
    int pending = 0;
    for (const auto& [name, one] : recorders) {
        const QString trouble = one.status["trouble"].toObject()["text"].toString();
        if (!trouble.isEmpty()) {
            servicemanager::SetStatus(order.isNamed ? name + QLatin1String(": ") + trouble : trouble);
            return;
        }
        converted += one.status["converted"].toInt();
        failed += one.status["failed"].toInt();
        pending += one.status["pending"].toInt();
    }
    servicemanager::SetStatus(
        Tr("watch", "%1 converted, %2 given up, %3 waiting").arg(converted).arg(failed).arg(pending));
}
