// Place holders and ends of commands, and what only looks like them.
#include "sql/commandtext.h"

#include "support/files.h"

#include <gtest/gtest.h>

TEST(CommandText, PlaceHoldersAreNumbered)
{
    EXPECT_EQ(sql::Numbered("SELECT ?, a FROM t WHERE b = ? AND c<?"),
              "SELECT $1, a FROM t WHERE b = $2 AND c<$3");
}

TEST(CommandText, QuestionMarksInQuotesAndCommentsStay)
{
    EXPECT_EQ(sql::Numbered("SELECT 'a?''b?', \"c?\", ? -- really?\n, ?"),
              "SELECT 'a?''b?', \"c?\", $1 -- really?\n, $2");
    EXPECT_EQ(sql::Numbered("SELECT ?, 'open?"), "SELECT $1, 'open?");
}

TEST(CommandText, ScriptIsCutAtSemicolons)
{
    EXPECT_EQ(sql::CommandsOf("A;\n B 'x;''y' -- c;d\n e;;\n"), (QStringList{"A", "B 'x;''y' -- c;d\n e"}));
    EXPECT_EQ(sql::CommandsOf("A; B"), (QStringList{"A", "B"}));
}
