// The INF file as a whole, and the sections of the Russian edition of COMTRADE.
#include "resorter/ResorterZuCmtrConv.h"

#include "recording/zufileformat.h"
#include "service/zucmtrconverter.h"
#include "writers/infkey.h"

#include <QDebug>
#include <QFile>

namespace {

constexpr char SectionRecord[] = "Public Record_Information";
constexpr char SectionDescription[] = "Russian_Comtrade_Edition Description";
constexpr char SectionPowerObject[] = "Russian_Comtrade_Edition Power_Object_#1";
constexpr char SectionRecordingDevice[] = "Russian_Comtrade_Edition Recording_Device_#1_#1";
constexpr char SectionEquipment[] = "Russian_Comtrade_Edition Equipment_Analog_Channel_#1_#1_#";
constexpr char SectionStatus[] = "Russian_Comtrade_Edition Status_Channel_#1_#1_#";

// A channel key of an equipment section; it has a value for the signal groups from first to last.
struct EquipmentKey
{
    const char* name;
    quint32 first, last;
    bool showsName; // the value is the equipment's shown name, else its channel numbers
};

constexpr EquipmentKey EquipmentKeys[] = {
    {"VT_ID=", SignalGroupVT, SignalGroupVT, true},
    {"VT_Channel_Number=", SignalGroupVT, SignalGroupVT, false},
    {"CT_ID=", SignalGroupCT, SignalGroupCT, true},
    {"CT_Channel_Number=", SignalGroupCT, SignalGroupCT, false},
    {"RP_Channel_Number=", SignalGroupRPFirst, SignalGroupF - 1, false},
    {"F_Channel_Number=", SignalGroupF, SignalGroupF, false},
    {"ES_Channel_Number=", SignalGroupESFirst, SignalGroupOCSFirst - 1, false},
    {"OCS_Channel_Number=", SignalGroupOCSFirst, SignalGroupLast, false},
};

// Writes the parts of one INF file.
class InfWriter
{
public:
    InfWriter(ResorterZuCmtrConv& resorter_, QFile& file_) : resorter(resorter_), file(file_) {}

    // The opening section.
    void RecordInformation()
    {
        Head(SectionRecord);
        Key("Source=", ZuCmtrConverter::SoftwareRevision);
        Raw("EventNoteCount=0\r\n\r\n");
    }

    // Edition, power object and recording device; always one of each.
    void StationSections(const QString& outName)
    {
        const ZuCmtrDevParam& device = *resorter.Device;
        Head(SectionDescription);
        Raw("PowerObjectCount=1\r\n"
            "Russian_Comtrade_Edition_Version=2017\r\n"
            "Russian_Comtrade_Edition_Revision=1.0\r\n\r\n");
        Head(SectionPowerObject);
        Key("Territory=", resorter.PowerObject.Territory);
        Key("Company_Name=", resorter.PowerObject.CompanyName);
        Key("Station_Name=", resorter.PowerObject.StationName);
        Raw("RecordingDeviceCount=1\r\n\r\n");
        Head(SectionRecordingDevice);
        Key("Recording_Device_ID=", device.Source);
        resorter.WriteStringUtf8(file, "Vendor=ООО КАЛДА\r\n", err);
        Key("Model=", device.Model);
        Key("Serial_Number=", device.SerialNumber);
        Key("Hardware_Revision=", device.HardwareVersion);
        Key("Software_Revision=", device.SoftwareVersion);
        Key("Comtrade_File_Name=", outName);
        Key("EquipmentCount=", static_cast<unsigned int>(resorter.Equipment.size()));
        Key("StatusChannelCount=", resorter.StatusChannelCount);
        Key("Cim_Device_ID=", device.CimId);
        Key("Box_Number=", device.CabinetNumber);
        Raw("\r\n");
    }

    void EquipmentSection(const RCE_AnalogChannelEquipmentZuCmtr& equipment, unsigned int number)
    {
        const QString shown = ShownName(equipment.EquipmentName);
        Head(SectionEquipment, number);
        Key("Equipment_Type=", QString::fromLatin1(gst_egnames[equipment.EquipmentGroup]));
        Key("Equipment_ID=", shown);
        Key("Equipment_Short_Name=", shown);
        Key("Voltage_Level_In_kV=", gst_vl[equipment.VoltageLevel]);
        for (const EquipmentKey& key : EquipmentKeys) {
            const bool selected = equipment.SignalGroup >= key.first && equipment.SignalGroup <= key.last;
            if (selected)
                Key(key.name, key.showsName ? shown : equipment.ChannelNumbers);
            else
                Key(key.name, QString());
        }
        Key("Cim_Channel_ID=", equipment.CimChannelIds);
        Raw("\r\n");
    }

    void StatusSection(const DictionaryZuCmtrDi& entry, unsigned int number)
    {
        Head(SectionStatus, number);
        Key("Protection_Device_Group=", QString::fromLatin1(gst_dgnames[entry.DeviceGroup]));
        Key("Status_Signal_Type=", QString::fromLatin1(gst_stnames[entry.StatusType]));
        Key("Status_ID=", entry.FullName);
        Key("Status_Short_Name=", entry.FullName);
        Key("Voltage_Level_In_kV=", gst_vl[entry.VoltageLevel]);
        Key("Status_Channel_Number=", number);
        Key("Cim_Channel_ID=", entry.CimChannelId);
        Raw("\r\n");
    }

private:
    void Raw(const char* text) { resorter.WriteString(file, text, err); }

    void Head(const char* name) { resorter.WriteString(file, QString::asprintf("[%s]\r\n", name), err); }

    void Head(const char* name, unsigned int number)
    {
        resorter.WriteString(file, QString::asprintf("[%s%u]\r\n", name, number), err);
    }

    void Key(const char* name, const QString& value) { zu::WriteInfKey(resorter, file, name, value, err); }

    void Key(const char* name, unsigned int value) { Key(name, QString::asprintf("%u", value)); }

    // A bay's display text, even an empty one, in place of the equipment's name.
    QString ShownName(const QString& equipmentName)
    {
        BayOptionalParam* bay = nullptr;
        return resorter.FindOptBayParams(equipmentName, &bay) ? bay->DisplayName : equipmentName;
    }

    ResorterZuCmtrConv& resorter;
    QFile& file;
    bool err = false;
};

} // namespace

bool ResorterZuCmtrConv::WriteInf(QFile& file, ZuFileFormat* zufile)
{
    try {
        InfWriter writer(*this, file);
        writer.RecordInformation();
        // A false from one of the public parts leaves out the others, and nothing else.
        if (DoInfSec_File_Description(file, zufile) && DoInfSec_Analog_Channels(file, zufile))
            DoInfSec_Status_Channels(file, zufile);
        writer.StationSections(zufile->OutName);
        unsigned int number = 0;
        for (const RCE_AnalogChannelEquipmentZuCmtr* equipment : Equipment)
            writer.EquipmentSection(*equipment, ++number);
        number = 0;
        for (const unsigned int found : PrevFileDiDictIndexes)
            writer.StatusSection(*DiResorted.at(found), ++number);
    } catch (const std::exception& exception) {
        QMessageLogger(nullptr, 0, nullptr, "default").debug() << exception.what();
        return false;
    }
    return true;
}

bool ZuCmtrConverter::WriteInf(std::vector<ZuFileFormat*>* files, ZuCmtrDevParam* dev)
{
    if (!dev->FileInf.open(QIODevice::WriteOnly))
        return false;
    const bool written = dev->Resorter->WriteInf(dev->FileInf, files->at(0));
    dev->FileInf.flush();
    dev->FileInf.close();
    return written;
}
