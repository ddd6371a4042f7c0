// What is left of data after a power failure: a file system may have written any of the pages of a file and
// not the others, which are zeros then.
#pragma once

#include "verify/likeness.h"

#include <optional>

namespace verify {

class Source;

struct WrittenData
{
    DataPlaces records;    // that were written whole, in their order; between two places is a hole
    bool hasHoles = false; // before, between or after them
};

/// The written records of the data. Zeros at the begin and the end of the data are holes; between them, in
/// binary data those of more than a record, as no record has the number zero, or of a page; in ASCII all.
/// There are no records if there are more holes than a power failure is likely to leave. most is the number
/// of bytes to look at. Throws Mismatch if the file cannot be read.
WrittenData WrittenDataOf(const DataPlace& place, qint64 most, comtrade::DataType type, const Source& source);

/// Where data begin in a container whose mark for them is in a hole: at the first written record that has a
/// number of the recording's, and in binary data is followed by the next number. Nothing if there is none.
/// Whose data they are remains to be seen. Throws Mismatch if the file cannot be read.
std::optional<DataPlace> FindRecords(const QString& path, qint64 most, comtrade::DataType type,
                                     const Source& source);

/// The most bytes that one record of the recording takes in either form.
qint64 LongestRecord(const Source& source);

} // namespace verify
