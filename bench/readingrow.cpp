// Records read by blocks against reading their bytes.
#include "largerecord.h"
#include "measure.h"
#include "rows.h"
#include "workload.h"

#include "comtrade/record.h"

#include <QFile>

#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>
#include <vector>

namespace {

void ReadBytes(const QString& path, std::vector<char>& buffer)
{
    const int file = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    while (file >= 0 && read(file, buffer.data(), buffer.size()) > 0) {
    }
    close(file);
}

void ReadRecord(const QString& path, int samples)
{
    comtrade::Record record(path);
    comtrade::Block block;
    size_t count = 0;
    while (record.Next(block))
        count += block.count;
    if (count != static_cast<size_t>(samples) || !record.Forgiven().IsEmpty())
        throw std::runtime_error("the record is read wrongly");
}

} // namespace

void bench::MeasureReading(const Settings& settings, Report& report)
{
    const int samples = LargeRecordSamples(settings.quick);
    const Scratch scratch(settings.directory);
    const QString ascii = scratch.Path(QStringLiteral("ascii"));
    const QString binary = scratch.Path(QStringLiteral("binary"));
    WriteLargeRecord(ascii, comtrade::DataType::Ascii, samples);
    WriteLargeRecord(binary, comtrade::DataType::Binary, samples);
    std::vector<char> buffer(size_t{1} << 20U);
    const auto measure = [&](const QString& base) {
        Contest contest;
        while (contest.GoesOn(settings)) {
            const double bytes = ElapsedSecondsOf([&] { ReadBytes(base + QStringLiteral(".dat"), buffer); });
            contest.Add(bytes, ElapsedSecondsOf([&] { ReadRecord(base + QStringLiteral(".cfg"), samples); }));
        }
        return contest;
    };
    report.SpeedAtLeast(0.4, measure(ascii), "reading ASCII, speed against its bytes", "read");
    report.Ratio(measure(binary), "reading BINARY", "read");
}
