#include "inicheck/checks.h"
#include "inicheck/nearest.h"

#include "config/GlobalFunction.h"
#include "config/QSettingsRu.h"
#include "device/zucmtrdevparam.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "zucmtr/texts.h"

#include <QHash>
#include <QRegularExpression>
#include <QVariant>

#include <limits>
#include <set>

namespace inicheck {

namespace {

// A parameter of an entry and what it may be.
struct Parameter
{
    const char* name;
    QStringList codes;
};

template <size_t Rows>
QStringList Codes(const char* const (&table)[Rows])
{
    QStringList codes;
    for (const char* code : table)
        codes << QLatin1String(code);
    return codes;
}

QStringList VoltageLevels()
{
    QStringList levels;
    for (const quint32 level : gst_vl)
        levels << QString::number(level);
    return levels;
}

// One kind of numbered key.
struct Kind
{
    const char* prefix;
    const char* maximum;
    std::vector<Parameter> parameters; // that an entry needs
};

const Kind& Analog()
{
    static const Kind kind{
        "A", "nAnMax", {{"V_L", VoltageLevels()}, {"E_G", Codes(gst_eg)}, {"S_G", Codes(gst_sg)}}};
    return kind;
}

const Kind& Discrete()
{
    static const Kind kind{
        "D",
        "nDiMax",
        {{"V_L", VoltageLevels()}, {"E_G", Codes(gst_eg)}, {"D_G", Codes(gst_dg)}, {"S_T", Codes(gst_st)}}};
    return kind;
}

const Kind& Bays()
{
    static const Kind kind{"BAY", "nBayMax", {}};
    return kind;
}

// What an equipment's first entry says.
struct Equipment
{
    int line;
    QString level;
    QString equipmentGroup;
    QString signalGroup;
};

class DictionaryCheck
{
public:
    DictionaryCheck(const IniLines& ini_, const QString& section_, Findings& findings_)
        : ini(ini_), section(section_), findings(findings_), resorter(&device)
    {}

    void Run()
    {
        for (const IniLine* line : Listed(Analog()))
            CheckSignal(*line, Analog());
        names.clear(); // an analog and a discrete channel may have one name
        for (const IniLine* line : Listed(Discrete()))
            CheckSignal(*line, Discrete());
        for (const IniLine* line : Listed(Bays()))
            CheckBay(*line);
    }

private:
    void Say(const IniLine& line, Severity severity, const char* reason, const QString& text)
    {
        findings.push_back({line.number, severity, reason, line.key + QLatin1String(": ") + text});
    }

    // The entries of a kind that the converter looks at; the others are told.
    std::vector<const IniLine*> Listed(const Kind& kind)
    {
        const QRegularExpression pattern(QStringLiteral("\\A%1([0-9]+)\\z").arg(QLatin1String(kind.prefix)));
        const qlonglong highest = Maximum(kind);
        std::vector<const IniLine*> listed;
        for (const IniLine* line : ini.EntriesOf(section)) {
            const QRegularExpressionMatch match = pattern.match(line->key);
            if (!match.hasMatch())
                continue;
            const qlonglong number = match.captured(1).toLongLong();
            const QString key =
                QSettingsRu::NumberedKey(QLatin1String(kind.prefix), static_cast<unsigned int>(number));
            if (number < 1 || line->key != key)
                Say(*line, Severity::Warning, reason::BadNumbering,
                    Tr("check", "ignored: the numbers are written 01, 02 ... 99, 100"));
            else if (number > highest)
                Say(*line, Severity::Warning, reason::BeyondMaximum,
                    Tr("check", "ignored: '%1' is %2; raise it to %3")
                        .arg(QLatin1String(kind.maximum))
                        .arg(highest)
                        .arg(number));
            else if (line->value.isEmpty())
                Say(*line, Severity::Note, reason::EmptyEntry, Tr("check", "ignored: it has no value"));
            else
                listed.push_back(line);
        }
        return listed;
    }

    qlonglong Maximum(const Kind& kind)
    {
        const IniLine* line = ini.Find(section, QLatin1String(kind.maximum));
        if (line == nullptr)
            return 0;
        bool ok = false;
        const unsigned int maximum = QVariant(line->value).toUInt(&ok); // as the converter
        if (!ok)
            Say(*line, Severity::Error, reason::NumberOutOfRange,
                Tr("check", "'%1' is no whole number: the section does not load").arg(line->value));
        if (maximum != std::numeric_limits<unsigned int>::max())
            return ok ? maximum : 0;
        Say(*line, Severity::Warning, reason::NumberTooLarge,
            Tr("check", "'%1' counts as 0; give the highest number that is there").arg(line->value));
        return 0;
    }

