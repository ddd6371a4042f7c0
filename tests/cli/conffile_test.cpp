// The grammar of the recorders' .conf files.
#include "program.h"
#include "zucmtr/watch/conffile.h"

#include <gtest/gtest.h>

namespace {

// "line key=value" of each setting.
QStringList SettingsIn(const QByteArray& text)
{
    QStringList settings;
    for (const conffile::Setting& one : conffile::Parsed("x.conf", text).settings)
        settings << QString("%1 %2=%3").arg(one.line).arg(one.key, one.value);
    return settings;
}

QStringList MistakesIn(const QByteArray& text)
{
    return conffile::Parsed("x.conf", text).mistakes;
}

} // namespace

TEST(ConfFile, SettingsAreKeysAndValuesWithoutTheBlanksAroundThem)
{
    EXPECT_EQ(SettingsIn("out=/srv/out\n  device =  Line 7 \r\nexec = mail -s \"a=b\" x"),
              (QStringList{"1 out=/srv/out", "2 device=Line 7", "3 exec=mail -s \"a=b\" x"}));
    EXPECT_EQ(conffile::Parsed("/etc/zucmtr/watch.d/line-7.conf", "").recorder, "line-7");
}

TEST(ConfFile, CommentsAndEmptyLinesSayNothing)
{
    EXPECT_EQ(SettingsIn("\n# out = a \\\n ; out = b\n\nout = c # d\n"), QStringList{"5 out=c # d"});
}

TEST(ConfFile, BackslashAtTheEndJoinsTheNextLine)
{
    EXPECT_EQ(SettingsIn("exec = a \\\n    b \\\n c\nout = d\\"), (QStringList{"1 exec=a b c", "4 out=d\\"}));
}

TEST(ConfFile, QuotationMarksAroundTheWholeKeepItsBlanks)
{
    EXPECT_EQ(conffile::Unquoted("\" a b \""), " a b ");
    EXPECT_EQ(conffile::Unquoted("\"a\" \"b\""), "\"a\" \"b\"");
    EXPECT_EQ(conffile::Unquoted("\"a"), "\"a");
}

TEST(ConfFile, ByteOrderMarkIsNoPartOfTheFirstKey)
{
    EXPECT_EQ(SettingsIn("\xef\xbb\xbfout = a"), QStringList{"1 out=a"});
}

TEST(ConfFile, MistakesNameFileAndLine)
{
    EXPECT_EQ(MistakesIn("[Recorder]\nout\n= a\nstate =\nini = \xff\n"),
              (QStringList{
                  "x.conf:1: there are no sections here; the file is one recorder's, so leave the line out",
                  "x.conf:2: 'out' is no setting; write it as 'key = value', or put '#' before a comment",
                  "x.conf:3: there is no key before the '='",
                  "x.conf:4: 'state' has no value; give one, or leave the line out",
                  "x.conf:5: the line is not UTF-8"}));
}
