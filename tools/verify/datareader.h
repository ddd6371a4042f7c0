// Reads the records of COMTRADE data one after the other, in blocks.
#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

class QFile;

namespace verify {

struct Row
{
    quint32 number = 0;
    quint64 time = 0;          // as it is stored
    std::vector<qint32> codes; // Missing where there is none
    std::vector<quint8> states;

    static constexpr qint32 Missing = -0x80000000LL;
};

class DataReader
{
public:
    /// file stands at the first record.
    DataReader(QFile& file_, bool binary_, size_t analog, size_t states);

    /// The next record into row; false at the end. Throws Mismatch for a record that is cut or cannot be
    /// understood.
    bool Next(Row& row);

private:
    bool Fill(int size);
    bool NextBinary(Row& row);
    bool NextAscii(Row& row);
    [[noreturn]] void Fail(const QString& text) const;

    QFile& file;
    const bool binary;
    const int recordSize; // binary
    qint64 taken = 0;     // records
    QByteArray block;
    int position = 0; // in the block
    size_t analogCount, stateCount;
};

} // namespace verify
