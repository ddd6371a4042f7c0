// What the check says about each kind of line.
#include "inicheck/inicheck.h"

#include "config/deviceinikeys.h"
#include "dictionary/draft.h"
#include "station/station.h"
#include "support/files.h"

#include <gtest/gtest.h>

namespace {

using inicheck::Check;
using inicheck::Finding;
using inicheck::Findings;
using inicheck::Severity;

// A section of defaults by which every other section loads.
QString Defaults()
{
    return DefaultsLines("Default", {{"Модель", "M"}}).join('\n') + '\n';
}

const int FirstLine = Defaults().count('\n') + 2; // of what stands after "[D]"

class CheckOf : public testing::Test
{
protected:
    Findings Of(const QByteArray& text, const QStringList& recordings = {})
    {
        directory.Write("a.ini", text);
        return Check({directory.Path("a.ini"), "Default", {"D"}, recordings});
    }

    // The findings but for those on absent keys.
    QStringList OfDevice(const QString& lines, const QStringList& recordings = {})
    {
        QStringList texts;
        for (const Finding& finding : Of((Defaults() + "[D]\n" + lines).toUtf8(), recordings)) {
            if (!finding.text.startsWith("taken from [Default]"))
                texts << Shown(finding);
        }
        return texts;
    }

    static QString Shown(const Finding& finding)
    {
        const int line = finding.line == 0 ? 0 : finding.line - FirstLine + 1;
        return QString("%1 %2 %3").arg(line).arg("NWE"[static_cast<int>(finding.severity)]).arg(finding.text);
    }

    TestDirectory directory;
};

QStringList One(const QString& text)
{
    return {text};
}

} // namespace

TEST_F(CheckOf, SampleStationIsGood)
{
    directory.Write("s.ini", station::MakeIni({}).toUtf8());
    for (const Finding& finding :
         Check({directory.Path("s.ini"), station::DefaultsSection(), {station::DeviceSection()}, {}}))
        EXPECT_EQ(finding.severity, Severity::Note) << finding.line << ": " << finding.text.toStdString();
}

TEST_F(CheckOf, KeysOfTheDefaultsAreNamedInOneNote)
{
    const Findings findings = Of((Defaults() + "[D]\nОбъект=X\nИсточник=Y\n").toUtf8());
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].line, FirstLine - 1);
    EXPECT_EQ(findings[0].severity, Severity::Note);
    EXPECT_TRUE(findings[0].text.startsWith("taken from [Default]: Энергосистема, Субъект, Версия ПО, "))
        << findings[0].text;
}

TEST_F(CheckOf, UnknownKeysAreReportedWithTheNearest)
{
    EXPECT_EQ(OfDevice("Обьект=X\n"), One("1 W ignored: there is no key 'Обьект'; is 'Объект' meant?"));
    EXPECT_EQ(OfDevice("Оператор=X\n"), One("1 W ignored: there is no key 'Оператор'"));
    EXPECT_EQ(OfDevice("; Обьект=X\n# Обьект=X\n"), QStringList());
}

TEST_F(CheckOf, NumbersOutOfRangeAreRefused)
{
    EXPECT_EQ(OfDevice("Тип Comtrade BIN=2\n"),
              One("1 E 'Тип Comtrade BIN' is '2', which is no whole number from 0 to 1: the section does not "
                  "load"));
    EXPECT_EQ(OfDevice("Версия ZU=\n"),
              One("1 E 'Версия ZU' is '', which is no whole number from 1 to 2: the "
                  "section does not load"));
    EXPECT_EQ(OfDevice("Версия ZU=-1\n"),
              One("1 N 'Версия ZU' counts as absent: it is taken from [Default]"));
}

TEST_F(CheckOf, ObligatoryKeysAreMissed)
{
    const Findings findings = Of(Defaults().remove("Модель=M\n").toUtf8() + "[D]\n");
    ASSERT_FALSE(findings.empty());
    EXPECT_EQ(findings[0].line, 1);
    EXPECT_EQ(findings[0].severity, Severity::Error);
    EXPECT_EQ(findings[0].text, "'Модель' is missing: the section does not load; add it");
}

