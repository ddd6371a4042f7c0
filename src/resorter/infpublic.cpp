// The INF file: writing primitives and the public sections, which repeat the CFG file in key form.
#include "resorter/ResorterZuCmtrConv.h"

#include "config/GlobalFunction.h"
#include "recording/zufileformat.h"
#include "service/zucmtrdevparam.h"

#include <QDebug>
#include <QFile>
#include <QTextCodec>

#include <stdexcept>

namespace {

// A key and the field of the CFG line, counted from 0, that is its value.
struct ChannelKey
{
    const char* text;
    size_t field;
};

constexpr ChannelKey AnalogKeys[] = {
    {"Channel_ID=%1\r\n", 1},
    {"Phase_ID=%1\r\n", 2},
    {"Monitored_Component=%1\r\n", 3},
    {"Channel_Units=%1\r\n", 4},
    {"Channel_Multiplier=%1\r\n", 5},
    {"Channel_Offset=%1\r\n", 6},
    {"Channel_Skew=%1\r\n", 7},
    {"Range_Minimum_Limit_Value=%1\r\n", 8},
    {"Range_Maximum_Limit_Value=%1\r\n", 9},
    {"Channel_Ratio_Primary=%1\r\n", 10},
    {"Channel_Ratio_Secondary=%1\r\n", 11},
    {"Data_Primary_Secondary=%1\r\n", 12},
};

constexpr ChannelKey StatusKeys[] = {
    {"Channel_ID=%1\r\n", 1},
    {"Phase_ID=%1\r\n", 2},
    {"Monitored_Component=%1\r\n", 3},
    {"Normal_State=%1\r\n", 4},
};

// The sections of one kind of channel.
template <size_t Keys>
struct ChannelSections
{
    const char* head; // of a section, with its number
    const ChannelKey (&keys)[Keys];
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

// Writes the section of one channel; false if its CFG line has not one field more than there are keys, which
// leaves the head without keys.
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
    for (const ChannelKey& key : sections.keys)
        resorter.WriteString(file, QString::fromLatin1(key.text).arg(fields[key.field], 0, QLatin1Char(' ')),
                             err);
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
        WriteString(file, QString::fromLatin1(key).arg(value, 0, QLatin1Char(' ')), err);
    };
    const auto writeCount = [&](const char* key, size_t value) {
        WriteString(file, QString::fromLatin1(key).arg(qulonglong(value), 0, 10, QLatin1Char(' ')), err);
    };
    const QString first = QStringLiteral("1");
    try {
        WriteString(file, "[Public File_Description]\r\n", err);
        writeText("Station_Name=%1\r\n", Device->Object);
        writeText("Recording_Device_ID=%1\r\n", Device->Source);
        writeText("Revision_Year=%1\r\n", QStringLiteral("2013"));
        writeCount("Total_Channel_Count=%1\r\n", zufile->AnChannels.size() + zufile->DiChannels.size());
        writeCount("Analog_Channel_Count=%1\r\n", zufile->AnChannels.size());
        writeCount("Status_Channel_Count=%1\r\n", zufile->DiChannels.size());
        writeText("Line_Frequency=%1\r\n", QStringLiteral("50"));
        writeText("Sample_Rate_Count=%1\r\n", first);
        WriteString(file,
                    QStringLiteral("Sample_Rate_#%1=%2\r\n")
                        .arg(first, 0, QLatin1Char(' '))
                        .arg(zufile->SampleRate, 0, 'g', -1, QLatin1Char(' ')),
                    err);
        WriteString(file,
                    QStringLiteral("End_Sample_Rate_#%1=%2\r\n")
                        .arg(first, 0, QLatin1Char(' '))
                        .arg(zufile->CfgSamples, 0, QLatin1Char(' ')),
                    err);
        writeText("File_Start_Time=%1\r\n", zufile->CfgStartStamp);
        writeText("Trigger_Time=%1\r\n", zufile->CfgTrigStamp);
        writeText("File_Type=%1\r\n", zufile->CfgDataType);
        writeText("Time_Multiplier=%1\r\n\r\n", zufile->CfgTimeMult);
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
