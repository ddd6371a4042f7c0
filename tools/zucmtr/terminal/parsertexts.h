// What is wrong with a command line and what was probably meant, in the language of the user's locale.
#pragma once

#include <QString>
#include <QStringList>

namespace CLI {
class App;
class ParseError;
} // namespace CLI

/// Why the parser has refused the command line; app must be as the parser left it.
QString ParseErrorText(const CLI::App& app, const CLI::ParseError& error);

/// Says that there is no such command, and which one may be meant or which ones there are.
QString UnknownCommandText(const CLI::App& app, const QString& word);

/// Says which of the arguments is a mistake that the parser would take for something else: "--out=", whose
/// value would be the next argument, and "-out", which would be -o with the value "ut". Else empty.
QString SlipText(const CLI::App& app, const QStringList& arguments);
