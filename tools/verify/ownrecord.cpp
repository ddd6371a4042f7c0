#include "verify/ownrecord.h"

#include "base/codecs.h"
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

#include "explain/system.h"

#include <QTextCodec>

#include <algorithm>
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
    std::optional<DataPlace> data;    // unless there are only zeros
    std::optional<DataPlace> written; // without the zeros at their end, if there are any
};

// No fewer bytes than the recording's data can take in the longer form.
qint64 MostData(const Source& source)
{
    const auto analog = static_cast<qint64>(source.AnalogCount());
    const auto states = static_cast<qint64>(source.StateCount());
    return (source.TotalSamples() + 2) * (128 + 32 * (analog + states));
}

// The number of bytes up to the last that is not zero: after a power failure there are zeros where data was
// not written. A failing disk is noticed here: that is no reason to replace what is on it.
qint64 WrittenSize(const DataPlace& place, qint64 most)
{
    QFile file(place.path);
    Open(file);
    if (!file.seek(place.begin))
        FailToRead(place.path, explain::SystemText(file.errorString()));
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
    if (written > 0 && written < size)
        remains.written = DataPlace{place.path, place.begin, written};
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

// Up to the first zero: what a power failure leaves of a text.
QByteArray Written(const QByteArray& text)
{
    return text.mid(0, text.indexOf('\0')); // all of it if there is none
}

// The sections up to the data; what comes after them is not ours.
Remains Container(const QString& path, const Source& source)
{
    Remains remains;
    remains.configurationName = path;
    remains.any = IsThere(path);
    if (!remains.any)
        return remains;
    remains.configuration = QByteArray();
    QFile file(path);
    Open(file);
    qint64 textSize = 0;
    QString section;
    for (bool first = true;; first = false) {
        constexpr qint64 step = 4096; // a longer line comes in pieces
        const QByteArray line = file.readLine(step);
        textSize += line.size();
        const std::optional<comtrade::Mark> mark = comtrade::MarkOf(line);
        if (first && !mark && !QByteArray(FirstMark).startsWith(Written(line)))
            throw Mismatch(Tr("verify", "'%1' is not a COMTRADE record").arg(path));
        if (line.isEmpty() || textSize > LargestText)
            return remains;
        if (mark && mark->kind == QLatin1String("DAT")) {
            TakeData(remains, {path, file.pos(), mark->dataBytes}, source);
            return remains;
        }
        if (mark)
            section = mark->kind;
        else if (section == QLatin1String("CFG"))
            *remains.configuration += line;
    }
}

// Whether it can be what a power failure left of the recording's configuration: the first lines or part of
// them.
bool IsBeginning(const QByteArray& configuration, const Source& source)
{
    const QByteArray found = Written(configuration).replace("\r", "");
    const ZuCmtrDevParam& param = source.Owner().Param();
    for (const char* year : {"1999", "2013"}) {
        const QString head = param.Object + QLatin1Char(',') + param.Source + QLatin1Char(',') +
                             QLatin1String(year) + QLatin1Char('\n') +
                             QString::number(source.AnalogCount() + source.StateCount()) + QLatin1Char(',') +
                             QString::number(source.AnalogCount()) + QStringLiteral("A,") +
                             QString::number(source.StateCount()) + QStringLiteral("D\n");
        for (const QTextCodec* codec : {zu::CodecUtf8, zu::CodecCP1251}) {
            const QByteArray expected = codec->fromUnicode(head);
            if (found.startsWith(expected) || expected.startsWith(found))
                return true;
        }
    }
    return false;
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

// A record with fewer samples was made before the last files of the recording came.
void CheckLength(const comtrade::Configuration& configuration, const QString& name, const Source& source)
{
    if (configuration.SampleCount() > source.TotalSamples())
        ExpectSame(QLatin1Char('\'') + name + QLatin1String("', ") +
                       Tr("verify", "number of the last sample"),
                   configuration.SampleCount(), source.TotalSamples());
}

// The data in the form that fits best: a killed run can leave a configuration with data of another form. The
// zeros at their end may be values, or stand for what was not written.
Likeness LikenessOf(const Remains& remains, const Source& source)
{
    Likeness best;
    for (const std::optional<DataPlace>& place : {remains.data, remains.written}) {
        if (!place)
            continue;
        for (const comtrade::DataType type : {comtrade::DataType::Ascii, comtrade::DataType::Binary}) {
            const Likeness likeness = Compare(*place, type, source);
            if (likeness.Agrees())
                return likeness;
            if (likeness.compared > best.compared)
                best = likeness;
        }
    }
    return best;
}

RecordState Judge(const Remains& remains, const Source& source)
{
    if (!remains.any)
        return RecordState::Absent;
    const std::optional<comtrade::Configuration> configuration = Parsed(remains);
    if (configuration)
        CheckIdentity(*configuration, remains.configurationName, source);
    if (!remains.data) {
        if (configuration)
            CheckLength(*configuration, remains.configurationName, source);
        if (configuration || !remains.configuration || IsBeginning(*remains.configuration, source))
            return RecordState::Unfinished;
        throw Mismatch(Tr("verify", "'%1' is not a COMTRADE record").arg(remains.configurationName));
    }
    const Likeness likeness = LikenessOf(remains, source);
    const bool begins = likeness.compared > 0 && !likeness.differs;
    if (begins &&
        (likeness.longer || (configuration && configuration->SampleCount() > source.TotalSamples())))
        return RecordState::Longer;
    if (configuration)
        CheckLength(*configuration, remains.configurationName, source);
    if (likeness.Agrees()) {
        const qint64 samples = configuration ? configuration->SampleCount() : source.TotalSamples();
        return remains.configuration && likeness.last >= samples ? RecordState::Own : RecordState::Unfinished;
    }
    if (likeness.compared == 0 && configuration)
        return RecordState::Unfinished;
    throw Mismatch(Tr("verify", "'%1' has other samples than the recording").arg(remains.data->path));
}

} // namespace

Standing StandingOf(const Source& source, const QString& directory)
{
    const QString base = directory + QLatin1Char('/') + source.RecordName();
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
