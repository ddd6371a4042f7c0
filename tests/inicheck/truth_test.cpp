// What the check says against what the library does: a refused section does not load, and a file without a
// dropped or defaulted line gives the same device.
#include "inicheck/inicheck.h"

#include "config/QSettingsRu.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "support/device.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using inicheck::Effect;

// What the library made of a file.
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
    QByteArray defaults;   // appended to the whole defaults, which have every key
    QByteArray device;     // lines of the device
    QList<Effect> effects; // of the findings, by line
};

void PrintTo(const Case& one, std::ostream* out)
{
    *out << one.name;
}

const QByteArray Good = ",V_L=110 E_G=L S_G=VT\n";
const QByteArray GoodDiscrete = ",V_L=110 E_G=L D_G=RP S_T=FD\n";

const Case Cases[] = {
    {"Nothing", "", "", {}},
    {"WholeDictionary",
     "",
     "nAnMax=1\nA01=W1:Ua" + Good + "nDiMax=1\nD01=W1:On" + GoodDiscrete + "nBayMax=1\nBAY01=W1,Line\n",
     {}},
    {"NumberOutOfRange", "", "Версия ZU=3\n", {Effect::Refused}},
    {"NumberIsText", "", "Тип Comtrade BIN=yes\n", {Effect::Refused}},
    {"NumberIsEmpty", "", "Тип Comtrade BIN=\n", {Effect::Refused}},
    {"NumberIsMinusOne", "", "Тип Comtrade BIN=-1\n", {Effect::Defaulted}},
    {"NumberOfManyBits", "", "Тип Comtrade BIN=4294967297\n", {Effect::None}},
    {"NumberOfManyBitsIsMinusOne", "", "Тип Comtrade BIN=4294967295\n", {Effect::Defaulted}},
    {"WaitingTimeTooLong", "", "Время ожидания=2147483648\n", {Effect::Refused}},
    {"TextIsEmpty", "", "Объект=\n", {Effect::Defaulted}},
    {"TextIsComment", "", "Объект=;ПС\n", {Effect::Defaulted}},
    {"UnknownKey", "", "Обьект=ПС\n", {Effect::Dropped}},
    {"KeyInOtherCase", "", "объект=ПС\n", {Effect::Dropped}},
    {"RepeatedKey", "", "Объект=ПС 1\nОбъект=ПС 2\n", {Effect::Dropped}},
    {"RepeatedKeyBadAtFirst", "", "Версия ZU=7\nВерсия ZU=2\n", {Effect::Dropped}},
    {"RepeatedKeyBadAtLast", "", "Версия ZU=2\nВерсия ZU=7\n", {Effect::Dropped, Effect::Refused}},
    {"LineWithoutKey", "", "Объект ПС\n", {Effect::Dropped}},
    {"BrokenHeading", "", "[Other] ; note\nОбъект=ПС\n", {Effect::Dropped}},
    {"IndexesWithoutRenaming",
     "",
     "Переименовать сигналы Comtrade=0\nДоп.индексы для имен сигналов=1\n",
     {Effect::Dropped}},
    {"BadIndexesWithoutRenaming",
     "",
     "Переименовать сигналы Comtrade=0\nДоп.индексы для имен сигналов=9\n",
     {Effect::Dropped}},
    {"CffOfRevision1999", "", "Тип Comtrade CFF=1\nТип Comtrade 1999=1\n", {Effect::Dropped}},
    {"CffOfDefaultsWithRevision1999",
     "Тип Comtrade CFF=1\n",
     "Тип Comtrade 1999=1\n",
     {Effect::Dropped, Effect::None}}, // the repeated key of the defaults
    {"DefaultsNumberBad", "Версия ZU=0\n", "", {Effect::Dropped, Effect::Refused}},
    {"DefaultsNumberLeftOut", "Версия ZU=-1\n", "", {Effect::Dropped, Effect::Refused}},
    {"DefaultsTextEmpty", "Субъект=\n", "", {Effect::Dropped, Effect::Refused}},
    {"DictionaryInDefaults", "nAnMax=1\nA01=W1:Ua" + Good, "", {Effect::Dropped, Effect::Dropped}},
    {"MaximumMissing", "", "A01=W1:Ua" + Good, {Effect::Dropped}},
    {"MaximumMinusOne", "", "nAnMax=-1\nA01=W1:Ua" + Good, {Effect::Refused}},
    {"MaximumThatCountsAsNone", "", "nAnMax=4294967295\nA01=W1:Ua" + Good, {Effect::Dropped}},
    {"MaximumBad", "", "nDiMax=two\nA01=\n", {Effect::Refused, Effect::Dropped}},
    {"MaximumEmpty", "", "nBayMax=\n", {Effect::Refused}},
    {"EntryBehindMaximum", "", "nAnMax=1\nA01=W1:Ua" + Good + "A02=W1:Ub" + Good, {Effect::Dropped}},
    {"GapIsAllowed", "", "nAnMax=9\nA01=W1:Ua" + Good + "A09=W1:Ub" + Good, {}},
    {"EntryOfOneDigit", "", "nAnMax=1\nA1=W1:Ua" + Good, {Effect::Dropped}},
    {"EntryOfThreeDigits", "", "nAnMax=1\nA001=W1:Ua" + Good, {Effect::Dropped}},
    {"EntryZero", "", "nAnMax=1\nA00=W1:Ua" + Good, {Effect::Dropped}},
    {"EntryWithCyrillicLetter", "", "nAnMax=1\nА01=W1:Ua" + Good, {Effect::Dropped}},
    {"EntryOfHundred", "", "nAnMax=100\nA100=W1:Ua" + Good, {}},
    {"EntryOfTheLargestNumber", "", "nAnMax=4294967294\nA4294967294=W1:Ua" + Good, {Effect::Dropped}},
    {"EntryEmpty", "", "nAnMax=1\nA01=\n", {Effect::Dropped}},
    {"AnalogWithoutName", "", "nAnMax=1\nA01=" + Good, {Effect::Refused}},
    {"DiscreteWithoutName", "", "nDiMax=1\nD01=" + GoodDiscrete, {Effect::Dropped}},
    {"NameWithoutColon", "", "nAnMax=1\nA01=Ua" + Good, {Effect::None}},
    {"EntryWithoutParameters", "", "nAnMax=1\nA01=W1:Ua\n", {Effect::Dropped}},
    {"UnknownLevel", "", "nAnMax=1\nA01=W1:Ua,V_L=111 E_G=L S_G=VT\n", {Effect::Dropped}},
    {"LevelWithZero", "", "nAnMax=1\nA01=W1:Ua,V_L=0110 E_G=L S_G=VT\n", {}},
    {"UnknownEquipmentGroup", "", "nAnMax=1\nA01=W1:Ua,V_L=110 E_G=l S_G=VT\n", {Effect::Dropped}},
    {"UnknownSignalGroup", "", "nAnMax=1\nA01=W1:Ua,V_L=110 E_G=L S_G=TV\n", {Effect::Dropped}},
    {"MissingSignalGroup", "", "nAnMax=1\nA01=W1:Ua,V_L=110 E_G=L\n", {Effect::Dropped}},
    {"UnknownDeviceGroup", "", "nDiMax=1\nD01=W1:On,V_L=110 E_G=L D_G=PR S_T=FD\n", {Effect::Dropped}},
    {"UnknownStatusType", "", "nDiMax=1\nD01=W1:On,V_L=110 E_G=L D_G=RP S_T=DF\n", {Effect::Dropped}},
    {"SpacedParameters", "", "nAnMax=1\nA01=W1:Ua,V_L =110 E_G = L S_G= VT\n", {}},
    {"ParametersPartedByTabs", "", "nAnMax=1\nA01=W1:Ua,V_L=110\tE_G=L\tS_G=VT\n", {Effect::Dropped}},
    {"ParametersPartedByCommas",
     "",
     "nAnMax=1\nA01=W1:Ua,V_L=110,E_G=L,S_G=VT\n",
     {Effect::None, Effect::Dropped}},
    {"UnknownParameter", "", "nAnMax=1\nA01=W1:Ua,V_L=110 E_G=L S_G=VT CIMID=7\n", {Effect::None}},
    {"EqualNames", "", "nAnMax=2\nA01=W1:Ua" + Good + "A02=W1:Ua" + Good, {Effect::None}},
    {"BayOfOneField", "", "nBayMax=1\nBAY01=W1\n", {Effect::Dropped}},
    {"BayWithoutTexts", "", "nBayMax=1\nBAY01=W1,,\n", {Effect::Dropped}},
    {"BayOfBlankTextsThenGood", "", "nBayMax=2\nBAY01=W1,\nBAY02=W1,Line\n", {Effect::Dropped}},
    {"BayTwice", "", "nBayMax=2\nBAY01=W1,Line\nBAY02=W1,Other\n", {Effect::Dropped}},
    {"BayWithoutDisplayText", "", "nBayMax=1\nBAY01=W1,,W2\n", {Effect::None}},
    {"BayWithFourFields", "", "nBayMax=1\nBAY01=W1,Line,W2,W3\n", {Effect::None}},
    {"BayBehindMaximum", "", "BAY01=W1,Line\n", {Effect::Dropped}},
};

