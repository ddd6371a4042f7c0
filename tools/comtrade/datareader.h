// The data of a COMTRADE record, record by record.
#pragma once

#include "comtrade/record.h"

#include <QFile>

#include <exception>

namespace comtrade {

/// Reads a part of a file in blocks.
class DataReader
{
public:
    /// Data of the given form from offset on, length bytes (-1: to the end of the file, and for ASCII to the
    /// next mark of a container). What is forgiven is added to forgiven_; without it, it is an Error, after
    /// which Next goes on with the next line of ASCII data. All but the path must outlive the reader. Throws
    /// Error.
    DataReader(const QString& path, qint64 offset, qint64 length, const Configuration& configuration_,
               Findings* forgiven_ = nullptr);

    /// Like Record::Next.
    bool Next(Row& row);
    bool Next(Block& block);

private:
    bool Fill(size_t wanted);
    bool NextAscii(Row& row);
    bool NextBinary(Row& row);
    void ParseLine(const char* line, const char* end, Row& row) const;
    [[noreturn]] void Fail(const QString& what) const;

    QFile file;
    const Configuration& configuration;
    Findings* const forgiven; // nothing is, if there is none
    qint64 left;              // bytes of the part that are not read yet
    std::vector<char> buffer;
    size_t begin = 0; // of what is read but not taken yet
    size_t end = 0;
    qint64 record = 0; // the current one, counted from 1
    Row one;           // of a block
    std::exception_ptr failure;
};

} // namespace comtrade
