// Whole INF files of conversions, byte for byte.
#include "inftext.h"
#include "recorderfile/recorderfile.h"
#include "support/device.h"

#include <gtest/gtest.h>

using recorderfile::AnalogChannel;
using recorderfile::DiscreteChannel;
using recorderfile::Encode;
using recorderfile::Recording;

namespace {

// Whether ComtradeUtf8 is on.
class InfFile : public testing::TestWithParam<bool>
{
protected:
    static QByteArray CodeKey() { return GetParam() ? "Кодировка Comtrade UTF8=1\n" : ""; }

    static QByteArray Encoded(const QString& text)
    {
        return (GetParam() ? ZuCmtrConverter::codec_UTF8 : ZuCmtrConverter::codec_CP1251)->fromUnicode(text);
    }
};

const QStringList RecordInformation{"[Public Record_Information]", "Source=VELTORINE(ZuComtradeConverter)",
                                    "EventNoteCount=0", ""};

const QStringList Edition{"[Russian_Comtrade_Edition Description]",
                          "PowerObjectCount=1",
                          "Russian_Comtrade_Edition_Version=2017",
                          "Russian_Comtrade_Edition_Revision=1.0",
                          "",
                          "[Russian_Comtrade_Edition Power_Object_#1]"};

QStringList AnalogSection(int number, const QStringList& idPhaseCircuitUnit)
{
    return {QStringLiteral("[Public Analog_Channel_#%1]").arg(number),
            "Channel_ID=" + idPhaseCircuitUnit[0],
            "Phase_ID=" + idPhaseCircuitUnit[1],
            "Monitored_Component=" + idPhaseCircuitUnit[2],
            "Channel_Units=" + idPhaseCircuitUnit[3],
            "Channel_Multiplier=1",
            "Channel_Offset=0",
            "Channel_Skew=0",
            "Range_Minimum_Limit_Value=-32767",
            "Range_Maximum_Limit_Value=32767",
            "Channel_Ratio_Primary=1",
            "Channel_Ratio_Secondary=1",
            "Data_Primary_Secondary=P",
            ""};
}

QStringList StatusSection(int number, const QString& id, const QString& circuit)
{
    return {QStringLiteral("[Public Status_Channel_#%1]").arg(number),
            "Channel_ID=" + id,
            "Phase_ID=",
            "Monitored_Component=" + circuit,
            "Normal_State=0",
            ""};
}

} // namespace

TEST_P(InfFile, OfADeviceWithoutDictionary)
{
    TestStation station(CodeKey() + "Энергосистема=ЭС\nСубъект=МЭС\nОбъект=ПС Южная\nИсточник=РАС 1\n"
                                    "Версия ПО=3.1\nВерсия аппаратной части=1.7\nМодель=MK7.08\n"
                                    "Идентификатор Cim=7f3a\nНомер шкафа=12\nСерийный номер=0042\n");
    Recording recording;
    recording.Add(AnalogChannel{"Q1:Ia", "А", {1, -2, 3}}).Add(DiscreteChannel{"Q1:вкл", 0, {{0, 1}}});
    recording.Add(DiscreteChannel{"Q2:откл", 0, {}});
    ASSERT_TRUE(station.Convert(Encode(recording)));

    const QStringList description{"[Public File_Description]",
                                  "Station_Name=ПС Южная",
                                  "Recording_Device_ID=РАС 1",
                                  "Revision_Year=2013",
                                  "Total_Channel_Count=3",
                                  "Analog_Channel_Count=1",
                                  "Status_Channel_Count=2",
                                  "Line_Frequency=50",
                                  "Sample_Rate_Count=1",
                                  "Sample_Rate_#1=2400",
                                  "End_Sample_Rate_#1=3",
                                  "File_Start_Time=31/01/2024,11:59:59.750000",
                                  "Trigger_Time=31/01/2024,12:00:00.250000",
                                  "File_Type=ASCII",
                                  "Time_Multiplier=1",
                                  ""};
    const QStringList stationSections{"Territory=ЭС",
                                      "Company_Name=МЭС",
                                      "Station_Name=ПС Южная",
                                      "RecordingDeviceCount=1",
                                      "",
                                      "[Russian_Comtrade_Edition Recording_Device_#1_#1]",
                                      "Recording_Device_ID=РАС 1",
                                      "Vendor=ООО КАЛДА",
                                      "Model=MK7.08",
                                      "Serial_Number=0042",
                                      "Hardware_Revision=1.7",
                                      "Software_Revision=3.1",
                                      "Comtrade_File_Name=240131,120000.2,+3t,ПС Южная,РАС 1.МЭС",
                                      "EquipmentCount=0",
                                      "StatusChannelCount=0",
                                      "Cim_Device_ID=7f3a",
                                      "Box_Number=12",
                                      ""};
    const QStringList expected =
        RecordInformation + description + AnalogSection(1, {"Ia Q1", "A", "Q1", "А"}) +
        StatusSection(1, "вкл Q1", "Q1") + StatusSection(2, "откл Q2", "Q2") + Edition + stationSections;
    EXPECT_EQ(station.Output("inf"), Encoded(InfText(expected)));
}

