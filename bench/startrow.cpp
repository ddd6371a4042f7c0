// The start of the program: as often as an archive's script runs it, it is loaded and linked again.
#include "measure.h"
#include "rows.h"
#include "workload.h"

#include <QFile>

#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int RunsInRound = 10;
constexpr double VersionLimit = 0.008; // seconds
constexpr double ConvertLimit = 0.015;

// Runs the program, without its standard output.
void Run(const std::vector<std::string>& words)
{
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    int status = 0;
    const bool good =
        posix_spawn(&child, ZUCMTR_PROGRAM, &actions, nullptr, arguments.data(), environ) == 0 &&
        waitpid(child, &status, 0) == child && status == 0;
    posix_spawn_file_actions_destroy(&actions);
    if (!good)
        throw std::runtime_error(words.at(0) + " " + words.at(1) + " failed");
}

// A run is too short to be one of two sides, so the limit is a time.
template <class BeforeRun>
void Measure(double limit, const std::string& workload, const std::vector<std::string>& words,
             const BeforeRun& beforeRun, const bench::Settings& settings, bench::Report& report)
{
    bench::Contest contest;
    while (contest.GoesOn(settings)) {
        bench::Fastest fastest;
        for (int run = 0; run < RunsInRound; ++run) {
            beforeRun();
            fastest.Add(bench::SecondsOf([&] { Run(words); }));
        }
        contest.Add(limit, fastest.Seconds());
    }
    report.AtMost(1, contest, workload, "at most");
}

} // namespace

void bench::MeasureStart(const Settings& settings, Report& report)
{
    Measure(VersionLimit, "start, zucmtr --version", {"zucmtr", "--version"}, [] {}, settings, report);

    const Scratch scratch(settings.directory);
    const station::StationOptions options = TypicalStation();
    const QStringList inputs = WriteRecording(options, scratch.EmptyDirectory(QStringLiteral("in")));
    const QString ini = scratch.Path(QStringLiteral("ZuDrv.ini"));
    recorderfile::WriteFile(ini, station::MakeIni(options).toUtf8());
    const QString out = scratch.Path(QStringLiteral("out"));
    Measure(
        ConvertLimit, "start, zucmtr convert, one typical recording",
        {"zucmtr", "convert", "--quiet", "--ini", ini.toStdString(), "--out", out.toStdString(),
         inputs.first().toStdString()},
        [&] { scratch.EmptyDirectory(QStringLiteral("out")); }, settings, report);
}
