// Every kind of mistake against what the converter does with it: a section reported not to load does not
// load, and removing a line reported as ignored makes no difference to the device.
#include "inicheck/inicheck.h"

#include "resorter/ResorterZuCmtrConv.h"
#include "support/device.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

// What the library made from a file.
struct Loaded
{
    bool defaults = false;
    bool device = false;
    QStringList state; // of the device

    bool operator==(const Loaded& other) const
    {
        return defaults == other.defaults && device == other.device && state == other.state;
    }
};

QStringList StateOf(const ZuCmtrDevParam& device)
{
    QStringList state = {device.PowerSystem,   device.Subject,         device.Object,          device.Source,
                         device.Model,         device.HardwareVersion, device.SoftwareVersion, device.CimId,
                         device.CabinetNumber, device.SerialNumber};
    for (const unsigned int number :
         {device.ZuVersion, device.WaitTime, unsigned(device.DeleteSource), unsigned(device.ComtradeBin),
          unsigned(device.ComtradeCff), unsigned(device.ComtradeUtf8), unsigned(device.RenameSignals),
          unsigned(device.AdditionalIndexes), unsigned(device.Comtrade1999)})
        state << QString::number(number);
    const ResorterZuCmtrConv& resorter = *device.Resorter;
    for (const DictionaryZuCmtrAn* entry : resorter.AnResorted)
        state << entry->FullName << QString::number(entry->VoltageLevel)
              << QString::number(entry->EquipmentGroup) << QString::number(entry->SignalGroup) << entry->VlInd
              << entry->CimChannelId;
    for (const DictionaryZuCmtrDi* entry : resorter.DiResorted)
        state << entry->FullName << QString::number(entry->VoltageLevel)
              << QString::number(entry->EquipmentGroup) << QString::number(entry->DeviceGroup)
              << QString::number(entry->StatusType) << entry->CimChannelId;
    for (const auto& bay : resorter.BayParams)
        state << bay.first << bay.second->DisplayName << bay.second->CircuitName;
    return state;
}

Loaded Load(const TestDirectory& directory, const QByteArray& text)
{
    const QString ini = directory.Write(QStringLiteral("loaded.ini"), text);
    ZuCmtrConverter::LogFilePath = directory.Path(QStringLiteral("log"));
    ZuCmtrConverter converter;
    Loaded loaded;
    unsigned int number = 0;
    loaded.defaults = converter.LoadFromIniDefault(ini, QStringLiteral("Defaults"));
    loaded.device = converter.LoadFromIni(ini, QStringLiteral("Device"), &number);
    if (loaded.device)
        loaded.state = StateOf(*converter.m_DevParams.at(number));
    converter.Clear(); // the cache too
    return loaded;
}

QByteArray Without(const QByteArray& text, int line)
{
    QList<QByteArray> lines = text.split('\n');
    lines.removeAt(line - 1);
    return lines.join('\n');
}

struct Case
{
    const char* name;
    QByteArray defaults; // appended to the whole defaults, which have every key
    QByteArray device;   // lines of the device
    bool found;          // whether there is anything to say
};

void PrintTo(const Case& one, std::ostream* out)
{
    *out << one.name;
}

const QByteArray Good = ",V_L=110 E_G=L S_G=VT\n";
const QByteArray GoodDiscrete = ",V_L=110 E_G=L D_G=RP S_T=FD\n";

