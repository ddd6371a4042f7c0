// The ini keys of a device: a table of rows and the one loop that reads them.
#include "config/deviceinikeys.h"

#include "base/codecs.h"
#include "base/log.h"
#include "config/GlobalFunction.h"
#include "config/QSettingsRu.h"
#include "device/zucmtrdevparam.h"

#include <limits>

namespace {

using Param = ZuCmtrDevParamDefault;

enum class Presence {
    Obligatory,     // must be there unless defaults are in force
    QuietWhenEmpty, // may be absent; an empty field makes no log line
    AlwaysTagged    // may be absent, and then carries the tag in every section
};

struct IniKey
{
    const char* key;
    const char* sample; // value in a new section of defaults; null: the key is left out
    Presence presence;
    QString Param::* tagNeeds;         // QuietWhenEmpty: tagged when absent only if this is not empty
    QString Param::* text = nullptr;   // one of these three is the field
    bool Param::* flag = nullptr;      //
    quint32 Param::* number = nullptr; //
    int lowest = 0, highest = 0;       // accepted numbers
    const char* (*unit)(const Param&) = nullptr; // appended to a number in the log
    const char *on = "", *off = "";              // a flag's value in the log
    bool Param::* onlyIf = nullptr;              // the key is asked for only if this flag is set
};

const char* ModelsOfVersion(const Param& param)
{
    return param.ZuVersion == 1 ? "(МК7.06-МК7.08) " : "(МК7.11) ";
}

const char* Milliseconds(const Param& /*param*/)
{
    return "мс ";
}

constexpr IniKey TextKey(const char* key, const char* sample, QString Param::* field)
{
    return {key, sample, Presence::Obligatory, nullptr, field};
}

constexpr IniKey QuietKey(const char* key, QString Param::* field, QString Param::* tagNeeds)
{
    return {key, nullptr, Presence::QuietWhenEmpty, tagNeeds, field};
}

constexpr IniKey FlagKey(const char* key, const char* sample, bool Param::* field, const char* on,
                         const char* off, Presence presence = Presence::Obligatory,
                         bool Param::* onlyIf = nullptr)
{
    return {key, sample, presence, nullptr, nullptr, field, nullptr, 0, 1, nullptr, on, off, onlyIf};
}

constexpr IniKey NumberKey(const char* key, const char* sample, quint32 Param::* field, int lowest,
                           int highest, const char* (*unit)(const Param&))
{
    return {key, sample, Presence::Obligatory, nullptr, nullptr, nullptr, field, lowest, highest, unit};
}

// In reading order. The blanks at the ends of the log texts belong to them.
constexpr IniKey DeviceKeys[] = {
    TextKey("Энергосистема", "PowerSystem", &Param::PowerSystem),
    TextKey("Субъект", "Subject", &Param::Subject),
    TextKey("Объект", "Object", &Param::Object),
    TextKey("Источник", "Source", &Param::Source),
    TextKey("Версия ПО", "0.0", &Param::SoftwareVersion),
    TextKey("Версия аппаратной части", "0.0", &Param::HardwareVersion),
    TextKey("Модель", "MK7.06", &Param::Model),
    NumberKey("Версия ZU", "1", &Param::ZuVersion, 1, 2, ModelsOfVersion),
    FlagKey("Удалять исходные", "0", &Param::DeleteSource, "Да ", "Нет "),
    NumberKey("Время ожидания", "60000", &Param::WaitTime, 0, std::numeric_limits<int>::max(), Milliseconds),
    FlagKey("Тип Comtrade CFF", "0", &Param::ComtradeCff, "Да (CFF) ", "Нет (cfg/dat ...) "),
    FlagKey("Тип Comtrade BIN", "1", &Param::ComtradeBin, "Да (Binary) ", "Нет (ASCII) "),
    FlagKey("Кодировка Comtrade UTF8", "1", &Param::ComtradeUtf8, "Да (UTF8) ", "Нет (CP1251) "),
    FlagKey("Переименовать сигналы Comtrade", "1", &Param::RenameSignals, "Да ", "Нет "),
    QuietKey("Идентификатор Cim", &Param::CimId, &Param::CimId),
    // Deliberate: a defaulted cabinet number is tagged only beside a CIM identifier.
    QuietKey("Номер шкафа", &Param::CabinetNumber, &Param::CimId),
    QuietKey("Серийный номер", &Param::SerialNumber, &Param::SerialNumber),
    FlagKey("Доп.индексы для имен сигналов", "0", &Param::AdditionalIndexes, "Да ", "Нет ",
            Presence::Obligatory, &Param::RenameSignals),
    FlagKey("Тип Comtrade 1999", "0", &Param::Comtrade1999, "Да (Comtrade 1999) ", "Нет (Comtrade 2013) ",
            Presence::AlwaysTagged),
};

enum class Reading { Stored, Absent, Bad };

Reading ReadText(const QSettingsRu& ini, const IniKey& row, Param& param)
{
    QString text = ini.value(QString::fromUtf8(row.key), QLatin1String("")).toString();
    GlobalFunction::ClearComment(text);
    if (text.isEmpty())
        return Reading::Absent;
    param.*row.text = text;
    return Reading::Stored;
}

Reading ReadNumber(const QSettingsRu& ini, const IniKey& row, Param& param)
{
    bool ok = false;
    const int number = ini.value(QString::fromUtf8(row.key), -1).toInt(&ok);
    // Deliberate: -1 counts as absent, also where the file says so.
    if (number == -1)
        return Reading::Absent;
    if (!ok || number < row.lowest || number > row.highest)
        return Reading::Bad;
    if (row.flag != nullptr)
        param.*row.flag = (number & 1) != 0;
    else
        param.*row.number = static_cast<quint32>(number);
    return Reading::Stored;
}

bool IsTagged(const IniKey& row, const Param& param, bool useDefaults)
{
    if (row.presence == Presence::AlwaysTagged)
        return true;
    if (row.presence == Presence::QuietWhenEmpty)
        return useDefaults && !(param.*row.tagNeeds).isEmpty();
    return useDefaults;
}

QString LogLine(const IniKey& row, const Param& param, bool tagged)
{
    QString value;
    if (row.text != nullptr)
        value = param.*row.text;
    else if (row.flag != nullptr)
        value = QString::fromUtf8(param.*row.flag ? row.on : row.off);
    else
        value = QString::number(param.*row.number);
    QString line = QStringLiteral("%1: %2 ").arg(QString::fromUtf8(row.key)).arg(value);
    if (row.unit != nullptr)
        line += QString::fromUtf8(row.unit(param));
    if (tagged)
        line += QStringLiteral("[принято по умолчанию]");
    return line;
}

// Reads one key and adds its log line, if it has one. Returns the text of a failure, or a null string.
QString ReadKey(const QSettingsRu& ini, const IniKey& row, bool useDefaults, Param& param,
                std::vector<QString>& lines)
{
    if (row.onlyIf != nullptr && !(param.*row.onlyIf))
        return QString();
    const Reading reading = row.text != nullptr ? ReadText(ini, row, param) : ReadNumber(ini, row, param);
    if (reading == Reading::Bad)
        return LoadIniError_ErrParam + QString::fromUtf8(row.key);
    const bool absent = reading == Reading::Absent;
    if (absent && row.presence == Presence::Obligatory && !useDefaults)
        return LoadIniError_NoParam + QString::fromUtf8(row.key);
    if (row.presence != Presence::QuietWhenEmpty || !(param.*row.text).isEmpty())
        lines.push_back(LogLine(row, param, absent && IsTagged(row, param, useDefaults)));
    return QString();
}

} // namespace

