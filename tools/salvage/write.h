// A recording of some channels of another one.
#pragma once

#include "salvage/plan.h"

#include <QString>

#include <vector>

namespace salvage {

/// A recording that could not be written.
class WriteError : public text::Error
{
public:
    WriteError(const QString& sentence, int code_) : text::Error(sentence), code(code_) {}
    const int code; // errno
};

/// Writes files of the same names into the directory, with the chosen channels alone. Apart from the number
/// of sections in the header, each byte is one of the segment's; sections that are no channels stay if they
/// are whole. Returns the path of the first file. Throws WriteError, and Unreadable if a segment cannot be
/// read (any longer).
QString Write(const std::vector<Segment>& segments, const Choice& choice, const QString& directory);

} // namespace salvage
