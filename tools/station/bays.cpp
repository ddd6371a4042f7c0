#include "station/bays.h"

#include "station/station.h"

#include <algorithm>
#include <cmath>

namespace station {

namespace {

enum class SignalSet {
    Line,
    Currents,
    Voltages,
    Frequency,
    Excitation,
    Receiver,
    Differential,
    DirectCurrent
};

struct BayRow
{
    const char* name;
    const char* displayName;
    const char* circuitName;
    unsigned kilovolts;
    const char* equipmentCode;
    SignalSet signalSet;
    double ratedCurrent;
    double load;
    double faultShare;
};

const BayRow BayRows[] = {
    {"ВЛ-110 Восточная", "ВЛ 110 кВ Восточная", "ТН 1СШ-110", 110, "L", SignalSet::Line, 600, 0.5, 1.0},
    {"Частота 1СШ-110", "Частота 1 СШ 110 кВ", "", 110, "VTB", SignalSet::Frequency, 0, 0, 0},
    {"ТН 1СШ-110", "ТН 1 СШ 110 кВ", "", 110, "VTB", SignalSet::Voltages, 0, 0, 0},
    {"АТ-1", "Автотрансформатор АТ-1", "ТН 1СШ-220", 220, "AT", SignalSet::Currents, 1000, 0.4, 0.3},
    {"ВЛ-110 Западная", "ВЛ 110 кВ Западная", "ТН 1СШ-110", 110, "L", SignalSet::Currents, 600, 0.35, -0.15},
    {"ВЛ-220 Северная", "ВЛ 220 кВ Северная", "ТН 1СШ-220", 220, "L", SignalSet::Line, 1000, 0.45, -0.2},
    {"ТН 1СШ-220", "ТН 1 СШ 220 кВ", "", 220, "VTB", SignalSet::Voltages, 0, 0, 0},
    {"Т-2", "Трансформатор Т-2", "ТН 1СШ-110", 110, "T", SignalSet::Currents, 300, 0.6, 0.05},
    {"ШСВ-110", "ШСВ 110 кВ", "ТН 1СШ-110", 110, "BCT", SignalSet::Currents, 1000, 0.2, 0.4},
    {"Г-1", "Генератор Г-1", "", 10, "G", SignalSet::Line, 4000, 0.7, 0.5},
    {"Возбуждение Г-1", "Возбуждение генератора Г-1", "", 10, "G", SignalSet::Excitation, 0, 0, 0},
    {"БСК-110", "БСК 110 кВ", "ТН 1СШ-110", 110, "CB", SignalSet::Currents, 300, 0.8, 0},
    {"ШР-500", "Шунтирующий реактор 500 кВ", "", 500, "BPR", SignalSet::Line, 300, 0.7, 0},
    {"Приемник ВЛ-110 Восточная", "ВЧ приемник", "", 110, "L", SignalSet::Receiver, 0, 0, 0},
    {"ДЗТ АТ-1", "Дифференциальная защита АТ-1", "", 220, "AT", SignalSet::Differential, 0, 0, 0},
    {"ЩПТ-1", "Щит постоянного тока 1", "", 110, "VTB", SignalSet::DirectCurrent, 0, 0, 0},
};

constexpr int BayRowCount = sizeof BayRows / sizeof BayRows[0];

struct AnalogRow
{
    SignalSet signalSet;
    const char* name;
    const char* groupCode;
    Quantity quantity;
    int phase;
    const char* unit;
    double level;
};

// The signals of a set, in the order of the recorder.
const AnalogRow AnalogRows[] = {
    {SignalSet::Line, "Ia", "CT", Quantity::Current, 0, "А", 0},
    {SignalSet::Line, "Ib", "CT", Quantity::Current, 1, "А", 0},
    {SignalSet::Line, "Ic", "CT", Quantity::Current, 2, "А", 0},
    {SignalSet::Line, "3I0", "CT", Quantity::Current, Residual, "А", 0},
    {SignalSet::Line, "Ua", "VT", Quantity::Voltage, 0, "В", 0},
    {SignalSet::Line, "Ub", "VT", Quantity::Voltage, 1, "В", 0},
    {SignalSet::Line, "Uc", "VT", Quantity::Voltage, 2, "В", 0},
    {SignalSet::Line, "3U0", "VT", Quantity::Voltage, Residual, "В", 0},
    {SignalSet::Currents, "Ia", "CT", Quantity::Current, 0, "А", 0},
    {SignalSet::Currents, "Ib", "CT", Quantity::Current, 1, "А", 0},
    {SignalSet::Currents, "Ic", "CT", Quantity::Current, 2, "А", 0},
    {SignalSet::Currents, "3I0", "CT", Quantity::Current, Residual, "А", 0},
    {SignalSet::Voltages, "Ua", "VT", Quantity::Voltage, 0, "кВ", 0},
    {SignalSet::Voltages, "Ub", "VT", Quantity::Voltage, 1, "кВ", 0},
    {SignalSet::Voltages, "Uc", "VT", Quantity::Voltage, 2, "кВ", 0},
    {SignalSet::Voltages, "3U0", "VT", Quantity::Voltage, Residual, "кВ", 0},
    {SignalSet::Frequency, "Fa", "F", Quantity::Frequency, 0, "Гц", 0},
    {SignalSet::Excitation, "Iрот", "PR_RC", Quantity::Level, 0, "А", 1500},
    {SignalSet::Excitation, "Uрот", "PR_RV", Quantity::Level, 0, "В", 280},
    {SignalSet::Excitation, "Uрот0", "PR_RVG", Quantity::Level, 0, "В", 140},
    {SignalSet::Excitation, "Iвозб", "PR_IEX", Quantity::Level, 0, "А", 80},
    {SignalSet::Excitation, "Uвозб", "PR_VEX", Quantity::Level, 0, "В", 120},
    {SignalSet::Receiver, "Uпрм", "PR_REC", Quantity::Level, 0, "В", 12},
    {SignalSet::Receiver, "Uбл", "PR_BB", Quantity::Level, 0, "В", 24},
    {SignalSet::Differential, "Iдиф", "PR_DIFF1", Quantity::Level, 0, "А", 5},
    {SignalSet::Differential, "Iторм", "PR_DIFF2", Quantity::Level, 0, "А", 400},
    {SignalSet::DirectCurrent, "Uшп", "DCS_VPP", Quantity::Level, 0, "В", 230},
    {SignalSet::DirectCurrent, "U+з", "DCS_VP1G", Quantity::Level, 0, "В", 115},
    {SignalSet::DirectCurrent, "U-з", "DCS_VP2G", Quantity::Level, 0, "В", -115},
};

struct DiscreteRow
{
    const char* name;
    const char* groupCode;
    const char* statusCode;
    Behaviour behaviour;
    bool inverted;
};

// The signals of every bay with current transformers, in the order of the recorder.
const DiscreteRow DiscreteRows[] = {
    {"Пуск защит", "RP", "ID", Behaviour::ProtectionStart, false},
    {"Откл. от защит", "RP", "FD", Behaviour::Trip, false},
    {"Выключатель включен", "TA", "SBC", Behaviour::BreakerClosed, false},
    {"Выключатель отключен", "TA", "SBO", Behaviour::BreakerOpen, true},
    {"АПВ", "NA", "AL", Behaviour::Reclosing, false},
    {"Выходное реле", "RP", "OR", Behaviour::Trip, false},
    {"Ключ управления местный", "TA", "SS", Behaviour::Off, false},
    {"Неисправность терминала", "RP", "FI", Behaviour::Off, true},
    {"Внешняя неисправность", "RP", "FE", Behaviour::Off, false},
    {"Режим проверки", "FR", "TS", Behaviour::Off, false},
    {"Ручной пуск", "FR", "MS", Behaviour::Off, false},
    {"Выключатель готов", "TA", "AB", Behaviour::On, false},
    {"Выключатель не готов", "TA", "NAB", Behaviour::Off, false},
    {"Предупредительная сигнализация", "TA", "SA", Behaviour::Off, false},
    {"Аварийная сигнализация", "TA", "FA", Behaviour::Off, false},
    {"Прием команды", "EA", "VP", Behaviour::Off, false},
    {"Передача команды", "EA", "VPG", Behaviour::Off, false},
    {"Защита выведена", "RP", "ODC1", Behaviour::Off, false},
    {"АПВ выведено", "NA", "ODC2", Behaviour::Off, false},
    {"Опер. ток отключен", "OC", "ODC3", Behaviour::Off, false},
    {"Пуск ОМП", "FL", "OR", Behaviour::Off, false},
};

const BayRow OutgoingLine = {"", "", "", 35, "L", SignalSet::Currents, 200, 0.4, 0.0};

// The bays after those of the table are outgoing lines, numbered from 1.
const BayRow& RowAt(int index)
{
    return index < BayRowCount ? BayRows[index] : OutgoingLine;
}

Bay BayAt(int index)
{
    const BayRow& row = RowAt(index);
    Bay bay{QString::fromUtf8(row.name),
            QString::fromUtf8(row.displayName),
            QString::fromUtf8(row.circuitName),
            row.kilovolts,
            QString::fromUtf8(row.equipmentCode),
            row.ratedCurrent,
            row.load,
            row.faultShare};
    if (index >= BayRowCount) {
        bay.name = QStringLiteral("ВЛ-35 Отходящая %1").arg(index - BayRowCount + 1);
        bay.displayName = QStringLiteral("ВЛ 35 кВ Отходящая %1").arg(index - BayRowCount + 1);
    }
    return bay;
}

bool IsInKilovolts(const AnalogSignal& analog)
{
    return analog.unit == QStringLiteral("кВ");
}

// Largest value that a signal's code range has to hold, in its unit and without the offset.
double FullScale(const AnalogSignal& analog)
{
    const double phasePeak = analog.bay.kilovolts * 1000.0 * std::sqrt(2.0 / 3.0); // V
    switch (analog.quantity) {
    case Quantity::Current:
        return 30.0 * std::sqrt(2.0) * analog.bay.ratedCurrent;
    case Quantity::Voltage:
        return 2.0 * phasePeak / (IsInKilovolts(analog) ? 1000.0 : 1.0);
    case Quantity::Frequency:
        return 10.0;
    case Quantity::Level:
        break;
    }
    return 2.0 * std::fabs(analog.level);
}

// Ratios of the transformers: to 5 A, and to 100 V.
float TransformerRatio(const AnalogSignal& analog)
{
    switch (analog.quantity) {
    case Quantity::Current:
        return static_cast<float>(analog.bay.ratedCurrent / 5.0);
    case Quantity::Voltage:
        return static_cast<float>(analog.bay.kilovolts * 10.0);
    case Quantity::Frequency:
    case Quantity::Level:
        break;
    }
    return 1.0f;
}

AnalogSignal MakeSignal(const Bay& bay, const AnalogRow& row)
{
    AnalogSignal analog{bay,
                        bay.name + QLatin1Char(':') + QString::fromUtf8(row.name),
                        QString::fromUtf8(row.groupCode),
                        row.quantity,
                        row.phase,
                        QString::fromUtf8(row.unit),
                        row.level,
                        1.0f,
                        1.0f,
                        1.0f,
                        0.0f};
    analog.primary = TransformerRatio(analog);
    analog.scale = static_cast<float>(FullScale(analog) / 32767.0 / double{analog.primary});
    analog.offset = row.quantity == Quantity::Frequency ? 50.0f : 0.0f;
    return analog;
}

DiscreteSignal MakeSignal(const Bay& bay, const DiscreteRow& row)
{
    return {bay,
            bay.name + QLatin1Char(':') + QString::fromUtf8(row.name),
            QString::fromUtf8(row.groupCode),
            QString::fromUtf8(row.statusCode),
            row.behaviour,
            row.inverted};
}

} // namespace

double UnitsPerVolt(const AnalogSignal& signal)
{
    return IsInKilovolts(signal) ? 0.001 : 1.0;
}

std::vector<AnalogSignal> AnalogSignals(const StationOptions& options)
{
    const auto count = static_cast<size_t>(std::max(options.analogChannels, 0));
    std::vector<AnalogSignal> analog;
    for (int i = 0; analog.size() < count; ++i)
        for (const AnalogRow& row : AnalogRows)
            if (row.signalSet == RowAt(i).signalSet && analog.size() < count)
                analog.push_back(MakeSignal(BayAt(i), row));
    return analog;
}

std::vector<DiscreteSignal> DiscreteSignals(const StationOptions& options)
{
    const bool needsOne = options.segments > 1 && options.analogChannels > 0;
    const auto count = static_cast<size_t>(std::max(options.discreteChannels, needsOne ? 1 : 0));
    std::vector<DiscreteSignal> discrete;
    for (int i = 0; discrete.size() < count; ++i) {
        const Bay bay = BayAt(i);
        if (!(bay.ratedCurrent > 0))
            continue;
        for (const DiscreteRow& row : DiscreteRows)
            if (discrete.size() < count)
                discrete.push_back(MakeSignal(bay, row));
    }
    return discrete;
}

std::vector<Bay> BaysOf(const std::vector<AnalogSignal>& analog, const std::vector<DiscreteSignal>& discrete)
{
    std::vector<Bay> bays;
    const auto add = [&](const Bay& bay) {
        if (std::none_of(bays.begin(), bays.end(), [&](const Bay& known) { return known.name == bay.name; }))
            bays.push_back(bay);
    };
    for (const AnalogSignal& signal : analog)
        add(signal.bay);
    for (const DiscreteSignal& signal : discrete)
        add(signal.bay);
    return bays;
}

std::vector<AnalogSignal> AnalogSignalsOf(const Bay& bay, BayQuantities quantities)
{
    const SignalSet set = quantities == BayQuantities::Currents   ? SignalSet::Currents
                          : quantities == BayQuantities::Voltages ? SignalSet::Voltages
                                                                  : SignalSet::Line;
    std::vector<AnalogSignal> analog;
    for (const AnalogRow& row : AnalogRows)
        if (row.signalSet == set)
            analog.push_back(MakeSignal(bay, row));
    return analog;
}

std::vector<DiscreteSignal> DiscreteSignalsOf(const Bay& bay, size_t count)
{
    std::vector<DiscreteSignal> discrete;
    for (const DiscreteRow& row : DiscreteRows)
        if (discrete.size() < count)
            discrete.push_back(MakeSignal(bay, row));
    return discrete;
}

Bay FaultedBay()
{
    return BayAt(0);
}

} // namespace station
