// The bus with the faulted line, the bays beside it and their signals: one for each line of a catalogue.
#pragma once

#include "station/bays.h"
#include "station/linemodel.h"

#include <QMap>
#include <QString>

#include <vector>

namespace station {

// A line that faults are placed on. Its name belongs to its data, so that one lines.ini serves many
// recordings.
struct StationLine
{
    QString name;        // of its circuit
    QString displayName; // as people call it
    unsigned kilovolts;  // 110 or 220
    LineData data;
    bool ownVoltages; // else those of the bus are in a bay of their own
};

constexpr int CatalogueSize = 40;

// A line of 110 kV and 60 km with voltages of its own, which is in no catalogue.
StationLine UsualLine();

// The lines for random recordings, 0 to CatalogueSize - 1: of 110 and 220 kV, 10 to 150 km long.
StationLine CatalogueLine(int index);

// All of them.
const std::vector<StationLine>& CatalogueLines();

// The bays of the bus.
struct LineBays
{
    Bay line;
    Bay infeed;
    Bay healthy;
    Bay voltages; // the line's own bay, or that of the voltage transformers
};

LineBays BaysAround(const StationLine& line);

// What belongs to a signal, of quantities that are there for the bus and the bays: waves, phasors.
template <typename Quantities>
const auto& QuantityOf(const AnalogSignal& signal, const LineBays& bays, const Quantities& of)
{
    if (signal.quantity == Quantity::Voltage)
        return of.bus;
    if (signal.bay.name == bays.line.name)
        return of.line;
    return signal.bay.name == bays.infeed.name ? of.infeed : of.healthy;
}

// The signals of a recording, in the order of the recorder.
std::vector<AnalogSignal> AnalogSignalsAround(const StationLine& line);
std::vector<DiscreteSignal> DiscreteSignalsAround(const StationLine& line);

// Ini file for recordings of these lines.
QString MakeLinesStationIni(const std::vector<StationLine>& lines, const QMap<QString, QString>& deviceKeys);

// lines.ini: a section for each line, with its length (km), its impedances (primary ohm per km) and the
// circuit whose voltages are to be taken where it has none of its own.
QString MakeLinesIni(const std::vector<StationLine>& lines);

} // namespace station