TEST_P(InfFile, OfADeviceWithDictionary)
{
    TestStation station(
        CodeKey() +
        Entries("A", {"ВЛ 1:Ia,V_L=110 E_G=L S_G=CT VL_IND=1 CIM_ID=i1", "ВЛ 1:Ic,V_L=110 E_G=L S_G=CT",
                      "ВЛ 1:дист", "1СШ:Ua,V_L=500 E_G=VTB S_G=VT CIM_ID=u1"}) +
        Entries("D", {"ВЛ 1:откл,V_L=110 E_G=L D_G=RP S_T=SBO CIM_ID=d1",
                      "ВЛ 1:нет,V_L=110 E_G=L D_G=FR S_T=AL", "1СШ:УРОВ,V_L=500 E_G=VTB D_G=EA S_T=ID"}) +
        "nBayMax=1\nBAY01=ВЛ 1,ВЛ Южная,W-1\nДоп.индексы для имен сигналов=1\nТип Comtrade BIN=1\n");
    Recording recording;
    recording.Add(AnalogChannel{"х:у", "", {1, 2}}).Add(AnalogChannel{"ВЛ 1:Ic", "А", {1, 2}});
    recording.Add(AnalogChannel{"ВЛ 1:Ia", "А", {1, 2}}).Add(AnalogChannel{"1СШ:Ua", "кВ", {1, 2}});
    recording.Add(DiscreteChannel{"х:у", 0, {}}).Add(DiscreteChannel{"ВЛ 1:откл", 0, {{0, 1}}});
    recording.Add(DiscreteChannel{"1СШ:УРОВ", 0, {}});
    ASSERT_TRUE(station.Convert(Encode(recording)));

    const QStringList description{"[Public File_Description]",
                                  "Station_Name=Object",
                                  "Recording_Device_ID=Source",
                                  "Revision_Year=2013",
                                  "Total_Channel_Count=7",
                                  "Analog_Channel_Count=4",
                                  "Status_Channel_Count=3",
                                  "Line_Frequency=50",
                                  "Sample_Rate_Count=1",
                                  "Sample_Rate_#1=2400",
                                  "End_Sample_Rate_#1=2",
                                  "File_Start_Time=31/01/2024,11:59:59.750000",
                                  "Trigger_Time=31/01/2024,12:00:00.250000",
                                  "File_Type=Binary",
                                  "Time_Multiplier=1",
                                  ""};
    const QStringList publicChannels =
        AnalogSection(1, {"Ua 1СШ", "A", "1СШ", "кВ"}) +
        AnalogSection(2, {"Ia1 ВЛ Южная", "A", "ВЛ Южная", "А"}) +
        AnalogSection(3, {"Ic ВЛ Южная", "C", "ВЛ Южная", "А"}) + AnalogSection(4, {"у х", "", "х", "NONE"}) +
        StatusSection(1, "УРОВ 1СШ", "1СШ") + StatusSection(2, "откл ВЛ Южная", "ВЛ Южная") +
        StatusSection(3, "у х", "х");
    const QStringList stationSections{"Territory=PowerSystem",
                                      "Company_Name=Subject",
                                      "Station_Name=Object",
                                      "RecordingDeviceCount=1",
                                      "",
                                      "[Russian_Comtrade_Edition Recording_Device_#1_#1]",
                                      "Recording_Device_ID=Source",
                                      "Vendor=ООО КАЛДА",
                                      "Model=MK7.06",
                                      "Serial_Number=",
                                      "Hardware_Revision=2.0",
                                      "Software_Revision=1.0",
                                      "Comtrade_File_Name=240131,120000.2,+3t,Object,Source.Subject",
                                      "EquipmentCount=2",
                                      "StatusChannelCount=3",
                                      "Cim_Device_ID=",
                                      "Box_Number=",
                                      ""};
    const QStringList equipment{"[Russian_Comtrade_Edition Equipment_Analog_Channel_#1_#1_#1]",
                                "Equipment_Type=Busbar_Section",
                                "Equipment_ID=1СШ",
                                "Equipment_Short_Name=1СШ",
                                "Voltage_Level_In_kV=500",
                                "VT_ID=1СШ",
                                "VT_Channel_Number=1,0,0,0",
                                "CT_ID=",
                                "CT_Channel_Number=",
                                "RP_Channel_Number=",
                                "F_Channel_Number=",
                                "ES_Channel_Number=",
                                "OCS_Channel_Number=",
                                "Cim_Channel_ID=u1",
                                "",
                                "[Russian_Comtrade_Edition Equipment_Analog_Channel_#1_#1_#2]",
                                "Equipment_Type=Line",
                                "Equipment_ID=ВЛ Южная",
                                "Equipment_Short_Name=ВЛ Южная",
                                "Voltage_Level_In_kV=110",
                                "VT_ID=",
                                "VT_Channel_Number=",
                                "CT_ID=ВЛ Южная",
                                "CT_Channel_Number=2,0,3,0",
                                "RP_Channel_Number=",
                                "F_Channel_Number=",
                                "ES_Channel_Number=",
                                "OCS_Channel_Number=",
                                "Cim_Channel_ID=i1",
                                ""};
    const QStringList status{"[Russian_Comtrade_Edition Status_Channel_#1_#1_#1]",
                             "Protection_Device_Group=Emergency_Control_Automation",
                             "Status_Signal_Type=Starting",
                             "Status_ID=1СШ:УРОВ",
                             "Status_Short_Name=1СШ:УРОВ",
                             "Voltage_Level_In_kV=500",
                             "Status_Channel_Number=1",
                             "Cim_Channel_ID=",
                             "",
                             "[Russian_Comtrade_Edition Status_Channel_#1_#1_#2]",
                             "Protection_Device_Group=Relay_Protection",
                             "Status_Signal_Type=Status_Breaker",
                             "Status_ID=ВЛ 1:откл",
                             "Status_Short_Name=ВЛ 1:откл",
                             "Voltage_Level_In_kV=110",
                             "Status_Channel_Number=2",
                             "Cim_Channel_ID=d1",
                             ""};
    const QStringList expected =
        RecordInformation + description + publicChannels + Edition + stationSections + equipment + status;
    EXPECT_EQ(station.Output("inf"), Encoded(InfText(expected)));
}

