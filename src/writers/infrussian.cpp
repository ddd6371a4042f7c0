// The INF file as a whole, and the sections of the Russian edition of COMTRADE.
#include "resorter/ResorterZuCmtrConv.h"

#include "recording/zufileformat.h"
#include "service/zucmtrconverter.h"
#include "writers/infsection.h"

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
    InfWriter(ResorterZuCmtrConv& resorter_, QFile& file) : resorter(resorter_), section(resorter_, file, err)
    {}

    // The opening section.
    void RecordInformation()
    {
        section.Head(SectionRecord);
        section.Key("Source=", ZuCmtrConverter::SoftwareRevision);
        section.Raw("EventNoteCount=0\r\n\r\n");
        section.Write();
    }

    // Edition, power object and recording device; always one of each.
    void StationSections(const QString& outName)
    {
        const ZuCmtrDevParam& device = *resorter.Device;
        section.Head(SectionDescription);
        section.Raw("PowerObjectCount=1\r\n"
                    "Russian_Comtrade_Edition_Version=2017\r\n"
                    "Russian_Comtrade_Edition_Revision=1.0\r\n\r\n");
        section.Head(SectionPowerObject);
        section.Key("Territory=", resorter.PowerObject.Territory);
        section.Key("Company_Name=", resorter.PowerObject.CompanyName);
        section.Key("Station_Name=", resorter.PowerObject.StationName);
        section.Raw("RecordingDeviceCount=1\r\n\r\n");
        section.Head(SectionRecordingDevice);
        section.Key("Recording_Device_ID=", device.Source);
        section.Key("Vendor=", QStringLiteral("ООО КАЛДА"));
        section.Key("Model=", device.Model);
        section.Key("Serial_Number=", device.SerialNumber);
        section.Key("Hardware_Revision=", device.HardwareVersion);
        section.Key("Software_Revision=", device.SoftwareVersion);
        section.Key("Comtrade_File_Name=", outName);
        section.Key("EquipmentCount=", resorter.Equipment.size());
        section.Key("StatusChannelCount=", size_t{resorter.StatusChannelCount});
        section.Key("Cim_Device_ID=", device.CimId);
        section.Key("Box_Number=", device.CabinetNumber);
        section.Raw("\r\n");
        section.Write();
    }

    void EquipmentSection(const RCE_AnalogChannelEquipmentZuCmtr& equipment, unsigned int number)
    {
        const QString shown = ShownName(equipment.EquipmentName);
        section.Head(SectionEquipment, number);
        section.Key("Equipment_Type=", QString::fromLatin1(gst_egnames[equipment.EquipmentGroup]));
        section.Key("Equipment_ID=", shown);
        section.Key("Equipment_Short_Name=", shown);
        section.Key("Voltage_Level_In_kV=", gst_vl[equipment.VoltageLevel]);
        for (const EquipmentKey& key : EquipmentKeys) {
            const bool selected = equipment.SignalGroup >= key.first && equipment.SignalGroup <= key.last;
            if (selected)
                section.Key(key.name, key.showsName ? shown : equipment.ChannelNumbers);
            else
                section.Key(key.name, QStringView());
        }
        section.Key("Cim_Channel_ID=", equipment.CimChannelIds);
        section.Raw("\r\n");
        section.Write();
    }

    void StatusSection(const DictionaryZuCmtrDi& entry, unsigned int number)
    {
        section.Head(SectionStatus, number);
        section.Key("Protection_Device_Group=", QString::fromLatin1(gst_dgnames[entry.DeviceGroup]));
        section.Key("Status_Signal_Type=", QString::fromLatin1(gst_stnames[entry.StatusType]));
        section.Key("Status_ID=", entry.FullName);
        section.Key("Status_Short_Name=", entry.FullName);
        section.Key("Voltage_Level_In_kV=", gst_vl[entry.VoltageLevel]);
        section.Key("Status_Channel_Number=", size_t{number});
        section.Key("Cim_Channel_ID=", entry.CimChannelId);
        section.Raw("\r\n");
        section.Write();
    }

private:
    // A bay's display text, even an empty one, in place of the equipment's name.
    QString ShownName(const QString& equipmentName)
    {
        BayOptionalParam* bay = nullptr;
        return resorter.FindOptBayParams(equipmentName, &bay) ? bay->DisplayName : equipmentName;
    }

    ResorterZuCmtrConv& resorter;
    bool err = false;
    zu::InfSection section;
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
