// The Russian sections of the INF file: equipment and status channels.
#include "inftext.h"

#include <gtest/gtest.h>

namespace {

const QString Equipment = QStringLiteral("Russian_Comtrade_Edition Equipment");
const QString Status = QStringLiteral("Russian_Comtrade_Edition Status");
const QString Device = QStringLiteral("Russian_Comtrade_Edition Recording_Device");

// The equipment sections for a dictionary of these lines, without a recording.
QStringList EquipmentSections(const QByteArray& lines)
{
    SortedDictionary dictionary(lines);
    ZuFileFormat file;
    return InfFrom(Equipment, dictionary, file);
}

// The status sections for a dictionary and a recording of these discrete names.
QStringList StatusSections(const QByteArray& lines, const QStringList& names)
{
    SortedDictionary dictionary(lines);
    NamedChannels recording({}, names);
    dictionary.Resorter.SortZuFile(&recording.File);
    recording.File.CfgDiLines.assign(static_cast<size_t>(names.size()), QStringLiteral("1,x,,c,0"));
    return InfFrom(Status, dictionary, recording.File);
}

} // namespace

TEST(InfEquipment, SectionHasAllItsKeys)
{
    const QStringList expected{"[Russian_Comtrade_Edition Equipment_Analog_Channel_#1_#1_#1]",
                               "Equipment_Type=Line",
                               "Equipment_ID=W1",
                               "Equipment_Short_Name=W1",
                               "Voltage_Level_In_kV=110",
                               "VT_ID=W1",
                               "VT_Channel_Number=1,2,3,4",
                               "CT_ID=",
                               "CT_Channel_Number=",
                               "RP_Channel_Number=",
                               "F_Channel_Number=",
                               "ES_Channel_Number=",
                               "OCS_Channel_Number=",
                               "Cim_Channel_ID=",
                               "",
                               ""};
    EXPECT_EQ(EquipmentSections(Entries("A", {"W1:Ua,V_L=110 E_G=L S_G=VT", "W1:Ub,V_L=110 E_G=L S_G=VT",
                                              "W1:Uc,V_L=110 E_G=L S_G=VT", "W1:3U0,V_L=110 E_G=L S_G=VT"})),
              expected);
}

TEST(InfEquipment, SectionsCountUpInDictionaryOrder)
{
    const QStringList lines = EquipmentSections(
        Entries("A", {"W1:Ua,V_L=110 E_G=L S_G=VT CIM_ID=i", "W2:x,V_L=220 E_G=L S_G=F CIM_ID=j"}));
    EXPECT_EQ(lines.filter("["),
              (QStringList{"[Russian_Comtrade_Edition Equipment_Analog_Channel_#1_#1_#1]",
                           "[Russian_Comtrade_Edition Equipment_Analog_Channel_#1_#1_#2]"}));
    EXPECT_EQ(lines.filter("Equipment_ID="), (QStringList{"Equipment_ID=W2", "Equipment_ID=W1"}));
    EXPECT_EQ(lines.filter("Cim_Channel_ID="), (QStringList{"Cim_Channel_ID=j", "Cim_Channel_ID=i"}));
}

struct FamilyCase
{
    const char* group;
    const char* valued; // lines with a value, "|" between
};

class InfFamily : public testing::TestWithParam<FamilyCase>
{};

TEST_P(InfFamily, AloneHasAValue)
{
    const QStringList lines = EquipmentSections(
        Entries("A", {"B:x,V_L=220 E_G=L S_G=F", QByteArray("W1:Ua,V_L=110 E_G=L S_G=") + GetParam().group}));
    const QStringList keys = lines.mid(lines.indexOf("Voltage_Level_In_kV=110") + 1, 8);
    const QStringList names{"VT_ID=",
                            "VT_Channel_Number=",
                            "CT_ID=",
                            "CT_Channel_Number=",
                            "RP_Channel_Number=",
                            "F_Channel_Number=",
                            "ES_Channel_Number=",
                            "OCS_Channel_Number="};
    QStringList expected = names;
    for (const QString& line : QString::fromUtf8(GetParam().valued).split(QLatin1Char('|')))
        expected[names.indexOf(line.section('=', 0, 0) + QLatin1Char('='))] = line;
    EXPECT_EQ(keys, expected);
}

