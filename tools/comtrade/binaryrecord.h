// Binary records: four bytes of the number, four of the time, the codes of the analog channels and words of
// 16 states, each with its lowest byte first.
#pragma once

#include "comtrade/plainline.h"
#include "comtrade/record.h"

namespace comtrade {

/// Bytes of one value of an analog channel.
size_t BinaryValueSize(DataType type);

/// Bytes of one record with data of the type.
size_t BinaryRecordSize(const Configuration& configuration, DataType type);

/// Where the values of analog channels are in a record.
constexpr size_t BinaryValuesOffset = 8;

/// Where the words of states are in a record.
size_t BinaryStatesOffset(const Configuration& configuration, DataType type);

/// Numbers and time stamps of records, as in a Block.
void ReadBinaryHeads(const StoredRecords& records, quint32* numbers, qint64* times);

/// Converts records that follow each other, to targets that do so too.
void ReadBinary(const char* bytes, size_t count, const Configuration& configuration, DataType type,
                Target target);

} // namespace comtrade
