// Measures conversions against the limits of the machine and prints the table of ratios.
#include "rows.h"

#include <CLI/CLI.hpp>

#include <QTextCodec>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Row
{
    const char* name; // for --row
    void (*measure)(const bench::Settings&, bench::Report&);
};

const Row rows[] = {
    {"large-plain", bench::MeasureLargePlain},
    {"large-compressed", bench::MeasureLargeCompressed},
    {"large-ascii", bench::MeasureLargeAscii},
    {"large-cff", bench::MeasureLargeCff},
    {"decoding", bench::MeasureDecoding},
    {"typical", bench::MeasureTypical},
    {"states", bench::MeasureStates},
    {"matching", bench::MeasureMatching},
    {"start", bench::MeasureStart},
    {"segments", bench::MeasureSegments},
    {"growth", bench::MeasureGrowth},
    {"memory", bench::MeasureMemory},
    {"ascii-records", bench::MeasureAsciiRecords},
    {"reading", bench::MeasureReading},
    {"export", bench::MeasureExport},
    {"decoding-sets", bench::MeasureDecodingBySets},
    {"turning-sets", bench::MeasureTurning},
};

std::vector<std::string> RowNames()
{
    std::vector<std::string> names;
    for (const Row& row : rows)
        names.emplace_back(row.name);
    return names;
}

// Measures a row in a process of its own, so that no row depends on the state in which earlier ones left the
// heap.
bool MeasureAlone(const Row& row, const bench::Settings& settings, bench::Report& report)
{
    std::FILE* lines = std::tmpfile();
    const pid_t child = lines != nullptr ? fork() : -1;
    if (child < 0)
        throw std::runtime_error("no process or no file for the row");
    if (child == 0) {
        int code = 0;
        try {
            bench::Report own;
            row.measure(settings, own);
            own.Save(lines);
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s: %s\n", row.name, error.what());
            code = 1;
        }
        std::fflush(lines);
        std::_Exit(code);
    }
    int status = 0;
    const bool good = waitpid(child, &status, 0) == child && status == 0;
    std::rewind(lines);
    report.Load(lines);
    std::fclose(lines);
    return good;
}

// False if a row fails; the others are measured all the same.
bool MeasureRows(const std::vector<std::string>& names, const bench::Settings& settings,
                 bench::Report& report)
{
    bool good = true;
    for (const Row& row : rows) {
        if (std::find(names.begin(), names.end(), row.name) == names.end())
            continue;
        std::fprintf(stderr, "measuring %s\n", row.name);
        good = MeasureAlone(row, settings, report) && good;
    }
    return good;
}

} // namespace

int main(int count, char** arguments)
{
    // The outputs have Cyrillic names, whatever the locale says.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));

    bench::Settings settings;
    std::string directory = "/dev/shm";
    std::vector<std::string> names = RowNames();
    CLI::App app("Measures conversions against what reading and copying the same files costs.");
    app.add_option("--dir", directory, "Where the workloads go, a memory file system (/dev/shm)")
        ->check(CLI::ExistingDirectory)
        ->take_last();
    app.add_option("--rounds", settings.rounds, "Rounds of both sides in turn; the shortest times count (9)")
        ->check(CLI::Range(1, 1000));
    app.add_flag("--quick", settings.quick, "Smaller workloads, to see that everything runs");
    app.add_option("--row", names, "Rows to measure (all)")->check(CLI::IsMember(RowNames()));
    CLI11_PARSE(app, count, arguments);
    settings.directory = QString::fromStdString(directory);

    bench::Report report;
    const bool good = MeasureRows(names, settings, report);
    report.Print();
    return good ? 0 : 1;
}