    void CheckSignal(const IniLine& line, const Kind& kind)
    {
        const QStringList fields = line.value.split(QLatin1Char(','));
        const QString name = fields[0].trimmed();
        if (name.isEmpty()) {
            const bool analog = &kind == &Analog();
            Say(line, analog ? Severity::Error : Severity::Warning, reason::NoSignal,
                analog ? Tr("check", "it has no signal ahead of the first comma: the section does not load")
                       : Tr("check", "dropped: it has no signal ahead of the first comma"));
            return;
        }
        CheckName(line, name);
        if (fields.size() > 2)
            Say(line, Severity::Warning, reason::ExtraFields,
                Tr("check", "what stands behind the second comma is ignored"));
        if (fields.size() < 2)
            Say(line, Severity::Warning, reason::NoParameters,
                Tr("check", "it has no parameters, so its channel stays unsorted; add '%1'")
                    .arg(Wanted(kind)));
        else if (CheckParameters(line, fields[1].trimmed(), kind) && &kind == &Analog())
            CheckEquipment(line, name, fields[1].trimmed());
    }

    void CheckName(const IniLine& line, const QString& name)
    {
        const int colon = name.indexOf(QLatin1Char(':'));
        if (colon < 0 || name.left(colon).trimmed().isEmpty() || name.mid(colon + 1).trimmed().isEmpty())
            Say(line, Severity::Warning, reason::NotEquipmentSignal,
                Tr("check", "'%1' is not 'equipment:signal'; write the channel's name as the recorder does")
                    .arg(name));
        const auto earlier = names.constFind(name);
        if (earlier != names.constEnd())
            Say(line, Severity::Warning, reason::SignalTwice,
                Tr("check", "'%1' stands in line %2 too: a record would have the channel twice; take one out")
                    .arg(name, QString::number(*earlier)));
        else
            names.insert(name, line.number);
        CheckRecordText(line.number, line.key, name, findings);
    }

    static QString Wanted(const Kind& kind)
    {
        QStringList names;
        for (const Parameter& parameter : kind.parameters)
            names << QLatin1String(parameter.name) + QLatin1String("=...");
        return names.join(QLatin1Char(' '));
    }

    bool Value(const QString& parameters, const char* name, QString& value)
    {
        const QString key = QLatin1String(name);
        return resorter.LoadOneParam(parameters, key + QLatin1String("="), key + QLatin1String(" ="), value);
    }

    // True if the converter takes them.
    bool CheckParameters(const IniLine& line, const QString& parameters, const Kind& kind)
    {
        bool good = true;
        for (const Parameter& parameter : kind.parameters)
            good = CheckParameter(line, parameters, parameter) && good;
        CheckWords(line, parameters, kind);
        return good;
    }

    // Voltage levels are compared as numbers: "0110" is 110.
    static QString AsTheConverter(const Parameter& parameter, const QString& value)
    {
        return QLatin1String(parameter.name) == QLatin1String("V_L") ? QString::number(value.toUInt())
                                                                     : value;
    }

    bool CheckParameter(const IniLine& line, const QString& parameters, const Parameter& parameter)
    {
        QString value;
        const QString name = QLatin1String(parameter.name);
        if (!Value(parameters, parameter.name, value)) {
            Say(line, Severity::Warning, reason::ParameterMissing,
                Tr("check", "'%1=' is missing, so its channel stays unsorted; give one of %2")
                    .arg(name, parameter.codes.join(QLatin1String(", "))));
            return false;
        }
        if (parameter.codes.contains(AsTheConverter(parameter, value)))
            return true;
        const QString nearest = Nearest(value, parameter.codes);
        QString text = Tr("check", "'%1=%2' is not known, so its channel stays unsorted; give one of %3")
                           .arg(name, value, parameter.codes.join(QLatin1String(", ")));
        if (!nearest.isEmpty())
            text += Tr("check", "; is '%1' meant?").arg(nearest);
        Say(line, Severity::Warning, reason::UnknownCode, text);
        return false;
    }