const Case Cases[] = {
    {"Nothing", "", "", false},
    {"WholeDictionary", "",
     "nAnMax=1\nA01=W1:Ua" + Good + "nDiMax=1\nD01=W1:On" + GoodDiscrete + "nBayMax=1\nBAY01=W1,Line\n",
     false},
    {"NumberOutOfRange", "", "Версия ZU=3\n", true},
    {"NumberIsText", "", "Тип Comtrade BIN=yes\n", true},
    {"NumberIsEmpty", "", "Тип Comtrade BIN=\n", true},
    {"NumberIsMinusOne", "", "Тип Comtrade BIN=-1\n", true},
    {"NumberOfManyBits", "", "Тип Comtrade BIN=4294967297\n", true},
    {"NumberOfManyBitsIsMinusOne", "", "Тип Comtrade BIN=4294967295\n", true},
    {"WaitingTimeTooLong", "", "Время ожидания=2147483648\n", true},
    {"TextIsEmpty", "", "Объект=\n", true},
    {"TextIsComment", "", "Объект=;ПС\n", true},
    {"UnknownKey", "", "Обьект=ПС\n", true},
    {"KeyInOtherCase", "", "объект=ПС\n", true},
    {"RepeatedKey", "", "Объект=ПС 1\nОбъект=ПС 2\n", true},
    {"RepeatedKeyBadAtFirst", "", "Версия ZU=7\nВерсия ZU=2\n", true},
    {"RepeatedKeyBadAtLast", "", "Версия ZU=2\nВерсия ZU=7\n", true},
    {"LineWithoutKey", "", "Объект ПС\n", true},
    {"BrokenHeading", "", "[Other] ; note\nОбъект=ПС\n", true},
    {"IndexesWithoutRenaming", "", "Переименовать сигналы Comtrade=0\nДоп.индексы для имен сигналов=1\n",
     true},
    {"BadIndexesWithoutRenaming", "", "Переименовать сигналы Comtrade=0\nДоп.индексы для имен сигналов=9\n",
     true},
    {"CffOfRevision1999", "", "Тип Comtrade CFF=1\nТип Comtrade 1999=1\n", true},
    {"CffOfDefaultsWithRevision1999", "Тип Comtrade CFF=1\n", "Тип Comtrade 1999=1\n",
     true}, // the repeated key of the defaults
    {"DefaultsNumberBad", "Версия ZU=0\n", "", true},
    {"DefaultsNumberLeftOut", "Версия ZU=-1\n", "", true},
    {"DefaultsTextEmpty", "Субъект=\n", "", true},
    {"DictionaryInDefaults", "nAnMax=1\nA01=W1:Ua" + Good, "", true},
    {"MaximumMissing", "", "A01=W1:Ua" + Good, true},
    {"MaximumMinusOne", "", "nAnMax=-1\nA01=W1:Ua" + Good, true},
    {"MaximumThatCountsAsNone", "", "nAnMax=4294967295\nA01=W1:Ua" + Good, true},
    {"MaximumBad", "", "nDiMax=two\nA01=\n", true},
    {"MaximumEmpty", "", "nBayMax=\n", true},
    {"EntryBehindMaximum", "", "nAnMax=1\nA01=W1:Ua" + Good + "A02=W1:Ub" + Good, true},
    {"GapIsAllowed", "", "nAnMax=9\nA01=W1:Ua" + Good + "A09=W1:Ub" + Good, false},
    {"EntryOfOneDigit", "", "nAnMax=1\nA1=W1:Ua" + Good, true},
    {"EntryOfThreeDigits", "", "nAnMax=1\nA001=W1:Ua" + Good, true},
    {"EntryZero", "", "nAnMax=1\nA00=W1:Ua" + Good, true},
    {"EntryWithCyrillicLetter", "", "nAnMax=1\nА01=W1:Ua" + Good, true},
    {"EntryOfHundred", "", "nAnMax=100\nA100=W1:Ua" + Good, false},
    {"EntryOfTheLargestNumber", "", "nAnMax=4294967294\nA4294967294=W1:Ua" + Good, true},
    {"EntryEmpty", "", "nAnMax=1\nA01=\n", true},
    {"AnalogWithoutName", "", "nAnMax=1\nA01=" + Good, true},
    {"DiscreteWithoutName", "", "nDiMax=1\nD01=" + GoodDiscrete, true},
    {"NameWithoutColon", "", "nAnMax=1\nA01=Ua" + Good, true},
    {"EntryWithoutParameters", "", "nAnMax=1\nA01=W1:Ua\n", true},
    {"UnknownLevel", "", "nAnMax=1\nA01=W1:Ua,V_L=111 E_G=L S_G=VT\n", true},
    {"LevelWithZero", "", "nAnMax=1\nA01=W1:Ua,V_L=0110 E_G=L S_G=VT\n", false},
    {"UnknownEquipmentGroup", "", "nAnMax=1\nA01=W1:Ua,V_L=110 E_G=l S_G=VT\n", true},
    {"UnknownSignalGroup", "", "nAnMax=1\nA01=W1:Ua,V_L=110 E_G=L S_G=TV\n", true},
    {"MissingSignalGroup", "", "nAnMax=1\nA01=W1:Ua,V_L=110 E_G=L\n", true},
    {"UnknownDeviceGroup", "", "nDiMax=1\nD01=W1:On,V_L=110 E_G=L D_G=PR S_T=FD\n", true},
    {"UnknownStatusType", "", "nDiMax=1\nD01=W1:On,V_L=110 E_G=L D_G=RP S_T=DF\n", true},
    {"SpacedParameters", "", "nAnMax=1\nA01=W1:Ua,V_L =110 E_G = L S_G= VT\n", false},
    {"ParametersPartedByTabs", "", "nAnMax=1\nA01=W1:Ua,V_L=110\tE_G=L\tS_G=VT\n", true},
    {"ParametersPartedByCommas", "", "nAnMax=1\nA01=W1:Ua,V_L=110,E_G=L,S_G=VT\n", true},
    {"UnknownParameter", "", "nAnMax=1\nA01=W1:Ua,V_L=110 E_G=L S_G=VT CIMID=7\n", true},
    {"EqualNames", "", "nAnMax=2\nA01=W1:Ua" + Good + "A02=W1:Ua" + Good, true},
    {"BayOfOneField", "", "nBayMax=1\nBAY01=W1\n", true},
    {"BayWithoutTexts", "", "nBayMax=1\nBAY01=W1,,\n", true},
    {"BayOfBlankTextsThenGood", "", "nBayMax=2\nBAY01=W1,\nBAY02=W1,Line\n", true},
    {"BayTwice", "", "nBayMax=2\nBAY01=W1,Line\nBAY02=W1,Other\n", true},
    {"BayWithoutDisplayText", "", "nBayMax=1\nBAY01=W1,,W2\n", true},
    {"BayWithFourFields", "", "nBayMax=1\nBAY01=W1,Line,W2,W3\n", true},
    {"BayBehindMaximum", "", "BAY01=W1,Line\n", true},
};