INSTANTIATE_TEST_SUITE_P(Inf, InfFile, testing::Bool(), [](const testing::TestParamInfo<bool>& utf8) {
    return utf8.param ? "InUtf8" : "InCp1251";
});

TEST(InfEncoding, VendorFollowsTheFile)
{
    const QByteArray recording = Encode(Recording{}.Add(DiscreteChannel{"Q1:x", 0, {}}));
    TestStation cp1251("");
    ASSERT_TRUE(cp1251.Convert(recording));
    EXPECT_TRUE(cp1251.Output("inf").contains("\r\nVendor=\xCE\xCE\xCE \xCA\xC0\xCB\xC4\xC0\r\n"));
    TestStation utf8("Кодировка Comtrade UTF8=1");
    ASSERT_TRUE(utf8.Convert(recording));
    EXPECT_TRUE(utf8.Output("inf").contains("\r\nVendor=ООО КАЛДА\r\n"));
    EXPECT_TRUE(utf8.Output("inf").startsWith("[Public Record_Information]\r\n")) << "no byte-order mark";
}

TEST(InfFileOfTwoRecordings, RecordingWithoutAnalogChannelsConvertsAfterOneWithThem)
{
    TestStation station(Entries("A", {"W1:Ua,V_L=110 E_G=L S_G=VT VL_IND=1"}) +
                        "Доп.индексы для имен сигналов=1\n" +
                        Entries("D", {"W1:x,V_L=110 E_G=L D_G=RP S_T=FD"}));
    Recording both;
    both.Add(AnalogChannel{"W1:Ua", "кВ", {1, 2}}).Add(DiscreteChannel{"W1:x", 0, {}});
    ASSERT_TRUE(station.Convert(Encode(both)));
    EXPECT_TRUE(station.Output("inf").contains("Channel_ID=Ua1 W1\r\n"));

    ASSERT_TRUE(station.Convert(Encode(Recording{}.Add(DiscreteChannel{"W1:x", 0, {}}))));
    EXPECT_EQ(station.Output("cfg").split('\n').value(1), "1,0A,1D");
    const QByteArray inf = station.Output("inf");
    EXPECT_TRUE(inf.contains("\r\nAnalog_Channel_Count=0\r\n"));
    EXPECT_FALSE(inf.contains("[Public Analog_Channel"));
    EXPECT_TRUE(inf.contains("[Public Status_Channel_#1]\r\n"));
    EXPECT_EQ(station.Device().LogMessages.size(), 1U) << "the note of success alone";
}
