#include "comtrade/asciirecord.h"

#include "comtrade/forgiving.h"
#include "text/texts.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace comtrade {

namespace {

constexpr double Missing = std::numeric_limits<double>::quiet_NaN();

template <class Number>
bool Parse(const char* first, const char* last, Number& number)
{
    const auto result = std::from_chars(first, last, number);
    return result.ec == std::errc() && result.ptr == last;
}

// The fields of a line, one by one.
class Fields
{
public:
    Fields(const char* begin, const char* end_, char separator_)
        : line(begin), next(begin), end(end_), separator(separator_)
    {}

    // Moves to the next field; false if there is none.
    bool Take()
    {
        if (next == nullptr)
            return false;
        const auto* found =
            static_cast<const char*>(std::memchr(next, separator, static_cast<size_t>(end - next)));
        first = next;
        last = found != nullptr ? found : end;
        next = found != nullptr ? found + 1 : nullptr;
        while (first != last && *first == ' ')
            ++first;
        while (first != last && last[-1] == ' ')
            --last;
        return true;
    }

    bool IsEmpty() const { return first == last; }
    bool AtEnd() const { return next == nullptr; }
    int Column() const { return static_cast<int>(first - line) + 1; }
    QString Text() const
    {
        return QString::fromLatin1(first, static_cast<int>(std::min<ptrdiff_t>(last - first, 40)));
    }

    template <class Number>
    bool To(Number& number) const
    {
        return Parse(first, last, number);
    }

    // A number in quotation marks, with tabs or a plus sign, with the D of Fortran's exponents or, where
    // commas separate nothing, with a decimal comma.
    bool ToLoosely(double& number) const
    {
        char text[64];
        size_t length = 0;
        const auto isAround = [](char c) { return c == ' ' || c == '\t' || c == '"' || c == '\''; };
        const char* from = first;
        const char* to = last;
        while (from != to && isAround(*from))
            ++from;
        while (from != to && isAround(to[-1]))
            --to;
        if (to - from > 1 && *from == '+' && from[1] != '-')
            ++from;
        for (; from != to && length < sizeof text; ++from)
            text[length++] = *from == 'D' || *from == 'd' ? 'e' : *from == ',' ? '.' : *from;
        return from == to && Parse(text, text + length, number) && std::isfinite(number);
    }

private:
    const char* line;
    const char* next;
    const char* end;
    char separator;
    const char* first = nullptr;
    const char* last = nullptr;
};

class LineReader
{
public:
    LineReader(const char* line, const char* end, const Configuration& configuration_,
               const LinePlace& place_)
        : configuration(configuration_), place(place_), fields(line, end, SeparatorOf(line, end))
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
            PassTheRest();
    }

private:
    bool IsForgiving() const { return place.forgiven != nullptr; }

    // Commas, or what stands in their place: semicolons, and tabs where there is neither.
    char SeparatorOf(const char* line, const char* end)
    {
        const auto has = [&](char c) { return std::find(line, end, c) != end; };
        const char separator = !IsForgiving() ? ',' : has(';') ? ';' : !has(',') && has('\t') ? '\t' : ',';
        if (separator != ',')
            Add(0, Severity::Error, reason::FieldSeparator, [&] {
                return Slip{{},
                            {},
                            separator == ';' ? Tr("comtrade", "semicolons separate the fields, not commas")
                                             : Tr("comtrade", "tabs separate the fields, not commas"),
                            Tr("comtrade", "read as if they were commas")};
            });
        return separator;
    }

    // The texts are made only for those findings that are kept.
    template <class Texts>
    void Add(int column, Severity severity, const char* reason, Texts texts)
    {
        const bool isKept = place.forgiven->CountOf(place.file, reason) < Findings::MostOfAKind;
        Slip slip = isKept ? texts() : Slip{};
        slip.severity = severity;
        slip.reason = reason;
        Remark(place.forgiven, place.file, place.record, column, slip);
    }

    [[noreturn]] void FailNumber(const QString& what)
    {
        throw Error(Tr("comtrade", "%1 is '%2', which is no number").arg(what, fields.Text()));
    }

