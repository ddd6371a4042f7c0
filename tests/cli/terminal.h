// Pseudo-terminals: devices of the test's own, and a place to run the program as a user sees it.
#pragma once

#include "program.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

/// What can be read right now from a non-blocking descriptor.
QByteArray TakeFrom(int descriptor);

/// A pair of ends; what is written to one end can be read from the other.
class Terminal
{
public:
    Terminal();
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    /// Path of the device that a program writes to.
    const QString& Path() const { return path; }

    /// The program's end, open; -1 after CloseProgramEnd.
    int ProgramEnd() const { return program; }
    void CloseProgramEnd();

    /// The other end, which is non-blocking.
    int UserEnd() const { return user; }

private:
    int user = -1;
    int program = -1;
    QString path;
};

/// Runs zucmtr with a terminal as standard input and error and another as standard output; the first is its
/// controlling terminal. `environment` is set on top of the test's own.
Finished RunOnTerminal(const QString& directory, const QStringList& arguments,
                       const QMap<QString, QString>& environment = {});

/// What remains visible of a text when a terminal has carried out its codes: a line that is cleared is gone.
QString Seen(const QString& text);