INSTANTIATE_TEST_SUITE_P(
    InfEquipment, InfFamily,
    testing::Values(
        FamilyCase{"VT", "VT_ID=W1|VT_Channel_Number=2,0,0,0"},
        FamilyCase{"CT", "CT_ID=W1|CT_Channel_Number=2,0,0,0"}, FamilyCase{"PR_REC", "RP_Channel_Number=2"},
        FamilyCase{"PR_BB", "RP_Channel_Number=2"}, FamilyCase{"PR_DIFF1", "RP_Channel_Number=2"},
        FamilyCase{"PR_DIFF2", "RP_Channel_Number=2"}, FamilyCase{"F", "F_Channel_Number=2,0,0"},
        FamilyCase{"PR_RC", "ES_Channel_Number=2"}, FamilyCase{"PR_RV", "ES_Channel_Number=2"},
        FamilyCase{"PR_RVG", "ES_Channel_Number=2"}, FamilyCase{"PR_IEX", "ES_Channel_Number=2"},
        FamilyCase{"PR_VEX", "ES_Channel_Number=2"}, FamilyCase{"DCS_VPP", "OCS_Channel_Number=2"},
        FamilyCase{"DCS_VP1G", "OCS_Channel_Number=2"}, FamilyCase{"DCS_VP2G", "OCS_Channel_Number=2"}));

TEST(InfEquipment, BusbarProtectionListsItsNumbersInTheRelayKeyAlone)
{
    const QStringList lines = EquipmentSections(
        Entries("A", {"B:x,V_L=220 E_G=L S_G=F", "B:y,V_L=220 E_G=L S_G=F", "B:z,V_L=220 E_G=L S_G=F",
                      "W1:x,V_L=110 E_G=VTB S_G=PR_BB", "W1:y,V_L=110 E_G=VTB S_G=PR_BB"}));
    EXPECT_EQ(
        lines.mid(lines.indexOf("Voltage_Level_In_kV=110") + 1, 8),
        (QStringList{"VT_ID=", "VT_Channel_Number=", "CT_ID=", "CT_Channel_Number=", "RP_Channel_Number=4,5",
                     "F_Channel_Number=", "ES_Channel_Number=", "OCS_Channel_Number="}));
}

TEST(InfEquipment, ShowsTheDisplayNameOfItsBay)
{
    const QByteArray dictionary = Entries("A", {"W1:Ua,V_L=110 E_G=L S_G=VT"}) + "nBayMax=1\n";
    const QStringList named = EquipmentSections(dictionary + "BAY01=W1,Line one");
    EXPECT_EQ(named.mid(2, 2), (QStringList{"Equipment_ID=Line one", "Equipment_Short_Name=Line one"}));
    EXPECT_EQ(named[5], "VT_ID=Line one");
    const QStringList empty = EquipmentSections(dictionary + "BAY01=W1,,X");
    EXPECT_EQ(empty.mid(2, 2), (QStringList{"Equipment_ID=", "Equipment_Short_Name="}));
    EXPECT_EQ(empty[5], "VT_ID=");
}

struct NameCase
{
    const char* code;
    const char* name;
};

class InfEquipmentType : public testing::TestWithParam<NameCase>
{};