TEST_F(CheckOf, LinesOfNoKnownKindAreReported)
{
    EXPECT_EQ(
        OfDevice("what\n; a comment\n\n"),
        One("1 W ignored: it is neither a section nor 'key = value'; start it with ';' if it is a comment"));
    EXPECT_EQ(OfDevice("[Other] ; the other one\n"),
              One("1 W it opens no section, as ']' is not its last character: what follows belongs to [D]"));
    EXPECT_EQ(OfDevice("[ Other]\n"),
              One("1 W the blanks belong to the section's name ' Other'; take them out"));
    EXPECT_EQ(OfDevice("[Default]\n"),
              One("1 W section [Default] starts in line 1 already; both are one, and of equal keys the last "
                  "counts: put them together"));
}

TEST_F(CheckOf, LineBeforeTheFirstSectionIsIgnored)
{
    const Findings findings = Of("Объект=X\n" + Defaults().toUtf8() + "[D]\n");
    ASSERT_FALSE(findings.empty());
    EXPECT_EQ(findings[0].text, "ignored: it comes before the first section; move it into one");
    EXPECT_EQ(findings[0].line, 1);
}

TEST_F(CheckOf, RepeatedKeysAreReportedWhereTheyDoNotCount)
{
    EXPECT_EQ(OfDevice("Объект=X\nОбъект=Y\n"),
              One(QString("1 W ignored: 'Объект' is in line %1 again, and the last one counts; take one of "
                          "them out")
                      .arg(FirstLine + 1)));
}

TEST_F(CheckOf, QuotationMarksStayInTheValue)
{
    EXPECT_EQ(OfDevice("Модель=\"M\"\n"),
              One("1 W the quotation marks belong to the value of 'Модель'; take them out"));
}

TEST_F(CheckOf, TextThatIsNotUtf8IsLost)
{
    const Findings findings = Of(Defaults().toUtf8() + "[D]\nCим=\xcf\xd1\n");
    ASSERT_GE(findings.size(), 2U);
    EXPECT_EQ(findings[1].line, FirstLine);
    EXPECT_EQ(findings[1].severity, Severity::Error);
    EXPECT_EQ(findings[1].text, "it is not UTF-8, its letters are lost; save the file in UTF-8");
}

TEST_F(CheckOf, IdentityTextsThatMakeARecordUnreadableAreErrors)
{
    EXPECT_EQ(
        OfDevice("Объект=ПС, Восточная\n"),
        One("1 E Объект 'ПС, Восточная' holds a comma or a line end: no program opens a record with it; "
            "take it out"));
    EXPECT_EQ(
        OfDevice("Источник=РАС %2\n"),
        One("1 E Источник 'РАС %2' holds a '%' with a digit, which is replaced by another value when the "
            "record is written; take it out"));
    EXPECT_EQ(OfDevice("Источник=100 %\n"), QStringList());
    EXPECT_EQ(OfDevice("Субъект=A/B\n"),
              One("1 N the characters \" \\ / : * ? < > | of 'Субъект' are left out of "
                  "the names of files"));
}

TEST_F(CheckOf, LettersThatTheCodePageLacksAreReported)
{
    EXPECT_EQ(
        OfDevice("Кодировка Comtrade UTF8=0\nМодель=Ω-1\n"),
        One("2 W 'Модель' holds letters that CP1251 lacks, which become '?' in the record; take others, "
            "or set 'Кодировка Comtrade UTF8' to 1"));
    EXPECT_EQ(OfDevice("Модель=Ω-1\n"), QStringList());
}

