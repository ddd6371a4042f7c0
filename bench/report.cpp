#include "report.h"

#include "measure.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

std::string Text(const char* format, double value)
{
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

const char* Verdict(bool met)
{
    return met ? "met" : "NOT MET";
}

// What the result of a row adds if its thirds differ: from which ratio to which.
std::string Unsteadiness(bool steady, double lowest, double highest)
{
    return steady ? "" : Text(", NOT STEADY: %.2f", lowest) + Text(" to %.2f", highest);
}

} // namespace

namespace bench {

std::string TimeText(double seconds)
{
    if (seconds >= 1)
        return Text("%.3g s", seconds);
    return seconds >= 1e-3 ? Text("%.3g ms", seconds * 1e3) : Text("%.3g us", seconds * 1e6);
}

std::string MegabyteText(double bytes)
{
    return Text("%.0f MB", bytes / 1e6);
}

void Report::AtMost(double target, double ratio, const std::string& workload, const std::string& limit,
                    const std::string& measured)
{
    lines.push_back({workload, limit, measured, Text("%.2f", ratio), Text("at most %g", target),
                     Verdict(ratio <= target)});
}

void Report::AtLeast(double target, double ratio, const std::string& workload, const std::string& limit,
                     const std::string& measured)
{
    lines.push_back({workload, limit, measured, Text("%.2f", ratio), Text("at least %g", target),
                     Verdict(ratio >= target)});
}

void Report::AtMost(double target, const Contest& contest, const std::string& workload,
                    const std::string& limit)
{
    AtMost(target, contest.Ratio(), workload, limit + " " + TimeText(contest.Limit()),
           TimeText(contest.Measured()));
    lines.back().back() +=
        Unsteadiness(contest.IsSteady(), contest.Thirds().lowest, contest.Thirds().highest);
}

void Report::SpeedAtLeast(double target, const Contest& contest, const std::string& workload,
                          const std::string& limit)
{
    AtLeast(target, 1 / contest.Ratio(), workload, limit + " " + TimeText(contest.Limit()),
            TimeText(contest.Measured()));
    lines.back().back() +=
        Unsteadiness(contest.IsSteady(), 1 / contest.Thirds().highest, 1 / contest.Thirds().lowest);
}

void Report::Ratio(const Contest& contest, const std::string& workload, const std::string& limit)
{
    lines.push_back({workload, limit + " " + TimeText(contest.Limit()), TimeText(contest.Measured()),
                     Text("%.2f", contest.Ratio()), "",
                     Unsteadiness(contest.IsSteady(), contest.Thirds().lowest, contest.Thirds().highest)});
}

void Report::Detail(const std::string& workload, const std::string& measured)
{
    lines.push_back({workload, "", measured, "", "", ""});
}

// One cell per line; no cell has a line feed.
void Report::Save(std::FILE* file) const
{
    for (const Cells& line : lines) {
        for (const std::string& cell : line)
            std::fprintf(file, "%s\n", cell.c_str());
    }
}

void Report::Load(std::FILE* file)
{
    constexpr size_t Columns = 6;
    Cells line;
    char text[1024];
    while (std::fgets(text, sizeof text, file) != nullptr) {
        line.emplace_back(text, std::strcspn(text, "\n"));
        if (line.size() == Columns) {
            lines.push_back(line);
            line.clear();
        }
    }
}

void Report::Print() const
{
    const Cells head = {"Workload", "Limit", "Measured", "Ratio", "Target", "Result"};
    std::vector<size_t> widths;
    for (const std::string& cell : head)
        widths.push_back(cell.size());
    for (const Cells& line : lines) {
        for (size_t i = 0; i < line.size(); ++i)
            widths[i] = std::max(widths[i], line[i].size());
    }
    const auto print = [&](const Cells& cells) {
        for (size_t i = 0; i < cells.size(); ++i)
            std::printf("| %-*s ", static_cast<int>(widths[i]), cells[i].c_str());
        std::printf("|\n");
    };
    print(head);
    for (const size_t width : widths)
        std::printf("|%s", std::string(width + 2, '-').c_str());
    std::printf("|\n");
    for (const Cells& line : lines)
        print(line);
}

} // namespace bench
