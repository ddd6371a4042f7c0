// Records read by blocks against reading their bytes.
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

constexpr int Analog = 64;
constexpr int States = 128;

QByteArray ConfigurationText(const char* type, int samples)
{
    QByteArray text = "Station,Device,1999\r\n" + QByteArray::number(Analog + States) + ',' +
                      QByteArray::number(Analog) + "A," + QByteArray::number(States) + "D\r\n";
    for (int i = 1; i <= Analog; ++i)
        text += QByteArray::number(i) + ",I,A,Q,A,0.5,0,0,-32767,32767,1,1,S\r\n";
    for (int i = 1; i <= States; ++i)
        text += QByteArray::number(i) + ",T,,Q,0\r\n";
    return text + "50\r\n1\r\n2400," + QByteArray::number(samples) +
           "\r\n31/01/2024,12:00:00.25\r\n31/01/2024,12:00:00.25\r\n" + type + "\r\n1\r\n";
}

void Write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("no room for the record");
}

// Waves of all magnitudes, with codes of one to five digits, and states that change now and then.
int CodeOf(int sample, int channel)
{
    const int phase = (sample * 11 + channel * 37) % 500 - 250;
    return (250 * 250 - phase * phase) * (channel % 13 + 1) / 25 *
           ((sample / 500 + channel) % 2 == 0 ? 1 : -1);
}

bool StateOf(int sample, int channel)
{
    return (sample / 3000 + channel * 7) % 11 == 0;
}

QByteArray AsciiRecord(int sample)
{
    QByteArray line = QByteArray::number(sample + 1) + ',' + QByteArray::number(qint64{sample} * 1250 / 3);
    for (int i = 0; i < Analog; ++i)
        line += ',' + QByteArray::number(CodeOf(sample, i));
    for (int i = 0; i < States; ++i)
        line += StateOf(sample, i) ? ",1" : ",0";
    return line + "\r\n";
}

void AppendWord(QByteArray& bytes, qint64 value, int size)
{
    for (int i = 0; i < size; ++i)
        bytes.append(static_cast<char>(value >> (8 * i) & 0xff));
}

QByteArray BinaryRecord(int sample)
{
    QByteArray record;
    AppendWord(record, sample + 1, 4);
    AppendWord(record, qint64{sample} * 1250 / 3, 4);
    for (int i = 0; i < Analog; ++i)
        AppendWord(record, CodeOf(sample, i), 2);
    for (int first = 0; first < States; first += 16) {
        int word = 0;
        for (int i = 0; i < 16; ++i)
            word |= StateOf(sample, first + i) ? 1 << i : 0;
        AppendWord(record, word, 2);
    }
    return record;
}

void WriteRecord(const QString& base, const char* type, QByteArray (*recordOf)(int), int samples)
{
    Write(base + QStringLiteral(".cfg"), ConfigurationText(type, samples));
    QFile file(base + QStringLiteral(".dat"));
    if (!file.open(QIODevice::WriteOnly))
        throw std::runtime_error("no room for the record");
    for (int sample = 0; sample < samples; ++sample)
        if (file.write(recordOf(sample)) < 0)
            throw std::runtime_error("no room for the record");
}

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
    const int samples = settings.quick ? 20000 : 200000;
    const Scratch scratch(settings.directory);
    const QString ascii = scratch.Path(QStringLiteral("ascii"));
    const QString binary = scratch.Path(QStringLiteral("binary"));
    WriteRecord(ascii, "ASCII", AsciiRecord, samples);
    WriteRecord(binary, "BINARY", BinaryRecord, samples);
    std::vector<char> buffer(size_t{1} << 20U);
    const auto measure = [&](const QString& base, Fastest& bytes, Fastest& record) {
        bytes.Add(SecondsOf([&] { ReadBytes(base + QStringLiteral(".dat"), buffer); }));
        record.Add(SecondsOf([&] { ReadRecord(base + QStringLiteral(".cfg"), samples); }));
    };
    Fastest asciiBytes;
    Fastest asciiRecord;
    Fastest binaryBytes;
    Fastest binaryRecord;
    for (int round = 0; round < 4 * settings.rounds; ++round) {
        measure(ascii, asciiBytes, asciiRecord);
        measure(binary, binaryBytes, binaryRecord);
    }
    report.AtLeast(0.4, asciiBytes.Seconds() / asciiRecord.Seconds(),
                   "reading ASCII, speed against its bytes", "read " + TimeText(asciiBytes.Seconds()),
                   TimeText(asciiRecord.Seconds()));
    report.Detail("reading BINARY; its bytes " + TimeText(binaryBytes.Seconds()),
                  TimeText(binaryRecord.Seconds()));
}
