// Values of options: which ones are accepted, and the texts for all others, which say what to give instead.
#pragma once

#include <CLI/CLI.hpp>

#include <QStringList>

#include <cstdint>
#include <string>
#include <vector>

namespace values {

/// Whole decimal numbers from lowest to highest; to be given as transform(), since the parser would take a
/// leading zero for an octal number.
CLI::Validator WholeNumber(int64_t lowest, int64_t highest);

/// Decimal numbers from lowest to highest.
CLI::Validator Number(double lowest, double highest);

/// Decimal numbers above 0 and below the limit.
CLI::Validator NumberBelow(double limit);

/// One of these words; completions offer them.
CLI::Validator OneOf(const std::vector<std::string>& words);

/// Any value; completions offer these words.
CLI::Validator Offer(const std::vector<std::string>& words);

/// Names of encodings; completions offer the common ones.
CLI::Validator Encoding();

/// The words that completions offer for the value of an option or argument; empty if there are none.
QStringList OfferedWords(CLI::Option& option);

/// Bytes, with a K, M, G, T, P or E of 1024 and its powers; to be given as transform(), for an uint64_t.
CLI::Validator Size();

/// Has the options and arguments of all commands refuse an empty value, as from a shell variable that is not
/// set: treated as an option left out, it would do something other than what was meant.
void RefuseEmpty(CLI::App& app);

} // namespace values

/// Adds an option to a command, or an argument, as "FILE", that may be left out. kind names its values in the
/// help; of an argument it is empty, as its name is there already.
template <class Value>
CLI::Option* AddValue(CLI::App& command, const char* name, Value& value, const char* kind,
                      const std::string& help)
{
    return command.add_option(name, value, help)->type_name(kind);
}

/// Adds an argument that has to be given.
template <class Value>
void AddArgument(CLI::App& command, const char* name, Value& value, const std::string& help)
{
    AddValue(command, name, value, "", help)->required();
}
