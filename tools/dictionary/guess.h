// Guesses of what a signal is, from its name and unit: a start for whoever writes a sorting dictionary.
#pragma once

#include <QString>

#include <vector>

namespace dictionary {

/// A channel of a recording. unit is empty for a discrete one.
struct Signal
{
    QString name; // "equipment:signal"
    QString unit;
};

/// The parameters of one dictionary entry; an empty code is one that could not be guessed.
struct Guess
{
    int kilovolts = 0; // 0: none
    bool levelFromName = false;
    QString equipmentGroup;
    QString signalGroup; // analog
    QString deviceGroup; // discrete
    QString statusType;  // discrete
};

/// What a discrete signal is: codes of the dictionary, empty if they could not be guessed.
struct Status
{
    QString deviceGroup; // D_G
    QString type;        // S_T
};

/// By the name of the signal alone, without equipment. Russian and English names are understood.
Status GuessStatus(const QString& signalName);

/// The part of the name before the first colon, without blanks around it; the whole name without a colon.
QString EquipmentOf(const QString& name);

/// The voltage level, kV, in the equipment's name; 0 if it has none.
int LevelInName(const QString& equipment);

/// Voltage levels found in the names of a recording's equipment, kV.
struct Levels
{
    int usual = 110; // that of most signals
    int highest = 110;
};

/// Both are 110 if no name has a level.
Levels LevelsOf(const std::vector<Signal>& channels);

/// Equipment without a level in its name is assumed to be at the usual one, transformers at the highest.
Guess GuessAnalog(const Signal& signal, const Levels& levels);
Guess GuessDiscrete(const Signal& signal, const Levels& levels);

} // namespace dictionary
