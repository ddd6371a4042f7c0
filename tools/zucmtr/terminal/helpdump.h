// The options and commands of the program as data, from which the build makes manual pages and shell
// completions.
#pragma once

#include <QJsonObject>
#include <QStringList>

namespace CLI {
class App;
}

/// What the help of a command and of the commands below it says, in the language of the user's locale:
/// `words` (the given ones, as in zucmtr convert), `description`, `footer`, the entries `positionals` and
/// `options`, and `commands`. An entry has `flags` (such as -j and --jobs; none for an argument), `value`
/// (the untranslated name of what is to be given, such as FILE; empty for a flag), `shown` (the same in the
/// user's language), `required`, `repeated`, `excludes` (options), `description` and `choices` (the words
/// that completions offer). Hidden options are left out. The command is not changed; it is not const because
/// the parser hides the checks of a const option.
QJsonObject HelpDump(CLI::App& command, const QStringList& words);
