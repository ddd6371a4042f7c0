// The options and commands of the program as data, for what is made of them when it is built: manual pages
// and completions of the shells.
#pragma once

#include <QJsonObject>
#include <QStringList>

namespace CLI {
class App;
}

/// What the help of a command says, and of the commands below it, in the language of the user's locale:
/// `words` (the given ones, as in zucmtr convert), `description`, `footer`, the entries `positionals` and
/// `options`, and `commands`. An entry has `flags` (as -j and --jobs; none of an argument), `value` (the
/// untranslated name of what is to be given, as FILE; empty for a flag), `required`, `repeated`, `excludes`
/// (options), `description` and `choices` (the words that the value may be). Hidden options are left out. The
/// command is not changed; the parser gives the checks of values of none that is const.
QJsonObject HelpDump(CLI::App& command, const QStringList& words);
