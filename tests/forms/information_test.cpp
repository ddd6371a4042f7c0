// The INF text of a record in another form.
#include "forms/information.h"

#include "comtrade/record.h"

#include <gtest/gtest.h>

using forms::ChannelSet;
using forms::Information;
using forms::InformationFor;

namespace {

comtrade::Places Configuration()
{
    comtrade::Places places;
    comtrade::Findings ignored;
    comtrade::ParseConfiguration(QStringLiteral("S,D,1999\n3,2A,1D\n1,Ia,A,Q1,A,0.5,0,0,-9,9,1,1,P\n"
                                                "2,Ib,B,Q1,A,2,0,0,-9,9,1,1,P\n1,Trip,,Q1,0\n50\n1\n1000,7\n"
                                                "31/01/2024,12:00:00\n31/01/2024,12:00:00\nASCII\n1\n"),
                                 QStringLiteral("rec.cfg"), &ignored, 1, &places);
    return places;
}

const char* const Source = "[Public Record_Information]\r\nSource=x\r\n"
                           "[Public File_Description]\r\nRevision_Year=2013\r\nSample_Rate_#1=1000.0\r\n"
                           "End_Sample_Rate_#1=9\r\nSample_Rate_#2=50\r\nFile_Type=ascii\r\nOwn=1\r\n"
                           "[Public Analog_Channel_#1]\r\nChannel_ID=Ia\r\nChannel_Multiplier=1\r\n"
                           "[Public Analog_Channel_#3]\r\nChannel_ID=Ib\r\n"
                           "[Public Status_Channel_#1]\r\nChannel_ID=Trip\r\n"
                           "[Own Equipment_#1]\r\nChannel=3\r\n";

} // namespace

TEST(InformationText, HasTheValuesOfItsConfiguration)
{
    const Information information = InformationFor(QString::fromUtf8(Source), Configuration(), std::nullopt);
    EXPECT_FALSE(information.isEquipmentLeftOut);
    EXPECT_EQ(information.text, "[Public Record_Information]\r\nSource=x\r\n"
                                "[Public File_Description]\r\nRevision_Year=1999\r\nSample_Rate_#1=1000.0\r\n"
                                "End_Sample_Rate_#1=7\r\nFile_Type=ascii\r\nOwn=1\r\n"
                                "[Public Analog_Channel_#1]\r\nChannel_ID=Ia\r\nChannel_Multiplier=0.5\r\n"
                                "[Public Status_Channel_#1]\r\nChannel_ID=Trip\r\n"
                                "[Own Equipment_#1]\r\nChannel=3\r\n");
}

TEST(InformationText, OfSomeChannelsCountsThemAnew)
{
    const Information information =
        InformationFor(QString::fromUtf8(Source), Configuration(), ChannelSet{{0, 2}, {}});
    EXPECT_TRUE(information.isEquipmentLeftOut);
    EXPECT_EQ(information.text, "[Public Record_Information]\r\nSource=x\r\n"
                                "[Public File_Description]\r\nRevision_Year=1999\r\nSample_Rate_#1=1000.0\r\n"
                                "End_Sample_Rate_#1=7\r\nFile_Type=ascii\r\nOwn=1\r\n"
                                "[Public Analog_Channel_#1]\r\nChannel_ID=Ia\r\nChannel_Multiplier=0.5\r\n"
                                "[Public Analog_Channel_#2]\r\nChannel_ID=Ib\r\n");
}
