// Opening a record: separate files, or the sections of a container.
#include "comtrade/record.h"

#include "comtrade/cfglines.h"
#include "comtrade/container.h"
#include "comtrade/datareader.h"
#include "comtrade/forgiving.h"
#include "comtrade/recordfiles.h"
#include "comtrade/text.h"

#include <QFileInfo>

#include <algorithm>

namespace comtrade {

namespace {

// How many records the data hold, as far as they can be read.
qint64 CountRecords(const QString& path, qint64 offset, qint64 length, const Configuration& configuration)
{
    qint64 count = 0;
    try {
        Findings ignored;
        DataReader reader(path, offset, length, configuration, &ignored);
        Block block;
        while (reader.Next(block))
            count += static_cast<qint64>(block.count);
    } catch (const Error&) {
        return count; // reading the data says what is wrong
    }
    return count;
}

} // namespace

bool IsRecordFile(const QString& path)
{
    return path.endsWith(QLatin1String(".cfg"), Qt::CaseInsensitive) ||
           path.endsWith(QLatin1String(".cff"), Qt::CaseInsensitive);
}

Record::Record(const QString& path, const ReadingOptions& options_) : options(options_)
{
    CheckName(path);
    if (!options.encoding.isEmpty() && !IsEncoding(options.encoding))
        throw Error(Tr("comtrade", "there is no encoding '%1'").arg(options.encoding));
    if (path.endsWith(QLatin1String(".cff"), Qt::CaseInsensitive))
        OpenContainer(path);
    else
        OpenPieces(path);
}

Record::~Record() = default;

Findings* Record::Forgiving()
{
    return options.isStrict ? nullptr : &findings;
}

void Record::Parse(const QByteArray& text, const QString& path, qint64 firstLine)
{
    encoding = options.encoding.isEmpty() ? EncodingOf(text) : options.encoding;
    const QString decoded = CfgText(text, encoding, path, firstLine, Forgiving());
    configuration = ParseConfiguration(decoded, path, Forgiving(), firstLine, &places);
}

// A configuration that does not say how many samples there are has as many as the data hold.
void Record::CountSamples(const QString& path, qint64 offset, qint64 length)
{
    if (configuration.SampleCount() > 0)
        return;
    const qint64 count = CountRecords(path, offset, length, configuration);
    if (count == 0)
        return;
    if (configuration.rates.empty())
        configuration.rates.push_back({0, count});
    else
        configuration.rates.back().lastSample = count;
    if (!places.rates.empty())
        Forgive(Forgiving(), places.file, places.rates.back().line, places.rates.back().ColumnOf(1),
                {Severity::Error, reason::CountsDiffer,
                 Tr("comtrade", "the last sample is 0, but there are data"),
                 Tr("comtrade", "%1 samples, as many as the data hold").arg(count)});
}

void Record::OpenPieces(const QString& path)
{
    Parse(ReadText(path), path, 1);
    const RecordFiles files = FilesOf(path, Forgiving());
    header = files.header.isEmpty() ? QByteArray() : ReadText(files.header);
    information = files.information.isEmpty() ? QByteArray() : ReadText(files.information);
    CountSamples(files.data, 0, -1);
    data = std::make_unique<DataReader>(files.data, 0, -1, configuration, Forgiving());
}

void Record::OpenContainer(const QString& path)
{
    if (!QFileInfo::exists(path))
        throw Error(Tr("comtrade", "%1: %2").arg(path, Tr("comtrade", "does not exist")));
    const Container container = ReadContainer(path, Forgiving());
    if (container.configuration.firstLine == 0)
        throw Error(Tr("comtrade", "%1: %2").arg(path, Tr("comtrade", "has no CFG section")));
    Parse(container.configuration.text, path, container.configuration.firstLine);
    if (container.dataOffset < 0)
        throw Error(Tr("comtrade", "%1: %2").arg(path, Tr("comtrade", "has no DAT section")));
    header = container.header.text;
    information = container.information.text;
    const qint64 length = DataLength(path, container, configuration, Forgiving());
    CountSamples(path, container.dataOffset, length);
    data = std::make_unique<DataReader>(path, container.dataOffset, length, configuration, Forgiving());
}

QString Record::HeaderText() const
{
    return DecodedText(header, options.encoding);
}

QString Record::InformationText() const
{
    return DecodedText(information, options.encoding);
}

bool Record::Next(Row& row)
{
    return data->Next(row);
}

bool Record::Next(Block& block)
{
    return data->Next(block);
}

DataType Record::StoredType() const
{
    return data->Type();
}

bool Record::HasStoredRecords() const
{
    return data->Type() != DataType::Ascii && configuration.revision != Revision::R1991;
}

bool Record::Next(NarrowBlock& block)
{
    return data->Next(block);
}

bool Record::Next(StoredRecords& stored)
{
    return data->Next(stored);
}

qint64 Record::MostRecords() const
{
    return data->MostRecords();
}

qint64 Record::ExpectedRecords() const
{
    const qint64 announced = configuration.SampleCount();
    return announced > 0 ? std::min(announced, MostRecords()) : MostRecords();
}

} // namespace comtrade
