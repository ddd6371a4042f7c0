#include "verify/verifier.h"

#include "device/zucmtrdevparam.h"
#include "text/error.h"
#include "text/texts.h"
#include "verify/checks.h"
#include "verify/dataimage.h"
#include "verify/pieces.h"
#include "verify/source.h"

#include <optional>

namespace verify {

namespace {

Examined Describe(const Source& source)
{
    return {source.RecordName(), source.Files(), source.Notes(), source.MostRecordSize()};
}

// The converter may have kept the order of the previous recording, or may not have had one yet.
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

// A reader must accept the record. Of one in four files nothing but the configuration is left to try: the
// others were found under their names, and read. Throws what the reader throws.
void CheckReadable(const Pieces& pieces, const Device& device)
{
    const ZuCmtrDevParam& param = device.Param();
    if (param.ComtradeCff || param.Comtrade1999)
        comtrade::Record(pieces.configurationName, comtrade::Strict());
    else
        comtrade::ParseConfiguration(pieces.Configuration(), pieces.configurationName);
}

// Throws Mismatch, and what the reader throws.
void CompareAll(Source& source, const QString& directory, const QString& recordName)
{
    const Device& device = source.Owner();
    const Pieces pieces(directory, recordName.isEmpty() ? source.RecordName() : recordName, device);
    CheckInEitherOrder(pieces, source);
    CheckReadable(pieces, device);
    if (!HasExpectedData(pieces.dataName, pieces.DataBegin(), source)) {
        comtrade::Record record(pieces.configurationName, comtrade::Strict());
        CheckData(record, source, pieces.dataName);
    }
    if (!device.Param().Comtrade1999) {
        CheckReport(pieces.Report(), source, pieces.reportName);
        CheckInformation(pieces.Information(), source, pieces.informationName);
    }
}

} // namespace

Verifier::Verifier(const QString& ini, const QString& defaults, const QString& section)
    : device(ini, defaults, section)
{}

Examined Verifier::Check(const QString& firstFile, const QString& directory, const QString& recordName)
{
    Source source(device, firstFile);
    CompareAll(source, directory, recordName);
    return Describe(source);
}

Presence Verifier::Find(const QString& firstFile, const QString& directory, const QString& recordName)
{
    Source source(device, firstFile);
    Presence presence;
    presence.examined = Describe(source);
    if (!recordName.isEmpty())
        presence.examined.recordName = recordName;
    const QString& name = presence.examined.recordName;
    const std::optional<QString> difference = text::FailureOf([&] { CompareAll(source, directory, name); });
    if (!difference) {
        presence.standing.state = RecordState::Same;
        return presence;
    }
    presence.standing = StandingOf(source, directory, name);
    if (presence.standing.reason.isEmpty() && presence.standing.state != RecordState::Absent)
        presence.standing.reason = *difference;
    return presence;
}

Examined Verifier::Examine(const QString& firstFile)
{
    return Describe(Source(device, firstFile));
}

void ReadThrough(const QString& recordName, const QString& directory, const Device& device)
{
    const Pieces pieces(directory, recordName, device);
    comtrade::Record record(pieces.configurationName, comtrade::Strict());
    comtrade::Row row;
    qint64 count = 0;
    while (record.Next(row))
        ++count;
    if (count != record.Config().SampleCount())
        throw Mismatch(Tr("verify", "'%1' has %2 records, but its configuration says %3")
                           .arg(pieces.dataName)
                           .arg(count)
                           .arg(record.Config().SampleCount()));
}

} // namespace verify
