// The bytes that the data of a record have when they are as the library writes them, held against those that
// are there.
//
// A record whose bytes are these holds every number, time, code and state of the recording, and nothing else.
// Others may say the same in other bytes; so only a "yes" is an answer here, and what is wrong is found by
// datacheck.cpp.
#pragma once

#include <QString>

namespace verify {

class Source;

/// Whether the file has these bytes from begin to its end. False also if it cannot be read.
bool HasExpectedData(const QString& path, qint64 begin, const Source& source);

} // namespace verify
