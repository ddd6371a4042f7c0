#include "zucmtr/terminal/interrupt.h"

#include <csignal>
#include <unistd.h>

namespace interrupt {

namespace {

volatile std::sig_atomic_t received = 0; // number of the signal

extern "C" void OnSignal(int number)
{
    if (received != 0)
        _exit(128 + number);
    received = number;
}

} // namespace

void Install()
{
    struct sigaction action = {};
    action.sa_handler = OnSignal;
    action.sa_flags = SA_RESTART; // so that no write of the library fails
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
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