class Truth : public testing::TestWithParam<Case>
{
protected:
    Truth() : text("nobody=1\n" + DefaultsSection() + GetParam().defaults + "[Device]\n" + GetParam().device)
    {
        ini = inicheck::ReadIni(directory.Write(QStringLiteral("ZuDrv.ini"), text));
        findings = inicheck::Check(ini, {QStringLiteral("Defaults"), {QStringLiteral("Device")}});
        findings.erase(findings.begin()); // that of the first line, ahead of all sections
    }

    bool IsRefused(const QString& section) const
    {
        return std::any_of(findings.begin(), findings.end(), [&section](const inicheck::Finding& finding) {
            return finding.effect == Effect::Refused && finding.section == section;
        });
    }

    const TestDirectory directory;
    const QByteArray text;
    inicheck::IniText ini;
    inicheck::Findings findings;
};

TEST_P(Truth, FindsWhatTheLibraryDoes)
{
    QList<Effect> effects;
    for (const inicheck::Finding& finding : findings)
        effects << finding.effect;
    EXPECT_TRUE(effects == GetParam().effects) << effects.size() << " findings";

    const Loaded whole = Load(directory, text);
    EXPECT_EQ(whole.defaults, !IsRefused(QStringLiteral("Defaults")));
    EXPECT_EQ(whole.device, !IsRefused(QStringLiteral("Device")));
    for (const inicheck::Finding& finding : findings) {
        if (finding.effect == Effect::Dropped || finding.effect == Effect::Defaulted) {
            EXPECT_TRUE(Load(directory, Without(text, finding.line)) == whole) << finding.what;
        }
    }
}

// The reader keeps what the library's reader keeps.
TEST_P(Truth, EntriesAreThoseOfTheLibrary)
{
    const QString path = directory.Path(QStringLiteral("ZuDrv.ini"));
    const QSettingsRu library(path, ZuCmtrConverter::codecIni);
    int entries = 0;
    for (const inicheck::Section& section : ini.sections) {
        for (auto key = section.last.begin(); key != section.last.end(); ++key, ++entries)
            EXPECT_EQ(library.settings->value(section.name + '/' + key.key()).toString(),
                      section.Find(key.key())->value);
    }
    EXPECT_EQ(entries, library.settings->size());
    QSettingsRu::Clear();
}

INSTANTIATE_TEST_SUITE_P(Inicheck, Truth, testing::ValuesIn(Cases),
                         [](const testing::TestParamInfo<Case>& one) { return one.param.name; });

} // namespace
