// One pass through the data of a record.
#pragma once

#include "comtrade/record.h"

#include <QString>

#include <vector>

namespace info {

struct RecordData
{
    qint64 samples = 0;          // records that were read
    std::vector<qint64> missing; // of each analog channel: samples without a value
    std::vector<qint64>
        changes; // of each discrete channel: samples whose state is not that of the one before
    std::vector<double>
        stampSpans;  // of each rate: seconds from its first time stamp to its last; NaN without any
    QString failure; // why it was not read to its end; then the counts mean nothing
};

/// Reads the record to its end.
RecordData ReadData(comtrade::Record& record);

} // namespace info
