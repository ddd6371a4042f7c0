// A process beside the program that answers messages, one after the other, and may crash on one.
#pragma once

#include <QByteArray>

#include <functional>
#include <memory>

class SideProcess
{
public:
    /// What answers the messages; it lives in the process.
    class Clerk
    {
    public:
        virtual ~Clerk() = default;
        virtual QByteArray Answer(const QByteArray& message) = 0; ///< may not throw
    };

    struct Task
    {
        std::function<std::unique_ptr<Clerk>()> begin; ///< when the process starts, also after a crash
        std::function<QByteArray(int signal)> crashed; ///< the answer to a message that made it crash
        /// Before all else: gives up what the program has and the process must not.
        std::function<void()> letGo = {};
    };

    /// Starts the process; it ends with this object, or when the program ends, however that happens, and
    /// takes no notice of SIGINT and SIGTERM. To be called before threads are started, and, without letGo,
    /// before there is anything that the process must not share. Throws text::Error if it cannot be started.
    explicit SideProcess(const Task& task);

    /// Waits until the message that was asked last is done with.
    ~SideProcess();
    SideProcess(const SideProcess&) = delete;
    SideProcess& operator=(const SideProcess&) = delete;

    /// Sends a message; the answer to the one before has to be heard first. False if the process has ended.
    bool Ask(const QByteArray& message) const;

    /// Waits for the answer. False if the process has ended.
    bool Hear(QByteArray& answer) const;

    /// Can be read when there is an answer.
    int Descriptor() const { return line; }

    /// Ends the process, whatever it is doing.
    void Kill() const;

private:
    int process = 0;
    int line = -1; // a socket
};
