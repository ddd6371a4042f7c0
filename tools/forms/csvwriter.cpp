#include "forms/csvwriter.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace forms {

namespace {

constexpr size_t LongestNumber = 24; // -2.2250738585072014e-308

char* PutNumber(char* to, double number, char point)
{
    if (std::isnan(number))
        return to;
    char* const end = std::to_chars(to, to + LongestNumber, number).ptr;
    if (point != '.') {
        if (void* const found = std::memchr(to, '.', static_cast<size_t>(end - to)))
            *static_cast<char*>(found) = point;
    }
    return end;
}

} // namespace

CsvWriter::CsvWriter(const QString& path, const comtrade::Configuration& configuration, const CsvForm& form)
    : analogChannels(configuration.analog.size()), stateChannels(configuration.states.size()),
      longestLine(CsvTimeText::Longest + (1 + LongestNumber) * analogChannels + 2 * stateChannels + 2),
      separator(SeparatorOf(form)), point(PointOf(form)), times(configuration, form), file(path)
{
    file.Write(CsvTitles(configuration, form));
}

void CsvWriter::Write(const comtrade::Block& block)
{
    const double* value = block.analog.data();
    const quint8* state = block.states.data();
    for (size_t i = 0; i < block.count; ++i) {
        char* to = times.Put(file.Room(longestLine), block.times[i]);
        for (const double* const end = value + analogChannels; value != end; ++value) {
            *to++ = separator;
            to = PutNumber(to, *value, point);
        }
        for (const quint8* const end = state + stateChannels; state != end; ++state) {
            *to++ = separator;
            *to++ = *state != 0 ? '1' : '0';
        }
        *to++ = '\r';
        *to++ = '\n';
        file.TakeUntil(to);
    }
}

} // namespace forms
