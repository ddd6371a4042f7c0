// How the time of a conversion grows with the segments of the recording.
#include "measure.h"
#include "rows.h"
#include "workload.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <unistd.h>

namespace {

constexpr std::array<int, 5> Counts = {1, 2, 4, 8, 16};
constexpr double SpreadTarget = 15; // percent

// A chain of the first count files. They are links, shared with the longer chain.
QString LinkChain(const QStringList& files, int count, const QString& directory)
{
    for (const QString& file : files.mid(0, count)) {
        const QString name = directory + QLatin1Char('/') + QFileInfo(file).fileName();
        if (link(QFile::encodeName(file).constData(), QFile::encodeName(name).constData()) != 0)
            throw std::runtime_error("cannot link " + name.toStdString());
    }
    return directory + QLatin1Char('/') + QFileInfo(files.first()).fileName();
}

} // namespace

void bench::MeasureSegments(const Settings& settings, Report& report)
{
    const Scratch scratch(settings.directory);
    station::StationOptions options = LargeStation(settings.quick);
    options.segments = Counts.back();
    const QStringList files = WriteRecording(options, scratch.EmptyDirectory(QStringLiteral("in")));
    std::array<QString, Counts.size()> chains;
    for (size_t i = 0; i < Counts.size(); ++i)
        chains[i] =
            LinkChain(files, Counts[i], scratch.EmptyDirectory(QStringLiteral("in%1").arg(Counts[i])));
    Device device(options, Form::Binary1999, scratch);

    std::array<Fastest, Counts.size()> times;
    for (int round = 0; round < settings.rounds; ++round) {
        for (size_t i = 0; i < Counts.size(); ++i) {
            const QString out = scratch.EmptyDirectory(QStringLiteral("out"));
            times[i].Add(SecondsOf([&] { device.Convert(chains[i], out); }));
        }
    }

    std::array<double, Counts.size()> shares = {}; // seconds for each segment
    for (size_t i = 0; i < Counts.size(); ++i) {
        shares[i] = times[i].Seconds() / Counts[i];
        report.Detail("large, " + std::to_string(Counts[i]) + " segments, time for each",
                      TimeText(shares[i]));
    }
    const auto [shortest, longest] = std::minmax_element(shares.begin(), shares.end());
    report.AtMost(SpreadTarget, (*longest / *shortest - 1) * 100,
                  "large, 1 to 16 segments, spread in percent", "shortest " + TimeText(*shortest),
                  "longest " + TimeText(*longest));
}