TEST_P(InfEquipmentType, IsTheNameOfTheGroup)
{
    const QStringList lines =
        EquipmentSections(Entries("A", {QByteArray("W1:Ua,V_L=110 S_G=VT E_G=") + GetParam().code}));
    EXPECT_EQ(lines.value(1), QByteArray("Equipment_Type=") + GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(InfEquipment, InfEquipmentType,
                         testing::Values(NameCase{"L", "Line"}, NameCase{"BPR", "Shunt_Reactor"},
                                         NameCase{"AT", "Power_Transformer"},
                                         NameCase{"T", "Power_Transformer"}, NameCase{"G", "Generator"},
                                         NameCase{"BCT", "Breaker"}, NameCase{"VTB", "Busbar_Section"},
                                         NameCase{"CB", "Capacitor_Bank"}));

TEST(InfStatus, SectionHasAllItsKeys)
{
    const QStringList expected{"[Russian_Comtrade_Edition Status_Channel_#1_#1_#1]",
                               "Protection_Device_Group=Relay_Protection",
                               "Status_Signal_Type=Status_Breaker",
                               "Status_ID=W1:Off",
                               "Status_Short_Name=W1:Off",
                               "Voltage_Level_In_kV=1150",
                               "Status_Channel_Number=1",
                               "Cim_Channel_ID=7f",
                               "",
                               ""};
    EXPECT_EQ(StatusSections(Entries("D", {"W1:Off,V_L=1150 E_G=L D_G=RP S_T=SBO CIM_ID=7f"}) +
                                 "nBayMax=1\nBAY01=W1,Line one",
                             {"x", "W1:Off"}),
              expected);
}

class InfDeviceGroup : public testing::TestWithParam<NameCase>
{};

TEST_P(InfDeviceGroup, IsTheNameOfTheGroup)
{
    const QStringList lines = StatusSections(
        Entries("D", {QByteArray("W1:x,V_L=110 E_G=L S_T=FD D_G=") + GetParam().code}), {"W1:x"});
    EXPECT_EQ(lines.value(1), QByteArray("Protection_Device_Group=") + GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(
    InfStatus, InfDeviceGroup,
    testing::Values(NameCase{"RP", "Relay_Protection"}, NameCase{"NA", "Control_Automation"},
                    NameCase{"EA", "Emergency_Control_Automation"},
                    NameCase{"TA", "Operation_Control_Automation"}, NameCase{"FR", "Digital_Fault_Recorder"},
                    NameCase{"FL", "Fault_Recorder"}, NameCase{"OC", "Operating_Current_System"}));

class InfStatusType : public testing::TestWithParam<NameCase>
{};

TEST_P(InfStatusType, IsTheNameOfTheCode)
{
    const QStringList lines = StatusSections(
        Entries("D", {QByteArray("W1:x,V_L=110 E_G=L D_G=RP S_T=") + GetParam().code}), {"W1:x"});
    EXPECT_EQ(lines.value(2), QByteArray("Status_Signal_Type=") + GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(
    InfStatus, InfStatusType,
    testing::Values(NameCase{"FD", "Tripping"}, NameCase{"ID", "Starting"}, NameCase{"AL", "Logic"},
                    NameCase{"OR", "Output_Relay"}, NameCase{"SS", "Switching_Status"},
                    NameCase{"FI", "Device_Failure"}, NameCase{"FE", "Failure_External"},
                    NameCase{"TS", "Test"}, NameCase{"MS", "Manual_Start"}, NameCase{"SBO", "Status_Breaker"},
                    NameCase{"SBC", "Status_Breaker"}, NameCase{"AB", "Availability_Breaker"},
                    NameCase{"NAB", "Non-availability"}, NameCase{"SA", "Warning_Fault_Signaling"},
                    NameCase{"FA", "Fault_Signaling"}, NameCase{"VP", "Starting"},
                    NameCase{"VPG", "Starting"}, NameCase{"ODC1", "Protection_Outage"},
                    NameCase{"ODC2", "Protection_Outage"}, NameCase{"ODC3", "Protection_Outage"}));

TEST(InfStatus, MissingSignalIsCountedButHasNoSection)
{
    SortedDictionary dictionary(
        Entries("D", {"W1:x,V_L=110 E_G=L D_G=RP S_T=FD", "W1:y,V_L=110 E_G=L D_G=RP S_T=AL"}));
    NamedChannels recording({}, {"z", "W1:y"});
    dictionary.Resorter.SortZuFile(&recording.File);
    const QStringList lines = InfFrom(Device, dictionary, recording.File);
    EXPECT_EQ(lines.filter("StatusChannelCount="), QStringList{"StatusChannelCount=2"});
    EXPECT_EQ(lines.filter("[Russian_Comtrade_Edition Status"),
              QStringList{"[Russian_Comtrade_Edition Status_Channel_#1_#1_#1]"});
    EXPECT_EQ(lines.filter("Status_ID="), QStringList{"Status_ID=W1:y"});
    EXPECT_EQ(lines.filter("Status_Channel_Number="), QStringList{"Status_Channel_Number=1"});
}

TEST(InfStatus, ChannelsOutsideTheDictionaryHaveNoSection)
{
    const QStringList lines =
        StatusSections(Entries("D", {"W1:x,V_L=110 E_G=L D_G=RP S_T=FD", "W1:z"}), {"W1:z", "W1:y", "W1:x"});
    EXPECT_EQ(lines.filter("Status_ID="), QStringList{"Status_ID=W1:x"});
}

TEST(InfEquipment, IsWrittenInFullForARecordingThatLacksSignals)
{
    SortedDictionary dictionary(Entries("A", {"W1:Ua,V_L=110 E_G=L S_G=VT", "W1:Ub,V_L=110 E_G=L S_G=VT"}));
    NamedChannels recording({"W1:Ub"}, {});
    dictionary.Resorter.SortZuFile(&recording.File);
    EXPECT_EQ(InfFrom(Equipment, dictionary, recording.File).value(6), "VT_Channel_Number=1,2,0,0");
}
