#include "forms/matvariables.h"

#include "comtrade/moment.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>

namespace forms {

namespace {

MatVariable Made(matvar_t* variable)
{
    if (variable == nullptr)
        throw std::bad_alloc();
    return MatVariable(variable);
}

// In UTF-16, as MATLAB has it: of UTF-8 the size in characters and in bytes would differ, and MATLAB since
// R2020b refuses such a file.
MatVariable Text(const QString& text)
{
    std::array<size_t, 2> size{text.isEmpty() ? size_t{0} : size_t{1}, static_cast<size_t>(text.size())};
    return Made(Matio().VarCreate(nullptr, MAT_C_CHAR, MAT_T_UTF16, 2, size.data(),
                                  const_cast<ushort*>(text.utf16()), 0));
}

// The bytes of the text, for programs that read no letters beyond ASCII from a MAT file.
MatVariable Utf8(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    std::array<size_t, 2> size{bytes.isEmpty() ? size_t{0} : size_t{1}, static_cast<size_t>(bytes.size())};
    return Made(Matio().VarCreate(nullptr, MAT_C_UINT8, MAT_T_UINT8, 2, size.data(),
                                  const_cast<char*>(bytes.constData()), 0));
}

MatVariable Number(double number)
{
    std::array<size_t, 2> size{1, 1};
    return Made(Matio().VarCreate(nullptr, MAT_C_DOUBLE, MAT_T_DOUBLE, 2, size.data(), &number, 0));
}

MatVariable Moment(const comtrade::Configuration& config, const comtrade::TimeStamp& stamp)
{
    return Text(stamp.date.isValid() ? comtrade::MomentText(stamp, comtrade::UtcOffset(config)) : QString());
}

// A row for each rate: Hz, last sample.
MatVariable Rates(const comtrade::Configuration& config)
{
    std::vector<double> numbers;
    numbers.reserve(2 * config.rates.size());
    for (const comtrade::SampleRate& rate : config.rates)
        numbers.push_back(rate.hertz);
    for (const comtrade::SampleRate& rate : config.rates)
        numbers.push_back(static_cast<double>(rate.lastSample));
    std::array<size_t, 2> size{config.rates.size(), 2};
    return Made(Matio().VarCreate(nullptr, MAT_C_DOUBLE, MAT_T_DOUBLE, 2, size.data(), numbers.data(), 0));
}

template <class Subject>
struct Field
{
    const char* name;
    MatVariable (*of)(const Subject&);
};

using comtrade::AnalogChannel;
using comtrade::Configuration;
using comtrade::StateChannel;

constexpr Field<AnalogChannel> AnalogFields[] = {
    {"number", [](const AnalogChannel& channel) { return Number(channel.number); }},
    {"name", [](const AnalogChannel& channel) { return Text(channel.name); }},
    {"phase", [](const AnalogChannel& channel) { return Text(channel.phase); }},
    {"circuit", [](const AnalogChannel& channel) { return Text(channel.circuit); }},
    {"unit", [](const AnalogChannel& channel) { return Text(channel.unit); }},
    {"primary", [](const AnalogChannel& channel) { return Number(channel.primary); }},
    {"secondary", [](const AnalogChannel& channel) { return Number(channel.secondary); }},
    {"side", [](const AnalogChannel& channel) { return Text(channel.primaryValues ? "P" : "S"); }},
    {"skew", [](const AnalogChannel& channel) { return Number(channel.skew); }},
    {"name_utf8", [](const AnalogChannel& channel) { return Utf8(channel.name); }},
};

constexpr Field<StateChannel> DigitalFields[] = {
    {"number", [](const StateChannel& channel) { return Number(channel.number); }},
    {"name", [](const StateChannel& channel) { return Text(channel.name); }},
    {"phase", [](const StateChannel& channel) { return Text(channel.phase); }},
    {"circuit", [](const StateChannel& channel) { return Text(channel.circuit); }},
    {"normal", [](const StateChannel& channel) { return Number(channel.normalState ? 1 : 0); }},
    {"name_utf8", [](const StateChannel& channel) { return Utf8(channel.name); }},
};

constexpr Field<Configuration> RecordFields[] = {
    {"station", [](const Configuration& config) { return Text(config.station); }},
    {"device", [](const Configuration& config) { return Text(config.device); }},
    {"start", [](const Configuration& config) { return Moment(config, config.start); }},
    {"trigger", [](const Configuration& config) { return Moment(config, config.trigger); }},
    {"frequency", [](const Configuration& config) { return Number(config.lineFrequency); }},
    {"rates", Rates},
};

template <class Subject, size_t count>
MatVariable Structures(const char* name, const std::vector<Subject>& subjects,
                       const Field<Subject> (&fields)[count])
{
    std::array<const char*, count> names{};
    std::transform(std::begin(fields), std::end(fields), names.begin(),
                   [](const Field<Subject>& field) { return field.name; });
    std::array<size_t, 2> size{1, subjects.size()};
    MatVariable structures = Made(Matio().VarCreateStruct(name, 2, size.data(), names.data(), count));
    for (size_t i = 0; i < subjects.size(); ++i)
        for (const Field<Subject>& field : fields)
            Matio().VarSetStructFieldByName(structures.get(), field.name, i, field.of(subjects[i]).release());
    return structures;
}

bool HaveSameFields(const matvar_t& a, const matvar_t& b)
{
    const unsigned fields = Matio().VarGetNumberOfFields(const_cast<matvar_t*>(&a));
    if (fields != Matio().VarGetNumberOfFields(const_cast<matvar_t*>(&b)))
        return false;
    const char* const* names = Matio().VarGetStructFieldnames(&a);
    const char* const* others = Matio().VarGetStructFieldnames(&b);
    for (size_t field = 0; field < fields; ++field)
        if (std::strcmp(names[field], others[field]) != 0)
            return false;
    for (size_t i = 0; i < a.dims[0] * a.dims[1]; ++i)
        for (size_t field = 0; field < fields; ++field) {
            const matvar_t* one = Matio().VarGetStructFieldByIndex(const_cast<matvar_t*>(&a), field, i);
            const matvar_t* other = Matio().VarGetStructFieldByIndex(const_cast<matvar_t*>(&b), field, i);
            if (one == nullptr || other == nullptr || !IsSame(*one, *other))
                return false;
        }
    return true;
}

} // namespace

std::vector<MatVariable> Descriptions(const Configuration& config)
{
    std::vector<MatVariable> variables;
    variables.push_back(Structures("analog_channels", config.analog, AnalogFields));
    variables.push_back(Structures("digital_channels", config.states, DigitalFields));
    variables.push_back(Structures("record", std::vector<Configuration>{config}, RecordFields));
    return variables;
}

bool IsSame(const matvar_t& a, const matvar_t& b)
{
    if (a.class_type != b.class_type || a.isLogical != b.isLogical || a.rank != 2 || b.rank != 2 ||
        a.dims[0] != b.dims[0] || a.dims[1] != b.dims[1])
        return false;
    if (a.class_type == MAT_C_STRUCT)
        return HaveSameFields(a, b);
    return a.nbytes == b.nbytes && (a.nbytes == 0 || std::memcmp(a.data, b.data, a.nbytes) == 0);
}

double SecondsOf(qint64 nanoseconds)
{
    return nanoseconds == comtrade::Block::NoTime ? std::numeric_limits<double>::quiet_NaN()
                                                  : static_cast<double>(nanoseconds) / 1e9;
}

qint64 NanosecondsOf(double seconds)
{
    constexpr double farthest = 9e9; // s; more nanoseconds have no room in 64 bits
    return std::isnan(seconds) ? comtrade::Block::NoTime
                               : std::llround(std::clamp(seconds, -farthest, farthest) * 1e9);
}

} // namespace forms
