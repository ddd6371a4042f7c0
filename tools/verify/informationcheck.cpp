#include "device/zucmtrdevparam.h"
#include "recording/zufileformat.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "verify/channellines.h"
#include "verify/checks.h"
#include "verify/device.h"
#include "verify/source.h"
#include "verify/stamp.h"
#include "verify/textwalk.h"

#include <initializer_list>

namespace verify {

namespace {

// Walks through the sections: "[head]", keys, an empty line.
class Sections
{
public:
    Sections(TextWalk& text_, const Source& source_) : text(text_), source(source_) {}

    void Opening()
    {
        text.Line(QStringLiteral("[Public Record_Information]"));
        text.LineLike(QStringLiteral("Source="));
        Key("EventNoteCount=", 0);
        text.Line(QString());
    }

    void Recording()
    {
        const ZuCmtrDevParam& param = source.Owner().Param();
        const auto analog = static_cast<qint64>(source.AnalogCount());
        const auto states = static_cast<qint64>(source.StateCount());
        text.Line(QStringLiteral("[Public File_Description]"));
        Key("Station_Name=", param.Object);
        Key("Recording_Device_ID=", param.Source);
        Key("Revision_Year=", 2013);
        Key("Total_Channel_Count=", analog + states);
        Key("Analog_Channel_Count=", analog);
        Key("Status_Channel_Count=", states);
        Key("Line_Frequency=", 50);
        Key("Sample_Rate_Count=", 1);
        Key("Sample_Rate_#1=", QString::number(source.SampleRate(), 'g', 6));
        Key("End_Sample_Rate_#1=", source.TotalSamples());
        Key("File_Start_Time=", StampText(StartMoment(source)));
        Key("Trigger_Time=", StampText(TriggerMoment(source)));
        Key("File_Type=", QLatin1String(param.ComtradeBin ? "Binary" : "ASCII"));
        Key("Time_Multiplier=", 1);
        text.Line(QString());
    }

    void Analog(size_t index)
    {
        const AnChannelData& channel = source.Analog(index);
        const QStringList names = NameFields(channel, index + 1, source.Owner());
        const Scaling scaling = ScalingOf(channel);
        text.Line(QStringLiteral("[Public Analog_Channel_#%1]").arg(index + 1));
        Key("Channel_ID=", names[1]);
        Key("Phase_ID=", names[2]);
        Key("Monitored_Component=", names[3]);
        Key("Channel_Units=", names[4]);
        Key("Channel_Multiplier=", scaling.a);
        Key("Channel_Offset=", scaling.b);
        Key("Channel_Skew=", scaling.skew);
        Key("Range_Minimum_Limit_Value=", scaling.lowest);
        Key("Range_Maximum_Limit_Value=", scaling.highest);
        Key("Channel_Ratio_Primary=", scaling.primary);
        Key("Channel_Ratio_Secondary=", scaling.secondary);
        Key("Data_Primary_Secondary=", QStringLiteral("P"));
        text.Line(QString());
    }

    void State(size_t index)
    {
        const QStringList names = NameFields(source.State(index), index + 1, source.Owner());
        text.Line(QStringLiteral("[Public Status_Channel_#%1]").arg(index + 1));
        Key("Channel_ID=", names[1]);
        Key("Phase_ID=", names[2]);
        Key("Monitored_Component=", names[3]);
        Key("Normal_State=", names[4]);
        text.Line(QString());
    }

    void Station()
    {
        const ResorterZuCmtrConv& resorter = *source.Owner().Param().Resorter;
        text.Line(QStringLiteral("[Russian_Comtrade_Edition Description]"));
        Key("PowerObjectCount=", 1);
        Keys({"Russian_Comtrade_Edition_Version=", "Russian_Comtrade_Edition_Revision="});
        text.Line(QString());
        text.Line(QStringLiteral("[Russian_Comtrade_Edition Power_Object_#1]"));
        Key("Territory=", resorter.PowerObject.Territory);
        Key("Company_Name=", resorter.PowerObject.CompanyName);
        Key("Station_Name=", resorter.PowerObject.StationName);
        Key("RecordingDeviceCount=", 1);
        text.Line(QString());
    }

