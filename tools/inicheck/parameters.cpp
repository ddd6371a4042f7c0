#include "inicheck/parameters.h"

#include "inicheck/nearest.h"

#include "zucmtr/texts.h"

#include <resorter/ResorterZuCmtrConv.h>
#include <resorter/parameterkeys.h>
#include <service/zucmtrdevparam.h>

#include <algorithm>

namespace inicheck {

namespace {

struct CodeRule
{
    const ParameterKey& key;
    QStringList codes;
    bool number; // the voltage level
};

template <size_t Rows>
QStringList CodesOf(const char* const (&table)[Rows])
{
    QStringList codes;
    for (const char* code : table)
        codes << QString::fromLatin1(code);
    return codes;
}

QStringList Levels()
{
    QStringList levels;
    for (const quint32 level : gst_vl)
        levels << QString::number(level);
    return levels;
}

// The obligatory parameters in the order in which they are read.
std::vector<CodeRule> RulesOf(bool analog)
{
    std::vector<CodeRule> rules = {{KeyVoltageLevel, Levels(), true},
                                   {KeyEquipmentGroup, CodesOf(gst_eg), false}};
    if (analog) {
        rules.push_back({KeySignalGroup, CodesOf(gst_sg), false});
    } else {
        rules.push_back({KeyDeviceGroup, CodesOf(gst_dg), false});
        rules.push_back({KeyStatusType, CodesOf(gst_st), false});
    }
    return rules;
}

QStringList NamesOf(bool analog)
{
    QStringList names = {KeyVlInd.plain, KeyCimId.plain};
    for (const CodeRule& rule : RulesOf(analog))
        names << rule.key.plain;
    return names;
}

// A re-sorter without a dictionary, for its parsers.
class Parsers
{
public:
    Parsers() : resorter(&device) {}
    ResorterZuCmtrConv& operator*() { return resorter; }

private:
    ZuCmtrDevParam device;
    ResorterZuCmtrConv resorter;
};

bool IsKnown(const CodeRule& rule, const QString& value)
{
    return rule.codes.contains(rule.number ? QString::number(value.toUInt()) : value);
}

QString FaultOf(const CodeRule& rule, const QString& value)
{
    const QString name = rule.key.plain + value;
    const QString meant = Nearest(value, rule.codes);
    const QString fault =
        meant.isEmpty() ? Tr("inicheck", "%1 is none of %2").arg(name, rule.codes.join(QStringLiteral(", ")))
                        : Tr("inicheck", "%1 is unknown, did you mean %2?").arg(name, rule.key.plain + meant);
    if (value.contains(QLatin1Char('\t')))
        return fault + Tr("inicheck", " (blanks part the parameters, tabs do not)");
    return fault;
}

} // namespace

std::optional<Parameters> Read(const QString& text, bool analog)
{
    Parsers parsers;
    Parameters read;
    unsigned int deviceGroup = 0;
    unsigned int statusType = 0;
    const bool good =
        analog
            ? (*parsers).LoadParamAn(text, read.voltageLevel, read.equipmentGroup, read.signalGroup)
            : (*parsers).LoadParamDi(text, read.voltageLevel, read.equipmentGroup, deviceGroup, statusType);
    return good ? std::optional<Parameters>(read) : std::nullopt;
}

QStringList FaultsOf(const QString& text, bool analog)
{
    Parsers parsers;
    QStringList faults;
    for (const CodeRule& rule : RulesOf(analog)) {
        QString value;
        if (!(*parsers).LoadOneParam(text, rule.key.plain, rule.key.spaced, value))
            faults << Tr("inicheck", "%1 is missing").arg(rule.key.plain);
        else if (!IsKnown(rule, value))
            faults << FaultOf(rule, value);
    }
    return faults;
}

QStringList UnknownWords(const QString& text, bool analog)
{
    const QStringList names = NamesOf(analog);
    QStringList unknown;
    for (const QString& word : text.split(QLatin1Char(' '))) {
        const int equals = word.indexOf(QLatin1Char('='));
        const bool known = std::any_of(names.begin(), names.end(),
                                       [&word](const QString& name) { return word.startsWith(name); });
        if (equals > 0 && !known) {
            const QString meant = Nearest(word.left(equals + 1), names);
            unknown << (meant.isEmpty() ? Tr("inicheck", "the parameter %1 is unknown").arg(word)
                                        : Tr("inicheck", "the parameter %1 is unknown, did you mean %2?")
                                              .arg(word, meant + word.mid(equals + 1)));
        }
    }
    return unknown;
}

} // namespace inicheck
