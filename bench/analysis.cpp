// Measures how exact the numbers of tools/analysis are; exit code 1 if one misses its target.
#include "analysis.h"

#include <algorithm>
#include <cstdio>

namespace {

using Cells = std::vector<std::string>;

void Print(const std::vector<Cells>& lines)
{
    Cells::size_type columns = lines.front().size();
    std::vector<size_t> widths(columns, 0);
    for (const Cells& line : lines)
        for (size_t i = 0; i < columns; ++i)
            widths[i] = std::max(widths[i], line[i].size());
    for (size_t row = 0; row < lines.size(); ++row) {
        for (size_t i = 0; i < columns; ++i)
            std::printf("| %-*s ", static_cast<int>(widths[i]), lines[row][i].c_str());
        std::printf("|\n");
        if (row > 0)
            continue;
        for (const size_t width : widths)
            std::printf("|%s", std::string(width + 2, '-').c_str());
        std::printf("|\n");
    }
}

} // namespace

namespace bench {

AnalysisLine Reported(const std::string& what, double measured, const std::string& unit)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.3g %s", measured, unit.c_str());
    return {what, "", text, true};
}

AnalysisLine AtMost(const std::string& what, double measured, double most, const std::string& unit)
{
    AnalysisLine line = Reported(what, measured, unit);
    char limit[64];
    std::snprintf(limit, sizeof limit, "at most %g %s", most, unit.c_str());
    line.mustReach = limit;
    line.isMet = measured <= most;
    return line;
}

void LargestErrors::Add(double hertz, double percent)
{
    double& worst = hertz == Nominal ? atNominal : elsewhere;
    worst = std::max(worst, percent);
}

void AddErrors(const std::string& what, const std::string& others, const LargestErrors& worst,
               const LargestErrors& most, AnalysisLines& lines)
{
    lines.push_back(AtMost(what + " at 50 Hz", worst.atNominal, most.atNominal, "%"));
    lines.push_back(AtMost(what + " at " + others, worst.elsewhere, most.elsewhere, "%"));
}

} // namespace bench

int main()
{
    using Row = bench::AnalysisLines (*)();
    constexpr Row rows[] = {bench::MeasurePhasors, bench::MeasureValues};
    std::vector<Cells> table = {{"What", "Must reach", "Measured", "Result"}};
    bool isMet = true;
    for (const Row row : rows) {
        for (const bench::AnalysisLine& line : row()) {
            table.push_back({line.what, line.mustReach, line.measured,
                             line.mustReach.empty() ? "" : (line.isMet ? "met" : "NOT MET")});
            isMet = isMet && line.isMet;
        }
    }
    Print(table);
    return isMet ? 0 : 1;
}
