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

constexpr int BatchSize = 100;             // recordings whose outputs are there at once
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

// Recordings of all kinds of start in turn, at rising times.
QStringList WriteArchive(const station::StationOptions& options, int count, const QString& directory)
{
    std::vector<QByteArray> kinds;
    for (const station::StartKind start : station::PossibleStarts(options)) {
        recorderfile::Recording recording = station::MakeRecording(options, start).front();
        const recorderfile::Recording usual;
        recording.trigTime = recording.trigTime - recording.startTime + usual.startTime;
        recording.startTime = usual.startTime;
        kinds.push_back(recorderfile::Encode(recording));
    }
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
    const int count = settings.quick ? 200 : 2000;
    const QStringList archive = WriteArchive(options, count, scratch.EmptyDirectory(QStringLiteral("in")));
    Device device(options, Form::Ascii2013, scratch);

    Fastest conversion;
    Fastest limit;
    for (int round = 0; round < settings.rounds; ++round) {
        double converting = 0;
        double plain = 0;
        for (int begin = 0; begin < count; begin += BatchSize) {
            const QStringList inputs = archive.mid(begin, BatchSize);
            const QString out = scratch.EmptyDirectory(QStringLiteral("out"));
            converting += SecondsOf([&] {
                for (const QString& input : inputs)
                    device.Convert(input, out);
            });
            const PlainWork work = PlainWorkOf(inputs, scratch.Files(QStringLiteral("out")));
            scratch.EmptyDirectory(QStringLiteral("out"));
            plain += SecondsOf([&] { DoPlainly(work); });
        }
        conversion.Add(converting);
        limit.Add(plain);
    }
    report.AtMost(5, conversion.Seconds() / limit.Seconds(),
                  "typical, " + std::to_string(count) + " recordings, compressed, ASCII 2013",
                  "plain C " + TimeText(limit.Seconds()), TimeText(conversion.Seconds()));
    report.Detail("typical, one recording", TimeText(conversion.Seconds() / count));
}
