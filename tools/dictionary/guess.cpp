#include "dictionary/guess.h"

#include "resorter/ResorterZuCmtrConv.h"

#include <QMap>
#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace dictionary {

namespace {

// What a name that matches the pattern is.
struct Rule
{
    const char* pattern; // of a regular expression, case-insensitive
    const char* code;
};

// Matched against the equipment's name; the first match counts.
constexpr Rule EquipmentRules[] = {
    {"\\d?\\s*(СШ|СекШ)|^ТН\\b|шин", "VTB"},          {"^АТ", "AT"},
    {"^(Т|ТР|ТСН|РТСН)\\s*-?\\d|трансформатор", "T"}, {"^(Г|ТГ|ГГ)\\s*-?\\d|генератор", "G"},
    {"^(ШР|УШР|Р)\\s*-?\\d|реактор", "BPR"},          {"^(БСК|СК)|конденсатор", "CB"},
    {"^(ШСВ|ОВ|СВ|ВВ|В)\\b|выключатель", "BCT"},      {"^(ВЛ|КЛ|КВЛ|Л|W)|лини", "L"},
};

// Matched against the discrete signal's name: gives the device group and type of the signal.
struct StatusRule
{
    const char* pattern;
    const char* deviceGroup;
    const char* statusType;
};

constexpr StatusRule StatusRules[] = {
    {"(выведен|отключен).*(защит|РЗА)|защит\\S*\\s+выведен", "RP", "ODC1"},
    {"АПВ\\s+выведен|автоматик\\S*\\s+выведен", "NA", "ODC2"},
    {"опер\\S*\\s*ток", "OC", "ODC3"},
    {"выключател\\S*\\s+не\\s*готов", "TA", "NAB"},
    {"выключател\\S*\\s+готов", "TA", "AB"},
    {"выключател\\S*\\s+отключ|\\bРПО\\b", "TA", "SBO"},
    {"выключател\\S*\\s+включ|\\bРПВ\\b|положени\\S*\\s+выключател", "TA", "SBC"},
    {"внешн\\S*\\s+неиспр", "RP", "FE"},
    {"неиспр", "RP", "FI"},
    {"провер|опробован|тест", "FR", "TS"},
    {"ручн\\S*\\s+пуск", "FR", "MS"},
    {"\\bОМП\\b", "FL", "OR"},
    {"прием|приём", "EA", "VP"},
    {"передач", "EA", "VPG"},
    {"предупр", "TA", "SA"},
    {"аварийн\\S*\\s+сигнал", "TA", "FA"},
    {"ключ|переключ|положени", "TA", "SS"},
    {"\\bАПВ\\b|\\bАВР\\b", "NA", "AL"},
    {"реле", "RP", "OR"},
    {"пуск", "RP", "ID"},
    {"откл|сраб", "RP", "FD"},
    {"(protection|relay)\\s+(disabled|blocked|out\\b)", "RP", "ODC1"},
    {"reclos\\w*\\s+(disabled|blocked|locked|out\\b)", "NA", "ODC2"},
    {"(breaker|\\bCB)\\s+not\\s+ready", "TA", "NAB"},
    {"(breaker|\\bCB)\\s+ready", "TA", "AB"},
    {"(breaker|\\bCB)\\b.*\\bopen(ed)?\\b|\\b52b\\b", "TA", "SBO"},
    {"(breaker|\\bCB)\\b.*\\bclosed\\b|\\b52a\\b", "TA", "SBC"},
    {"\\bmanual\\s+start", "FR", "MS"},
    {"\\btest\\b", "FR", "TS"},
    {"\\btrip", "RP", "FD"},
    {"\\breclos|\\bAR\\b|\\b79\\b", "NA", "AL"},
    {"\\bstart|\\bpick-?\\s?up", "RP", "ID"},
};

QRegularExpression Expression(const char* pattern)
{
    return QRegularExpression(QString::fromUtf8(pattern), QRegularExpression::CaseInsensitiveOption |
                                                              QRegularExpression::UseUnicodePropertiesOption);
}

bool Matches(const char* pattern, const QString& text)
{
    return Expression(pattern).match(text).hasMatch();
}

// Those of StatusRules, compiled once: a record may have hundreds of signals.
const std::vector<QRegularExpression>& StatusExpressions()
{
    static const std::vector<QRegularExpression> expressions = [] {
        std::vector<QRegularExpression> all;
        for (const StatusRule& rule : StatusRules)
            all.push_back(Expression(rule.pattern));
        return all;
    }();
    return expressions;
}

QString EquipmentGroup(const QString& equipment)
{
    for (const Rule& rule : EquipmentRules) {
        if (Matches(rule.pattern, equipment))
            return QString::fromLatin1(rule.code);
    }
    return QString();
}

QString SignalPart(const QString& name)
{
    return name.section(QLatin1Char(':'), 1).trimmed();
}

// Of alternating quantities, by the unit and the first letter: "Ia", "3U0", "Fa".
QString SignalGroup(const Signal& signal)
{
    const QString part = SignalPart(signal.name);
    if (Matches("^(Гц|Hz)$", signal.unit))
        return QStringLiteral("F");
    if (Matches("^3?U([abcABCnN0]{1,2}|нн|нк)?\\d?$", part) && Matches("^(м|к|m|k)?(В|V)$", signal.unit))
        return QStringLiteral("VT");
    if (Matches("^3?I([abcABCnN0]{1,2})?\\d?$", part) && Matches("^(м|к|m|k)?(А|A)$", signal.unit))
        return QStringLiteral("CT");
    return QString();
}

Guess GuessOfEquipment(const QString& name, const Levels& levels)
{
    Guess guess;
    const QString equipment = EquipmentOf(name);
    guess.kilovolts = LevelInName(equipment);
    guess.levelFromName = guess.kilovolts != 0;
    guess.equipmentGroup = EquipmentGroup(equipment);
    const bool transformer =
        guess.equipmentGroup == QLatin1String("AT") || guess.equipmentGroup == QLatin1String("T");
    if (!guess.levelFromName)
        guess.kilovolts = transformer ? levels.highest : levels.usual;
    return guess;
}

} // namespace

