// The layout of --help: the parser's, with its words in the language of the user's locale and columns aligned
// in any alphabet.
#pragma once

#include <CLI/CLI.hpp>

#include <QString>
#include <QStringList>

class HelpFormat : public CLI::Formatter
{
public:
    HelpFormat();

    std::string make_option(const CLI::Option* option, bool isPositional) const override;
    std::string make_option_name(const CLI::Option* option, bool isPositional) const override;
    std::string make_option_opts(const CLI::Option* option) const override;
};

/// An option's names as on the command line, with one dash or two; none for an argument.
QStringList FlagsOf(const CLI::Option& option);

/// Whether the option is not meant for users: the help leaves it out, and no message suggests it.
bool IsHidden(const CLI::Option& option);

/// The name of a value, such as FILE or DIR, in the user's language; the name of an option is not translated.
QString ShownName(const QString& name);

/// Gives the groups of options and commands their headings; to be called when all commands are added.
void TranslateGroups(CLI::App& app);
