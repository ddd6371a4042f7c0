// A zucmtr that runs beside the test.
#pragma once

#include <QString>
#include <QStringList>

#include <chrono>
#include <csignal>
#include <sys/types.h>
#include <thread>

constexpr std::chrono::seconds Patience{60};

/// Calls until it gives true; false after a minute.
template <class Condition>
bool WaitFor(const Condition& condition)
{
    const auto end = std::chrono::steady_clock::now() + Patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::yield();
    }
    return true;
}

/// A started zucmtr, whose standard output and error are the given files. It is killed at the end.
class Child
{
public:
    Child(const QString& directory, const QStringList& arguments, int output, int error);
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    void Send(int number) const { kill(process, number); }
    bool HasEnded();

    /// Its exit code; -1 while it runs and if a signal ended it.
    int Code() const;

private:
    pid_t process = -1;
    int status = 0;
    bool ended = false;
};
