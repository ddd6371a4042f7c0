// What the ini reader makes of the lines of a file, and what becomes of each line.
#include "base/codecs.h"
#include "config/QSettingsRu.h"
#include "config/inigrammar.h"
#include "support/files.h"

#include <QTextCodec>
#include <QTextStream>

#include <gtest/gtest.h>

namespace {

// The full keys and values of a file of these bytes, as "key=value".
QStringList EntriesOf(const QByteArray& bytes, QTextCodec* codec = zu::CodecIni)
{
    const TestDirectory directory;
    const QSettingsRu ini(directory.Write(QStringLiteral("a.ini"), bytes), codec);
    EXPECT_EQ(ini.status, 0);
    QStringList entries;
    for (auto entry = ini.settings->constBegin(); entry != ini.settings->constEnd(); ++entry)
        entries << entry.key() + QLatin1Char('=') + entry.value().toString();
    QSettingsRu::ClearOneKey(ini.fileName);
    return entries;
}

} // namespace

struct GrammarCase
{
    const char* rule; // name of the test
    const char* bytes;
    QStringList expected;
};

class IniGrammar : public testing::TestWithParam<GrammarCase>
{};

TEST_P(IniGrammar, GivesTheseEntries)
{
    EXPECT_EQ(EntriesOf(GetParam().bytes), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    QSettingsRu, IniGrammar,
    testing::Values(
        GrammarCase{"CommentBehindAValueIsCut", "[A]\nx = 1 ; note ; more\n", {"A/x=1"}},
        GrammarCase{"LineAheadOfTheFirstSectionIsLost", "x=1\n[A]\ny=2\n", {"A/y=2"}},
        GrammarCase{"ValueMayHoldAnEqualsSign", "[A]\nx=1=2\n", {"A/x=1=2"}},
        GrammarCase{"SectionWithACommentIsNoSection", "[A]\nx=1\n[B] ; note\ny=2\n", {"A/x=1", "A/y=2"}},
        GrammarCase{"SectionWithATextBehindItCanBeAKey", "[A]\n[B] = 1\n", {"A/[B]=1"}},
        GrammarCase{"BlanksAroundASectionAreTrimmed", "[A]\n \t[B] \nx=1\n", {"B/x=1"}},
        GrammarCase{"BlanksInsideASectionStay", "[ A ]\nx=1\n", {" A /x=1"}},
        GrammarCase{"EmptySectionDropsItsLines", "[A]\nx=1\n[]\ny=2\n[B]\nz=3\n", {"A/x=1", "B/z=3"}},
        GrammarCase{"LineWithoutEqualsIsDropped", "[A]\nx\n;\ny=1\n", {"A/y=1"}},
        GrammarCase{"SemicolonBeforeAKeyBelongsToIt", "[A]\n;x=1\n", {"A/;x=1"}},
        GrammarCase{"HashOpensNoComment", "[A]\n#x=1 # 2\n", {"A/#x=1 # 2"}},
        GrammarCase{"LastOfEqualKeysCounts", "[A]\nx=1\nx=2\n", {"A/x=2"}},
        GrammarCase{"SectionMayBeOpenedAgain", "[A]\nx=1\n[B]\ny=2\n[A]\nz=3\n", {"A/x=1", "A/z=3", "B/y=2"}},
        GrammarCase{"KeyMayHoldBlanksCyrillicAndSlash", "[A]\n Тип a/b  c =1\n", {"A/Тип a/b  c=1"}},
        GrammarCase{"EmptyValueIsStored", "[A]\nx=\ny= ; note\n", {"A/x=", "A/y="}},
        GrammarCase{"EmptyKeyIsStored", "[A]\n=1\n", {"A/=1"}},
        GrammarCase{"QuotesMeanNothing", "[A]\nx=\"1;2\"\n", {"A/x=\"1"}},
        GrammarCase{"CaseOfKeysCounts", "[A]\nx=1\nX=2\n[a]\nx=3\n", {"A/X=2", "A/x=1", "a/x=3"}},
        GrammarCase{"CarriageReturnsAreLineEnds", "[A]\r\nx=1\r\n", {"A/x=1"}},
        GrammarCase{"LastLineNeedsNoEnd", "[A]\nx=1", {"A/x=1"}},
        GrammarCase{"EmptyLinesAreSkipped", "\n[A]\n\n \t\nx=1\n", {"A/x=1"}},
        GrammarCase{"EmptyFileHasNoEntries", "", {}}),
    [](const testing::TestParamInfo<GrammarCase>& testCase) { return testCase.param.rule; });

TEST(QSettingsRu, FileIsReadInTheGivenCodec)
{
    const QByteArray bytes = zu::CodecCP1251->fromUnicode(QStringLiteral("[Ж]\nю=Я\n"));
    EXPECT_EQ(EntriesOf(bytes, zu::CodecCP1251), QStringList{"Ж/ю=Я"});
}

TEST(QSettingsRu, NullCodecReadsAsciiByTheStreamsOwn)
{
    EXPECT_EQ(EntriesOf("[A]\nx=1\n", nullptr), QStringList{"A/x=1"});
}

TEST(QSettingsRu, ValueIsLookedUpUnderTheGroup)
{
    const TestDirectory directory;
    QSettingsRu ini(directory.Write(QStringLiteral("a.ini"), "[A]\nx=1\n[ B ]\nx=2\n"), nullptr);
    EXPECT_EQ(ini.group, "");
    EXPECT_EQ(ini.value(QStringLiteral("A/x"), 7).toString(), "1");
    ini.group = QStringLiteral("A");
    EXPECT_EQ(ini.value(QStringLiteral("x"), 7).toString(), "1");
    EXPECT_EQ(ini.value(QStringLiteral("A/x"), 7), QVariant(7));
    EXPECT_EQ(ini.value(QStringLiteral("X"), QVariant()), QVariant());
    ini.group = QStringLiteral("B");
    EXPECT_EQ(ini.value(QStringLiteral("x"), 7), QVariant(7));
    ini.group = QStringLiteral(" B ");
    EXPECT_EQ(ini.value(QStringLiteral("x"), 7).toString(), "2");
    QSettingsRu::Clear();
}

TEST(QSettingsRu, ValuesAreTexts)
{
    const TestDirectory directory;
    const QSettingsRu ini(directory.Write(QStringLiteral("a.ini"), "[A]\nx=1\n"), nullptr);
    EXPECT_EQ(ini.value(QStringLiteral("A/x"), 0).userType(), QMetaType::QString);
    QSettingsRu::Clear();
}

TEST(IniLine, HasItsNumberItsPartsAndWhatBecomesOfIt)
{
    QString text = "x=1\n what \n[A]\n\n b = 2=3 ; c\n[]\ny=2\n[B";
    QTextStream stream(&text);
    QStringList lines;
    zu::IniLine line;
    while (zu::ReadIniLine(stream, line))
        lines << QString("%1 %2 %3|%4|%5|%6")
                     .arg(line.number)
                     .arg("BSEOs"[static_cast<int>(line.kind)])
                     .arg(line.text, line.section, line.key, line.value);
    EXPECT_EQ(lines, QStringList({"1 O x=1||x|1", "2 s what|||", "3 S [A]|A||", "4 B |A||",
                                  "5 E b = 2=3 ; c|A|b|2=3", "6 S []|||", "7 O y=2||y|2", "8 s [B|||"}));
    EXPECT_EQ(line.number, 8);
}
