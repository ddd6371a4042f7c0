// Loading the sorting dictionary and the bays from the ini file.
#include "resorter/ResorterZuCmtrConv.h"

#include "base/codecs.h"
#include "base/log.h"
#include "config/GlobalFunction.h"
#include "config/QSettingsRu.h"
#include "device/zucmtrdevparam.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace {

constexpr quint32 UnreadRow = 999999;
constexpr unsigned int AbsentMaximum = 4294967295U;

// A parameter of an entry, as it may be spelt.
struct ParameterKey
{
    const QString plain;
    const QString spaced;
};

const ParameterKey KeyVoltageLevel{QStringLiteral("V_L="), QStringLiteral("V_L =")};
const ParameterKey KeyEquipmentGroup{QStringLiteral("E_G="), QStringLiteral("E_G =")};
const ParameterKey KeySignalGroup{QStringLiteral("S_G="), QStringLiteral("S_G =")};
const ParameterKey KeyDeviceGroup{QStringLiteral("D_G="), QStringLiteral("D_G =")};
const ParameterKey KeyStatusType{QStringLiteral("S_T="), QStringLiteral("S_T =")};
const ParameterKey KeyVlInd{QStringLiteral("VL_IND="), QStringLiteral("VL_IND =")};
const ParameterKey KeyCimId{QStringLiteral("CIM_ID="), QStringLiteral("CIM_ID =")};

// One load of one section: reads the entries and keeps the messages for the log.
class DictionaryLoader
{
public:
    DictionaryLoader(ResorterZuCmtrConv& resorter_, const QSettingsRu& ini_) : resorter(resorter_), ini(ini_)
    {}

    bool Run()
    {
        unsigned int highestAn = 0;
        unsigned int highestDi = 0;
        unsigned int highestBay = 0;
        for (const Maximum& row :
             {Maximum{"nAnMax", highestAn}, Maximum{"nDiMax", highestDi}, Maximum{"nBayMax", highestBay}}) {
            if (!ReadMaximum(QLatin1String(row.key), row.value))
                return false;
        }
        if (!ReadAnalog(highestAn))
            return false;
        ReadDiscrete(highestDi);
        ReadBays(highestBay);
        return true;
    }

    const std::vector<QString>& Messages() const { return messages; }

private:
    struct Maximum
    {
        const char* key;
        unsigned int& value;
    };

    // A numbered key that is not empty.
    struct IniEntry
    {
        unsigned int number;
        QString key;
        std::vector<QString> fields; // at least one
    };

    bool ReadMaximum(const QString& key, unsigned int& maximum);
    std::vector<IniEntry> ReadEntries(const QString& prefix, unsigned int highest) const;
    bool ReadAnalog(unsigned int highest);
    void ReadDiscrete(unsigned int highest);
    void ReadBays(unsigned int highest);
    void ReadBay(unsigned int number, const QString& key, const std::vector<QString>& fields);
    void SetNames(DictionaryZuCmtr& entry, const QString& key, const QString& name);
    void WarnOfParameters(const QString& key, const QString& parameters);
    void SetOptional(DictionaryZuCmtr& entry, const QString& parameters);
    void Warn(const QString& text);
    bool Fail(const QString& key);

    ResorterZuCmtrConv& resorter;
    const QSettingsRu& ini;
    std::vector<QString> messages;
};

void DictionaryLoader::Warn(const QString& text)
{
    messages.push_back(text);
    resorter.Device->LogMessages.push_back(text);
}

bool DictionaryLoader::Fail(const QString& key)
{
    resorter.ErrorText = LoadIniError_ErrParam + key;
    messages.push_back(resorter.ErrorText);
    return false;
}

bool DictionaryLoader::ReadMaximum(const QString& key, unsigned int& maximum)
{
    bool ok = false;
    maximum = ini.value(key, QVariant(AbsentMaximum)).toUInt(&ok);
    if (maximum == AbsentMaximum) {
        maximum = 0;
        return true;
    }
    return ok || Fail(key);
}

std::vector<DictionaryLoader::IniEntry> DictionaryLoader::ReadEntries(const QString& prefix,
                                                                      unsigned int highest) const
{
    std::vector<IniEntry> entries;
    for (const unsigned int number : ini.NumberedKeys(prefix, highest)) {
        IniEntry entry{number, QSettingsRu::NumberedKey(prefix, number), {}};
        QString text = ini.value(entry.key, QLatin1String("")).toString();
        GlobalFunction::ClearComment(text);
        if (GlobalFunction::GetItemsFromString(text, &entry.fields, ","))
            entries.push_back(std::move(entry));
    }
    return entries;
}

