// ASCII records of the usual form, several bytes at a time: in a portable form and, where the processor has
// them, with 256-bit instructions. Whatever else a line may hold is left to asciirecord.h.
#pragma once

#include <QtGlobal>

#include <cstddef>

namespace comtrade {

/// Where the parts of one record go.
template <class Code>
struct TargetOf
{
    quint32* number;
    qint64* time; ///< Block::NoTime if it is missing
    Code* analog; ///< as many as there are channels
    quint8* states;
};
using Target = TargetOf<double>;
using NarrowTarget = TargetOf<qint16>; // -32768 for a missing value

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
template <class Code>
using PlainLineReaderOf = const char* (*)(const char* line, const char* limit, const LineShape& shape,
                                          const TargetOf<Code>& target);
using PlainLineReader = PlainLineReaderOf<double>;

/// For lines whose values are also of -32767 to 32767; others are of another form.
using NarrowLineReader = PlainLineReaderOf<qint16>;

/// The best ones for this processor.
PlainLineReader BestPlainLineReader();
NarrowLineReader BestNarrowLineReader();

/// The portable ones. Values may have up to 16 digits.
const char* ReadPlainLine(const char* line, const char* limit, const LineShape& shape, const Target& target);
const char* ReadNarrowLine(const char* line, const char* limit, const LineShape& shape,
                           const NarrowTarget& target);

/// Those with 256-bit instructions; null if the processor, or the build, lacks them.
PlainLineReader WidePlainLineReader();
NarrowLineReader WideNarrowLineReader();

} // namespace comtrade
