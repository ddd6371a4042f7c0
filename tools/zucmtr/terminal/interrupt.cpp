#include "zucmtr/terminal/interrupt.h"

#include <atomic>
#include <csignal>
#include <unistd.h>

namespace interrupt {

namespace {

// Number of the signal. Atomic, as the threads of a batch ask for it; without a lock, as a handler sets it.
std::atomic<int> received = 0;
static_assert(std::atomic<int>::is_always_lock_free);

std::atomic<bool> isPatient = false;

extern "C" void OnSignal(int number)
{
    if (received != 0 && isPatient)
        return;
    if (received != 0 && received != SIGPIPE)
        _exit(128 + number);
    received = number;
}

// Each further write brings another one, and the work that is being ended may still write.
extern "C" void OnClosedPipe(int number)
{
    int none = 0;
    received.compare_exchange_strong(none, number);
}

} // namespace

void InstallPatiently()
{
    isPatient = true;
    Install();
}

void Install()
{
    struct sigaction action = {};
    action.sa_handler = OnSignal;
    action.sa_flags = SA_RESTART; // so that no write of the library fails
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

void InstallForClosedPipe()
{
    struct sigaction action = {};
    action.sa_handler = OnClosedPipe;
    action.sa_flags = SA_RESTART;
    sigaction(SIGPIPE, &action, nullptr);
}

bool Came()
{
    return received != 0;
}

int Signal()
{
    return received;
}

int ExitCode()
{
    return 128 + received;
}

} // namespace interrupt
