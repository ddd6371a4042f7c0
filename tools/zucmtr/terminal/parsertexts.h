// What is wrong with a command line and what was probably meant, in the language of the user's locale.
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace CLI {
class App;
class ParseError;
} // namespace CLI

/// The command with those above it, as in "zucmtr archive find".
QString CommandName(const CLI::App& app);

/// A command that words name, each below the one before, and the words that are left.
struct NamedCommand
{
    CLI::App* command;
    QStringList rest;
};
NamedCommand CommandNamed(CLI::App& app, const QStringList& words);

/// The program and the commands that the parsed command line names, each below the one before.
std::vector<const CLI::App*> GivenCommands(const CLI::App& app);

/// Says that the parsed command line names no command, or lacks the second word of one.
QString NoCommandText(const CLI::App& app);

/// Why the parser has refused the command line; app must be as the parser left it.
QString ParseErrorText(const CLI::App& app, const CLI::ParseError& error);

/// Says that there is no such command below this one, and which one may be meant or which ones there are.
QString UnknownCommandText(const CLI::App& app, const QString& word);

/// Says which of the arguments is a mistake that the parser would take for something else: "--out=", whose
/// value would be the next argument, and "-out", which would be -o with the value "ut". Else empty.
QString SlipText(CLI::App& app, const QStringList& arguments);
