// The rows of the table that bench/analysis.sh prints: how exact the numbers of tools/analysis are. A row is
// a function in a file of its own, listed in analysis.cpp.
#pragma once

#include <string>
#include <vector>

namespace bench {

constexpr double Nominal = 50; // Hz

/// One line: what, what it must reach, what it has reached.
struct AnalysisLine
{
    std::string what;
    std::string mustReach;
    std::string measured;
    bool isMet = true;
};

using AnalysisLines = std::vector<AnalysisLine>;

/// A line whose measured value may be at most `most`; both printed with the unit.
AnalysisLine AtMost(const std::string& what, double measured, double most, const std::string& unit);

/// A line whose measured value is only reported.
AnalysisLine Reported(const std::string& what, double measured, const std::string& unit);

/// The largest errors of a value at 50 Hz and at other frequencies, in percent.
struct LargestErrors
{
    double atNominal = 0;
    double elsewhere = 0;

    void Add(double hertz, double percent);
};

/// Adds a line for each of the two, with what it may be at most; `others` names the other frequencies.
void AddErrors(const std::string& what, const std::string& others, const LargestErrors& worst,
               const LargestErrors& most, AnalysisLines& lines);

/// Total vector error and frequency of the steady signals of IEC/IEEE 60255-118-1.
AnalysisLines MeasurePhasors();

/// RMS, direct component, harmonics, sequences and power against what the signals were made with.
AnalysisLines MeasureValues();

} // namespace bench