void DictionaryLoader::SetNames(DictionaryZuCmtr& entry, const QString& key, const QString& name)
{
    entry.FullName = name;
    const auto colon = name.indexOf(QLatin1Char(':'));
    entry.EquipmentName = name;
    if (colon >= 0) {
        entry.EquipmentName = name.left(colon).trimmed();
        entry.SignalName = name.mid(colon + 1).trimmed();
    }
    if (!entry.EquipmentName.isEmpty() && !entry.SignalName.isEmpty())
        return;
    Warn(QStringLiteral(
             "Плохое имя сигнала %1 в секции %2 ZuDrv.ini при загрузке параметров сортировки Comtrade [%3]")
             .arg(key)
             .arg(ini.group)
             .arg(name));
}

void DictionaryLoader::WarnOfParameters(const QString& key, const QString& parameters)
{
    Warn(QStringLiteral("Плохие параметры сортировки Comtrade для сигнала %1 в секции %2 ZuDrv.ini [%3]")
             .arg(key)
             .arg(ini.group)
             .arg(parameters));
}

void DictionaryLoader::SetOptional(DictionaryZuCmtr& entry, const QString& parameters)
{
    entry.HasSortParams = true;
    if (!resorter.LoadOneParam(parameters, KeyVlInd.plain, KeyVlInd.spaced, entry.VlInd))
        entry.VlInd = QString();
    if (!resorter.LoadOneParam(parameters, KeyCimId.plain, KeyCimId.spaced, entry.CimChannelId))
        entry.CimChannelId = QString();
}

DictionaryZuCmtr NewEntry(unsigned int number, unsigned int ordinal)
{
    DictionaryZuCmtr entry{};
    entry.Number = number;
    entry.VoltageLevel = UnreadRow;
    entry.EquipmentGroup = UnreadRow;
    entry.Ordinal = ordinal;
    return entry;
}

bool DictionaryLoader::ReadAnalog(unsigned int highest)
{
    unsigned int ordinal = 0;
    for (const auto& [number, key, fields] : ReadEntries(QStringLiteral("A"), highest)) {
        if (fields[0].isEmpty())
            return Fail(key);
        auto owned =
            std::make_unique<DictionaryZuCmtrAn>(DictionaryZuCmtrAn{NewEntry(number, ordinal), UnreadRow});
        DictionaryZuCmtrAn* const entry = owned.get();
        resorter.AnDictionary.push_back(entry);
        owned.release(); // the dictionary owns it from here
        SetNames(*entry, key, fields[0]);
        if (fields.size() >= 2 &&
            resorter.LoadParamAn(fields[1], entry->VoltageLevel, entry->EquipmentGroup, entry->SignalGroup)) {
            SetOptional(*entry, fields[1]);
        } else {
            if (fields.size() >= 2)
                WarnOfParameters(key, fields[1]);
            resorter.AnUnsorted.push_back(ordinal);
        }
        ++ordinal;
    }
    return true;
}

void DictionaryLoader::ReadDiscrete(unsigned int highest)
{
    unsigned int ordinal = 0;
    for (const auto& [number, key, fields] : ReadEntries(QStringLiteral("D"), highest)) {
        auto entry = std::make_unique<DictionaryZuCmtrDi>(
            DictionaryZuCmtrDi{NewEntry(number, ordinal), UnreadRow, UnreadRow});
        SetNames(*entry, key, fields[0]);
        // Deliberate: a nameless discrete entry is dropped, where a nameless analog one fails the load.
        const bool named = !entry->FullName.isEmpty();
        if (named && fields.size() >= 2 &&
            resorter.LoadParamDi(fields[1], entry->VoltageLevel, entry->EquipmentGroup, entry->DeviceGroup,
                                 entry->StatusType)) {
            SetOptional(*entry, fields[1]);
        } else {
            if (named && fields.size() >= 2)
                WarnOfParameters(key, fields[1]);
            resorter.DiUnsorted.push_back(ordinal);
        }
        if (named) {
            resorter.DiDictionary.push_back(entry.get());
            entry.release(); // the dictionary owns it from here
        }
        ++ordinal;
    }
}

