// Programs started with more than their arguments, and a zucmtr that runs beside the test.
#pragma once

#include "program.h"

#include <chrono>
#include <csignal>
#include <functional>
#include <thread>

constexpr std::chrono::seconds Patience{60};

/// Calls until it returns true; false after a minute.
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

/// A process with the standard streams of the test. The function is called in it before the program starts,
/// to set up what QProcess has no setting for: descriptors as streams, a session of its own.
class PreparedProcess : public QProcess
{
public:
    explicit PreparedProcess(std::function<void()> prepare);

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0) // which takes the function as it is
protected:
    void setupChildProcess() override { prepareChild(); }

private:
    std::function<void()> prepareChild;
#endif
};

/// A running zucmtr, whose standard output and error are the given files. It is killed at the end.
class Child
{
public:
    Child(const QString& directory, const QStringList& arguments, int output, int error);
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    /// Does nothing if the process is known to have ended.
    void Send(int number) const;
    bool HasEnded();

    /// Its number in the system.
    qint64 Process() const { return process.processId(); }

    /// Its exit code; -1 while it runs and if a signal ended it.
    int Code() const;

private:
    PreparedProcess process;
};
