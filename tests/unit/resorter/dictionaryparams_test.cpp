// The parameter string of an entry, and the code tables.
#include "support/dictionarysection.h"

#include <gtest/gtest.h>

namespace {

// Text that LoadOneParam finds for V_L in text; "none" if it finds none.
QString VoltageText(const char* text)
{
    ZuCmtrDevParam device;
    ResorterZuCmtrConv resorter(&device);
    QString value = QStringLiteral("before");
    const bool found = resorter.LoadOneParam(QString::fromUtf8(text), QStringLiteral("V_L="),
                                             QStringLiteral("V_L ="), value);
    return found ? value : QStringLiteral("none");
}

} // namespace

struct ParamCase
{
    const char* text;
    const char* expected;
};

class OneParam : public testing::TestWithParam<ParamCase>
{};

TEST_P(OneParam, IsTheTextUpToTheNextBlank)
{
    EXPECT_EQ(VoltageText(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    DictionaryParams, OneParam,
    testing::Values(ParamCase{"V_L=110", "110"}, ParamCase{"V_L = 110", "110"}, ParamCase{"V_L =110", "110"},
                    ParamCase{"V_L= 110", "110"}, ParamCase{"V_L  = 110", "none"},
                    ParamCase{"V_L= \t 110 E_G=L", "110"}, ParamCase{"E_G=L V_L=110", "110"},
                    ParamCase{"XV_L=110", "110"}, ParamCase{"v_l=110", "none"},
                    ParamCase{"V_L=110\tE_G=L", "110\tE_G=L"}, ParamCase{"V_L=1 V_L=2", "1"},
                    ParamCase{"V_L =1 V_L=2", "2"}, ParamCase{"V_L=", "none"}, ParamCase{"V_L=  ", "none"},
                    ParamCase{"", "none"}, ParamCase{"V_L= E_G=L", "E_G=L"}));

TEST(DictionaryParams, ValueStaysIfTheKeyIsAbsent)
{
    ZuCmtrDevParam device;
    ResorterZuCmtrConv resorter(&device);
    QString value = QStringLiteral("before");
    EXPECT_FALSE(resorter.LoadOneParam("x=1", "V_L=", "V_L =", value));
    EXPECT_EQ(value, "before");
    EXPECT_FALSE(resorter.LoadOneParam("V_L=", "V_L=", "V_L =", value));
    EXPECT_EQ(value, "");
}

TEST(DictionaryParams, EarlierRowsStayAfterALaterFailure)
{
    ZuCmtrDevParam device;
    ResorterZuCmtrConv resorter(&device);
    unsigned int level = 99;
    unsigned int equipment = 99;
    unsigned int group = 99;
    unsigned int status = 99;
    EXPECT_FALSE(resorter.LoadParamCommon("V_L=6 E_G=X", level, equipment));
    EXPECT_EQ(level, 0U);
    EXPECT_EQ(equipment, 99U);
    EXPECT_FALSE(resorter.LoadParamAn("V_L=10 E_G=CB S_G=X", level, equipment, group));
    EXPECT_EQ(level, 1U);
    EXPECT_EQ(equipment, 7U);
    EXPECT_EQ(group, 99U);
    EXPECT_FALSE(resorter.LoadParamDi("V_L=15 E_G=L D_G=OC S_T=X", level, equipment, group, status));
    EXPECT_EQ(level, 2U);
    EXPECT_EQ(equipment, 0U);
    EXPECT_EQ(group, 6U);
    EXPECT_EQ(status, 99U);
}

TEST(DictionaryParams, EverySpacedKeyIsRead)
{
    const DictionarySection section("nAnMax=1\nnDiMax=1\n"
                                    "A01=W:a,V_L = 35 E_G = G S_G = PR_RC VL_IND = 3 CIM_ID = x\n"
                                    "D01=W:b,V_L = 35 E_G = G D_G = FL S_T = VPG VL_IND =4 CIM_ID =y");
    const DictionaryZuCmtrAn& analog = *section.Resorter.AnDictionary.at(0);
    EXPECT_EQ(analog.VoltageLevel, 4U);
    EXPECT_EQ(analog.EquipmentGroup, 4U);
    EXPECT_EQ(analog.SignalGroup, 7U);
    EXPECT_EQ(analog.VlInd, "3");
    EXPECT_EQ(analog.CimChannelId, "x");
    const DictionaryZuCmtrDi& discrete = *section.Resorter.DiDictionary.at(0);
    EXPECT_EQ(discrete.DeviceGroup, 5U);
    EXPECT_EQ(discrete.StatusType, 16U);
    EXPECT_EQ(discrete.VlInd, "4");
    EXPECT_EQ(discrete.CimChannelId, "y");
}

struct CodeCase
{
    const char* code;
    unsigned int row;
};

class VoltageLevel : public testing::TestWithParam<CodeCase>
{};

TEST_P(VoltageLevel, IsItsRow)
{
    const DictionarySection section(QByteArray("nAnMax=1\nA01=W:a,E_G=L S_G=VT V_L=") + GetParam().code);
    EXPECT_EQ(section.Resorter.AnDictionary.at(0)->VoltageLevel, GetParam().row);
    EXPECT_EQ(gst_vl[GetParam().row], QByteArray(GetParam().code).toUInt());
}

INSTANTIATE_TEST_SUITE_P(CodeTables, VoltageLevel,
                         testing::Values(CodeCase{"6", 0}, CodeCase{"10", 1}, CodeCase{"15", 2},
                                         CodeCase{"20", 3}, CodeCase{"35", 4}, CodeCase{"60", 5},
                                         CodeCase{"110", 6}, CodeCase{"220", 7}, CodeCase{"330", 8},
                                         CodeCase{"400", 9}, CodeCase{"500", 10}, CodeCase{"750", 11},
                                         CodeCase{"1150", 12}));

class EquipmentGroup : public testing::TestWithParam<CodeCase>
{};

TEST_P(EquipmentGroup, IsItsRow)
{
    const DictionarySection section(QByteArray("nAnMax=1\nA01=W:a,V_L=6 S_G=VT E_G=") + GetParam().code);
    EXPECT_EQ(section.Resorter.AnDictionary.at(0)->EquipmentGroup, GetParam().row);
}

INSTANTIATE_TEST_SUITE_P(CodeTables, EquipmentGroup,
                         testing::Values(CodeCase{"L", 0}, CodeCase{"BPR", 1}, CodeCase{"AT", 2},
                                         CodeCase{"T", 3}, CodeCase{"G", 4}, CodeCase{"BCT", 5},
                                         CodeCase{"VTB", 6}, CodeCase{"CB", 7}));

class SignalGroup : public testing::TestWithParam<CodeCase>
{};

TEST_P(SignalGroup, IsItsRow)
{
    const DictionarySection section(QByteArray("nAnMax=1\nA01=W:a,V_L=6 E_G=L S_G=") + GetParam().code);
    EXPECT_EQ(section.Resorter.AnDictionary.at(0)->SignalGroup, GetParam().row);
}

INSTANTIATE_TEST_SUITE_P(CodeTables, SignalGroup,
                         testing::Values(CodeCase{"VT", 0}, CodeCase{"CT", 1}, CodeCase{"PR_REC", 2},
                                         CodeCase{"PR_BB", 3}, CodeCase{"PR_DIFF1", 4},
                                         CodeCase{"PR_DIFF2", 5}, CodeCase{"F", 6}, CodeCase{"PR_RC", 7},
                                         CodeCase{"PR_RV", 8}, CodeCase{"PR_RVG", 9}, CodeCase{"PR_IEX", 10},
                                         CodeCase{"PR_VEX", 11}, CodeCase{"DCS_VPP", 12},
                                         CodeCase{"DCS_VP1G", 13}, CodeCase{"DCS_VP2G", 14}));

class DeviceGroup : public testing::TestWithParam<CodeCase>
{};

TEST_P(DeviceGroup, IsItsRow)
{
    const DictionarySection section(QByteArray("nDiMax=1\nD01=W:a,V_L=6 E_G=L S_T=FD D_G=") +
                                    GetParam().code);
    EXPECT_EQ(section.Resorter.DiDictionary.at(0)->DeviceGroup, GetParam().row);
}

INSTANTIATE_TEST_SUITE_P(CodeTables, DeviceGroup,
                         testing::Values(CodeCase{"RP", 0}, CodeCase{"NA", 1}, CodeCase{"EA", 2},
                                         CodeCase{"TA", 3}, CodeCase{"FR", 4}, CodeCase{"FL", 5},
                                         CodeCase{"OC", 6}));

class StatusType : public testing::TestWithParam<CodeCase>
{};

TEST_P(StatusType, IsItsRow)
{
    const DictionarySection section(QByteArray("nDiMax=1\nD01=W:a,V_L=6 E_G=L D_G=RP S_T=") +
                                    GetParam().code);
    EXPECT_EQ(section.Resorter.DiDictionary.at(0)->StatusType, GetParam().row);
}

INSTANTIATE_TEST_SUITE_P(CodeTables, StatusType,
                         testing::Values(CodeCase{"FD", 0}, CodeCase{"ID", 1}, CodeCase{"AL", 2},
                                         CodeCase{"OR", 3}, CodeCase{"SS", 4}, CodeCase{"FI", 5},
                                         CodeCase{"FE", 6}, CodeCase{"TS", 7}, CodeCase{"MS", 8},
                                         CodeCase{"SBO", 9}, CodeCase{"SBC", 10}, CodeCase{"AB", 11},
                                         CodeCase{"NAB", 12}, CodeCase{"SA", 13}, CodeCase{"FA", 14},
                                         CodeCase{"VP", 15}, CodeCase{"VPG", 16}, CodeCase{"ODC1", 17},
                                         CodeCase{"ODC2", 18}, CodeCase{"ODC3", 19}));
