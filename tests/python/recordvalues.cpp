// Prints what the reader gives for records, in lines that values_test.py makes of the module's arrays as
// well: the configuration, then for each channel its numbers and texts and the SHA-256 of its codes, values
// and states, then those of the sample numbers and of the times. What is missing is hashed as 1e300.
//
// It reads sample by sample, and shares nothing with the arrays but the reader and the axis of time.
#include "analysis/timeaxis.h"
#include "comtrade/moment.h"
#include "comtrade/record.h"

#include <QCryptographicHash>

#include <cmath>
#include <cstdio>
#include <exception>
#include <vector>

namespace {

constexpr double Missing = 1e300;

template <class Number>
QByteArray Hash(const std::vector<Number>& numbers)
{
    const char* const bytes = reinterpret_cast<const char*>(numbers.data());
    const auto size = static_cast<int>(numbers.size() * sizeof(Number));
    return QCryptographicHash::hash(QByteArray::fromRawData(bytes, size), QCryptographicHash::Sha256).toHex();
}

QByteArray Text(double number)
{
    return QByteArray::number(number, 'g', 17);
}

QByteArray Text(const QString& text)
{
    return text.toUtf8();
}

// Microseconds from 1970-01-01T00:00, in the record's own time.
QByteArray Text(const comtrade::TimeStamp& stamp)
{
    const qint64 days = stamp.date.toJulianDay() - QDate(1970, 1, 1).toJulianDay();
    return QByteArray::number(days * 86400000000 + stamp.nanoseconds / 1000);
}

// All samples of a record, channel by channel.
struct Columns
{
    std::vector<std::vector<double>> codes;
    std::vector<std::vector<quint8>> states;
    std::vector<quint32> numbers;
    std::vector<double> stamps; // seconds from the first sample; one that is missing repeats the one before

    explicit Columns(comtrade::Record& record)
        : codes(record.Config().analog.size()), states(record.Config().states.size())
    {
        comtrade::Row row;
        while (record.Next(row)) {
            for (size_t i = 0; i < codes.size(); ++i)
                codes[i].push_back(row.analog[i]);
            for (size_t i = 0; i < states.size(); ++i)
                states[i].push_back(row.states[i]);
            numbers.push_back(row.number);
            const double before = stamps.empty() ? 0 : stamps.back();
            stamps.push_back(row.hasTime ? static_cast<double>(row.time) * record.Config().StampSeconds()
                                         : before);
        }
    }
};

std::vector<double> Scaled(const std::vector<double>& codes, double a, double b, double factor)
{
    std::vector<double> values;
    for (const double code : codes)
        values.push_back(std::isnan(code) ? Missing : (a * code + b) * factor);
    return values;
}

double ToPrimary(const comtrade::AnalogChannel& channel)
{
    return channel.primaryValues || !(channel.primary > 0 && channel.secondary > 0)
               ? 1
               : channel.primary / channel.secondary;
}

double ToSecondary(const comtrade::AnalogChannel& channel)
{
    return channel.primaryValues && channel.primary > 0 && channel.secondary > 0
               ? channel.secondary / channel.primary
               : 1;
}

void Print(const QList<QByteArray>& fields)
{
    std::printf("%s\n", fields.join('|').constData());
}

void PrintConfiguration(const comtrade::Configuration& config, size_t count)
{
    QList<QByteArray> fields{Text(config.station),
                             Text(config.device),
                             QByteArray::number(static_cast<int>(config.revision)),
                             Text(comtrade::NameOf(config.dataType)),
                             Text(config.lineFrequency),
                             QByteArray::number(static_cast<qint64>(count)),
                             Text(config.start),
                             Text(config.trigger)};
    const std::optional<int> offset = comtrade::UtcOffset(config);
    fields << (offset ? QByteArray::number(*offset) : "none");
    for (const comtrade::SampleRate& rate : config.rates)
        fields << Text(rate.hertz) << QByteArray::number(rate.lastSample);
    Print(fields);
}

void PrintAnalog(const comtrade::AnalogChannel& channel, const std::vector<double>& codes)
{
    QList<QByteArray> fields{QByteArray::number(channel.number),
                             Text(channel.name),
                             Text(channel.phase),
                             Text(channel.circuit),
                             Text(channel.unit),
                             channel.primaryValues ? "P" : "S"};
    for (const double number :
         {channel.a, channel.b, channel.skew, channel.min, channel.max, channel.primary, channel.secondary})
        fields << Text(number);
    fields << Hash(Scaled(codes, 1, 0, 1)) << Hash(Scaled(codes, channel.a, channel.b, 1))
           << Hash(Scaled(codes, channel.a, channel.b, ToPrimary(channel)))
           << Hash(Scaled(codes, channel.a, channel.b, ToSecondary(channel)));
    Print(fields);
}

void PrintDigital(const comtrade::StateChannel& channel, const std::vector<quint8>& states)
{
    std::vector<qint64> changes;
    for (size_t i = 1; i < states.size(); ++i)
        if (states[i] != states[i - 1])
            changes.push_back(static_cast<qint64>(i));
    Print({QByteArray::number(channel.number), Text(channel.name), Text(channel.phase), Text(channel.circuit),
           channel.normalState ? "1" : "0", Hash(states), Hash(changes)});
}

std::vector<double> Times(const comtrade::Configuration& config, const Columns& columns)
{
    const analysis::TimeAxis axis = analysis::IsStamped(config)
                                        ? analysis::TimeAxis::FromStamps(config, columns.stamps)
                                        : analysis::TimeAxis::FromRates(config);
    std::vector<double> times;
    for (size_t i = 0; i < columns.numbers.size(); ++i)
        times.push_back(axis.TimeOf(static_cast<qint64>(i)));
    return times;
}

void PrintRecord(const char* path)
{
    comtrade::Record record(QString::fromUtf8(path));
    const comtrade::Configuration& config = record.Config();
    const Columns columns(record);
    Print({path});
    PrintConfiguration(config, columns.numbers.size());
    for (size_t i = 0; i < columns.codes.size(); ++i)
        PrintAnalog(config.analog[i], columns.codes[i]);
    for (size_t i = 0; i < columns.states.size(); ++i)
        PrintDigital(config.states[i], columns.states[i]);
    Print({Hash(columns.numbers), Hash(Times(config, columns))});
}

} // namespace

int main(int count, char** arguments)
{
    try {
        for (int i = 1; i < count; ++i)
            PrintRecord(arguments[i]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
