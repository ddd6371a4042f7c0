// A large record in another form, read back and compared, against reading it and `cp` of the new record.
#include "copylimit.h"
#include "largerecord.h"
#include "measure.h"
#include "rows.h"
#include "workload.h"

#include "forms/exporting.h"

namespace {

using comtrade::DataType;

struct ExportRow
{
    const char* workload;
    DataType from;
    DataType to;
    double target;
};

constexpr ExportRow Rows[] = {
    {"export, 200,000 samples, binary to binary", DataType::Binary, DataType::Binary, 2},
    {"export, 200,000 samples, binary to ASCII", DataType::Binary, DataType::Ascii, 2.5},
    {"export, 200,000 samples, ASCII to binary", DataType::Ascii, DataType::Binary, 3}};

void Measure(const ExportRow& row, const QString& base, const bench::Scratch& scratch,
             const bench::Settings& settings, bench::Report& report)
{
    forms::Request request;
    request.comtrade.data = row.to;
    forms::Source source;
    source.path = base + QStringLiteral(".cfg");
    const QStringList inputs = {source.path, base + QStringLiteral(".dat")};
    bench::Contest contest;
    while (contest.GoesOn(settings)) {
        const QString out = scratch.EmptyDirectory(QStringLiteral("out"));
        const double measured =
            bench::ElapsedSecondsOf([&] { forms::Export(source, request, out + QStringLiteral("/record")); });
        const QString copies = scratch.EmptyDirectory(QStringLiteral("copy"));
        const double limit = bench::ElapsedSecondsOf([&] {
            bench::ReadThrough(inputs);
            bench::CopyWithCp(scratch.Files(QStringLiteral("out")), copies);
        });
        contest.Add(limit, measured);
    }
    report.AtMost(row.target, contest, row.workload, "read + cp");
}

} // namespace

void bench::MeasureExport(const Settings& settings, Report& report)
{
    const Scratch scratch(settings.directory);
    const int samples = LargeRecordSamples(settings.quick);
    const QString ascii = scratch.Path(QStringLiteral("ascii"));
    const QString binary = scratch.Path(QStringLiteral("binary"));
    WriteLargeRecord(ascii, DataType::Ascii, samples);
    WriteLargeRecord(binary, DataType::Binary, samples);
    for (const ExportRow& row : Rows)
        Measure(row, row.from == DataType::Ascii ? ascii : binary, scratch, settings, report);
}
