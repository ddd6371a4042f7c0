// A command that runs beside the program, with a time limit. A process of its own watches over it, so that it
// is ended in time even while the program works on a recording, and when the program itself ends, however
// that happens.
#pragma once

#include "zucmtr/files/systemfile.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>
#include <sys/types.h>

class RecordCommand
{
public:
    struct Order
    {
        QStringList words;                // program and arguments
        QMap<QString, QString> variables; // on top of the program's own environment
        QByteArray input;                 // on its standard input
        std::chrono::milliseconds limit{0};
    };

    struct Outcome
    {
        QString reason; // a word of reasons.h; empty: it ended with exit code 0
        QString error;  // the same for people
        QString output; // the end of what it wrote on standard output and standard error
        double seconds = 0;
    };

    /// Starts it in a process group of its own. `prepare` is called in the process that watches over it, to
    /// release what that should not hold. Not for a program that runs threads.
    RecordCommand(const Order& order, const std::function<void()>& prepare);

    /// Ends it, with its process group, and waits for that.
    ~RecordCommand();
    RecordCommand(const RecordCommand&) = delete;
    RecordCommand& operator=(const RecordCommand&) = delete;

    /// Can be read when it has ended.
    int Descriptor() const { return channel.Number(); }

    bool HasEnded();

    /// Of one that has ended. Whatever of its process group was left is ended, too.
    const Outcome& Result() const { return outcome; }

private:
    void Fail(const char* reason, const QString& text);
    void WaitForEnd();

    systemfile::Descriptor channel; // to the process that watches over it
    pid_t process = -1;
    bool hasEnded = false;
    Outcome outcome;
};
