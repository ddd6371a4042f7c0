#include "verify/verifier.h"

#include "service/zucmtrconverter.h"
#include "verify/checks.h"
#include "verify/datareader.h"
#include "verify/pieces.h"
#include "verify/source.h"
#include "zucmtr/texts.h"

namespace verify {

namespace {

// How many of what a configuration announces.
struct Shape
{
    size_t analog, states;
    qint64 samples;
};

// The number at the begin of a field.
qint64 CountIn(const QByteArray& line, int field)
{
    const QByteArray text = line.split(',').value(field);
    return text.left(text.size() - (text.endsWith('A') || text.endsWith('D') ? 1 : 0)).toLongLong();
}

Shape ShapeOf(const QByteArray& configuration, const QString& fileName)
{
    const QList<QByteArray> lines = configuration.split('\n');
    const qint64 analog = CountIn(lines.value(1), 1);
    const qint64 states = CountIn(lines.value(1), 2);
    const qint64 rateLine = 2 + analog + states + 2;
    if (analog < 0 || states < 0 || rateLine >= lines.size())
        throw Mismatch(Tr("verify", "'%1' has fewer lines than channels").arg(fileName));
    return {static_cast<size_t>(analog), static_cast<size_t>(states),
            CountIn(lines[static_cast<int>(rateLine)], 1)};
}

Examined Describe(const Source& source)
{
    return {source.RecordName(), source.Files(), source.Notes()};
}

// The converter may keep the order of the recording before, or may not have had one before.
void CheckInEitherOrder(const Pieces& pieces, Source& source)
{
    try {
        CheckConfiguration(pieces.Configuration(), source, pieces.configurationName);
        return;
    } catch (const Mismatch&) {
        source.OrderAfresh();
    }
    CheckConfiguration(pieces.Configuration(), source, pieces.configurationName);
}

} // namespace

Verifier::Verifier(const QString& ini, const QString& defaults, const QString& section)
    : device(ini, defaults, section)
{}

Examined Verifier::Check(const QString& firstFile, const QString& directory)
{
    Source source(device, firstFile);
    Pieces pieces(directory, source.RecordName(), device);
    CheckInEitherOrder(pieces, source);
    CheckData(pieces.Data(), source);
    if (!device.Param().Comtrade1999) {
        CheckReport(pieces.Report(), source, pieces.reportName);
        CheckInformation(pieces.Information(), source, pieces.informationName);
    }
    return Describe(source);
}

Examined Verifier::Examine(const QString& firstFile)
{
    return Describe(Source(device, firstFile));
}

void ReadThrough(const QString& recordName, const QString& directory, const Device& device)
{
    Pieces pieces(directory, recordName, device);
    const Shape shape = ShapeOf(pieces.Configuration(), pieces.configurationName);
    DataReader reader(pieces.Data(), device.Param().ComtradeBin, shape.analog, shape.states);
    Row row;
    qint64 count = 0;
    while (reader.Next(row))
        ++count;
    if (count != shape.samples)
        throw Mismatch(Tr("verify", "'%1' has %2 records, but its configuration says %3")
                           .arg(pieces.dataName)
                           .arg(count)
                           .arg(shape.samples));
}

} // namespace verify
