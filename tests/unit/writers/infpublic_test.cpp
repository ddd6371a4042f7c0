// The public sections of the INF file, and its writing primitives.
#include "inftext.h"

#include <gtest/gtest.h>

namespace {

// A re-sorter without dictionary whose order has so many channels, and the lines of a CFG file.
class InfPublic : public testing::Test
{
protected:
    InfPublic() : resorter(&device) { resorter.InfCodec = ZuCmtrConverter::codec_CP1251; }

    void Analog(const std::vector<QString>& lines)
    {
        file.CfgAnLines = lines;
        resorter.PrevFileAnIndexes.resize(lines.size());
    }

    void Status(const std::vector<QString>& lines)
    {
        file.CfgDiLines = lines;
        resorter.PrevFileDiIndexes.resize(lines.size());
    }

    QStringList AnalogSections(bool expectedResult)
    {
        return LinesOf(
            [&](QFile& inf) { EXPECT_EQ(resorter.DoInfSec_Analog_Channels(inf, &file), expectedResult); });
    }

    QStringList StatusSections(bool expectedResult)
    {
        return LinesOf(
            [&](QFile& inf) { EXPECT_EQ(resorter.DoInfSec_Status_Channels(inf, &file), expectedResult); });
    }

    // The heads of the sections of a whole file.
    QStringList Heads()
    {
        return LinesOf([&](QFile& inf) { EXPECT_TRUE(resorter.WriteInf(inf, &file)); }).filter("[");
    }

    ZuCmtrDevParam device;
    ResorterZuCmtrConv resorter;
    ZuFileFormat file;
};

} // namespace

TEST_F(InfPublic, FileDescriptionHasItsKeys)
{
    device.Object = QStringLiteral("ПС");
    device.Source = QStringLiteral("РАС");
    file.SampleRate = 4800;
    file.CfgSamples = QStringLiteral("123");
    file.CfgStartStamp = QStringLiteral("start");
    file.CfgTrigStamp = QStringLiteral("trigger");
    file.CfgDataType = QStringLiteral("Binary");
    file.CfgTimeMult = QStringLiteral("1");
    file.AnChannels.resize(2);
    file.DiChannels.resize(9);
    const QStringList lines =
        LinesOf([&](QFile& inf) { EXPECT_TRUE(resorter.DoInfSec_File_Description(inf, &file)); });
    file.AnChannels.clear();
    file.DiChannels.clear();
    const QStringList expected{"[Public File_Description]",
                               "Station_Name=ПС",
                               "Recording_Device_ID=РАС",
                               "Revision_Year=2013",
                               "Total_Channel_Count=11",
                               "Analog_Channel_Count=2",
                               "Status_Channel_Count=9",
                               "Line_Frequency=50",
                               "Sample_Rate_Count=1",
                               "Sample_Rate_#1=4800",
                               "End_Sample_Rate_#1=123",
                               "File_Start_Time=start",
                               "Trigger_Time=trigger",
                               "File_Type=Binary",
                               "Time_Multiplier=1",
                               "",
                               ""};
    EXPECT_EQ(lines, expected);
}

TEST_F(InfPublic, SampleRateHasSixSignificantDigits)
{
    const std::pair<double, const char*> rates[] = {
        {1000, "1000"}, {4800, "4800"}, {1000000, "1e+06"}, {1200.5, "1200.5"}, {2400.0004, "2400"}};
    for (const auto& [rate, text] : rates) {
        file.SampleRate = rate;
        const QStringList lines =
            LinesOf([&](QFile& inf) { EXPECT_TRUE(resorter.DoInfSec_File_Description(inf, &file)); });
        EXPECT_EQ(lines.value(9), QByteArray("Sample_Rate_#1=") + text);
    }
}

TEST_F(InfPublic, AnalogSectionsHaveTheFieldsOfTheirLines)
{
    Analog({"1,Ua W1,A,W1,кВ,62.5,-3,7,-2048,2047,1000,5,P", "2,b,,,,f,g,h,i,j,k,l,m"});
    const QStringList expected{"[Public Analog_Channel_#1]",
                               "Channel_ID=Ua W1",
                               "Phase_ID=A",
                               "Monitored_Component=W1",
                               "Channel_Units=кВ",
                               "Channel_Multiplier=62.5",
                               "Channel_Offset=-3",
                               "Channel_Skew=7",
                               "Range_Minimum_Limit_Value=-2048",
                               "Range_Maximum_Limit_Value=2047",
                               "Channel_Ratio_Primary=1000",
                               "Channel_Ratio_Secondary=5",
                               "Data_Primary_Secondary=P",
                               "",
                               "[Public Analog_Channel_#2]",
                               "Channel_ID=b",
                               "Phase_ID=",
                               "Monitored_Component=",
                               "Channel_Units=",
                               "Channel_Multiplier=f",
                               "Channel_Offset=g",
                               "Channel_Skew=h",
                               "Range_Minimum_Limit_Value=i",
                               "Range_Maximum_Limit_Value=j",
                               "Channel_Ratio_Primary=k",
                               "Channel_Ratio_Secondary=l",
                               "Data_Primary_Secondary=m",
                               "",
                               ""};
    EXPECT_EQ(AnalogSections(true), expected);
}

