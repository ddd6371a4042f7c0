#include "comtrade/plainline.h"

#include "comtrade/plainfields.h"

namespace comtrade {

namespace {

// Nothing beyond the margin is read: each step goes on only if it has found what belongs to a line, and of
// that there is an end before every limit.
template <class Code>
const char* Read(const char* line, const char* limit, const LineShape& shape, const TargetOf<Code>& target)
{
    const size_t channels = shape.analog + shape.states;
    const size_t least = 4 + 2 * channels; // bytes of the shortest line
    if (channels == 0 || limit <= line || static_cast<size_t>(limit - line) < least)
        return nullptr;
    const char* at = line;
    if (!TakeHead(at, *target.number, *target.time))
        return nullptr;
    for (size_t i = 0; i < shape.analog; ++i) {
        qint64 number = 0;
        if (at >= limit || !TakeSigned(at, number) || !PutCode(number, shape.missing, target.analog[i]))
            return nullptr;
        if (i + 1 < channels && !TakeComma(at))
            return nullptr;
    }
    if (at >= limit || static_cast<size_t>(limit - at) < 2 * shape.states)
        return nullptr;
    return TakeStates(at, shape.states, target.states) ? AfterLineEnd(at, limit) : nullptr;
}

} // namespace

const char* ReadPlainLine(const char* line, const char* limit, const LineShape& shape, const Target& target)
{
    return Read(line, limit, shape, target);
}

const char* ReadNarrowLine(const char* line, const char* limit, const LineShape& shape,
                           const NarrowTarget& target)
{
    return Read(line, limit, shape, target);
}

PlainLineReader BestPlainLineReader()
{
    const PlainLineReader wide = WidePlainLineReader();
    return wide != nullptr ? wide : ReadPlainLine;
}

NarrowLineReader BestNarrowLineReader()
{
    const NarrowLineReader wide = WideNarrowLineReader();
    return wide != nullptr ? wide : ReadNarrowLine;
}

} // namespace comtrade
