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
    {"выключател\\S*\\s+включ|\\bРПВ\\b", "TA", "SBC"},
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
};

bool Matches(const char* pattern, const QString& text)
{
    const QRegularExpression expression(QString::fromUtf8(pattern),
                                        QRegularExpression::CaseInsensitiveOption |
                                            QRegularExpression::UseUnicodePropertiesOption);
    return expression.match(text).hasMatch();
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
    const QString part = SignalPart(signal.name);
    for (const StatusRule& rule : StatusRules) {
        if (Matches(rule.pattern, part)) {
            guess.deviceGroup = QString::fromLatin1(rule.deviceGroup);
            guess.statusType = QString::fromLatin1(rule.statusType);
            break;
        }
    }
    return guess;
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