    // A number that is not written plainly, after the plain way has failed.
    template <class What>
    double LooseNumber(What what)
    {
        double number = 0;
        if (!IsForgiving() || !fields.ToLoosely(number))
            FailNumber(what());
        Add(fields.Column(), Severity::Warning, reason::NumberForm, [&] {
            return Slip{{},
                        {},
                        Tr("comtrade", "%1 is '%2', which is no plain number").arg(what(), fields.Text()),
                        Tr("comtrade", "read as %1").arg(number, 0, 'g', 15)};
        });
        return number;
    }

    void ReadHead(const Target& target)
    {
        if (!fields.Take())
            throw Error(Tr("comtrade", "ends before %1").arg(QStringLiteral("n")));
        if (!fields.To(*target.number))
            *target.number = LooseSampleNumber();
        if (!fields.Take())
            throw Error(Tr("comtrade", "ends before %1").arg(QStringLiteral("timestamp")));
        *target.time = Block::NoTime;
        if (!fields.IsEmpty() && !fields.To(*target.time))
            *target.time = LooseTime();
    }

    quint32 LooseSampleNumber()
    {
        const auto name = [] { return QStringLiteral("n"); };
        if (IsForgiving() && fields.IsEmpty()) {
            Add(0, Severity::Warning, reason::FieldEmpty, [&] {
                return Slip{{},
                            {},
                            Tr("comtrade", "the sample has no number"),
                            Tr("comtrade", "read as %1").arg(place.record)};
            });
            return static_cast<quint32>(place.record);
        }
        const double number = LooseNumber(name);
        if (!(number >= 0 && number <= std::numeric_limits<quint32>::max()) || number != std::floor(number))
            FailNumber(name());
        return static_cast<quint32>(number);
    }

    qint64 LooseTime()
    {
        const auto name = [] { return QStringLiteral("timestamp"); };
        const double number = LooseNumber(name);
        if (!(std::abs(number) < 1e15))
            FailNumber(name());
        return std::llround(number);
    }

    double Code(size_t channel, qint32 missing)
    {
        const auto name = [channel] { return Tr("comtrade", "analog channel %1").arg(channel + 1); };
        if (!fields.Take())
            return LackingCode(channel);
        double number = Missing;
        if (!fields.IsEmpty() && !fields.To(number))
            number = LooseNumber(name);
        const bool isThere = number != missing && std::isfinite(number);
        return !isThere ? Missing : number == 0 ? 0 : number; // without the sign of -0
    }

    // A value at the end of the line that is not there is as good as an empty one. A state is not: there is
    // no third one.
    double LackingCode(size_t channel)
    {
        if (!IsForgiving() || !configuration.states.empty() || channel == 0)
            throw Error(Tr("comtrade", "ends before analog channel %1").arg(channel + 1));
        Add(0, Severity::Error, reason::FieldsLacking, [&] {
            return Slip{{},
                        {},
                        Tr("comtrade", "the sample has no field for analog channel %1").arg(channel + 1),
                        Tr("comtrade", "the value counts as missing")};
        });
        return Missing;
    }

    quint8 State(size_t channel)
    {
        const auto name = [channel] { return Tr("comtrade", "status channel %1").arg(channel + 1); };
        quint8 state = 0;
        if (!fields.Take())
            throw Error(Tr("comtrade", "ends before status channel %1").arg(channel + 1));
        if (fields.To(state) && state <= 1)
            return state;
        double number = 0;
        if (!IsForgiving() || !fields.ToLoosely(number) || (number != 0 && number != 1))
            FailNumber(name());
        return LooseNumber(name) == 1 ? 1 : 0;
    }

    void PassTheRest()
    {
        if (!IsForgiving())
            throw Error(Tr("comtrade", "has more fields than channels"));
        int count = 0;
        bool areEmpty = true;
        while (fields.Take()) {
            ++count;
            areEmpty = areEmpty && fields.IsEmpty();
        }
        Add(0, areEmpty ? Severity::Warning : Severity::Error, reason::FieldsLeftOver, [&] {
            return Slip{{},
                        {},
                        Tr("comtrade", "the sample has %1 more fields than there are channels").arg(count),
                        Tr("comtrade", "they are left out")};
        });
    }

    const Configuration& configuration;
    const LinePlace& place;
    Fields fields;
};

} // namespace

qint32 MissingCode(Revision revision)
{
    return revision == Revision::R1991 ? 999999 : 99999;
}

void ReadLine(const char* line, const char* end, const Configuration& configuration, const LinePlace& place,
              const Target& target)
{
    LineReader(line, end, configuration, place).Read(target);
}

} // namespace comtrade