    void Recorder()
    {
        const ZuCmtrDevParam& param = source.Owner().Param();
        text.Line(QStringLiteral("[Russian_Comtrade_Edition Recording_Device_#1_#1]"));
        Key("Recording_Device_ID=", param.Source);
        Keys({"Vendor="});
        Key("Model=", param.Model);
        Key("Serial_Number=", param.SerialNumber);
        Key("Hardware_Revision=", param.HardwareVersion);
        Key("Software_Revision=", param.SoftwareVersion);
        Key("Comtrade_File_Name=", source.RecordName());
        Key("EquipmentCount=", static_cast<qint64>(param.Resorter->Equipment.size()));
        Key("StatusChannelCount=", qint64{param.Resorter->StatusChannelCount});
        Key("Cim_Device_ID=", param.CimId);
        Key("Box_Number=", param.CabinetNumber);
        text.Line(QString());
    }

    void Equipment(size_t number)
    {
        text.Line(
            QStringLiteral("[Russian_Comtrade_Edition Equipment_Analog_Channel_#1_#1_#%1]").arg(number));
        Keys({"Equipment_Type=", "Equipment_ID=", "Equipment_Short_Name=", "Voltage_Level_In_kV=", "VT_ID=",
              "VT_Channel_Number=", "CT_ID=", "CT_Channel_Number=", "RP_Channel_Number=", "F_Channel_Number=",
              "ES_Channel_Number=", "OCS_Channel_Number=", "Cim_Channel_ID="});
        text.Line(QString());
    }

    void StateSignal(size_t number, const QString& fullName)
    {
        text.Line(QStringLiteral("[Russian_Comtrade_Edition Status_Channel_#1_#1_#%1]").arg(number));
        Keys({"Protection_Device_Group=", "Status_Signal_Type="});
        Key("Status_ID=", fullName);
        Key("Status_Short_Name=", fullName);
        Keys({"Voltage_Level_In_kV="});
        Key("Status_Channel_Number=", static_cast<qint64>(number));
        Keys({"Cim_Channel_ID="});
        text.Line(QString());
    }

private:
    void Key(const char* key, const QString& value) { text.Line(QLatin1String(key) + value); }
    void Key(const char* key, qint64 value) { Key(key, QString::number(value)); }

    // Keys whose values are not compared.
    void Keys(std::initializer_list<const char*> keys)
    {
        for (const char* key : keys)
            text.LineLike(QLatin1String(key));
    }

    TextWalk& text;
    const Source& source;
};

} // namespace

void CheckInformation(const QByteArray& information, const Source& source, const QString& fileName)
{
    TextWalk text(information, fileName, "\r\n", source.Owner());
    Sections sections(text, source);
    sections.Opening();
    sections.Recording();
    KnownTexts& known = source.Owner().Known();
    for (size_t i = 0; i < source.AnalogCount(); ++i)
        known.analogSections.Pass(i, InputsOf(source.Analog(i)), text, [&] { sections.Analog(i); });
    for (size_t i = 0; i < source.StateCount(); ++i)
        known.stateSections.Pass(i, InputsOf(source.State(i)), text, [&] { sections.State(i); });
    sections.Station();
    sections.Recorder();
    const ResorterZuCmtrConv& resorter = *source.Owner().Param().Resorter;
    for (size_t i = 0; i < resorter.Equipment.size(); ++i)
        known.equipmentSections.Pass(i, LineInputs(), text, [&] { sections.Equipment(i + 1); });
    for (size_t i = 0; i < resorter.PrevFileDiDictIndexes.size(); ++i) {
        LineInputs inputs;
        inputs.name = resorter.DiResorted.at(resorter.PrevFileDiDictIndexes[i])->FullName;
        known.signalSections.Pass(i, inputs, text, [&] { sections.StateSignal(i + 1, inputs.name); });
    }
    text.End();
}

} // namespace verify
