// The data of a record, record by record.
#include "device/zucmtrdevparam.h"
#include "text/texts.h"
#include "verify/checks.h"
#include "verify/device.h"
#include "verify/mismatch.h"
#include "verify/source.h"
#include "verify/walk.h"

#include <cmath>

namespace verify {

namespace {

QString CodeText(double code)
{
    return std::isnan(code) ? Tr("verify", "missing") : QString::number(code, 'g', 17);
}

class DataCheck
{
public:
    DataCheck(const Source& source_, const QString& fileName_)
        : source(source_), fileName(fileName_), binary(source_.Owner().Param().ComtradeBin), rows(source_),
          walk(rows.At())
    {}

    void Run(comtrade::Record& record)
    {
        comtrade::Row row;
        while (rows.Next()) {
            if (!record.Next(row))
                throw Mismatch(
                    Tr("verify", "'%1' ends after record %2 of %3; free the disk, then convert again")
                        .arg(fileName)
                        .arg(walk.Number() - 1)
                        .arg(source.TotalSamples()));
            CheckHead(row);
            CheckCodes(row);
            CheckStates(row);
            last = walk.Number();
        }
        if (record.Next(row))
            throw Mismatch(Tr("verify", "'%1' goes on after record %2, with which the recording ends")
                               .arg(fileName)
                               .arg(last));
    }

private:
    QString Place() const { return Tr("verify", "'%1', record %2").arg(fileName).arg(walk.Number()); }

    void CheckHead(const comtrade::Row& row) const
    {
        if (row.number != static_cast<quint32>(walk.Number()))
            ExpectSame(Place() + Tr("verify", ", number"), qint64{row.number}, walk.Number());
        const auto time =
            binary ? qint64{static_cast<quint32>(walk.Time())} : static_cast<qint64>(walk.Time());
        const qint64 found = row.hasTime ? row.time : qint64{UnknownTime};
        if (found != time)
            Differ(Place() + Tr("verify", ", time"), QString::number(found), QString::number(time));
    }

    void CheckCodes(const comtrade::Row& row) const
    {
        for (size_t i = 0; i < row.analog.size(); ++i) {
            const double found = row.analog[i];
            const bool missing = !rows.HasSample(i) || (binary && rows.Code(i) == MissingCode);
            if (missing ? std::isnan(found) : found == rows.Code(i))
                continue;
            const AnChannelData& channel = source.Analog(i);
            Differ(Place() + Tr("verify", ", analog channel %1 (%2)").arg(i + 1).arg(channel.CfgName),
                   CodeText(found), missing ? CodeText(NAN) : CodeText(rows.Code(i)));
        }
    }

    void CheckStates(const comtrade::Row& row) const
    {
        for (size_t i = 0; i < row.states.size(); ++i) {
            const bool expected = rows.State(i);
            if (row.states[i] == (expected ? 1 : 0))
                continue;
            const DiChannelData& channel = source.State(i);
            Differ(Place() + Tr("verify", ", state channel %1 (%2)").arg(i + 1).arg(channel.CfgName),
                   QString::number(row.states[i]), QLatin1String(expected ? "1" : "0"));
        }
    }

    const Source& source;
    const QString fileName;
    const bool binary;
    SourceRows rows;
    const Walk& walk;
    qint64 last = 0; // record compared so far
};

} // namespace

void CheckData(comtrade::Record& record, const Source& source, const QString& fileName)
{
    DataCheck(source, fileName).Run(record);
}

} // namespace verify