class Slips : public testing::TestWithParam<Case>
{
protected:
    Slips() : text(DefaultsSection() + GetParam().defaults + "[Device]\n" + GetParam().device)
    {
        const QString ini = directory.Write(QStringLiteral("ZuDrv.ini"), text);
        for (const inicheck::Finding& finding :
             inicheck::Check({ini, QStringLiteral("Defaults"), {QStringLiteral("Device")}, {}})) {
            if (!finding.text.startsWith(QStringLiteral("taken from ["))) // what is left out on purpose
                findings.push_back(finding);
        }
    }

    // Whether a section from line `first` to line `last` is reported not to load.
    bool IsRefused(int first, int last) const
    {
        return std::any_of(findings.begin(), findings.end(), [=](const inicheck::Finding& finding) {
            return finding.line >= first && finding.line <= last &&
                   finding.text.contains(QStringLiteral("does not load"));
        });
    }

    const TestDirectory directory;
    const QByteArray text;
    inicheck::Findings findings;
};

// The line has no effect.
bool IsIdle(const inicheck::Finding& finding)
{
    for (const char* words :
         {"ignored: ", "counts as absent", "is not asked for", "stays unsorted", "dropped: "}) {
        if (finding.text.contains(QLatin1String(words)))
            return true;
    }
    return false;
}

