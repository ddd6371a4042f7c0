// How the time of a conversion grows with the channels and the length of the recording. There is no target:
// the lines are for those who plan.
#include "measure.h"
#include "rows.h"
#include "workload.h"

namespace {

struct Size
{
    int analog;
    int discrete;
    double seconds;
};

constexpr Size Sizes[] = {{8, 16, 2},    {16, 32, 2}, {32, 64, 2}, {64, 128, 2},
                          {128, 256, 2}, {32, 64, 8}, {32, 64, 32}};
constexpr int RunsInRound = 5;

std::string TextOf(const Size& size)
{
    return std::to_string(size.analog) + " analog, " + std::to_string(size.discrete) + " discrete, " +
           std::to_string(static_cast<int>(size.seconds)) + " s";
}

// Seconds of one conversion of the typical recording in another size.
double SecondsFor(const Size& size, const bench::Settings& settings)
{
    const bench::Scratch scratch(settings.directory);
    station::StationOptions options = bench::TypicalStation();
    options.analogChannels = size.analog;
    options.discreteChannels = size.discrete;
    options.seconds = size.seconds;
    const QStringList files = bench::WriteRecording(options, scratch.EmptyDirectory(QStringLiteral("in")));
    bench::Device device(options, bench::Form::Ascii2013, scratch);
    bench::Fastest time;
    for (int run = 0; run < settings.rounds * RunsInRound; ++run) {
        const QString out = scratch.EmptyDirectory(QStringLiteral("out"));
        time.Add(bench::SecondsOf([&] { device.Convert(files.first(), out); }));
    }
    return time.Seconds();
}

} // namespace

void bench::MeasureGrowth(const Settings& settings, Report& report)
{
    for (const Size& size : Sizes)
        report.Detail("growth, ASCII 2013: " + TextOf(size), TimeText(SecondsFor(size, settings)));
}
