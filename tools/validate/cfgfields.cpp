// How the fields of a CFG text are written: their lengths, and which of them may not be empty.
#include "validate/rules.h"

#include <QStringList>

#include <iterator>
#include <limits>

namespace validate {

namespace {

using comtrade::Place;
using comtrade::Revision;

constexpr Rule FieldTooLong = {
    reason::FieldTooLong, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "%1 has %2 characters, the standard allows %3: some readers cut it off or refuse "
                      "the record; shorten it")};
constexpr Rule UnitEmpty = {
    reason::FieldEmpty, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "%1, the unit, is empty, and the standard requires it; write NONE if there is "
                      "no unit")};
constexpr Rule NameEmpty = {
    reason::FieldEmpty, Severity::Note,
    QT_TRANSLATE_NOOP("validate", "%1 is empty; revision 2013 requires at least one character")};

enum class WhenEmpty { Fine, UnnamedIn2013, WithoutUnit };

// A field with its name in the standard.
struct FieldRule
{
    const char* name;
    int longestBefore2013; // characters
    int longest2013;
    WhenEmpty whenEmpty = WhenEmpty::Fine;
};

// Of a field with few values, which the reader knows.
constexpr int AnyLength = std::numeric_limits<int>::max();

constexpr FieldRule StationFields[] = {
    {"station_name", 64, 64, WhenEmpty::UnnamedIn2013},
    {"rec_dev_id", 64, 64, WhenEmpty::UnnamedIn2013},
    {"rev_year", AnyLength, AnyLength},
};
constexpr FieldRule CountFields[] = {{"TT", 7, 7}, {"##A", 7, 7}, {"##D", 7, 7}};
constexpr FieldRule AnalogFields[] = {
    {"An", 6, 6},
    {"ch_id", 64, 128, WhenEmpty::UnnamedIn2013},
    {"ph", 2, 2},
    {"ccbm", 64, 64},
    {"uu", 32, 32, WhenEmpty::WithoutUnit},
    {"a", 32, 32},
    {"b", 32, 32},
    {"skew", 32, 32},
    {"min", 6, 13},
    {"max", 6, 13},
    {"primary", 32, 32},
    {"secondary", 32, 32},
    {"PS", AnyLength, AnyLength},
};
constexpr FieldRule StateFields[] = {
    {"Dn", 6, 6},
    {"ch_id", 64, 128, WhenEmpty::UnnamedIn2013},
    {"ph", 2, 2},
    {"ccbm", 64, 64},
    {"y", AnyLength, AnyLength},
};
// Dn, ch_id and y: what revision 1991 has.
constexpr FieldRule ShortStateFields[] = {{"Dn", 6, 6}, {"ch_id", 64, 64}, {"y", AnyLength, AnyLength}};
constexpr FieldRule FrequencyFields[] = {{"lf", 32, 32}};
constexpr FieldRule RateCountFields[] = {{"nrates", 3, 3}};
constexpr FieldRule RateFields[] = {{"samp", 32, 32}, {"endsamp", 10, 10}};
constexpr FieldRule MultiplierFields[] = {{"timemult", 32, 32}};

class Fields
{
public:
    explicit Fields(const CheckedConfiguration& checked)
        : report(checked.report), is2013(checked.configuration.revision == Revision::R2013)
    {}

    template <size_t Count>
    void Check(const Place& place, const FieldRule (&rules)[Count])
    {
        CheckAll(place, rules, Count);
    }

private:
    void CheckAll(const Place& place, const FieldRule* rules, size_t count)
    {
        if (static_cast<size_t>(place.fields.size()) > count)
            return; // a name with a comma: the reader says so, and which field is which is not clear
        for (int i = 0; i < place.fields.size(); ++i)
            CheckOne(place, i, rules[i]);
    }

    void CheckOne(const Place& place, int index, const FieldRule& rule)
    {
        const int size = place.fields[index].size();
        const int longest = is2013 ? rule.longest2013 : rule.longestBefore2013;
        const Position where = PositionOf(place, index);
        const QString name = QLatin1String(rule.name);
        if (size > longest)
            report.Add(FieldTooLong, where, {name, QString::number(size), QString::number(longest)});
        if (size > 0)
            return;
        if (rule.whenEmpty == WhenEmpty::WithoutUnit)
            report.Add(UnitEmpty, where, {name});
        else if (rule.whenEmpty == WhenEmpty::UnnamedIn2013 && is2013)
            report.Add(NameEmpty, where, {name});
    }

    Report& report;
    const bool is2013;
};

} // namespace

void CheckFields(const CheckedConfiguration& checked)
{
    const comtrade::Places& places = checked.places;
    Fields fields(checked);
    fields.Check(places.station, StationFields);
    fields.Check(places.counts, CountFields);
    for (const Place& place : places.analog)
        fields.Check(place, AnalogFields);
    for (const Place& place : places.states) {
        const auto count = static_cast<size_t>(place.fields.size());
        if (count == std::size(StateFields))
            fields.Check(place, StateFields);
        else if (count == std::size(ShortStateFields))
            fields.Check(place, ShortStateFields); // of four, the reader finds out which are there
    }
    fields.Check(places.frequency, FrequencyFields);
    fields.Check(places.rateCount, RateCountFields);
    for (const Place& place : places.rates)
        fields.Check(place, RateFields);
    fields.Check(places.timeMultiplier, MultiplierFields);
}

} // namespace validate
