#include "station/samplearchive.h"

#include "station/drawing.h"
#include "station/linerecording.h"
#include "station/linescenario.h"
#include "station/waveform.h"

#include <algorithm>

namespace station {

using recorderfile::NamedFile;

namespace {

constexpr int64_t YearStart = 1704067200; // 2024-01-01 00:00:00 UTC, seconds since 1970
constexpr double YearSeconds = 366.0 * 86400.0;
constexpr double QuietShare = 0.15;    // of the recordings
constexpr int LongEvery = 50;          // every so many recordings there is a long one
constexpr int LongSegments = 3;        // of a second each
constexpr double SummerStrength = 0.1; // parts of a year by which recordings are drawn towards the summer
constexpr size_t LinesOfRecorder = 5;
constexpr uint32_t SeedsOfArchive = 100003; // a prime number above MostArchived

struct RecorderRow
{
    const char* directory; // and the names of its files
    const char* station;
    const char* name;
    size_t firstLine; // of the catalogue
    int16_t zone;     // hours
    double rate;      // samples per second
    double until;     // part of the year in which it is at work
};

const RecorderRow Rows[] = {
    {"uzlovaya-1", "ПС Узловая", "РАС-1", 0, 3, 2400, 1.0},
    {"uzlovaya-2", "ПС Узловая", "РАС-2", 20, 3, 2400, 1.0},
    {"zarechnaya-1", "ПС Заречная", "РАС-1", 5, 3, 1200, 1.0},
    {"zarechnaya-2", "ПС Заречная", "РАС-2", 25, 3, 2000, 1.0},
    {"polyarnaya-1", "ПС Полярная", "РАС-1", 10, 3, 1800, 1.0},
    {"lesnaya-1", "ПС Лесная", "РАС-1", 15, 5, 1600, 0.35},
};

// A recorder with what it has recorded so far.
struct Recorder
{
    RecorderRow row;
    std::vector<StationLine> lines;
    int recordings = 0;

    QString Path(const QString& file) const { return QLatin1String(row.directory) + QLatin1Char('/') + file; }
};

std::vector<Recorder> Recorders()
{
    std::vector<Recorder> recorders;
    for (const RecorderRow& row : Rows) {
        const auto first = CatalogueLines().begin() + static_cast<std::ptrdiff_t>(row.firstLine);
        recorders.push_back({row, {first, first + static_cast<std::ptrdiff_t>(LinesOfRecorder)}});
    }
    return recorders;
}

std::vector<NamedFile> SettingsOf(const Recorder& recorder, int number)
{
    const QMap<QString, QString> keys = {
        {QStringLiteral("Объект"), QString::fromUtf8(recorder.row.station)},
        {QStringLiteral("Источник"), QString::fromUtf8(recorder.row.name)},
        {QStringLiteral("Номер шкафа"), QString::number(number)},
        {QStringLiteral("Серийный номер"), QStringLiteral("%1").arg(100 + number, 4, 10, QLatin1Char('0'))}};
    return {{recorder.Path(QStringLiteral("ZuDrv.ini")), MakeLinesStationIni(recorder.lines, keys).toUtf8()},
            {recorder.Path(QStringLiteral("lines.ini")), MakeLinesIni(recorder.lines).toUtf8()}};
}

// A part of the year for an even part of the recordings: close together in the middle of the year.
double PartOfYear(double part)
{
    return part + SummerStrength * SineOfTurns(part);
}

// One after the other.
class Maker
{
public:
    explicit Maker(const ArchiveOptions& options_) : options(options_), recorders(Recorders()) {}

    const std::vector<Recorder>& All() const { return recorders; }

    std::vector<NamedFile> Recording(int index)
    {
        Drawing draw(options.seed * SeedsOfArchive + static_cast<uint32_t>(index));
        const double part = PartOfYear((index + draw.Between(0.1, 0.9)) / options.recordings);
        Recorder& recorder = OneAtWork(draw, part);
        const LineScenario scenario = ScenarioFor(recorder, draw, index, part);
        std::vector<NamedFile> files = MakeLineFiles(scenario);
        Spoil(files, index);
        for (NamedFile& file : files)
            file.name = recorder.Path(file.name);
        return files;
    }

private:
    Recorder& OneAtWork(Drawing& draw, double part)
    {
        std::vector<size_t> places;
        for (size_t place = 0; place < recorders.size(); ++place)
            if (part < recorders[place].row.until)
                places.push_back(place);
        return recorders[draw.OneOf(places)];
    }

    LineScenario ScenarioFor(Recorder& recorder, Drawing& draw, int index, double part) const
    {
        const uint32_t seed = options.seed * SeedsOfArchive + static_cast<uint32_t>(index);
        const bool isQuiet = draw.Chance(QuietShare);
        LineScenario scenario = isQuiet && !IsSpoilt(index) ? RandomQuiet(seed, recorder.lines)
                                                            : RandomFault(seed, recorder.lines);
        scenario.stem = QStringLiteral("%1_%2")
                            .arg(QLatin1String(recorder.row.directory))
                            .arg(++recorder.recordings, 6, 10, QLatin1Char('0'));
        scenario.identity = QStringLiteral("%1, %2").arg(QString::fromUtf8(recorder.row.station),
                                                         QString::fromUtf8(recorder.row.name));
        scenario.zone = recorder.row.zone;
        scenario.sampleRate = recorder.row.rate;
        scenario.startSecond =
            YearStart + static_cast<int64_t>(part * YearSeconds) - recorderfile::Recording().startTime;
        if (index % LongEvery == LongEvery / 2 || IsSpoilt(index)) {
            scenario.seconds = LongSegments;
            scenario.segmentSamples = static_cast<size_t>(recorder.row.rate);
        }
        return scenario;
    }

    int CutOff() const { return options.recordings / 3; }
    int Torn() const { return options.recordings / 2; }
    bool IsSpoilt(int index) const { return index == CutOff() || index == Torn(); }

    // Of the long recordings one ends in the middle of its first file, as after a broken transmission, and
    // one has lost its second file.
    void Spoil(std::vector<NamedFile>& files, int index) const
    {
        if (index == CutOff())
            files.front().bytes.truncate(files.front().bytes.size() / 2);
        else if (index == Torn())
            files.erase(files.begin() + 1);
    }

    const ArchiveOptions options;
    std::vector<Recorder> recorders;
};

} // namespace

QStringList ArchiveDirectories()
{
    QStringList directories;
    for (const RecorderRow& row : Rows)
        directories << QLatin1String(row.directory);
    return directories;
}

bool MakeArchive(const ArchiveOptions& options, const std::function<bool(const NamedFile& file)>& take)
{
    Maker maker(options);
    const auto takeAll = [&take](const std::vector<NamedFile>& files) {
        return std::all_of(files.begin(), files.end(), take);
    };
    int number = 0;
    for (const Recorder& recorder : maker.All())
        if (!takeAll(SettingsOf(recorder, ++number)))
            return false;
    for (int index = 0; index < options.recordings; ++index)
        if (!takeAll(maker.Recording(index)))
            return false;
    return true;
}

} // namespace station
