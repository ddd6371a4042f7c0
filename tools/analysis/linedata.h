// The parameters of lines, from the file lines.ini: what a distance to a fault is computed from.
//
//     [ВЛ-110 Восточная]
//     length=50
//     r1=0.16
//     x1=0.41
//     r0=0.31
//     x0=1.25
//     zone1=mho 5 8.5 9.9
#pragma once

#include "text/error.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace analysis {

/// A point of the R-X plane, primary ohms.
struct Impedance
{
    double r = 0;
    double x = 0;
};

/// A zone of the distance protection in the R-X plane.
struct Zone
{
    int number = 1;                 ///< 1 to 9
    double radius = 0;              ///< of a mho circle, ohms; 0: a polygon
    std::vector<Impedance> corners; ///< of a polygon in their order; of a circle its centre alone

    bool IsCircle() const { return radius > 0; }
};

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
    std::vector<Zone> zones;
    int row = 0;         ///< of the section's heading in the file, from 1; 0: not from a file
    QStringList missing; ///< those of length, r1, x1, r0 and x0 that the file does not give

    /// Whether length and impedances are known. A line may have nothing but the name of its voltages.
    bool IsKnown() const { return missing.isEmpty() && length > 0; }
};

using Lines = std::vector<Line>;

/// What is wrong with a row of the file.
struct LineProblem
{
    int row = 0;             ///< from 1; 0: of the whole file
    bool isError = false;    ///< else it is ignored, and worth a warning
    const char* reason = ""; ///< a word of text/reasons.h
    QString text;            ///< the same for people, and what to do
};

struct LineFile
{
    Lines lines; ///< in the order of the file; without what is wrong
    std::vector<LineProblem> problems;
};

/// The keys of a section that a distance needs.
QStringList NeededLineKeys();

/// All keys of a section, as people are told them: "zone1 ... zone9" is one.
QStringList LineKeys();

/// Reads the text of a lines.ini. Nothing is thrown for what is wrong in it.
LineFile ParseLines(const QByteArray& text);

/// Reads the file. Throws text::Error if that is not possible.
LineFile ReadLineFile(const QString& path);

/// The same for those who can do nothing with a file that has errors: throws text::Error, whose message has a
/// row for each of them with the file's name and the row's number.
Lines ReadLines(const QString& path);

} // namespace analysis
