// The texts of the findings: line, what is wrong, what to do.
#include "inicheck/inicheck.h"

#include "inicheck/nearest.h"

#include "dictionary/draft.h"
#include "station/station.h"
#include "support/device.h"

#include <gtest/gtest.h>

namespace {

using inicheck::Findings;
using inicheck::Severity;

// "line severity: what; advice" of each finding; E, W or N for the severity.
QStringList TextsOf(const Findings& findings)
{
    QStringList texts;
    for (const inicheck::Finding& finding : findings) {
        const char* const severity = finding.severity == Severity::Error     ? "E"
                                     : finding.severity == Severity::Warning ? "W"
                                                                             : "N";
        texts << QString::number(finding.line) + QLatin1String(severity) + QStringLiteral(": ") +
                     finding.what + QStringLiteral("; ") + finding.advice;
    }
    return texts;
}

QStringList Check(const QByteArray& text, const QStringList& devices = {QStringLiteral("Device")},
                  const QString& defaults = QStringLiteral("Defaults"))
{
    const TestDirectory directory;
    const inicheck::IniText ini = inicheck::ReadIni(directory.Write(QStringLiteral("ZuDrv.ini"), text));
    return TextsOf(inicheck::Check(ini, {defaults, devices}));
}

// Findings of a device's section; [Device] is line 21, so its first line is 22.
QStringList CheckLines(const QByteArray& lines)
{
    return Check(DefaultsSection() + "[Device]\n" + lines);
}

TEST(Findings, UnknownKeysHaveTheNearestOne)
{
    EXPECT_EQ(CheckLines("Обьект=x\nnAnMx=1\nA1=W1:Ua\nfoo bar=1\n"),
              QStringList({"22W: the key 'Обьект' is unknown and is ignored; did you mean 'Объект'?",
                           "23W: the key 'nAnMx' is unknown and is ignored; did you mean 'nAnMax'?",
                           "24W: the key 'A1' is unknown and is ignored; did you mean 'A01'?",
                           "25W: the key 'foo bar' is unknown and is ignored; remove it, or see the list of "
                           "keys"}));
}

TEST(Findings, CyrillicLettersInKeysAreSeenThrough)
{
    EXPECT_EQ(CheckLines("А01=W1:Ua\n"),
              QStringList({"22W: the key 'А01' is unknown and is ignored; did you mean 'A01'?"}));
}

TEST(Findings, BadNumbersHaveTheirRange)
{
    EXPECT_EQ(CheckLines("Версия ZU=3\nnAnMax=many\n"),
              QStringList({"22E: 'Версия ZU' cannot be '3'; the section does not load; give a whole number "
                           "from 1 to 2",
                           "23E: 'nAnMax' cannot be 'many'; the section does not load; give the highest "
                           "number of the keys A..."}));
}

TEST(Findings, MissingDefaultsStandAtTheirHeading)
{
    QByteArray defaults = DefaultsSection();
    defaults.replace("Субъект=Subject\n", "");
    EXPECT_EQ(Check(defaults + "[Device]\n"),
              QStringList({"1E: the defaults lack 'Субъект' and do not load; add Субъект=..."}));
}

TEST(Findings, EveryFaultOfTheParametersIsNamed)
{
    EXPECT_EQ(
        CheckLines("nAnMax=1\nA01=W1:Ua,V_L=100 E_G=BRP S_D=VT\n"),
        QStringList({"23W: bad parameters, 'W1:Ua' stays unsorted: V_L=100 is unknown, did you mean "
                     "V_L=10?; E_G=BRP is unknown, did you mean E_G=BPR?; S_G= is missing; the parameter "
                     "S_D=VT is unknown, did you mean S_G=VT?; correct them"}));
}

TEST(Findings, EntriesBehindTheMaximumSayWhy)
{
    EXPECT_EQ(CheckLines("A01=W1:Ua\nnDiMax=1\nD02=W1:On\n"),
              QStringList({"22W: 'A01' is ignored, for the section has no 'nAnMax'; set nAnMax=1 or higher",
                           "24W: 'D02' is ignored, for 'nDiMax' is 1; set nDiMax=2 or higher"}));
}

TEST(Findings, IdentityTextsThatBreakARecord)
{
    EXPECT_EQ(
        CheckLines("Объект=ПС, Север\nИсточник=РАС %1\nСубъект=a\x0b"
                   "b\n"),
        QStringList({"22W: the comma in 'ПС, Север' parts it into two fields of the CFG file or of the "
                     "record's name; write it without a comma",
                     "23W: 'РАС %1' holds a percent sign with a digit, which may become another text in "
                     "the record; write it without the percent sign",
                     "24W: 'Субъект' holds a control character or line end, which breaks the record's "
                     "lines; remove it"}));
}

TEST(Findings, ATerritoryMayHoldAComma)
{
    EXPECT_EQ(CheckLines("Энергосистема=Урал, север\n"), QStringList());
}

TEST(Findings, QuotesAndEscapesAreNothingSpecial)
{
    EXPECT_EQ(
        CheckLines("Объект=\"ПС\"\nИсточник=\"a; b\"\nСубъект=a\\nb\n"),
        QStringList({"22N: the quotes belong to the value '\"ПС\"'; remove them unless they are meant",
                     "23W: the ';' begins a comment also inside quotes: the value is '\"a'; write it without "
                     "';'",
                     "24N: a backslash means nothing special: 'a\\nb' stays as it is; write the character "
                     "itself"}));
}

TEST(Findings, EquipmentThatMixesVoltageAndCurrentHasOneNote)
{
    EXPECT_EQ(
        CheckLines("nAnMax=4\nA01=W1:Ua,V_L=110 E_G=L S_G=VT\nA02=W1:Ia,V_L=110 E_G=L S_G=CT\n"
                   "A03=W1:Ib,V_L=110 E_G=L S_G=CT\nA04=W2:Ia,V_L=110 E_G=L S_G=CT\n"),
        QStringList({"24N: the equipment 'W1' has CT here and VT in line 23; the INF file has one key for "
                     "them all; give them separate equipment names, in the recorder too"}));
}

TEST(Findings, RepeatsNameTheOneThatCounts)
{
    EXPECT_EQ(CheckLines("Объект=a\nОбъект=b\n[Device]\nnAnMax=2\nA01=W1:Ua\nA02=W1:Ua\n"),
              QStringList(
                  {"22W: 'Объект' comes again in line 23, which counts; this one is ignored; remove one of "
                   "the two",
                   "24W: section [Device] is here already since line 21; both are one section; join them, or "
                   "give the second one its own name",
                   "26N: 'W1:Ua' has no parameters and stays unsorted; add V_L=, E_G= and S_G= behind a "
                   "comma",
                   "27N: 'W1:Ua' has no parameters and stays unsorted; add V_L=, E_G= and S_G= behind a "
                   "comma",
                   "27W: the signal 'W1:Ua' is here already as 'A01' in line 26; sorted entries of one name "
                   "write its channel twice; remove one of the two"}));
}

TEST(Findings, LinesThatAreNoEntries)
{
    EXPECT_EQ(
        Check("x=1\n" + DefaultsSection() + "[Device]\nword\n; comment\n# comment\n[Other] ; note\n[]\n"),
        QStringList(
            {"1W: 'x=1' stands ahead of the first section and is ignored; move it into a section",
             "23W: 'word' is no key=value and is ignored; begin a comment with ';', or add what is "
             "missing",
             "26E: '[Other] ; note' opens no section; the lines below it go to the section above; leave "
             "nothing behind the closing bracket, not even a comment",
             "27E: a section without a name; the lines up to the next section are ignored; name the "
             "section"}));
}

TEST(Findings, Encoding)
{
    EXPECT_EQ(Check("\xEF\xBB\xBF" + DefaultsSection() + "[Device]\nОбъект=\xCF\xD1\n"),
              QStringList({"1N: the file begins with a byte order mark, which is skipped; save it as UTF-8 "
                           "without the mark for other programs",
                           "22E: the line is not UTF-8; what is not is read as '?' signs; save the file as "
                           "UTF-8"}));
}

TEST(Findings, SampleStationHasNothingButItsMixedEquipment)
{
    const QStringList found =
        Check(station::MakeIni({}).toUtf8(), {station::DeviceSection()}, station::DefaultsSection());
    EXPECT_EQ(found.size(), 2);
    EXPECT_EQ(found.filter(QStringLiteral("the INF file has one key for them all")), found);
    EXPECT_EQ(found.filter(QStringLiteral("N: ")), found);
}

TEST(Findings, DraftOfADictionaryHasNone)
{
    const QStringList dictionary =
        dictionary::DictionaryLines({{QStringLiteral("ВЛ-110 W1:Ua"), QStringLiteral("кВ")}},
                                    {{QStringLiteral("ВЛ-110 W1:Откл"), QString()}});
    const QStringList whole =
        dictionary::CompleteIni(QStringLiteral("Device"), QStringLiteral("РАС"), dictionary);
    EXPECT_EQ(Check(whole.join('\n').toUtf8(), {QStringLiteral("Device")}, QStringLiteral("Default")),
              QStringList());
}

TEST(Findings, RecordingAgainstTheDictionary)
{
    const TestDirectory directory;
    const inicheck::IniText ini = inicheck::ReadIni(directory.Write(
        QStringLiteral("ZuDrv.ini"), "[Device]\nnAnMax=3\nA01=W1:Ua\nA02=W1:Ub\nA03=W1:UC\n"));
    const Findings findings = inicheck::CheckRecording(
        ini, QStringLiteral("Device"),
        {QStringLiteral("rec.ZU"), {"W1:Ua", "W1:Uc", "W1:Ud"}, {QStringLiteral("W1:Откл")}});
    EXPECT_EQ(
        TextsOf(findings),
        QStringList({"4W: rec.ZU has no channel 'W1:Ub'; write the name as the recorder does, or remove "
                     "the line",
                     "5W: rec.ZU has no channel 'W1:UC'; did you mean 'W1:Uc'?",
                     "0N: the dictionary does not know the channel 'W1:Uc', which is written behind the "
                     "sorted ones; add it to the dictionary if it is to be sorted",
                     "0N: the dictionary does not know the channel 'W1:Ud', which is written behind the "
                     "sorted ones; add it to the dictionary if it is to be sorted"}));
}

TEST(Findings, LongNamesTakeNoTime)
{
    const QByteArray mega(1 << 20, 'k');
    EXPECT_EQ(CheckLines(mega + "=1\n").size(), 1);
    EXPECT_EQ(CheckLines("nAnMax=1\nA01=" + mega + "," + mega + "\n").size(), 2);
}

TEST(Nearest, IsNothingWhereNothingIsNear)
{
    EXPECT_EQ(inicheck::Nearest(QStringLiteral("XY"), {"VT", "CT"}), QString());
    EXPECT_EQ(inicheck::Nearest(QStringLiteral("TV"), {"CT", "VT"}), QStringLiteral("VT"));
    EXPECT_EQ(inicheck::Nearest(QStringLiteral("СТ"), {"VT", "CT"}), QStringLiteral("CT")); // Cyrillic
    EXPECT_EQ(inicheck::Nearest(QString(), {"VT"}), QString());
}

} // namespace
