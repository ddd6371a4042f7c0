#include "forms/csvstream.h"

#include "explain/system.h"
#include "text/texts.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <limits>

namespace forms {

namespace {

constexpr size_t BufferSize = size_t{256} << 10U;

// The fields of a line one after the other.
class Fields
{
public:
    Fields(const char* begin, const char* end_, char separator_)
        : next(begin), end(end_), separator(separator_)
    {}

    // Moves to the next field; false if there is none.
    bool Take()
    {
        if (next == nullptr)
            return false;
        first = next;
        last = static_cast<const char*>(std::memchr(first, separator, static_cast<size_t>(end - first)));
        next = last != nullptr ? last + 1 : nullptr;
        if (last == nullptr)
            last = end;
        return true;
    }

    bool AtEnd() const { return next == nullptr; }
    const char* Begin() const { return first; }
    const char* End() const { return last; }

private:
    const char* next;
    const char* const end;
    const char separator;
    const char* first = nullptr;
    const char* last = nullptr;
};

bool IsState(const char* begin, const char* end)
{
    return end - begin == 1 && (*begin == '0' || *begin == '1');
}

bool ParseNumber(const char* begin, const char* end, char point, double& number)
{
    number = std::numeric_limits<double>::quiet_NaN();
    if (begin == end)
        return true;
    std::array<char, 32> copy{};
    if (point != '.') {
        if (static_cast<size_t>(end - begin) > copy.size())
            return false;
        char* const copied = std::copy(begin, end, copy.begin());
        std::replace(copy.begin(), copied, point, '.');
        begin = copy.begin();
        end = copied;
    }
    const std::from_chars_result result = std::from_chars(begin, end, number);
    return result.ec == std::errc() && result.ptr == end;
}

} // namespace

CsvStream::CsvStream(const QString& path, const comtrade::Configuration& configuration_, const CsvForm& form)
    : configuration(configuration_), separator(SeparatorOf(form)), point(PointOf(form)),
      times(configuration, form), file(path)
{
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        Fail(explain::SystemText(file.errorString()));
    const QByteArray titles = CsvTitles(configuration, form);
    if (file.read(titles.size()) != titles)
        Fail(Tr("forms", "the titles are not those of the record"));
    constexpr size_t longestField = 64;
    const size_t fields = 1 + configuration.analog.size() + configuration.states.size();
    buffer.resize(std::max(BufferSize, fields * longestField));
}

void CsvStream::Fail(const QString& what) const
{
    throw comtrade::Error(Tr("forms", "%1, line %2: %3").arg(file.fileName()).arg(line).arg(what));
}

bool CsvStream::Next(comtrade::Block& block)
{
    const size_t channels = configuration.analog.size() + configuration.states.size();
    const size_t wanted = std::max<size_t>(1, BufferSize / (16 + 8 * channels));
    block.Resize(wanted, configuration);
    block.count = 0;
    const char* begin = nullptr;
    const char* end = nullptr;
    while (block.count < wanted && NextLine(begin, end))
        ParseLine(begin, end, block, block.count++);
    return block.count > 0;
}

bool CsvStream::Fill()
{
    std::memmove(buffer.data(), buffer.data() + first, last - first);
    last -= first;
    first = 0;
    const qint64 count = file.read(buffer.data() + last, static_cast<qint64>(buffer.size() - last));
    if (count < 0)
        Fail(explain::SystemText(file.errorString()));
    last += static_cast<size_t>(count);
    return count > 0;
}

bool CsvStream::NextLine(const char*& begin, const char*& end)
{
    const auto feed = [this] {
        return static_cast<const char*>(std::memchr(buffer.data() + first, '\n', last - first));
    };
    const char* found = feed();
    while (found == nullptr && Fill())
        found = feed();
    if (found == nullptr && first == last)
        return false;
    ++line;
    begin = buffer.data() + first;
    if (found == nullptr || found == begin || found[-1] != '\r')
        Fail(Tr("forms", "the line has no end"));
    end = found - 1;
    first = static_cast<size_t>(found + 1 - buffer.data());
    return true;
}

void CsvStream::ParseLine(const char* begin, const char* end, comtrade::Block& block, size_t record)
{
    const size_t analogChannels = configuration.analog.size();
    const size_t stateChannels = configuration.states.size();
    block.numbers[record] = static_cast<quint32>(line - 1);
    Fields fields(begin, end, separator);
    if (!fields.Take() || !times.Parse(fields.Begin(), fields.End(), block.times[record]))
        Fail(Tr("forms", "the time is malformed"));
    for (size_t i = 0; i < analogChannels; ++i) {
        double& value = block.analog[record * analogChannels + i];
        if (!fields.Take() || !ParseNumber(fields.Begin(), fields.End(), point, value))
            Fail(Tr("forms", "the value of analog channel %1 is malformed").arg(i + 1));
    }
    for (size_t i = 0; i < stateChannels; ++i) {
        if (!fields.Take() || !IsState(fields.Begin(), fields.End()))
            Fail(Tr("forms", "the state of discrete channel %1 is malformed").arg(i + 1));
        block.states[record * stateChannels + i] = static_cast<quint8>(*fields.Begin() - '0');
    }
    if (!fields.AtEnd())
        Fail(Tr("forms", "the line has more fields than there are channels"));
}

} // namespace forms