TEST_P(Slips, AreReportedAsTheConverterTakesThem)
{
    QStringList reported;
    for (const inicheck::Finding& finding : findings)
        reported << QString::number(finding.line) + QStringLiteral(": ") + finding.text;
    EXPECT_EQ(!findings.empty(), GetParam().found) << reported.join('\n');

    const Loaded whole = Load(directory, text);
    const int device = text.left(text.indexOf("[Device]")).count('\n') + 1;
    EXPECT_EQ(whole.defaults, !IsRefused(1, device - 1)) << reported.join('\n');
    EXPECT_EQ(whole.device, !IsRefused(device, 1000)) << reported.join('\n');
    for (const inicheck::Finding& finding : findings) {
        if (IsIdle(finding)) {
            EXPECT_TRUE(Load(directory, Without(text, finding.line)) == whole) << reported.join('\n');
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Inicheck, Slips, testing::ValuesIn(Cases),
                         [](const testing::TestParamInfo<Case>& one) { return one.param.name; });

QStringList TextsOf(const QByteArray& text)
{
    const TestDirectory directory;
    QStringList texts;
    for (const inicheck::Finding& finding :
         inicheck::Check({directory.Write(QStringLiteral("ZuDrv.ini"), text),
                          QStringLiteral("Defaults"),
                          {QStringLiteral("Device")},
                          {}}))
        texts << QString::number(finding.line) + QStringLiteral(": ") + finding.text;
    return texts;
}

TEST(SlipTexts, ByteOrderMarkIsNoted)
{
    EXPECT_EQ(
        TextsOf("\xEF\xBB\xBF" + DefaultsSection() + "[Device]\n").value(0),
        QStringLiteral("1: the file starts with a byte order mark, which is skipped; save it without one "
                       "for other programs"));
}

// The text of a finding in a line after the heading of the device, counted from 1.
QString InDevice(int line, const QString& text)
{
    return QStringLiteral("%1: ").arg(DefaultsSection().count('\n') + 1 + line) + text;
}

TEST(SlipTexts, NumberThatDoesNotFitIsReportedAsItIsTaken)
{
    EXPECT_EQ(TextsOf(DefaultsSection() + "[Device]\nТип Comtrade BIN=4294967297\n").last(),
              InDevice(1, "'4294967297' is too large and is taken as 1; give the number that is meant"));
}

TEST(SlipTexts, CyrillicLettersThatLookLatinAreSeenThrough)
{
    const QStringList texts = TextsOf(DefaultsSection() + "[Device]\nnDiMax=0\nnAnMax=1\n"
                                                          "А01=W1:Ia\nA01=W1:Ia,V_L=110 E_G=L S_G=СТ\n");
    EXPECT_TRUE(texts.contains(InDevice(3, "ignored: there is no key 'А01'; is 'A01' meant?")));
    EXPECT_TRUE(texts.last().endsWith(QStringLiteral("; is 'CT' meant?"))) << texts.last();
}

TEST(SlipTexts, PlaceMarksOfTheFileStayAsTheyAre)
{
    EXPECT_TRUE(TextsOf(DefaultsSection() + "[Device]\nВерсия ZU=%3\n")
                    .contains(InDevice(1, "'Версия ZU' is '%3', which is no whole number from 1 to 2: "
                                          "the section does not load")));
}

// Each line is examined a bounded number of times, however many sections there are.
TEST(SlipTexts, ManySectionsTakeLittleTime)
{
    QByteArray text = DefaultsSection() + "[Device]\n";
    for (int number = 0; number < 300000; ++number)
        text += "[" + QByteArray::number(number) + "]\n";
    EXPECT_EQ(TextsOf(text).size(), 1); // what is taken from the defaults
}

} // namespace
