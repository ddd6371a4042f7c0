// Loading of the dictionary's entries: fields, warnings, failures.
#include "support/dictionarysection.h"

#include <gtest/gtest.h>

namespace {

const QByteArray AnParams = "V_L=110 E_G=L S_G=VT";
const QByteArray DiParams = "V_L=110 E_G=L D_G=RP S_T=FD";
constexpr quint32 Unread = 999999;

QString BadName(const char* key, const char* name)
{
    return QStringLiteral("Плохое имя сигнала %1 в секции Dev ZuDrv.ini при загрузке параметров "
                          "сортировки Comtrade [%2]")
        .arg(QString::fromUtf8(key), QString::fromUtf8(name));
}

QString BadParameters(const char* key, const char* parameters)
{
    return QStringLiteral("Плохие параметры сортировки Comtrade для сигнала %1 в секции Dev ZuDrv.ini [%2]")
        .arg(QString::fromUtf8(key), QString::fromUtf8(parameters));
}

using Ordinals = std::vector<unsigned int>;

} // namespace

TEST(DictionaryEntries, AnalogEntryHasAllItsFields)
{
    const DictionarySection section(
        "nAnMax=7\nA07= W1 : Ua ,V_L=220 E_G=AT S_G=PR_BB VL_IND=1 CIM_ID=7f3a,further,fields");
    ASSERT_TRUE(section.Loaded);
    ASSERT_EQ(section.Resorter.AnDictionary.size(), 1U);
    const DictionaryZuCmtrAn& entry = *section.Resorter.AnDictionary[0];
    EXPECT_EQ(entry.Number, 7U);
    EXPECT_EQ(entry.Ordinal, 0U);
    EXPECT_EQ(entry.FullName, "W1 : Ua");
    EXPECT_EQ(entry.EquipmentName, "W1");
    EXPECT_EQ(entry.SignalName, "Ua");
    EXPECT_EQ(entry.VoltageLevel, 7U);
    EXPECT_EQ(entry.EquipmentGroup, 2U);
    EXPECT_EQ(entry.SignalGroup, 3U);
    EXPECT_TRUE(entry.HasSortParams);
    EXPECT_EQ(entry.VlInd, "1");
    EXPECT_EQ(entry.CimChannelId, "7f3a");
    EXPECT_EQ(section.Log(), QStringList());
    EXPECT_EQ(section.Queue(), QStringList());
}

TEST(DictionaryEntries, DiscreteEntryHasAllItsFields)
{
    const DictionarySection section("nDiMax=9\nD09=W1:Off:x,V_L=6 E_G=CB D_G=OC S_T=ODC3 CIM_ID=9 VL_IND=2");
    ASSERT_TRUE(section.Loaded);
    ASSERT_EQ(section.Resorter.DiDictionary.size(), 1U);
    const DictionaryZuCmtrDi& entry = *section.Resorter.DiDictionary[0];
    EXPECT_EQ(entry.Number, 9U);
    EXPECT_EQ(entry.Ordinal, 0U);
    EXPECT_EQ(entry.FullName, "W1:Off:x");
    EXPECT_EQ(entry.EquipmentName, "W1");
    EXPECT_EQ(entry.SignalName, "Off:x");
    EXPECT_EQ(entry.VoltageLevel, 0U);
    EXPECT_EQ(entry.EquipmentGroup, 7U);
    EXPECT_EQ(entry.DeviceGroup, 6U);
    EXPECT_EQ(entry.StatusType, 19U);
    EXPECT_TRUE(entry.HasSortParams);
    EXPECT_EQ(entry.VlInd, "2");
    EXPECT_EQ(entry.CimChannelId, "9");
}

TEST(DictionaryEntries, OptionalParametersAreNullIfAbsent)
{
    const DictionarySection section("nAnMax=1\nA01=W1:Ua," + AnParams);
    EXPECT_TRUE(section.Resorter.AnDictionary.at(0)->VlInd.isNull());
    EXPECT_TRUE(section.Resorter.AnDictionary.at(0)->CimChannelId.isNull());
}

TEST(DictionaryEntries, WithoutParametersAreKeptUnsortedAndUnread)
{
    const DictionarySection section("nAnMax=1\nnDiMax=1\nA01=W1:Ua\nD01=W1:x");
    ASSERT_TRUE(section.Loaded);
    const DictionaryZuCmtrAn& analog = *section.Resorter.AnDictionary.at(0);
    EXPECT_FALSE(analog.HasSortParams);
    EXPECT_EQ(analog.VoltageLevel, Unread);
    EXPECT_EQ(analog.EquipmentGroup, Unread);
    EXPECT_EQ(analog.SignalGroup, Unread);
    const DictionaryZuCmtrDi& discrete = *section.Resorter.DiDictionary.at(0);
    EXPECT_FALSE(discrete.HasSortParams);
    EXPECT_EQ(discrete.VoltageLevel, Unread);
    EXPECT_EQ(discrete.EquipmentGroup, Unread);
    EXPECT_EQ(discrete.DeviceGroup, Unread);
    EXPECT_EQ(discrete.StatusType, Unread);
    EXPECT_EQ(section.Resorter.AnUnsorted, Ordinals{0});
    EXPECT_EQ(section.Resorter.DiUnsorted, Ordinals{0});
    EXPECT_EQ(section.Log(), QStringList());
    EXPECT_EQ(section.Queue(), QStringList());
}

