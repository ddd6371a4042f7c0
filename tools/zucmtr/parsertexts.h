// The words of the command line's parser in the language of the user's locale.
#pragma once

#include <QString>

namespace CLI {
class App;
class ParseError;
} // namespace CLI

/// Headings of the help of the program and of all its subcommands; to be called when these are complete.
void TranslateHeadings(CLI::App& app);

/// What is wrong with the command line.
QString TextOf(const CLI::ParseError& error);
