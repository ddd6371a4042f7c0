// The ASCII records of one segment against fprintf, one value per call.
#include "measure.h"
#include "plainrecords.h"
#include "prepared.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "rows.h"

#include <QFile>

#include <cmath>
#include <stdexcept>

namespace {

// The values of the records, laid out for the plain program.
class RecordValues
{
public:
    RecordValues(const ZuFileFormat& file, const ZuCmtrDevParam& device)
    {
        const double step = 1000000.0 / device.SampleRate; // microseconds
        for (qint64 i = 0; i < device.TotalSamples; ++i)
            times.push_back(static_cast<uint64_t>(std::round(static_cast<double>(i) * step)));
        for (const unsigned int index : device.Resorter->PrevFileAnIndexes)
            codes.push_back(file.AnChannels.at(index)->Samples);
        for (const unsigned int index : device.Resorter->PrevFileDiIndexes)
            AddStates(*file.DiChannels.at(index));
        for (const std::vector<unsigned char>& channel : states)
            stateColumns.push_back(channel.data());
    }

    PlainRecords Records() const
    {
        return {times.size(), times.data(),        codes.size(),
                codes.data(), stateColumns.size(), stateColumns.data()};
    }

private:
    void AddStates(DiChannelData& channel)
    {
        std::vector<unsigned char> column;
        for (const uint64_t time : times)
            column.push_back(channel.GetVal(static_cast<unsigned int>(time)) ? 1 : 0);
        states.push_back(std::move(column));
    }

    std::vector<uint64_t> times;
    std::vector<const int16_t*> codes;
    std::vector<std::vector<unsigned char>> states;
    std::vector<const unsigned char*> stateColumns;
};

bool AreEqual(const QString& first, const QString& second)
{
    QFile one(first);
    QFile other(second);
    return one.open(QIODevice::ReadOnly) && other.open(QIODevice::ReadOnly) && one.size() > 0 &&
           one.readAll() == other.readAll();
}

} // namespace

void bench::MeasureAsciiRecords(const Settings& settings, Report& report)
{
    const Scratch scratch(settings.directory);
    station::StationOptions options = LargeStation(settings.quick);
    options.segments = 1;
    const QStringList inputs = WriteRecording(options, scratch.EmptyDirectory(QStringLiteral("in")));
    Device device(options, Form::Ascii1999, scratch);
    PreparedRecording recording(device, inputs.first());
    const RecordValues values(recording.First(), device.Parameters());
    const PlainRecords records = values.Records();

    Contest contest;
    const QString libraryFile = scratch.Path(QStringLiteral("library.dat"));
    const QString plainFile = scratch.Path(QStringLiteral("plain.dat"));
    while (contest.GoesOn(settings)) {
        QFile::remove(libraryFile);
        const double measured = SecondsOf([&] { recording.WriteDat(libraryFile); });
        QFile::remove(plainFile);
        const double plain =
            SecondsOf([&] { WritePlainRecords(QFile::encodeName(plainFile).constData(), &records); });
        contest.Add(plain, measured);
    }
    if (!AreEqual(libraryFile, plainFile))
        throw std::runtime_error("the plain program writes other records");
    report.SpeedAtLeast(8, contest, "ASCII records, 64 analog and 128 discrete", "fprintf");
}