TEST(DictionaryEntries, GapsKeepNumbersAndCloseOrdinals)
{
    const DictionarySection section("nAnMax=3\nA01=W1:Ua\nA02= ; none\nA03=W1:Ub\nA04=W1:Uc\n"
                                    "nDiMax=3\nD01=W1:x\nD03=W1:y\nD04=W1:z");
    ASSERT_EQ(section.Resorter.AnDictionary.size(), 2U);
    EXPECT_EQ(section.Resorter.AnDictionary[0]->Ordinal, 0U);
    EXPECT_EQ(section.Resorter.AnDictionary[1]->Ordinal, 1U);
    EXPECT_EQ(section.Resorter.AnDictionary[0]->Number, 1U);
    EXPECT_EQ(section.Resorter.AnDictionary[1]->Number, 3U);
    ASSERT_EQ(section.Resorter.DiDictionary.size(), 2U);
    EXPECT_EQ(section.Resorter.DiDictionary[1]->Ordinal, 1U);
    EXPECT_EQ(section.Resorter.DiDictionary[1]->Number, 3U);
}

TEST(DictionaryEntries, CommentIsCutBeforeParsing)
{
    const DictionarySection section("nAnMax=1\nA01=W1:Ua," + AnParams + " ; note VL_IND=7");
    EXPECT_TRUE(section.Resorter.AnDictionary.at(0)->HasSortParams);
    EXPECT_EQ(section.Resorter.AnDictionary.at(0)->VlInd, QString());
}

TEST(DictionaryEntries, NamelessAnalogEntryFailsTheLoad)
{
    const DictionarySection section("nAnMax=3\nA01=W1:Ua\nA02=," + AnParams +
                                    "\nA03=W1:Ub\nnDiMax=1\nD01=W1:x");
    EXPECT_FALSE(section.Loaded);
    EXPECT_EQ(section.Resorter.ErrorText, "Ошибка значения параметра: A02");
    EXPECT_EQ(section.Log(), QStringList{"Ошибка значения параметра: A02"});
    EXPECT_EQ(section.Queue(), QStringList());
    EXPECT_EQ(section.Resorter.AnDictionary.size(), 1U);
    EXPECT_TRUE(section.Resorter.DiDictionary.empty());
}

TEST(DictionaryEntries, NamelessDiscreteEntryIsDroppedWithAWarning)
{
    const DictionarySection section("nDiMax=3\nD01=W1:x\nD02=," + DiParams + "\nD03=W1:y," + DiParams);
    EXPECT_TRUE(section.Loaded);
    EXPECT_EQ(section.Log(), QStringList{BadName("D02", "")});
    EXPECT_EQ(section.Queue(), QStringList{BadName("D02", "")});
    ASSERT_EQ(section.Resorter.DiDictionary.size(), 2U);
    EXPECT_EQ(section.Resorter.DiDictionary[1]->Number, 3U);
    EXPECT_EQ(section.Resorter.DiDictionary[1]->Ordinal, 2U);
    EXPECT_EQ(section.Resorter.DiUnsorted, (Ordinals{0, 1}));
}

TEST(DictionaryEntries, NameWithoutColonIsWarnedAboutAndSorted)
{
    const DictionarySection section("nAnMax=1\nA01=NoColon," + AnParams);
    EXPECT_EQ(section.Log(), QStringList{BadName("A01", "NoColon")});
    EXPECT_EQ(section.Queue(), QStringList{BadName("A01", "NoColon")});
    const DictionaryZuCmtrAn& entry = *section.Resorter.AnDictionary.at(0);
    EXPECT_TRUE(entry.HasSortParams);
    EXPECT_EQ(entry.EquipmentName, "NoColon");
    EXPECT_EQ(entry.SignalName, "");
}

TEST(DictionaryEntries, NameWithAnEmptySideIsWarnedAboutAndKept)
{
    const DictionarySection section("nAnMax=1\nnDiMax=1\nA01=:Ua," + AnParams + "\nD01=W1: ," + DiParams);
    EXPECT_EQ(section.Log(), (QStringList{BadName("A01", ":Ua"), BadName("D01", "W1:")}));
    EXPECT_EQ(section.Resorter.AnDictionary.at(0)->EquipmentName, "");
    EXPECT_EQ(section.Resorter.AnDictionary.at(0)->SignalName, "Ua");
    EXPECT_EQ(section.Resorter.DiDictionary.at(0)->EquipmentName, "W1");
    EXPECT_EQ(section.Resorter.DiDictionary.at(0)->SignalName, "");
    EXPECT_TRUE(section.Resorter.DiDictionary.at(0)->HasSortParams);
}

