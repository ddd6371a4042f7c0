// The INF file: writing primitives and the public sections, which repeat the CFG file in key form.
#include "resorter/ResorterZuCmtrConv.h"

#include "config/GlobalFunction.h"
#include "device/zucmtrdevparam.h"
#include "recording/zufileformat.h"
#include "writers/infkey.h"

#include <QDebug>
#include <QFile>
#include <QStringBuilder>
#include <QTextCodec>

#include <stdexcept>

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
    const char* head; // of a section, with its number
    const char* const (&keys)[Keys];
    const std::vector<QString>& lines; // of the CFG file
    size_t count;                      // channels in the output order
};

void CheckWritten(const QFile& file, qint64 written, bool& err)
{
    if (written >= 0)
        return;
    QMessageLogger(nullptr, 0, nullptr, "default").debug() << file.errorString();
    err = true;
    throw std::runtime_error("WriteString error!");
}

void ReportException(const std::exception& exception)
{
    QMessageLogger(nullptr, 0, nullptr, "default").debug() << exception.what();
}

// Writes the section of one channel; false unless its CFG line has one field more than there are keys; the
// head is then left without keys.
template <size_t Keys>
bool WriteChannelSection(ResorterZuCmtrConv& resorter, QFile& file, const ChannelSections<Keys>& sections,
                         size_t index, bool& err)
{
    const QString line = sections.lines.at(index);
    resorter.WriteString(
        file, QString::fromLatin1(sections.head).arg(qulonglong{index} + 1, 0, 10, QLatin1Char(' ')), err);
    std::vector<QString> fields;
    GlobalFunction::GetItemsFromString(line, &fields, ",");
    if (fields.size() != Keys + 1)
        return false;
    for (size_t key = 0; key < Keys; ++key)
        zu::WriteInfKey(resorter, file, sections.keys[key], fields[key + 1], err);
    resorter.WriteString(file, "\r\n", err);
    return true;
}

template <size_t Keys>
bool WriteChannelSections(ResorterZuCmtrConv& resorter, QFile& file, const ChannelSections<Keys>& sections)
{
    bool err = false;
    try {
        for (size_t i = 0; i < sections.count; ++i) {
            if (!WriteChannelSection(resorter, file, sections, i, err))
                return false;
        }
    } catch (const std::exception& exception) {
        ReportException(exception);
    }
    return !err;
}

} // namespace

void zu::WriteInfKey(ResorterZuCmtrConv& resorter, QFile& file, const char* key, const QString& value,
                     bool& err)
{
    const QString line = QLatin1String(key) % value % QLatin1String("\r\n");
    resorter.WriteString(file, line, err);
}

void ResorterZuCmtrConv::WriteString(QFile& file, const QString& text, bool& err)
{
    const QByteArray bytes = InfCodec->fromUnicode(text);
    CheckWritten(file, file.write(bytes.constData()), err); // up to the first NUL
}

void ResorterZuCmtrConv::WriteString(QFile& file, const char* text, bool& err)
{
    CheckWritten(file, file.write(text), err);
}

void ResorterZuCmtrConv::WriteStringUtf8(QFile& file, const char* text, bool& err)
{
    WriteString(file, QString::fromUtf8(text), err);
}

bool ResorterZuCmtrConv::DoInfSec_File_Description(QFile& file, ZuFileFormat* zufile)
{
    bool err = false;
    const auto writeText = [&](const char* key, const QString& value) {
        zu::WriteInfKey(*this, file, key, value, err);
    };
    const auto writeCount = [&](const char* key, size_t value) {
        writeText(key, QString::number(qulonglong(value)));
    };
    try {
        WriteString(file, "[Public File_Description]\r\n", err);
        writeText("Station_Name=", Device->Object);
        writeText("Recording_Device_ID=", Device->Source);
        writeText("Revision_Year=", QStringLiteral("2013"));
        writeCount("Total_Channel_Count=", zufile->AnChannels.size() + zufile->DiChannels.size());
        writeCount("Analog_Channel_Count=", zufile->AnChannels.size());
        writeCount("Status_Channel_Count=", zufile->DiChannels.size());
        writeText("Line_Frequency=", QStringLiteral("50"));
        writeText("Sample_Rate_Count=", QStringLiteral("1"));
        writeText("Sample_Rate_#1=",
                  QStringLiteral("%1").arg(zufile->SampleRate, 0, 'g', -1, QLatin1Char(' ')));
        writeText("End_Sample_Rate_#1=", zufile->CfgSamples);
        writeText("File_Start_Time=", zufile->CfgStartStamp);
        writeText("Trigger_Time=", zufile->CfgTrigStamp);
        writeText("File_Type=", zufile->CfgDataType);
        writeText("Time_Multiplier=", zufile->CfgTimeMult);
        WriteString(file, "\r\n", err);
    } catch (const std::exception& exception) {
        ReportException(exception);
    }
    return !err;
}

bool ResorterZuCmtrConv::DoInfSec_Analog_Channels(QFile& file, ZuFileFormat* zufile)
{
    return WriteChannelSections<std::size(AnalogKeys)>(
        *this, file,
        {"[Public Analog_Channel_#%1]\r\n", AnalogKeys, zufile->CfgAnLines, PrevFileAnIndexes.size()});
}

bool ResorterZuCmtrConv::DoInfSec_Status_Channels(QFile& file, ZuFileFormat* zufile)
{
    return WriteChannelSections<std::size(StatusKeys)>(
        *this, file,
        {"[Public Status_Channel_#%1]\r\n", StatusKeys, zufile->CfgDiLines, PrevFileDiIndexes.size()});
}
