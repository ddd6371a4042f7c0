// The end of a child process.
#pragma once

#include <cerrno>
#include <sys/wait.h>

/// What waitpid says of the child when it has ended, -1 if it is none. The wait goes on when the end of
/// another child, such as a QProcess, interrupts it: where Qt has no better means, its handler for that lets
/// system calls fail.
inline int EndOf(pid_t child)
{
    int status = 0;
    pid_t ended = 0;
    do {
        ended = waitpid(child, &status, 0);
    } while (ended < 0 && errno == EINTR);
    return ended == child ? status : -1;
}
