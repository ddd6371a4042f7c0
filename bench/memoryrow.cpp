// Peak resident memory of a conversion, in a process of its own.
#include "rows.h"
#include "workload.h"

#include <cstdio>
#include <exception>
#include <malloc.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr double FixedShare = 40e6; // bytes that a conversion may take whatever its size

// Everything the child does: one conversion. Returns its exit code.
int ConvertOnce(const station::StationOptions& options, const QString& firstFile,
                const bench::Scratch& scratch)
{
    try {
        bench::Device device(options, bench::Form::Binary1999, scratch);
        device.Convert(firstFile, scratch.Path(QStringLiteral("out")));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}

// Bytes. The child starts with the memory of this process, so free memory is returned to the system first.
double PeakOfConversion(const station::StationOptions& options, const QString& firstFile,
                        const bench::Scratch& scratch)
{
    malloc_trim(0);
    const pid_t child = fork();
    if (child < 0)
        throw std::runtime_error("cannot fork");
    if (child == 0)
        _exit(ConvertOnce(options, firstFile, scratch));
    int status = 0;
    rusage usage = {};
    if (wait4(child, &status, 0, &usage) != child || status != 0)
        throw std::runtime_error("the conversion of the child process failed");
    return static_cast<double>(usage.ru_maxrss) * 1024;
}

void Measure(const char* workload, bool compressed, const bench::Settings& settings, bench::Report& report)
{
    const bench::Scratch scratch(settings.directory);
    station::StationOptions options = bench::LargeStation(settings.quick);
    options.compressed = compressed;
    const QStringList inputs = bench::WriteRecording(options, scratch.EmptyDirectory(QStringLiteral("in")));
    scratch.EmptyDirectory(QStringLiteral("out"));
    const double peak = PeakOfConversion(options, inputs.first(), scratch);
    const double samples =
        options.analogChannels * options.segments * options.seconds * options.sampleRate * sizeof(int16_t);
    report.AtMost(1.15, (peak - FixedShare) / samples, workload, "samples " + bench::MegabyteText(samples),
                  bench::MegabyteText(peak));
}

} // namespace

void bench::MeasureMemory(const Settings& settings, Report& report)
{
    Measure("peak memory less 40 MB, large, plain", false, settings, report);
    Measure("peak memory less 40 MB, large, compressed", true, settings, report);
}
