// Records as files: a byte that says which, then a container, or the pieces of a configuration and a header
// and the data. They are read to their end, by blocks and one by one, forgivingly and strictly. What is
// delivered must be in proportion to the bytes of the record.
#include "support.h"

#include "comtrade/record.h"

#include <QDir>

#include <new>

namespace {

constexpr unsigned Container = 1;
constexpr unsigned IsStrict = 2;
constexpr unsigned OneByOne = 4;

QString WriteRecord(unsigned bits, fuzz::Pieces& pieces)
{
    if ((bits & Container) != 0)
        return fuzz::Write(QStringLiteral("rec.cff"), pieces.Rest());
    const QString path = fuzz::Write(QStringLiteral("rec.cfg"), pieces.Piece());
    const QByteArray header = pieces.Piece();
    if (!header.isEmpty())
        fuzz::Write(QStringLiteral("rec.hdr"), header);
    fuzz::Write(QStringLiteral("rec.dat"), pieces.Rest());
    return path;
}

// Every record has two bytes at least, every channel a line of its own.
void CheckSize(const comtrade::Record& record, qint64 records, size_t size)
{
    const comtrade::Configuration& configuration = record.Config();
    if (records > static_cast<qint64>(size) ||
        configuration.analog.size() + configuration.states.size() > size ||
        configuration.rates.size() > size || record.Forgiven().All().size() > 1000)
        __builtin_trap();
}

void ReadToTheEnd(comtrade::Record& record, bool oneByOne, size_t size)
{
    qint64 records = 0;
    comtrade::Row row;
    comtrade::Block block;
    while (oneByOne ? record.Next(row) : record.Next(block)) {
        records += oneByOne ? 1 : static_cast<qint64>(block.count);
        CheckSize(record, records, size);
    }
    if (oneByOne ? record.Next(row) : record.Next(block))
        __builtin_trap(); // goes on after its end
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::Pieces pieces(data, size);
    fuzz::Clean();
    const unsigned bits = pieces.Byte();
    const QString path = WriteRecord(bits, pieces);
    try {
        comtrade::Record record(path,
                                (bits & IsStrict) != 0 ? comtrade::Strict() : comtrade::ReadingOptions());
        CheckSize(record, 0, size);
        record.HeaderText();
        record.InformationText();
        ReadToTheEnd(record, (bits & OneByOne) != 0, size);
    } catch (const comtrade::Error& error) {
        if (error.Message().isEmpty())
            __builtin_trap();
    }
    return 0;
}
