// What the program's subcommands have in common.
//
// A subcommand is a pair of files with one Add...Command function, which main.cpp calls. That function
// describes the options to the parser and, when the command line names the subcommand, leaves in `chosen`
// what to run.
#pragma once

#include <QString>

#include <functional>
#include <stdexcept>
#include <string>

/// The program's exit codes.
enum ExitCode {
    ExitDone = 0,   // everything asked for is done
    ExitFailed = 1, // at least one recording or file failed
    ExitUsage = 2   // wrong usage or configuration: nothing was begun
};

/// The work of a subcommand; gives the exit code.
using Action = std::function<int()>;

/// A value of the command line as a text.
inline QString Text(const std::string& utf8)
{
    return QString::fromStdString(utf8);
}

/// Settings with which a command cannot begin; what() is UTF-8 and says what is wrong and what to do. It ends
/// the program with ExitUsage.
class ConfigurationError : public std::runtime_error
{
public:
    explicit ConfigurationError(const QString& text) : std::runtime_error(text.toStdString()) {}
};
