// The bytes of the data of a COMTRADE record.
#pragma once

#include "comtrade/record.h"
#include "forms/comtradetext.h"

#include <QByteArray>

#include <vector>

namespace forms {

/// A code that the data type cannot hold because it is not whole: with new codes it can.
class NotWhole : public FormError
{
public:
    using FormError::FormError;
};

/// Whether a code has a text of at most 13 characters, which is what ASCII data of 2013 have for it.
bool FitsText(double code);

class DataEncoder
{
public:
    /// The configuration must outlive the encoder.
    explicit DataEncoder(const comtrade::Configuration& configuration_);

    /// Bytes of a record of binary data; 0 for ASCII.
    qint64 RecordSize() const { return recordSize; }

    /// The bytes of all records of a block, which are here until the next call. Throws FormError for what the
    /// data type cannot hold, with the channel, the sample and the value.
    QByteArray Encode(const comtrade::Block& block);

private:
    char* AppendHead(const comtrade::Block& block, size_t row, char* out) const;
    char* AppendCodes(const double* codes, char* out) const;
    char* AppendTexts(const double* codes, char* out) const;
    char* AppendText(double code, size_t channel, char* out) const;
    char* AppendStates(const quint8* states, char* out) const;
    [[noreturn]] void Refuse(size_t channel, double code) const;
    [[noreturn]] void RefuseTime(qint64 time) const;

    const comtrade::Configuration& configuration;
    const bool isAscii;
    const bool isOld; // revision 1999
    const qint64 recordSize;
    qint64 sample = 0; // the current one, counted from 1
    std::vector<char> bytes;
};

} // namespace forms