std::vector<DeviceKeyRule> DeviceKeyRules()
{
    std::vector<DeviceKeyRule> rules;
    for (const IniKey& row : DeviceKeys)
        rules.push_back({row.key, row.sample, row.presence == Presence::Obligatory, row.text != nullptr,
                         row.lowest, row.highest, row.onlyIf != nullptr});
    return rules;
}

QStringList DefaultsLines(const QString& section, const QMap<QString, QString>& values)
{
    QStringList lines(QLatin1Char('[') + section + QLatin1Char(']'));
    for (const IniKey& row : DeviceKeys) {
        const QString key = QString::fromUtf8(row.key);
        if (row.sample != nullptr || values.contains(key))
            lines << key + QLatin1Char('=') + values.value(key, QString::fromUtf8(row.sample));
    }
    return lines;
}

bool ZuCmtrDevParamDefault::LoadFromIniDef(const QString& fileName, const QString& group, bool useDefaults)
{
    QSettingsRu ini(fileName, zu::CodecIni);
    if (ini.status != 0) {
        LastError = QStringLiteral("Нет доступа к ini-файлу [%1]").arg(fileName);
        zu::WriteToLog(LastError);
        return false;
    }
    ini.group = group;

    std::vector<QString> lines;
    for (const IniKey& row : DeviceKeys) {
        const QString failure = ReadKey(ini, row, useDefaults, *this, lines);
        if (failure.isNull())
            continue;
        LastError = failure;
        lines.push_back(failure);
        zu::WriteToLog(lines);
        return false;
    }
    zu::WriteToLog(lines);
    return true;
}