struct BadParameterCase
{
    const char* key; // A01 or D01
    const char* parameters;
};

class BadParameter : public testing::TestWithParam<BadParameterCase>
{};

TEST_P(BadParameter, IsWarnedAboutAndTheEntryKeptUnsorted)
{
    const QByteArray key = GetParam().key;
    const DictionarySection section("nAnMax=1\nnDiMax=1\n" + key + "=W1:Ua, " + GetParam().parameters);
    EXPECT_TRUE(section.Loaded);
    EXPECT_EQ(section.Log(), QStringList{BadParameters(GetParam().key, GetParam().parameters)});
    EXPECT_EQ(section.Queue(), section.Log());
    if (key == "A01") {
        EXPECT_FALSE(section.Resorter.AnDictionary.at(0)->HasSortParams);
        EXPECT_EQ(section.Resorter.AnUnsorted, Ordinals{0});
    } else {
        EXPECT_FALSE(section.Resorter.DiDictionary.at(0)->HasSortParams);
        EXPECT_EQ(section.Resorter.DiUnsorted, Ordinals{0});
    }
}

INSTANTIATE_TEST_SUITE_P(
    DictionaryEntries, BadParameter,
    testing::Values(
        BadParameterCase{"A01", "V_L=111 E_G=L S_G=VT"}, BadParameterCase{"A01", "V_L=110 E_G=l S_G=VT"},
        BadParameterCase{"A01", "V_L=110 E_G=L S_G=vt"}, BadParameterCase{"A01", "V_L=110kV E_G=L S_G=VT"},
        BadParameterCase{"A01", "V_L=-6 E_G=L S_G=VT"}, BadParameterCase{"A01", "V_L  = 110 E_G=L S_G=VT"},
        BadParameterCase{"A01", "E_G=L S_G=VT"}, BadParameterCase{"A01", "V_L=110 S_G=VT"},
        BadParameterCase{"A01", "V_L=110 E_G=L"}, BadParameterCase{"A01", "V_L=110 E_G=L S_G="},
        BadParameterCase{"A01", ""}, BadParameterCase{"D01", "V_L=110 E_G=L D_G=RP S_T=fd"},
        BadParameterCase{"D01", "V_L=110 E_G=L D_G=XX S_T=FD"},
        BadParameterCase{"D01", "V_L=110 E_G=L S_T=FD"}, BadParameterCase{"D01", "V_L=110 E_G=L D_G=RP"},
        BadParameterCase{"D01", "V_L=7 E_G=L D_G=RP S_T=FD"}, BadParameterCase{"D01", ""}));

TEST(DictionaryEntries, PercentSequencesAreTakenByTheNextValue)
{
    DictionarySection section("");
    const TestDirectory directory;
    const QString ini = directory.Write(QStringLiteral("b.ini"), "[G%3]\nnAnMax=1\nA01=W1,x");
    EXPECT_TRUE(section.Resorter.LoadFromIni(ini, QStringLiteral("G%3")));
    EXPECT_EQ(section.Log().at(0), "Плохое имя сигнала A01 в секции GW1 ZuDrv.ini при загрузке параметров "
                                   "сортировки Comtrade [W1]");
    EXPECT_EQ(section.Log().at(1),
              "Плохие параметры сортировки Comtrade для сигнала A01 в секции Gx ZuDrv.ini [x]");
}

TEST(DictionaryEntries, SecondLoadReplacesTheFirst)
{
    DictionarySection section("nAnMax=1\nnDiMax=1\nA01=W1:Ua," + AnParams + "\nD01=W1:x," + DiParams +
                              "\nnBayMax=1\nBAY01=W1,A");
    const TestDirectory directory;
    EXPECT_TRUE(section.Resorter.LoadFromIni(directory.Write("b.ini", "[B]\nnDiMax=1\nD01=W2:y"), "B"));
    EXPECT_TRUE(section.Resorter.AnDictionary.empty());
    EXPECT_TRUE(section.Resorter.BayParams.empty());
    ASSERT_EQ(section.Resorter.DiDictionary.size(), 1U);
    EXPECT_EQ(section.Resorter.DiDictionary[0]->FullName, "W2:y");
}

TEST(DictionaryEntries, UnreadableFileLeavesTheDictionaryAndTheLogAlone)
{
    DictionarySection section("nAnMax=1\nA01=W1:Ua");
    const TestDirectory directory;
    const QString missing = directory.Path(QStringLiteral("none.ini"));
    EXPECT_FALSE(section.Resorter.LoadFromIni(missing, QStringLiteral("Dev")));
    EXPECT_EQ(section.Resorter.ErrorText, QStringLiteral("Нет доступа к ini-файлу [%1]").arg(missing));
    EXPECT_EQ(section.Log(), QStringList());
    EXPECT_EQ(section.Resorter.AnDictionary.size(), 1U);
}
