// The INF file: the public sections, which repeat the CFG file in key form.
#include "resorter/ResorterZuCmtrConv.h"

#include "device/zucmtrdevparam.h"
#include "recording/zufileformat.h"
#include "writers/infsection.h"

#include <QDebug>
#include <QFile>

#include <algorithm>
#include <exception>

namespace {

// The keys of the fields of a CFG line, in their order; the first field, the number, has none.
constexpr const char* AnalogKeys[] = {
    "Channel_ID=",
    "Phase_ID=",
    "Monitored_Component=",
    "Channel_Units=",
    "Channel_Multiplier=",
    "Channel_Offset=",
    "Channel_Skew=",
    "Range_Minimum_Limit_Value=",
    "Range_Maximum_Limit_Value=",
    "Channel_Ratio_Primary=",
    "Channel_Ratio_Secondary=",
    "Data_Primary_Secondary=",
};

constexpr const char* StatusKeys[] = {
    "Channel_ID=",
    "Phase_ID=",
    "Monitored_Component=",
    "Normal_State=",
};

// The sections of one kind of channel.
template <size_t Keys>
struct ChannelSections
{
    const char* head; // of a section, before its number
    const char* const (&keys)[Keys];
    const std::vector<QString>& lines; // of the CFG file
    size_t count;                      // channels in the output order
};

void ReportException(const std::exception& exception)
{
    QMessageLogger(nullptr, 0, nullptr, "default").debug() << exception.what();
}

// Writes the section of one channel; false unless its CFG line has one field more than there are keys; the
// head is then left without keys.
template <size_t Keys>
bool WriteChannelSection(zu::InfSection& section, const ChannelSections<Keys>& sections, size_t index)
{
    constexpr QChar Comma = QLatin1Char(',');
    const QString& line = sections.lines.at(index);
    section.Head(sections.head, index + 1);
    const bool fits = !line.isEmpty() && line.count(Comma) == int{Keys};
    if (fits) {
        const QChar* field = std::find(line.begin(), line.end(), Comma); // after the number
        for (const char* key : sections.keys) {
            const QChar* const end = std::find(++field, line.end(), Comma);
            section.Key(key, QStringView(field, end).trimmed());
            field = end;
        }
        section.Raw("\r\n");
    }
    section.Write();
    return fits;
}

template <size_t Keys>
bool WriteChannelSections(const ResorterZuCmtrConv& resorter, QFile& file,
                          const ChannelSections<Keys>& sections)
{
    bool err = false;
    zu::InfSection section(resorter, file, err);
    try {
        for (size_t i = 0; i < sections.count; ++i) {
            if (!WriteChannelSection(section, sections, i))
                return false;
        }
    } catch (const std::exception& exception) {
        ReportException(exception);
    }
    return !err;
}

} // namespace

bool ResorterZuCmtrConv::DoInfSec_File_Description(QFile& file, ZuFileFormat* zufile)
{
    bool err = false;
    zu::InfSection section(*this, file, err);
    try {
        section.Head("Public File_Description");
        section.Key("Station_Name=", Device->Object);
        section.Key("Recording_Device_ID=", Device->Source);
        section.Raw("Revision_Year=2013\r\n");
        section.Key("Total_Channel_Count=", zufile->AnChannels.size() + zufile->DiChannels.size());
        section.Key("Analog_Channel_Count=", zufile->AnChannels.size());
        section.Key("Status_Channel_Count=", zufile->DiChannels.size());
        section.Raw("Line_Frequency=50\r\n"
                    "Sample_Rate_Count=1\r\n");
        section.Key("Sample_Rate_#1=",
                    QStringLiteral("%1").arg(zufile->SampleRate, 0, 'g', -1, QLatin1Char(' ')));
        section.Key("End_Sample_Rate_#1=", zufile->CfgSamples);
        section.Key("File_Start_Time=", zufile->CfgStartStamp);
        section.Key("Trigger_Time=", zufile->CfgTrigStamp);
        section.Key("File_Type=", zufile->CfgDataType);
        section.Key("Time_Multiplier=", zufile->CfgTimeMult);
        section.Raw("\r\n");
        section.Write();
    } catch (const std::exception& exception) {
        ReportException(exception);
    }
    return !err;
}

bool ResorterZuCmtrConv::DoInfSec_Analog_Channels(QFile& file, ZuFileFormat* zufile)
{
    return WriteChannelSections<std::size(AnalogKeys)>(
        *this, file, {"Public Analog_Channel_#", AnalogKeys, zufile->CfgAnLines, PrevFileAnIndexes.size()});
}

bool ResorterZuCmtrConv::DoInfSec_Status_Channels(QFile& file, ZuFileFormat* zufile)
{
    return WriteChannelSections<std::size(StatusKeys)>(
        *this, file, {"Public Status_Channel_#", StatusKeys, zufile->CfgDiLines, PrevFileDiIndexes.size()});
}