TEST_F(InfPublic, StatusSectionsHaveTheFieldsOfTheirLines)
{
    Status({"7,Q1 ВКЛ,,Q1,0", "8,a,b,c,d"});
    const QStringList expected{"[Public Status_Channel_#1]",
                               "Channel_ID=Q1 ВКЛ",
                               "Phase_ID=",
                               "Monitored_Component=Q1",
                               "Normal_State=0",
                               "",
                               "[Public Status_Channel_#2]",
                               "Channel_ID=a",
                               "Phase_ID=b",
                               "Monitored_Component=c",
                               "Normal_State=d",
                               "",
                               ""};
    EXPECT_EQ(StatusSections(true), expected);
}

TEST_F(InfPublic, AnalogLineWithAnotherNumberOfFieldsEndsWithItsHead)
{
    for (const char* line : {"1,Ua, W1,A,W1,kV,1,0,0,0,0,1,1,P", "1,2,3,4,5,6,7,8,9,10,11,12", ""}) {
        Analog({QString::fromUtf8(line), "2,b,,,,f,g,h,i,j,k,l,m"});
        EXPECT_EQ(AnalogSections(false), (QStringList{"[Public Analog_Channel_#1]", ""}));
    }
}

TEST_F(InfPublic, StatusLineWithAnotherNumberOfFieldsEndsWithItsHead)
{
    for (const char* line : {"1,x,y,,Q1,0", "1,x,,Q1", ""}) {
        Status({QString::fromUtf8(line), "2,x,,Q1,0"});
        EXPECT_EQ(StatusSections(false), (QStringList{"[Public Status_Channel_#1]", ""}));
    }
}

TEST_F(InfPublic, OrderThatIsLongerThanTheLinesEndsWithThem)
{
    Analog({"1,b,,,,f,g,h,i,j,k,l,m"});
    resorter.PrevFileAnIndexes.resize(3);
    EXPECT_EQ(AnalogSections(true).filter("["), QStringList{"[Public Analog_Channel_#1]"});
    Status({"1,x,,Q1,0"});
    resorter.PrevFileDiIndexes.resize(3);
    EXPECT_EQ(StatusSections(true).filter("["), QStringList{"[Public Status_Channel_#1]"});
}

TEST_F(InfPublic, NoChannelsMakeNoSections)
{
    EXPECT_EQ(AnalogSections(true), QStringList{""});
    EXPECT_EQ(StatusSections(true), QStringList{""});
}

TEST_F(InfPublic, BadAnalogLineLeavesOutTheStatusSectionsAlone)
{
    Analog({"1,Ua, W1,A,W1,kV,1,0,0,0,0,1,1,P"});
    Status({"1,x,,Q1,0"});
    EXPECT_EQ(Heads(), (QStringList{"[Public Record_Information]", "[Public File_Description]",
                                    "[Public Analog_Channel_#1]", "[Russian_Comtrade_Edition Description]",
                                    "[Russian_Comtrade_Edition Power_Object_#1]",
                                    "[Russian_Comtrade_Edition Recording_Device_#1_#1]"}));
}

TEST_F(InfPublic, BadStatusLineLeavesTheRussianPart)
{
    Status({"1,x,y,,Q1,0"});
    EXPECT_EQ(Heads().last(), "[Russian_Comtrade_Edition Recording_Device_#1_#1]");
}

TEST_F(InfPublic, TextIsWrittenInTheCodecUpToItsFirstNul)
{
    bool err = false;
    const QString text = QStringLiteral("Ж") + QChar(0) + QStringLiteral("x");
    const auto written = [&](QTextCodec* codec) {
        resorter.InfCodec = codec;
        const TestDirectory directory;
        QFile out(directory.Path(QStringLiteral("inf")));
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        resorter.WriteString(out, text, err);
        resorter.WriteString(out, "\xFF|", err);
        resorter.WriteStringUtf8(out, "Ж", err);
        out.close();
        return ReadBytes(out.fileName());
    };
    EXPECT_EQ(written(ZuCmtrConverter::codec_CP1251), "\xC6\xFF|\xC6");
    EXPECT_EQ(written(ZuCmtrConverter::codec_UTF8), "\xD0\x96\xFF|\xD0\x96");
    EXPECT_FALSE(err);
}
