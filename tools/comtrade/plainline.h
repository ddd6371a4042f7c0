// ASCII records of the usual form, several bytes at a time: in a portable form and, where the processor has
// them, with 256-bit instructions. Whatever else a line may hold is left to asciirecord.h.
#pragma once

#include <QtGlobal>

#include <cstddef>

namespace comtrade {

/// Where the parts of one record go.
struct Target
{
    quint32* number;
    qint64* time;   ///< Block::NoTime if it is missing
    double* analog; ///< as many as there are channels
    quint8* states;
};

/// What the lines of a file have in common.
struct LineShape
{
    size_t analog; ///< channels
    size_t states;
    qint32 missing; ///< the code that stands for a missing value
};

/// Bytes that may be read, but count for nothing, before a line and after the limit.
constexpr size_t PlainLineMargin = 64;

/// Reads a record in which each number is an optional minus sign (not of the sample number) and up to 8
/// digits, 16 for the number and the time, each state 0 or 1, with one comma between two fields and LF or CR
/// LF at the end. Returns what follows the line; null if it is of another form, or does not end before the
/// limit: then the target may hold anything.
using PlainLineReader = const char* (*)(const char* line, const char* limit, const LineShape& shape,
                                        const Target& target);

/// The best one for this processor.
PlainLineReader BestPlainLineReader();

/// The portable one. Its values may have up to 16 digits.
const char* ReadPlainLine(const char* line, const char* limit, const LineShape& shape, const Target& target);

/// The one with 256-bit instructions; null if the processor, or the build, lacks them.
PlainLineReader WidePlainLineReader();

} // namespace comtrade