    void CheckWords(const IniLine& line, const QString& parameters, const Kind& kind)
    {
        QStringList known = {QStringLiteral("VL_IND"), QStringLiteral("CIM_ID")};
        for (const Parameter& parameter : kind.parameters)
            known << QLatin1String(parameter.name);
        for (const QString& word : parameters.split(QLatin1Char(' '))) {
            const int equals = word.indexOf(QLatin1Char('='));
            const QString name = word.left(equals);
            if (equals <= 0 || known.contains(name))
                continue;
            const QString nearest = Nearest(name, known);
            QString text = Tr("check", "'%1=' is ignored").arg(name);
            if (!nearest.isEmpty())
                text += Tr("check", "; is '%1' meant?").arg(nearest);
            Say(line, Severity::Warning, reason::UnknownParameter, text);
        }
    }

    void CheckEquipment(const IniLine& line, const QString& name, const QString& parameters)
    {
        Equipment now{line.number, QString(), QString(), QString()};
        Value(parameters, "V_L", now.level);
        Value(parameters, "E_G", now.equipmentGroup);
        Value(parameters, "S_G", now.signalGroup);
        const QString equipment = name.section(QLatin1Char(':'), 0, 0).trimmed();
        const auto found = equipments.constFind(equipment);
        if (found == equipments.constEnd()) {
            equipments.insert(equipment, now);
            return;
        }
        if (found->level != now.level || found->equipmentGroup != now.equipmentGroup)
            Say(line, Severity::Warning, reason::EquipmentDiffers,
                Tr("check",
                   "'%1' is V_L=%2 E_G=%3 here and V_L=%4 E_G=%5 in line %6; one equipment has one of "
                   "each")
                    .arg(equipment, now.level, now.equipmentGroup, found->level, found->equipmentGroup,
                         QString::number(found->line)));
        else if (Mixes(found->signalGroup, now.signalGroup) && mixed.insert(equipment).second)
            Say(line, Severity::Note, reason::VoltagesAndCurrents,
                Tr("check",
                   "'%1' has voltages and currents (line %2), which share one record of the INF file with "
                   "the "
                   "key of the first; where both are needed, give the currents another name in the recorder")
                    .arg(equipment, QString::number(found->line)));
    }

    static bool Mixes(const QString& first, const QString& second)
    {
        const std::set<QString> pair = {first, second};
        return pair ==
               std::set<QString>{QLatin1String(gst_sg[SignalGroupVT]), QLatin1String(gst_sg[SignalGroupCT])};
    }

    void CheckBay(const IniLine& line)
    {
        const QStringList fields = line.value.split(QLatin1Char(','));
        const QString name = fields[0].trimmed();
        const QString shown = fields.value(1).trimmed();
        const auto earlier = bays.constFind(name);
        if (shown.isEmpty() && fields.value(2).trimmed().isEmpty()) {
            Say(line, Severity::Warning, reason::EmptyBay,
                Tr("check", "ignored: it has neither a text to show nor a second circuit"));
            return;
        }
        if (earlier != bays.constEnd()) {
            Say(line, Severity::Warning, reason::BayTwice,
                Tr("check", "ignored: the bay '%1' stands in line %2 already")
                    .arg(name, QString::number(*earlier)));
            return;
        }
        bays.insert(name, line.number);
        if (fields.size() > 3)
            Say(line, Severity::Warning, reason::ExtraFields,
                Tr("check", "what stands behind the third comma is ignored"));
        if (shown.isEmpty())
            Say(line, Severity::Warning, reason::BayWithoutText,
                Tr("check",
                   "it has no text to show, so the INF file shows none for '%1'; give one behind the "
                   "first comma")
                    .arg(name));
        CheckRecordText(line.number, line.key, shown, findings);
    }

    const IniLines& ini;
    const QString section;
    Findings& findings;
    ZuCmtrDevParam device;
    ResorterZuCmtrConv resorter;
    QHash<QString, int> names;
    QHash<QString, int> bays;
    QHash<QString, Equipment> equipments;
    std::set<QString> mixed; // equipments of which it was told
};

} // namespace

void CheckDictionary(const IniLines& ini, const QString& section, Findings& findings)
{
    DictionaryCheck(ini, section, findings).Run();
}

} // namespace inicheck
