#include "comtrade/asciirecord.h"

#include "text/texts.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace comtrade {

namespace {

constexpr double Missing = std::numeric_limits<double>::quiet_NaN();

// The fields of a line, one by one.
class Fields
{
public:
    Fields(const char* begin, const char* end_) : next(begin), end(end_) {}

    // Moves to the next field; false if there is none.
    bool Take()
    {
        if (next == nullptr)
            return false;
        const auto* comma = static_cast<const char*>(std::memchr(next, ',', static_cast<size_t>(end - next)));
        first = next;
        last = comma != nullptr ? comma : end;
        next = comma != nullptr ? comma + 1 : nullptr;
        while (first != last && *first == ' ')
            ++first;
        while (first != last && last[-1] == ' ')
            --last;
        return true;
    }

    bool IsEmpty() const { return first == last; }
    bool AtEnd() const { return next == nullptr; }
    QString Text() const
    {
        return QString::fromLatin1(first, static_cast<int>(std::min<ptrdiff_t>(last - first, 40)));
    }

    template <class Number>
    bool To(Number& number) const
    {
        const auto result = std::from_chars(first, last, number);
        return result.ec == std::errc() && result.ptr == last;
    }

private:
    const char* next;
    const char* end;
    const char* first = nullptr;
    const char* last = nullptr;
};

class LineReader
{
public:
    LineReader(const char* line, const char* end, const Configuration& configuration_)
        : fields(line, end), configuration(configuration_)
    {}

    void Read(const Target& target)
    {
        ReadHead(target);
        const qint32 missing = MissingCode(configuration.revision);
        for (size_t i = 0; i < configuration.analog.size(); ++i)
            target.analog[i] = Code(i, missing);
        for (size_t i = 0; i < configuration.states.size(); ++i)
            target.states[i] = State(i);
        if (!fields.AtEnd())
            throw Error(Tr("comtrade", "has more fields than channels"));
    }

private:
    void Take(const QString& what)
    {
        if (!fields.Take())
            throw Error(Tr("comtrade", "ends before %1").arg(what));
    }

    [[noreturn]] void FailNumber(const QString& what)
    {
        throw Error(Tr("comtrade", "%1 is '%2', which is no number").arg(what, fields.Text()));
    }

    void ReadHead(const Target& target)
    {
        Take(QStringLiteral("n"));
        if (!fields.To(*target.number))
            FailNumber(QStringLiteral("n"));
        Take(QStringLiteral("timestamp"));
        *target.time = Block::NoTime;
        if (!fields.IsEmpty() && !fields.To(*target.time))
            FailNumber(QStringLiteral("timestamp"));
    }

    double Code(size_t channel, qint32 missing)
    {
        if (!fields.Take())
            throw Error(Tr("comtrade", "ends before analog channel %1").arg(channel + 1));
        double number = Missing;
        if (!fields.IsEmpty() && !fields.To(number))
            FailNumber(Tr("comtrade", "analog channel %1").arg(channel + 1));
        return number == missing || !std::isfinite(number) ? Missing : number;
    }

    quint8 State(size_t channel)
    {
        quint8 state = 0;
        if (!fields.Take())
            throw Error(Tr("comtrade", "ends before status channel %1").arg(channel + 1));
        if (!fields.To(state) || state > 1)
            FailNumber(Tr("comtrade", "status channel %1").arg(channel + 1));
        return state;
    }

    Fields fields;
    const Configuration& configuration;
};

} // namespace

qint32 MissingCode(Revision /*revision*/)
{
    return 99999;
}

void ReadLine(const char* line, const char* end, const Configuration& configuration, const Target& target)
{
    LineReader(line, end, configuration).Read(target);
}

} // namespace comtrade
