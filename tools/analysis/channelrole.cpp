#include "analysis/channelrole.h"

#include <QHash>
#include <QStringList>

#include <algorithm>
#include <array>

namespace analysis {

namespace {

struct UnitRow
{
    const char* unit;
    Quantity quantity;
    double base;      // volts or amperes of one unit
    const char* kilo; // the same with the prefix; none: the unit has one
};

constexpr std::array<UnitRow, 16> units = {{
    {"В", Quantity::Voltage, 1, "кВ"},
    {"кВ", Quantity::Voltage, 1e3, nullptr},
    {"мВ", Quantity::Voltage, 1e-3, nullptr},
    {"МВ", Quantity::Voltage, 1e6, nullptr},
    {"V", Quantity::Voltage, 1, "kV"},
    {"kV", Quantity::Voltage, 1e3, nullptr},
    {"KV", Quantity::Voltage, 1e3, nullptr},
    {"mV", Quantity::Voltage, 1e-3, nullptr},
    {"А", Quantity::Current, 1, "кА"},
    {"кА", Quantity::Current, 1e3, nullptr},
    {"мА", Quantity::Current, 1e-3, nullptr},
    {"A", Quantity::Current, 1, "kA"},
    {"kA", Quantity::Current, 1e3, nullptr},
    {"KA", Quantity::Current, 1e3, nullptr},
    {"mA", Quantity::Current, 1e-3, nullptr},
    {"MV", Quantity::Voltage, 1e6, nullptr},
}};

const UnitRow* FindUnit(const QString& unit)
{
    static const QHash<QString, const UnitRow*> rows = [] {
        QHash<QString, const UnitRow*> known;
        for (const UnitRow& row : units)
            known.insert(QString::fromUtf8(row.unit), &row);
        return known;
    }();
    return rows.value(unit, nullptr);
}

char PhaseOfName(const QString& name)
{
    // The start of the first word counts: an index may follow ("Ia1"), a circuit come before ("Q1:Ia").
    QStringList words = name.split(QLatin1Char(' '));
    words << name.section(QLatin1Char(':'), -1) << words.last();
    for (const QString& word : words) {
        const QString lower = word.toLower();
        if (lower.startsWith(QLatin1String("3u0")) || lower.startsWith(QLatin1String("3i0")))
            return '0';
        const bool isQuantity = lower.size() > 1 && QStringLiteral("ui").contains(lower[0]);
        const bool isOnePhase = lower.size() < 3 || !lower[2].isLetter(); // "Uab" is between two
        if (isQuantity && isOnePhase && QStringLiteral("abc").contains(lower[1]))
            return lower[1].toLatin1();
    }
    return ' ';
}

char PhaseOfField(const QString& field)
{
    const QString lower = field.trimmed().toLower();
    if (lower.size() != 1)
        return ' ';
    if (QStringLiteral("abc").contains(lower[0]))
        return lower[0].toLatin1();
    return lower == QLatin1String("n") || lower == QLatin1String("0") ? '0' : ' ';
}

} // namespace

Role RoleOf(const comtrade::AnalogChannel& channel)
{
    const UnitRow* unit = FindUnit(channel.unit);
    Role role;
    role.quantity = unit == nullptr ? Quantity::Other : unit->quantity;
    if (role.quantity == Quantity::Other)
        return role;
    role.phase = PhaseOfName(channel.name);
    if (role.phase == ' ')
        role.phase = PhaseOfField(channel.phase);
    return role;
}

bool IsWave(const QString& unit)
{
    constexpr std::array<const char*, 20> steady = {"hz", "mhz", "khz", "гц", "мгц", "кгц",  "%",
                                                    "°c", "°с",  "°f",  "°",  "deg", "grad", "град",
                                                    "s",  "ms",  "с",   "мс", "min", "мин"};
    const QString lower = unit.trimmed().toLower();
    return std::none_of(steady.begin(), steady.end(),
                        [&](const char* one) { return lower == QString::fromUtf8(one); });
}

bool IsBaseUnit(const QString& unit)
{
    const UnitRow* row = FindUnit(unit);
    return row != nullptr && row->kilo != nullptr;
}

double BaseFactor(const QString& unit)
{
    const UnitRow* row = FindUnit(unit);
    return row == nullptr ? 1 : row->base;
}

QString WithKilo(const QString& unit)
{
    return IsBaseUnit(unit) ? QString::fromUtf8(FindUnit(unit)->kilo) : unit;
}

} // namespace analysis
