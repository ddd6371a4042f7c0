#include "analysis/channelrole.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace analysis {

namespace {

struct UnitRow
{
    const char* unit;
    Quantity quantity;
    const char* kilo; // the same with the prefix; none: the unit has one
};

constexpr std::array<UnitRow, 16> units = {{
    {"В", Quantity::Voltage, "кВ"},
    {"кВ", Quantity::Voltage, nullptr},
    {"мВ", Quantity::Voltage, nullptr},
    {"МВ", Quantity::Voltage, nullptr},
    {"V", Quantity::Voltage, "kV"},
    {"kV", Quantity::Voltage, nullptr},
    {"KV", Quantity::Voltage, nullptr},
    {"mV", Quantity::Voltage, nullptr},
    {"А", Quantity::Current, "кА"},
    {"кА", Quantity::Current, nullptr},
    {"мА", Quantity::Current, nullptr},
    {"A", Quantity::Current, "kA"},
    {"kA", Quantity::Current, nullptr},
    {"KA", Quantity::Current, nullptr},
    {"mA", Quantity::Current, nullptr},
    {"MV", Quantity::Voltage, nullptr},
}};

const UnitRow* FindUnit(const QString& unit)
{
    for (const UnitRow& row : units)
        if (unit == QString::fromUtf8(row.unit))
            return &row;
    return nullptr;
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

QString WithKilo(const QString& unit)
{
    return IsBaseUnit(unit) ? QString::fromUtf8(FindUnit(unit)->kilo) : unit;
}

} // namespace analysis