void DictionaryLoader::ReadBays(unsigned int highest)
{
    for (const auto& [number, key, fields] : ReadEntries(QStringLiteral("BAY"), highest))
        ReadBay(number, key, fields);
}

void DictionaryLoader::ReadBay(unsigned int number, const QString& key, const std::vector<QString>& fields)
{
    if (fields.size() == 1)
        return;
    auto bay = std::make_unique<BayOptionalParam>();
    bay->Number = number;
    bay->BayName = fields[0];
    if (resorter.BayParams.count(bay->BayName) != 0) {
        // Deliberate: the text ends in a comma and a blank.
        Warn(QStringLiteral(
                 "Имя присоединения [%3] в параметре %1 секции %2 ini-файла использовано повторно, ")
                 .arg(key)
                 .arg(ini.group)
                 .arg(bay->BayName));
        return;
    }
    bay->DisplayName = fields[1];
    if (fields.size() >= 3)
        bay->CircuitName = fields[2];
    if (bay->DisplayName.isEmpty() && bay->CircuitName.isEmpty())
        return;
    Warn(QStringLiteral("%1: %2,[%3],[%4]")
             .arg(key)
             .arg(bay->BayName)
             .arg(bay->DisplayName)
             .arg(bay->CircuitName));
    const QString name = bay->BayName;
    resorter.BayParams.emplace(name, bay.get());
    bay.release(); // the map owns it from here
}

} // namespace

bool ResorterZuCmtrConv::LoadFromIni(const QString& fileName, const QString& group)
{
    ErrorText = QLatin1String("");
    QSettingsRu ini(fileName, zu::CodecIni);
    if (ini.status != 0) {
        ErrorText = QStringLiteral("Нет доступа к ini-файлу [%1]").arg(fileName);
        return false;
    }
    Clear();
    ini.group = group;
    DictionaryLoader loader(*this, ini);
    const bool loaded = loader.Run();
    zu::WriteToLog(loader.Messages());
    return loaded;
}

bool ResorterZuCmtrConv::LoadOneParam(const QString& text, const QString& key, const QString& spacedKey,
                                      QString& value)
{
    // A plain search: the key need not be at the start of a word.
    const QString* found = &key;
    auto position = text.indexOf(key, 0, Qt::CaseSensitive);
    if (position < 0) {
        found = &spacedKey;
        position = text.indexOf(spacedKey, 0, Qt::CaseSensitive);
    }
    if (position < 0)
        return false;
    value = GlobalFunction::TrimLeft(text.mid(position + found->length()));
    const auto blank = value.indexOf(QLatin1Char(' '));
    if (blank > 0)
        value.truncate(blank);
    return !value.isEmpty();
}

bool ResorterZuCmtrConv::LoadParamCommon(const QString& text, unsigned int& voltageLevel,
                                         unsigned int& equipmentGroup)
{
    QString value;
    if (!LoadOneParam(text, KeyVoltageLevel.plain, KeyVoltageLevel.spaced, value))
        return false;
    const auto* const level = std::find(std::begin(gst_vl), std::end(gst_vl), value.toUInt());
    if (level == std::end(gst_vl))
        return false;
    voltageLevel = static_cast<unsigned int>(level - std::begin(gst_vl));
    return LoadCode(text, KeyEquipmentGroup.plain, KeyEquipmentGroup.spaced, gst_eg, equipmentGroup);
}

bool ResorterZuCmtrConv::LoadParamAn(const QString& text, unsigned int& voltageLevel,
                                     unsigned int& equipmentGroup, unsigned int& signalGroup)
{
    return LoadParamCommon(text, voltageLevel, equipmentGroup) &&
           LoadCode(text, KeySignalGroup.plain, KeySignalGroup.spaced, gst_sg, signalGroup);
}

bool ResorterZuCmtrConv::LoadParamDi(const QString& text, unsigned int& voltageLevel,
                                     unsigned int& equipmentGroup, unsigned int& deviceGroup,
                                     unsigned int& statusType)
{
    return LoadParamCommon(text, voltageLevel, equipmentGroup) &&
           LoadCode(text, KeyDeviceGroup.plain, KeyDeviceGroup.spaced, gst_dg, deviceGroup) &&
           LoadCode(text, KeyStatusType.plain, KeyStatusType.spaced, gst_st, statusType);
}
