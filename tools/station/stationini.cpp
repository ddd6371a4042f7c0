#include "station/stationini.h"

#include "station/station.h"

#include "config/QSettingsRu.h"
#include "config/deviceinikeys.h"

#include <QTextStream>
#include <QUuid>

namespace station {

namespace {

struct KeyRow
{
    const char* key;
    const char* value;
};

// What the defaults say of this station; all else is as in every new section.
const KeyRow StationKeys[] = {
    {"Энергосистема", "Энергосистема Востока"},
    {"Субъект", "Восточные сети"},
    {"Объект", "ПС Узловая"},
    {"Источник", "РАС-1"},
    {"Версия ПО", "4.0"},
    {"Версия аппаратной части", "2"},
    {"Тип Comtrade BIN", "0"},
    {"Идентификатор Cim", "00000000-0000-4000-8000-000000000001"},
    {"Номер шкафа", "1"},
    {"Серийный номер", "0001"},
    {"Доп.индексы для имен сигналов", "1"},
};

// The device's own values; everything else comes from the defaults.
const KeyRow DeviceOwnKeys[] = {
    {"Источник", "РАС-1"},
    {"Номер шкафа", "12"},
    {"Серийный номер", "0123"},
};

// The namespace of the sample's channels, generated once at random: 94093c8e-13e7-4114-a382-8e4671eac728.
const QUuid ChannelNames(0x94093c8e, 0x13e7, 0x4114, 0xa3, 0x82, 0x8e, 0x46, 0x71, 0xea, 0xc7, 0x28);

// An identifier that depends on the name alone (RFC 4122, version 5).
QString CimId(const QString& name)
{
    return QUuid::createUuidV5(ChannelNames, name).toString(QUuid::WithoutBraces);
}

// The number of the line's circuit goes into the names of its currents.
QString IndexOf(const AnalogSignal& signal)
{
    const bool wanted =
        signal.bay.equipmentCode == QLatin1String("L") && signal.quantity == Quantity::Current;
    return wanted ? QStringLiteral(" VL_IND=1") : QString();
}

QString ParametersOf(const Bay& bay)
{
    return QStringLiteral("V_L=%1 E_G=%2").arg(bay.kilovolts).arg(bay.equipmentCode);
}

QString EntryOf(const AnalogSignal& signal)
{
    return signal.name + QLatin1Char(',') + ParametersOf(signal.bay) + QLatin1String(" S_G=") +
           signal.groupCode + IndexOf(signal) + QLatin1String(" CIM_ID=") + CimId(signal.name);
}

QString EntryOf(const DiscreteSignal& signal)
{
    return signal.name + QLatin1Char(',') + ParametersOf(signal.bay) + QLatin1String(" D_G=") +
           signal.groupCode + QLatin1String(" S_T=") + signal.statusCode + QLatin1String(" CIM_ID=") +
           CimId(signal.name);
}

QString EntryOf(const Bay& bay)
{
    QString entry = bay.name + QLatin1Char(',') + bay.displayName;
    if (!bay.circuitName.isEmpty())
        entry += QLatin1Char(',') + bay.circuitName;
    return entry;
}

// The maximum and the numbered keys of one family.
template <typename Entry>
void WriteFamily(QTextStream& out, const char* bound, const char* letters, const std::vector<Entry>& entries)
{
    out << bound << '=' << entries.size() << '\n';
    unsigned int number = 0;
    for (const Entry& entry : entries)
        out << QSettingsRu::NumberedKey(QLatin1String(letters), ++number) << '=' << EntryOf(entry) << '\n';
}

void WriteDeviceKeys(QTextStream& out, const QMap<QString, QString>& further)
{
    for (const KeyRow& row : DeviceOwnKeys)
        if (!further.contains(QString::fromUtf8(row.key)))
            out << QString::fromUtf8(row.key) << '=' << QString::fromUtf8(row.value) << '\n';
    for (auto key = further.begin(); key != further.end(); ++key)
        out << key.key() << '=' << key.value() << '\n';
}

} // namespace

QString DefaultsSection()
{
    return QStringLiteral("Default");
}

QString DeviceSection()
{
    return QStringLiteral("Vostochnaya");
}

QString MakeIni(const StationOptions& options)
{
    return MakeIni(AnalogSignals(options), DiscreteSignals(options), options.deviceKeys);
}

QString MakeIni(const std::vector<AnalogSignal>& analog, const std::vector<DiscreteSignal>& discrete,
                const QMap<QString, QString>& deviceKeys)
{
    QMap<QString, QString> values;
    for (const KeyRow& row : StationKeys)
        values.insert(QString::fromUtf8(row.key), QString::fromUtf8(row.value));

    QString text;
    QTextStream out(&text);
    out << DefaultsLines(DefaultsSection(), values).join(QLatin1Char('\n')) << "\n\n[" << DeviceSection()
        << "]\n";
    WriteDeviceKeys(out, deviceKeys);
    WriteFamily(out, "nAnMax", "A", analog);
    WriteFamily(out, "nDiMax", "D", discrete);
    WriteFamily(out, "nBayMax", "BAY", BaysOf(analog, discrete));
    out.flush();
    return text;
}

} // namespace station