TEST_F(CheckOf, KeysThatExcludeEachOtherAreReported)
{
    EXPECT_EQ(
        OfDevice("Тип Comtrade CFF=1\nТип Comtrade 1999=1\n"),
        One("1 W 'Тип Comtrade CFF' is ignored beside 'Тип Comtrade 1999': the record has separate files"));
    EXPECT_EQ(OfDevice("Переименовать сигналы Comtrade=0\nДоп.индексы для имен сигналов=7\n"),
              One("2 N 'Доп.индексы для имен сигналов' is not read while 'Переименовать сигналы Comtrade' "
                  "is 0"));
    EXPECT_EQ(OfDevice("Удалять исходные=1\n"),
              One("1 N the recordings are deleted before anybody can compare their records; 'zucmtr convert "
                  "--remove-source' deletes each one after its record is verified"));
}

TEST_F(CheckOf, EntriesBeyondTheMaximumAreNotChecked)
{
    EXPECT_EQ(OfDevice("nAnMax=1\nA01=W:Ua,V_L=110 E_G=L S_G=VT\nA02=W:Ub,V_L=110 E_G=L S_G=VT\n"),
              One("3 W A02: ignored: 'nAnMax' is 1; raise it to 2"));
    EXPECT_EQ(OfDevice("D01=W:Откл,V_L=110 E_G=L D_G=RP S_T=SBO\n"),
              One("1 W D01: ignored: 'nDiMax' is 0; raise it to 1"));
    EXPECT_EQ(OfDevice("nAnMax=2\nA1=W:Ua,V_L=110 E_G=L S_G=VT\n"),
              One("2 W A1: ignored: the numbers are written 01, 02 ... 99, 100"));
    EXPECT_EQ(OfDevice("nAnMax=x\n"), One("1 E nAnMax: 'x' is no whole number: the section does not load"));
}

TEST_F(CheckOf, EntriesWithoutGoodParametersStayUnsorted)
{
    EXPECT_EQ(
        OfDevice("nAnMax=1\nA01=W:Ua\n"),
        One("2 W A01: it has no parameters, so its channel stays unsorted; add 'V_L=... E_G=... S_G=...'"));
    EXPECT_EQ(
        OfDevice("nAnMax=1\nA01=W:Ua,V_L=110 E_G=L\n"),
        One("2 W A01: 'S_G=' is missing, so its channel stays unsorted; give one of VT, CT, PR_REC, PR_BB, "
            "PR_DIFF1, PR_DIFF2, F, PR_RC, PR_RV, PR_RVG, PR_IEX, PR_VEX, DCS_VPP, DCS_VP1G, DCS_VP2G"));
    EXPECT_EQ(
        OfDevice("nDiMax=1\nD01=W:Q,V_L=110 E_G=L D_G=RB S_T=SBO\n"),
        One("2 W D01: 'D_G=RB' is not known, so its channel stays unsorted; give one of RP, NA, EA, TA, FR, "
            "FL, OC; is 'RP' meant?"));
    EXPECT_EQ(
        OfDevice("nAnMax=1\nA01=W:Ua,V_L=111 E_G=L S_G=VT S_T=FD\n"),
        (QStringList{"2 W A01: 'V_L=111' is not known, so its channel stays unsorted; give one of 6, 10, 15, "
                     "20, 35, 60, 110, 220, 330, 400, 500, 750, 1150; is '110' meant?",
                     "2 W A01: 'S_T=' is ignored; is 'S_G' meant?"}));
}

TEST_F(CheckOf, NamesOfSignalsAreChecked)
{
    EXPECT_EQ(OfDevice("nAnMax=1\nA01=,V_L=110\n"),
              One("2 E A01: it has no signal before the first comma: the section does not load"));
    EXPECT_EQ(OfDevice("nDiMax=1\nD01=,V_L=110\n"),
              One("2 W D01: dropped: it has no signal before the first comma"));
    EXPECT_EQ(
        OfDevice("nAnMax=1\nA01=Ua,V_L=110 E_G=L S_G=VT,more\n"),
        (QStringList{"2 W A01: 'Ua' is not 'equipment:signal'; write the channel's name as the recorder does",
                     "2 W A01: what follows the second comma is ignored"}));
    EXPECT_EQ(
        OfDevice("nAnMax=2\nA01=W:Ua,V_L=110 E_G=L S_G=VT\nA02=W:Ua,V_L=110 E_G=L S_G=VT\n"),
        One(QString("3 W A02: 'W:Ua' is in line %1 too: a record would have the channel twice; take one "
                    "out")
                .arg(FirstLine + 1)));
    EXPECT_EQ(
        OfDevice("nAnMax=1\nnDiMax=1\nA01=W:Q,V_L=110 E_G=L S_G=VT\nD01=W:Q,V_L=110 E_G=L D_G=RP S_T=SBO\n"),
        QStringList());
}