QString EquipmentOf(const QString& name)
{
    return name.section(QLatin1Char(':'), 0, 0).trimmed();
}

int LevelInName(const QString& equipment)
{
    static const QRegularExpression number(QStringLiteral("(?<!\\d)\\d+(?!\\d)"));
    int level = 0;
    auto matches = number.globalMatch(equipment);
    while (matches.hasNext()) {
        const unsigned found = matches.next().captured().toUInt();
        // The largest: "1СШ-110" has a number that is not a level, "Т-10 110" has two that are.
        if (std::find(std::begin(gst_vl), std::end(gst_vl), found) != std::end(gst_vl))
            level = std::max(level, static_cast<int>(found));
    }
    return level;
}

Guess GuessAnalog(const Signal& signal, const Levels& levels)
{
    Guess guess = GuessOfEquipment(signal.name, levels);
    guess.signalGroup = SignalGroup(signal);
    return guess;
}

Guess GuessDiscrete(const Signal& signal, const Levels& levels)
{
    Guess guess = GuessOfEquipment(signal.name, levels);
    const Status status = GuessStatus(SignalPart(signal.name));
    guess.deviceGroup = status.deviceGroup;
    guess.statusType = status.type;
    return guess;
}

Status GuessStatus(const QString& signalName)
{
    const std::vector<QRegularExpression>& expressions = StatusExpressions();
    for (size_t i = 0; i < expressions.size(); ++i)
        if (expressions[i].match(signalName).hasMatch())
            return {QString::fromLatin1(StatusRules[i].deviceGroup),
                    QString::fromLatin1(StatusRules[i].statusType)};
    return {};
}

Levels LevelsOf(const std::vector<Signal>& channels)
{
    QMap<int, int> counts;
    for (const Signal& signal : channels) {
        const int level = LevelInName(EquipmentOf(signal.name));
        if (level != 0)
            ++counts[level];
    }
    Levels levels;
    if (counts.isEmpty())
        return levels;
    levels.highest = counts.lastKey();
    int most = 0;
    for (auto count = counts.constBegin(); count != counts.constEnd(); ++count) {
        if (count.value() >= most) {
            most = count.value();
            levels.usual = count.key();
        }
    }
    return levels;
}

} // namespace dictionary
