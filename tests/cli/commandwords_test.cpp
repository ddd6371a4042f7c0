// The words of the command that --exec names.
#include "program.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/watch/commandwords.h"

#include <gtest/gtest.h>

namespace {

QString RefusalOf(const QString& command)
{
    try {
        CommandWords(command);
    } catch (const ConfigurationError& error) {
        return error.Message();
    }
    return QString();
}

} // namespace

TEST(CommandWords, BlanksSeparateAndQuotationMarksKeep)
{
    EXPECT_EQ(CommandWords("mail -s fault  ops@example.org"),
              (QStringList{"mail", "-s", "fault", "ops@example.org"}));
    EXPECT_EQ(CommandWords("  a\t'b  c' \"d e\"f '' "), (QStringList{"a", "b  c", "d ef", ""}));
}

TEST(CommandWords, BackslashTakesTheNextCharacterButNotInSingleQuotationMarks)
{
    EXPECT_EQ(CommandWords("a\\ b \\\"c \"d\\\"e\" 'f\\g'"), (QStringList{"a b", "\"c", "d\"e", "f\\g"}));
}

TEST(CommandWords, NothingIsAsAShellHasIt)
{
    EXPECT_EQ(CommandWords("a $HOME `b` *.cfg | c > d & e ; f # g"),
              (QStringList{"a", "$HOME", "`b`", "*.cfg", "|", "c", ">", "d", "&", "e", ";", "f", "#", "g"}));
}

TEST(CommandWords, WhatHasNoEndOrNoProgramIsRefused)
{
    EXPECT_EQ(RefusalOf("a 'b"), "--exec: 'a 'b' has a quotation mark (') without its second one");
    EXPECT_EQ(RefusalOf("a \"b\\\""), "--exec: 'a \"b\\\"' has a quotation mark (\") without its second one");
    EXPECT_EQ(RefusalOf("a b\\"), "--exec: 'a b\\' ends in a backslash; double it if it is meant");
    EXPECT_EQ(RefusalOf("  "), "--exec: '  ' names no program");
    EXPECT_EQ(RefusalOf("'' a"), "--exec: ''' a' names no program");
}