TEST_F(CheckOf, EquipmentIsOfOneKind)
{
    const QString first = "nAnMax=2\nA01=W:Ua,V_L=110 E_G=L S_G=VT\n";
    EXPECT_EQ(
        OfDevice("nAnMax=3\nA01=W:Ua,V_L=110 E_G=L S_G=VT\nA02=W:Ia,V_L=110 E_G=L S_G=CT\n"
                 "A03=W:Ib,V_L=110 E_G=L S_G=CT\n"),
        One(QString(
                "3 N A02: 'W' has voltages and currents (line %1), which share one record of the INF file "
                "with the key of the first; where both are needed, give the currents another name in "
                "the recorder")
                .arg(FirstLine + 1)));
    EXPECT_EQ(
        OfDevice(first + "A02=W:Ub,V_L=220 E_G=L S_G=VT\n"),
        One(QString("3 W A02: 'W' is V_L=220 E_G=L here and V_L=110 E_G=L in line %1; one equipment has one "
                    "of each")
                .arg(FirstLine + 1)));
    EXPECT_EQ(OfDevice(first + "A02=W:F,V_L=110 E_G=L S_G=F\n"), QStringList());
}

TEST_F(CheckOf, BaysAreChecked)
{
    EXPECT_EQ(OfDevice("nBayMax=1\nBAY01=W\n"),
              One("2 W BAY01: ignored: it has neither a text to show nor a second circuit"));
    EXPECT_EQ(OfDevice("nBayMax=2\nBAY01=W,ВЛ,WI\nBAY02=W,ВЛ 2\n"),
              One(QString("3 W BAY02: ignored: the bay 'W' is in line %1 already").arg(FirstLine + 1)));
    EXPECT_EQ(OfDevice("nBayMax=1\nBAY01=W,ВЛ,WI,more\n"),
              One("2 W BAY01: what follows the third comma is ignored"));
    EXPECT_EQ(OfDevice("nBayMax=1\nBAY01=W,ВЛ %1\n").size(), 1);
}

TEST_F(CheckOf, DictionaryAmongTheDefaultsIsIgnored)
{
    const Findings findings = Of(Defaults().toUtf8() + "nAnMax=1\n[D]\n");
    ASSERT_FALSE(findings.empty());
    EXPECT_EQ(findings[0].text, "ignored: 'nAnMax' belongs in the section of a device");
}

TEST_F(CheckOf, RecordingIsComparedWithTheDictionary)
{
    const recorderfile::Recording recording =
        station::MakeRecording({}, station::StartKind::PositiveSequence).front();
    directory.Write("r.ZU", recorderfile::Encode(recording));
    const QString path = directory.Path("r.ZU");
    const QStringList texts =
        OfDevice("nAnMax=1\nA01=Нет:Ua,V_L=110 E_G=L S_G=VT\n", {path, directory.Path("none.ZU")});
    ASSERT_EQ(texts.size(), 4) << texts.join('\n').toStdString();
    EXPECT_TRUE(texts[0].startsWith(
        "0 W " + path + ": the dictionary does not know 32 channels, which come after the others: "));
    EXPECT_TRUE(texts[1].startsWith("0 W " + path + ": the dictionary does not know 64 channels"));
    EXPECT_TRUE(
        texts[2].startsWith("0 E " + directory.Path("none.ZU") + ": there is no such file; check the path"));
    EXPECT_EQ(texts[3], "2 W " + path + " has no channel 'Нет:Ua'");
}
