// What the program's subcommands have in common.
//
// A subcommand is a pair of files with one Add...Command function, which main.cpp calls. That function
// describes the options to the parser and, when the command line names the subcommand, leaves in `chosen`
// what to run.
#pragma once

#include "text/error.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <string>
#include <vector>

/// The program's exit codes.
enum ExitCode {
    ExitDone = 0,   // everything asked for is done
    ExitFailed = 1, // at least one recording or file failed
    ExitUsage = 2,  // wrong usage or configuration: nothing was started
    ExitLoss = 3    // no recording failed, but at least one is damaged and was salvaged in part
};

/// The work of a subcommand; returns the exit code.
using Action = std::function<int()>;

/// A value of the command line as a text.
inline QString FromUtf8(const std::string& utf8)
{
    return QString::fromStdString(utf8);
}

inline QStringList FromUtf8(const std::vector<std::string>& utf8)
{
    QStringList texts;
    for (const std::string& text : utf8)
        texts << FromUtf8(text);
    return texts;
}

/// Settings with which a command cannot start; the lines say what is wrong and what to do. It ends the
/// program with ExitUsage.
class ConfigurationError : public text::Error
{
public:
    explicit ConfigurationError(const QString& text) : ConfigurationError(QStringList{text}) {}
    explicit ConfigurationError(const QStringList& lines_)
        : text::Error(lines_.join(QLatin1Char('\n'))), lines(lines_)
    {}
    const QStringList& Lines() const { return lines; }

private:
    QStringList lines;
};

/// A command line that cannot be understood: the same, with a line that points to the help of a command.
class UsageError : public ConfigurationError
{
public:
    UsageError(const QString& text, const QString& command);
};
