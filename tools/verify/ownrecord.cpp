#include "verify/ownrecord.h"

#include "comtrade/mark.h"
#include "device/zucmtrdevparam.h"
#include "text/error.h"
#include "text/texts.h"
#include "verify/device.h"
#include "verify/likeness.h"
#include "verify/mismatch.h"
#include "verify/recordfiles.h"
#include "verify/source.h"
#include "verify/stamp.h"
#include "verify/tornconfiguration.h"
#include "verify/writtenparts.h"

#include "explain/system.h"

#include <QTextCodec>

#include <algorithm>
#include <array>
#include <exception>
#include <new>
#include <optional>

namespace verify {

namespace {

constexpr const char* FirstMark = "--- file type: CFG ---";

// What is left of a record in one of the two forms.
struct Remains
{
    bool any = false;
    QString configurationName;
    std::optional<QByteArray> configuration;
    std::optional<DataPlace> data; // unless there are only zeros
    bool hasLostData = false;      // of a container: the mark before its data may be in a hole
};

// No fewer bytes than the recording's data can take in the longer form.
qint64 MostData(const Source& source)
{
    return (source.TotalSamples() + 2) * LongestRecord(source);
}

// The number of bytes up to the last that is not zero: after a power failure there are zeros where data was
// not written. A failing disk is noticed here: that is no reason to replace what is on it.
qint64 WrittenSize(const DataPlace& place, qint64 most)
{
    QFile file(place.path);
    Open(file);
    Seek(file, place.begin);
    qint64 written = 0;
    for (qint64 position = 0; position < most;) {
        const QByteArray block = Read(file, std::min<qint64>(most - position, 1 << 20));
        if (block.isEmpty())
            break;
        const auto isZero = [](char byte) { return byte == 0; };
        const auto zeros = std::find_if_not(block.rbegin(), block.rend(), isZero) - block.rbegin();
        if (zeros < block.size())
            written = position + block.size() - zeros;
        position += block.size();
    }
    return written;
}

void TakeData(Remains& remains, const DataPlace& place, const Source& source)
{
    const qint64 size = QFile(place.path).size() - place.begin;
    const qint64 written = WrittenSize(place, MostData(source));
    // Part of the first record proves nothing; a line of ASCII data is never much shorter than a binary one.
    if (written < size && written < source.BinaryRecordSize())
        return;
    if (written > 0)
        remains.data = place;
}

Remains SeparateFiles(const QString& base, const Source& source)
{
    Remains remains;
    remains.configurationName = base + QLatin1String(".cfg");
    if (IsThere(remains.configurationName))
        remains.configuration = ReadText(remains.configurationName);
    const DataPlace data = {base + QLatin1String(".dat"), 0, -1};
    const bool hasData = IsThere(data.path);
    if (hasData)
        TakeData(remains, data, source);
    remains.any = remains.configuration || hasData || IsThere(base + QLatin1String(".hdr")) ||
                  IsThere(base + QLatin1String(".inf"));
    return remains;
}

// The sections of a container up to its data. A hole, which a power failure leaves as zeros, may hide a mark:
// then lines of the section after it are taken for ones of the section before it.
class Sections
{
public:
    explicit Sections(const QString& path) : file(path) { Open(file); }

    // Reads up to the data, or as much as texts can take. Throws Mismatch if this is no container.
    void Read()
    {
        QString section = QStringLiteral("CFG"); // the first one, if its mark is in a hole
        for (bool first = true; !atEnd && !mark; first = false) {
            const QByteArray line = Line();
            const std::optional<comtrade::Mark> found =
                comtrade::MarkOf(line.mid(line.lastIndexOf('\0') + 1));
            if (first && !found && !QByteArray(FirstMark).startsWith(Written(line)))
                throw Mismatch(Tr("verify", "'%1' is not a COMTRADE record").arg(file.fileName()));
            if (found && found->kind == QLatin1String("DAT"))
                mark = found;
            else if (found)
                section = found->kind;
            if (!found && section == QLatin1String("CFG"))
                configuration += first ? line.mid(Written(line).size()) : line; // without part of the mark
        }
    }

    const QByteArray& Configuration() const { return configuration; }

