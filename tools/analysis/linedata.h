// The parameters of lines, from the file lines.ini: what a distance to a fault is computed from.
#pragma once

#include "text/error.h"

#include <QString>

#include <optional>
#include <vector>

namespace analysis {

struct Line
{
    QString circuit;    ///< the name of the section: a circuit of the record, or equipment of the dictionary
    double length = 0;  ///< km
    double r1 = 0;      ///< positive sequence, primary ohms per km at the nominal frequency
    double x1 = 0;      ///< likewise
    double r0 = 0;      ///< zero sequence
    double x0 = 0;      ///< likewise
    double mutualR = 0; ///< of the zero sequences of parallel lines, primary ohms per km
    double mutualX = 0; ///< likewise
    QString parallel;   ///< the circuit of the parallel line; empty: none
    QString voltages;   ///< the circuit whose voltages serve this one; empty: its own
};

using Lines = std::vector<Line>;

} // namespace analysis
