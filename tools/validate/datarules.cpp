// The data: numbers and times of the samples, and values against the configuration.
#include "validate/rules.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <functional>

namespace validate {

namespace {

using comtrade::Block;
using comtrade::DataType;
using comtrade::Revision;

constexpr Rule SampleNumbering = {
    reason::SampleNumbering, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "the sample has number %1, not %2; the numbers count from 1, one by one (samples out "
                      "of step: %3)")};
constexpr Rule TimesBackwards = {
    reason::TimesBackwards, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "the time of the sample is %1, that of the one before is %2; times go up (samples "
                      "that do not follow: %3)")};
constexpr Rule TimesMissing = {
    reason::TimesMissing, Severity::Error,
    QT_TRANSLATE_NOOP("validate",
                      "the sample has no time, and the configuration no rate for it, so that nobody knows "
                      "when it was (samples without a time: %1)")};
constexpr Rule TimesDisagree = {
    reason::TimesDisagree, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "the sample is %1 s after the first one of its rate by its time, and %3 s by the rate "
                      "of %2 per second; readers use one or the other (samples that disagree: %4)")};
constexpr Rule OutsideLimits = {
    reason::SamplesOutsideLimits, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "analog channel %1 has the value %2, its limits are %3 and %4; some readers cut off "
                      "what is beyond, or scale by the limits (samples beyond them: %5)")};
constexpr Rule Fraction = {
    reason::CodeNotInteger, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "analog channel %1 has the value %2; ASCII data before revision 2013 are integers "
                      "(samples that are not: %3)")};

QString Text(double number)
{
    return QString::number(number, 'g', 10);
}

// Something that is wrong with samples: the first of them, and how many there are.
struct Tally
{
    qint64 count = 0;
    qint64 first = 0; // index of the sample
    double value = 0;
    double other = 0;

    void Add(qint64 index, double value_, double other_ = 0)
    {
        if (count++ == 0) {
            first = index;
            value = value_;
            other = other_;
        }
    }
};

struct ChannelTally
{
    Tally outside;
    Tally fraction;
};

} // namespace

struct DataCheck::State
{
    const comtrade::Configuration& configuration;
    Report& report;
    const bool isOldAscii;
    std::vector<double> least; // of the analog channels
    std::vector<double> most;
    std::vector<ChannelTally> channels;
    std::vector<qint64> outside; // samples of each channel in the block

    qint64 samples = 0;
    qint64 nextNumber = 1;
    Tally numbering;

    bool hasTime = false;
    qint64 time = 0; // of the sample before
    Tally backwards;
    Tally withoutTime;
    Tally disagreeing;
    double disagreeingRate = 0;

    size_t rate = 0;
    qint64 firstOfRate = 0; // index of the first sample with a time
    qint64 firstTime = Block::NoTime;

    State(const CheckedConfiguration& checked, Report& report_)
        : configuration(checked.configuration), report(report_),
          isOldAscii(configuration.dataType == DataType::Ascii && configuration.revision != Revision::R2013)
    {
        for (const comtrade::AnalogChannel& channel : configuration.analog) {
            // Reversed limits are a finding of their own.
            const bool isUsable = channel.min <= channel.max;
            least.push_back(isUsable ? channel.min : -std::numeric_limits<double>::infinity());
            most.push_back(isUsable ? channel.max : std::numeric_limits<double>::infinity());
        }
        channels.resize(least.size());
        outside.resize(least.size());
    }

    void TakeNumbers(const Block& block)
    {
        for (size_t i = 0; i < block.count; ++i) {
            const qint64 number = block.numbers[i];
            if (number != nextNumber)
                numbering.Add(samples + static_cast<qint64>(i), static_cast<double>(number),
                              static_cast<double>(nextNumber));
            nextNumber = number + 1;
        }
    }

    double RateOf(qint64 index)
    {
        const std::vector<comtrade::SampleRate>& rates = configuration.rates;
        while (rate < rates.size() && index >= rates[rate].lastSample) {
            ++rate;
            firstTime = Block::NoTime;
        }
        return rate < rates.size() ? rates[rate].hertz : rates.empty() ? 0 : rates.back().hertz;
    }