    // The data, if their mark is there.
    std::optional<DataPlace> Data() const
    {
        if (!mark)
            return std::nullopt;
        return DataPlace{file.fileName(), file.pos(), mark->dataBytes};
    }

    // Whether there is a hole before the end of what is written, so that the mark may be in it.
    bool MayHideMark() const { return goesOn; }

private:
    // The next line, or a piece of one. Zeros are a piece of their own, so that a mark after them is whole.
    QByteArray Line()
    {
        constexpr qint64 step = 4096;
        QByteArray line = file.readLine(step);
        const int zero = line.lastIndexOf('\0');
        if (zero >= 0 && !line.endsWith('\n')) {
            Seek(file, file.pos() - (line.size() - zero - 1));
            line.truncate(zero + 1);
        }
        textSize += line.size();
        const bool isTooLong = textSize > LargestText;
        atEnd = line.isEmpty() || isTooLong;
        if (isTorn || zero >= 0) {
            const QByteArray afterZero = isTorn ? line : line.mid(line.indexOf('\0'));
            goesOn = goesOn || isTooLong || afterZero.count('\0') < afterZero.size();
            isTorn = true;
        }
        return line;
    }

    QFile file;
    QByteArray configuration;
    std::optional<comtrade::Mark> mark;
    qint64 textSize = 0;
    bool atEnd = false;
    bool isTorn = false; // there were zeros
    bool goesOn = false; // after them
};

Remains Container(const QString& path, const Source& source)
{
    Remains remains;
    remains.configurationName = path;
    remains.any = IsThere(path);
    if (!remains.any)
        return remains;
    Sections sections(path);
    sections.Read();
    remains.configuration = sections.Configuration();
    if (const std::optional<DataPlace> data = sections.Data())
        TakeData(remains, *data, source);
    else
        remains.hasLostData = sections.MayHideMark();
    return remains;
}

std::optional<comtrade::Configuration> Parsed(const Remains& remains)
{
    if (!remains.configuration)
        return std::nullopt;
    try {
        return comtrade::ParseConfiguration(*remains.configuration, remains.configurationName);
    } catch (const comtrade::Error&) {
        return std::nullopt;
    }
}

// Throws Mismatch unless stamps and numbers of channels are the recording's.
void CheckIdentity(const comtrade::Configuration& configuration, const QString& name, const Source& source)
{
    const auto place = [&](const QString& what) {
        return QLatin1Char('\'') + name + QLatin1String("', ") + what;
    };
    const auto text = [](const comtrade::TimeStamp& stamp) {
        return StampText({stamp.date, stamp.nanoseconds / 1000});
    };
    ExpectSame(place(Tr("verify", "first sample")), text(configuration.start),
               StampText(StartMoment(source)));
    ExpectSame(place(Tr("verify", "trigger")), text(configuration.trigger), StampText(TriggerMoment(source)));
    ExpectSame(place(Tr("verify", "number of analog channels")),
               static_cast<qint64>(configuration.analog.size()), static_cast<qint64>(source.AnalogCount()));
    ExpectSame(place(Tr("verify", "number of state channels")),
               static_cast<qint64>(configuration.states.size()), static_cast<qint64>(source.StateCount()));
}

// Whether a configuration with holes has a stamp of the recording. Throws Mismatch if it has one of another.
bool HasItsStamps(const QByteArray& configuration, const QString& name, const Source& source)
{
    const QStringList found = WrittenStamps(configuration);
    const QString expected[] = {StampText(StartMoment(source)), StampText(TriggerMoment(source))};
    for (const QString& stamp : found) {
        if (stamp != expected[0] && stamp != expected[1])
            ExpectSame(QLatin1Char('\'') + name + QLatin1String("', ") + Tr("verify", "trigger"), stamp,
                       expected[1]);
    }
    return !found.isEmpty();
}

// A record with fewer samples was made before the last files of the recording came.
void CheckLength(const comtrade::Configuration& configuration, const QString& name, const Source& source)
{
    if (configuration.SampleCount() > source.TotalSamples())
        ExpectSame(QLatin1Char('\'') + name + QLatin1String("', ") +
                       Tr("verify", "number of the last sample"),
                   configuration.SampleCount(), source.TotalSamples());
}

// The data as they stand, where zeros are values. If there are holes as well as damage, only what is between
// the holes counts.
Likeness LikenessAsItStands(const DataPlace& data, comtrade::DataType type, const Source& source)
{
    const Likeness likeness = Compare(data, type, source);
    if (likeness.compared > 0 && likeness.others &&
        WrittenDataOf(data, MostData(source), type, source).hasHoles)
        return {};
    return likeness;
}

// What is written of data with holes. Of a container whose mark for the data may be in one, the records
// themselves show where the data begin.
Likeness LikenessOfTorn(const Remains& remains, comtrade::DataType type, const Source& source)
{
    const qint64 most = MostData(source);
    const std::optional<DataPlace> data =
        remains.hasLostData ? FindRecords(remains.configurationName, LargestText + most, type, source)
                            : remains.data;
    if (!data)
        return {};
    const WrittenData written = WrittenDataOf(*data, most, type, source);
    return written.hasHoles || remains.hasLostData ? CompareTorn(written.records, type, source) : Likeness();
}

// The data in the form that fits best: a killed run can leave a configuration with data of another form.
Likeness LikenessOf(const Remains& remains, const Source& source)
{
    constexpr std::array<comtrade::DataType, 2> types = {comtrade::DataType::Ascii,
                                                         comtrade::DataType::Binary};
    Likeness best;
    const auto agrees = [&best](const Likeness& likeness) {
        if (likeness.Agrees() || likeness.compared > best.compared)
            best = likeness;
        return likeness.Agrees();
    };
    for (const comtrade::DataType type : types) {
        if (remains.data && agrees(LikenessAsItStands(*remains.data, type, source)))
            return best;
    }
    for (const comtrade::DataType type : types) {
        if (agrees(LikenessOfTorn(remains, type, source)))
            return best;
    }
    return best;
}

// Of a record without data that can be read: only zeros, or in a container nothing that is known as data.
RecordState JudgeWithoutData(const Remains& remains, const Source& source, bool isIdentified)
{
    // Something after a hole may be the data of another recording with the same channels.
    if (isIdentified || !remains.configuration ||
        (!remains.hasLostData && MayBeConfiguration(*remains.configuration, source)))
        return RecordState::Unfinished;
    throw Mismatch(Tr("verify", "'%1' is not a COMTRADE record").arg(remains.configurationName));
}

RecordState Judge(const Remains& remains, const Source& source)
{
    if (!remains.any)
        return RecordState::Absent;
    const std::optional<comtrade::Configuration> configuration = Parsed(remains);
    const bool isIdentified =
        configuration ||
        (remains.configuration && HasItsStamps(*remains.configuration, remains.configurationName, source));
    if (configuration)
        CheckIdentity(*configuration, remains.configurationName, source);
    const Likeness likeness = LikenessOf(remains, source);
    const bool begins = likeness.compared > 0 && !likeness.differs;
    if (begins &&
        (likeness.longer || (configuration && configuration->SampleCount() > source.TotalSamples())))
        return RecordState::Longer;
    if (configuration)
        CheckLength(*configuration, remains.configurationName, source);
    if (likeness.Agrees()) {
        const qint64 samples = configuration ? configuration->SampleCount() : source.TotalSamples();
        const bool isWhole = (likeness.torn ? likeness.compared : likeness.last) >= samples;
        return remains.configuration && isWhole ? RecordState::Own : RecordState::Unfinished;
    }
    if (likeness.compared > 0 || (remains.data && !isIdentified))
        throw Mismatch(Tr("verify", "'%1' has other samples than the recording")
                           .arg(remains.data ? remains.data->path : remains.configurationName));
    return JudgeWithoutData(remains, source, isIdentified);
}

} // namespace

Standing StandingOf(const Source& source, const QString& directory, const QString& recordName)
{
    const QString base = directory + QLatin1Char('/') + recordName;
    const auto judge = [&](bool container) {
        return Judge(container ? Container(base + QLatin1String(".cff"), source)
                               : SeparateFiles(base, source),
                     source);
    };
    try {
        const bool container = source.Owner().Param().ComtradeCff;
        const RecordState state = judge(container);
        return {state != RecordState::Absent ? state : judge(!container), QString()};
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        return {RecordState::Foreign, text::MessageOf(error)};
    }
}

} // namespace verify
