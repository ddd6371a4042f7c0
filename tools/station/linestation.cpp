#include "station/linestation.h"

#include "station/drawing.h"
#include "station/stationini.h"

#include <QTextStream>

#include <algorithm>

namespace station {

namespace {

constexpr double LineRatedCurrent = 1000;   // A, of its current transformers
constexpr double InfeedRatedCurrent = 2000; // A
constexpr size_t LineDiscretes = 6;         // start, trip, breaker closed and open, reclosing, output relay
constexpr size_t InfeedDiscretes = 4;

// Half of them are of 110 kV, half of 220 kV.
const char* const CatalogueNames[CatalogueSize / 2] = {
    "Береговая", "Дубовая", "Заречная", "Ивановская", "Каменка",    "Лесная",  "Луговая",
    "Нагорная",  "Озерная", "Поляна",   "Речная",     "Рудничная",  "Садовая", "Сосновая",
    "Степная",   "Таежная", "Угольная", "Хвойная",    "Черемшанка", "Ясная"};

StationLine LineNamed(const QString& name, unsigned kilovolts, const LineData& data, bool ownVoltages)
{
    return {QStringLiteral("ВЛ-%1 %2").arg(kilovolts).arg(name),
            QStringLiteral("ВЛ %1 кВ %2").arg(kilovolts).arg(name), kilovolts, data, ownVoltages};
}

Bay MakeBay(const QString& name, const QString& displayName, unsigned kilovolts, const char* code,
            double ratedCurrent)
{
    return {name, displayName, QString(), kilovolts, QString::fromLatin1(code), ratedCurrent, 0.0, 0.0};
}

template <typename Signal>
void AddNew(std::vector<Signal>& all, const std::vector<Signal>& more)
{
    for (const Signal& signal : more)
        if (std::none_of(all.begin(), all.end(),
                         [&](const Signal& known) { return known.name == signal.name; }))
            all.push_back(signal);
}

} // namespace

StationLine UsualLine()
{
    return LineNamed(QStringLiteral("Восточная"), 110, {60, 0.16, 0.41, 0.31, 1.25}, true);
}

// Conductors of 120 to 240 mm2 for 110 kV and of 240 to 400 mm2 for 220 kV; the zero sequence is that of
// lines with a ground wire. Rounded as data sheets are.
StationLine CatalogueLine(int index)
{
    Drawing draw(static_cast<uint32_t>(index) + 7001u);
    const unsigned kilovolts = index < CatalogueSize / 2 ? 110 : 220;
    LineData data = {};
    data.length = draw.Rounded(10, 150, 0.1);
    data.r1 = kilovolts == 110 ? draw.Rounded(0.12, 0.25, 0.001) : draw.Rounded(0.075, 0.121, 0.001);
    data.x1 = draw.Rounded(0.39, 0.435, 0.001);
    data.r0 = data.r1 + draw.Rounded(0.13, 0.2, 0.001);
    data.x0 = draw.Rounded(1.0, 1.4, 0.001);
    return LineNamed(QString::fromUtf8(CatalogueNames[index % (CatalogueSize / 2)]), kilovolts, data,
                     draw.Chance(0.5));
}

const std::vector<StationLine>& CatalogueLines()
{
    static const std::vector<StationLine> lines = [] {
        std::vector<StationLine> all;
        for (int index = 0; index < CatalogueSize; ++index)
            all.push_back(CatalogueLine(index));
        return all;
    }();
    return lines;
}

LineBays BaysAround(const StationLine& line)
{
    const unsigned level = line.kilovolts;
    const QString transformers = QStringLiteral("ТН 1СШ-%1").arg(level);
    const QString infeed = level == 110 ? QStringLiteral("АТ-1") : QStringLiteral("АТ-2");
    LineBays bays;
    bays.line = MakeBay(line.name, line.displayName, level, "L", LineRatedCurrent);
    bays.infeed =
        MakeBay(infeed, QStringLiteral("Автотрансформатор ") + infeed, level, "AT", InfeedRatedCurrent);
    bays.healthy = MakeBay(QStringLiteral("ВЛ-%1 Западная").arg(level),
                           QStringLiteral("ВЛ %1 кВ Западная").arg(level), level, "L", LineRatedCurrent);
    bays.voltages = line.ownVoltages
                        ? bays.line
                        : MakeBay(transformers, QStringLiteral("ТН 1 СШ %1 кВ").arg(level), level, "VTB", 0);
    if (!line.ownVoltages)
        bays.line.circuitName = bays.infeed.circuitName = bays.healthy.circuitName = transformers;
    return bays;
}

std::vector<AnalogSignal> AnalogSignalsAround(const StationLine& line)
{
    const LineBays bays = BaysAround(line);
    std::vector<AnalogSignal> analog;
    AddNew(analog, AnalogSignalsOf(bays.infeed, BayQuantities::Currents));
    AddNew(analog,
           AnalogSignalsOf(bays.line, line.ownVoltages ? BayQuantities::Both : BayQuantities::Currents));
    AddNew(analog, AnalogSignalsOf(bays.healthy, BayQuantities::Currents));
    if (!line.ownVoltages)
        AddNew(analog, AnalogSignalsOf(bays.voltages, BayQuantities::Voltages));
    return analog;
}

std::vector<DiscreteSignal> DiscreteSignalsAround(const StationLine& line)
{
    const LineBays bays = BaysAround(line);
    std::vector<DiscreteSignal> discrete;
    AddNew(discrete, DiscreteSignalsOf(bays.healthy, LineDiscretes));
    AddNew(discrete, DiscreteSignalsOf(bays.line, LineDiscretes));
    AddNew(discrete, DiscreteSignalsOf(bays.infeed, InfeedDiscretes));
    return discrete;
}

QString MakeLinesStationIni(const std::vector<StationLine>& lines, const QMap<QString, QString>& deviceKeys)
{
    std::vector<AnalogSignal> analog;
    std::vector<DiscreteSignal> discrete;
    for (const StationLine& line : lines) {
        AddNew(analog, AnalogSignalsAround(line));
        AddNew(discrete, DiscreteSignalsAround(line));
    }
    return MakeIni(analog, discrete, deviceKeys);
}

QString MakeLinesIni(const std::vector<StationLine>& lines)
{
    QString text;
    QTextStream out(&text);
    for (const StationLine& line : lines) {
        out << (text.isEmpty() ? "" : "\n") << '[' << line.name << "]\n";
        out << "length=" << line.data.length << "\nr1=" << line.data.r1 << "\nx1=" << line.data.x1
            << "\nr0=" << line.data.r0 << "\nx0=" << line.data.x0 << '\n';
        if (!line.ownVoltages)
            out << "voltages=" << BaysAround(line).voltages.name << '\n';
        out.flush();
    }
    return text;
}

} // namespace station
