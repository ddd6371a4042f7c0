#include "info/recorddata.h"

#include "text/error.h"

#include <cmath>
#include <limits>

namespace info {

namespace {

constexpr double Unknown = std::numeric_limits<double>::quiet_NaN();

// The times of the samples of one rate.
struct Stamps
{
    bool any = false;
    qint64 first = 0; // as stored
    qint64 last = 0;

    void Add(qint64 time)
    {
        if (!any)
            first = time;
        any = true;
        last = time;
    }
};

class Pass
{
public:
    explicit Pass(const comtrade::Configuration& config_) : config(config_), stamps(config_.rates.size())
    {
        data.missing.resize(config.analog.size());
        data.changes.resize(config.states.size());
    }

    void Add(const comtrade::Row& row)
    {
        for (size_t i = 0; i < row.analog.size(); ++i)
            data.missing[i] += std::isnan(row.analog[i]) ? 1 : 0;
        for (size_t i = 0; i < row.states.size() && data.samples > 0; ++i)
            data.changes[i] += row.states[i] != before[i] ? 1 : 0;
        before = row.states;
        ++data.samples;
        while (rate < stamps.size() && data.samples > config.rates[rate].lastSample)
            ++rate;
        if (row.hasTime && rate < stamps.size())
            stamps[rate].Add(row.time);
    }

    RecordData Take()
    {
        for (const Stamps& one : stamps)
            data.stampSpans.push_back(
                one.any ? static_cast<double>(one.last - one.first) * config.StampSeconds() : Unknown);
        return std::move(data);
    }

private:
    const comtrade::Configuration& config;
    std::vector<Stamps> stamps;
    std::vector<quint8> before; // states of the sample before
    size_t rate = 0;            // of the current sample
    RecordData data;
};

} // namespace

RecordData ReadData(comtrade::Record& record)
{
    Pass pass(record.Config());
    QString failure;
    try {
        comtrade::Row row;
        while (record.Next(row))
            pass.Add(row);
    } catch (const comtrade::Error& error) {
        failure = text::MessageOf(error);
    }
    RecordData data = pass.Take();
    data.failure = failure;
    return data;
}

} // namespace info