    void TakeTime(qint64 index, qint64 stamp)
    {
        const double hertz = RateOf(index);
        if (stamp == Block::NoTime) {
            if (hertz <= 0)
                withoutTime.Add(index, 0);
            return;
        }
        if (hasTime && stamp <= time)
            backwards.Add(index, static_cast<double>(stamp), static_cast<double>(time));
        hasTime = true;
        time = stamp;
        if (hertz <= 0)
            return;
        if (firstTime == Block::NoTime) {
            firstTime = stamp;
            firstOfRate = index;
            return;
        }
        CompareWithRate(index, stamp, hertz);
    }

    void CompareWithRate(qint64 index, qint64 stamp, double hertz)
    {
        const double unit = configuration.StampSeconds();
        const double byTime = static_cast<double>(stamp - firstTime) * unit;
        const double byRate = static_cast<double>(index - firstOfRate) / hertz;
        const double tolerance = std::max(0.5 / hertz, unit);
        if (!(unit > 0) || std::abs(byTime - byRate) <= tolerance)
            return;
        if (disagreeing.count == 0)
            disagreeingRate = hertz;
        disagreeing.Add(index, byTime, byRate);
    }

    // Counts first, channel by channel of each sample, as nearly always there is nothing to find.
    void TakeValues(const Block& block)
    {
        const size_t width = least.size();
        std::fill(outside.begin(), outside.end(), 0);
        for (size_t i = 0; i < block.count; ++i) {
            const double* const values = block.analog.data() + i * width;
            for (size_t channel = 0; channel < width; ++channel)
                outside[channel] += static_cast<int>(values[channel] < least[channel]) |
                                    static_cast<int>(values[channel] > most[channel]);
        }
        for (size_t channel = 0; channel < width; ++channel)
            if (outside[channel] > 0)
                NoteFirst(block, channel);
    }

    void NoteFirst(const Block& block, size_t channel)
    {
        Tally& tally = channels[channel].outside;
        if (tally.count > 0) {
            tally.count += outside[channel];
            return;
        }
        ForEach(block, channel, [&](qint64 index, double value) {
            if (value < least[channel] || value > most[channel])
                tally.Add(index, value);
        });
    }

    void ForEach(const Block& block, size_t channel, const std::function<void(qint64, double)>& work) const
    {
        for (size_t i = 0; i < block.count; ++i)
            work(samples + static_cast<qint64>(i), block.analog[i * least.size() + channel]);
    }

    void TakeOldAscii(const Block& block)
    {
        for (size_t channel = 0; channel < least.size(); ++channel)
            ForEach(block, channel, [&](qint64 index, double value) {
                if (value != std::floor(value) && !std::isnan(value))
                    channels[channel].fraction.Add(index, value);
            });
    }

    Position PositionOf(const Tally& tally) const { return {tally.first + 1, 0}; }
};

DataCheck::DataCheck(const CheckedConfiguration& checked, Report& dataReport)
    : state(std::make_unique<State>(checked, dataReport))
{}

DataCheck::~DataCheck() = default;

void DataCheck::Take(const Block& block)
{
    state->TakeNumbers(block);
    for (size_t i = 0; i < block.count; ++i)
        state->TakeTime(state->samples + static_cast<qint64>(i), block.times[i]);
    state->TakeValues(block);
    if (state->isOldAscii)
        state->TakeOldAscii(block);
    state->samples += static_cast<qint64>(block.count);
}

void DataCheck::Finish()
{
    const auto add = [this](const Rule& rule, const Tally& tally, QStringList values) {
        if (tally.count > 0)
            state->report.Add(rule, state->PositionOf(tally), values << QString::number(tally.count));
    };
    const auto integer = [](double number) { return QString::number(number, 'f', 0); };
    const State& seen = *state;
    add(SampleNumbering, seen.numbering, {integer(seen.numbering.value), integer(seen.numbering.other)});
    add(TimesBackwards, seen.backwards, {integer(seen.backwards.value), integer(seen.backwards.other)});
    add(TimesMissing, seen.withoutTime, {});
    add(TimesDisagree, seen.disagreeing,
        {Text(seen.disagreeing.value), Text(seen.disagreeingRate), Text(seen.disagreeing.other)});
    for (size_t i = 0; i < seen.channels.size(); ++i) {
        const ChannelTally& channel = seen.channels[i];
        const QString number = QString::number(i + 1);
        add(OutsideLimits, channel.outside,
            {number, Text(channel.outside.value), Text(seen.least[i]), Text(seen.most[i])});
        add(Fraction, channel.fraction, {number, Text(channel.fraction.value)});
    }
}

} // namespace validate
