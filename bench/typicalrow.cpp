// An archive of typical recordings, one after the other through one device.
#include "measure.h"
#include "plaincopy.h"
#include "recording/zufilelayout.h"
#include "rows.h"
#include "workload.h"

#include <QFile>
#include <QFileInfo>

#include <cstring>
#include <stdexcept>

namespace {

constexpr int BatchRounds = 4;             // recordings of each kind of start whose outputs are there at once
constexpr uint32_t RecordingInterval = 60; // seconds
constexpr int OutputsOfRecording = 4;      // CFG, DAT, HDR, INF

// Moves a recording to a later time, so that each gets output names of its own.
QByteArray Later(QByteArray file, uint32_t seconds)
{
    ZuFileHeader header;
    std::memcpy(&header, file.constData(), sizeof header);
    header.startTime += seconds;
    header.trigTime += seconds;
    std::memcpy(file.data(), &header, sizeof header);
    return file;
}

std::vector<QByteArray> KindsOfRecordings(const station::StationOptions& options)
{
    std::vector<QByteArray> kinds;
    for (const station::StartKind start : station::PossibleStarts(options)) {
        recorderfile::Recording recording = station::MakeRecording(options, start).front();
        const recorderfile::Recording usual;
        recording.trigTime = recording.trigTime - recording.startTime + usual.startTime;
        recording.startTime = usual.startTime;
        kinds.push_back(recorderfile::Encode(recording));
    }
    return kinds;
}

// Recordings of all kinds of start in turn, at rising times.
QStringList WriteArchive(const std::vector<QByteArray>& kinds, int count, const QString& directory)
{
    QStringList paths;
    for (int i = 0; i < count; ++i) {
        const QByteArray& kind = kinds[static_cast<size_t>(i) % kinds.size()];
        paths.append(directory + QString::asprintf("/rec_%06d.ZU", i));
        if (!recorderfile::WriteFile(paths.last(), Later(kind, static_cast<uint32_t>(i) * RecordingInterval)))
            throw std::runtime_error("cannot write " + paths.last().toStdString());
    }
    return paths;
}

// The work of the plain program for a batch: names and sizes as the conversion made them.
struct PlainWork
{
    std::vector<QByteArray> inputs;
    std::vector<QByteArray> names;          // final ones
    std::vector<QByteArray> temporaryNames; // of the same files
    std::vector<size_t> sizes;
};

PlainWork PlainWorkOf(const QStringList& inputs, const QStringList& outputs)
{
    if (outputs.size() != OutputsOfRecording * inputs.size())
        throw std::runtime_error("the recordings do not have four outputs each");
    PlainWork work;
    for (const QString& input : inputs)
        work.inputs.push_back(QFile::encodeName(input));
    for (const QString& output : outputs) {
        work.names.push_back(QFile::encodeName(output));
        work.temporaryNames.push_back(work.names.back() + "tmp");
        work.sizes.push_back(static_cast<size_t>(QFileInfo(output).size()));
    }
    return work;
}

// The names are in order of time, so that the outputs of a recording are next to each other.
void DoPlainly(const PlainWork& work)
{
    size_t output = 0;
    for (const QByteArray& input : work.inputs) {
        bool good = PlainRead(input.constData()) == 0;
        for (int i = 0; i < OutputsOfRecording; ++i, ++output) {
            const PlainOutput file = {work.temporaryNames[output].constData(), work.names[output].constData(),
                                      work.sizes[output]};
            good = good && PlainWrite(&file) == 0;
        }
        if (!good)
            throw std::runtime_error("the plain program cannot read or write");
    }
}

} // namespace

void bench::MeasureTypical(const Settings& settings, Report& report)
{
    const Scratch scratch(settings.directory);
    const station::StationOptions options = TypicalStation();
    const std::vector<QByteArray> kinds = KindsOfRecordings(options);
    // A round is a batch. All batches have the same recordings, but for their times.
    const int batchSize = BatchRounds * static_cast<int>(kinds.size());
    const int count = (settings.quick ? 200 : 2000) / batchSize * batchSize;
    const QStringList archive = WriteArchive(kinds, count, scratch.EmptyDirectory(QStringLiteral("in")));
    Device device(options, Form::Ascii2013, scratch);

    Contest contest;
    do {
        for (int first = 0; first < count; first += batchSize) {
            const QStringList inputs = archive.mid(first, batchSize);
            const QString out = scratch.EmptyDirectory(QStringLiteral("out"));
            const double measured = SecondsOf([&] {
                for (const QString& input : inputs)
                    device.Convert(input, out);
            });
            const PlainWork work = PlainWorkOf(inputs, scratch.Files(QStringLiteral("out")));
            scratch.EmptyDirectory(QStringLiteral("out"));
            const double limit = SecondsOf([&] { DoPlainly(work); });
            contest.Add(limit / batchSize, measured / batchSize);
        }
    } while (contest.GoesOn(settings));
    report.AtMost(2.5, contest,
                  "typical recording, one of " + std::to_string(count) + ", compressed, ASCII 2013",
                  "plain C");
}
