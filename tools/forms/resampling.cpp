#include "forms/resampling.h"

#include "analysis/timeaxis.h"
#include "forms/comtradetext.h"
#include "text/texts.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace forms {

namespace {

constexpr qint64 Unlimited = std::numeric_limits<qint64>::max();

// Instants that are so near to a sample, in parts of the step, are those of the sample.
constexpr double Near = 1e-7;

LowPass FirstFilter(const comtrade::Configuration& config, double rate)
{
    if (analysis::IsStamped(config))
        throw FormError(Tr("forms",
                           "the record gives no sampling rate, only the time of each sample: it cannot be "
                           "sampled again at another rate; --every keeps one sample of several"));
    constexpr double most = 1e6; // samples on each side
    for (const comtrade::SampleRate& source : config.rates)
        if (source.hertz > 0 && LowPass(source.hertz, rate).Reach() > most)
            throw FormError(Tr("forms", "%1 Hz is too low for a record of %2 Hz")
                                .arg(NumberText(rate), NumberText(source.hertz)));
    return LowPass(1, 1); // Enter sets that of the section
}

} // namespace

Resampling::Resampling(Stream& source_, double rate_)
    : source(source_), rate(rate_), configuration(source.Config()), filter(FirstFilter(configuration, rate))
{
    FindSections();
    FindRatio();
    SetConfiguration();
    Enter(0);
}

// Lines with the same rate make one section.
void Resampling::FindSections()
{
    const analysis::TimeAxis axis = analysis::TimeAxis::FromRates(configuration);
    const double start = axis.Pieces().front().at;
    for (const analysis::TimeAxis::Piece& piece : axis.Pieces()) {
        if (!sections.empty() && sections.back().hertz == piece.hertz)
            continue;
        if (!sections.empty())
            sections.back().end = piece.from;
        sections.push_back({piece.from, Unlimited, piece.at - start, piece.hertz});
    }
}

// With one section and a ratio of small whole numbers, instants and factors are exact and repeat.
void Resampling::FindRatio()
{
    constexpr qint64 mostTurns = 1000;
    constexpr qint64 mostKept = 1000000; // factors
    const double ratio = sections.front().hertz / rate;
    for (turns = 1; sections.size() == 1 && turns <= mostTurns; ++turns) {
        const double product = ratio * static_cast<double>(turns);
        if (product >= 0.5 && std::fabs(product - std::round(product)) < 1e-12 * product) {
            steps = std::llround(product);
            if (turns * LowPass(sections.front().hertz, rate).Reach() <= mostKept)
                factorsOfTurn.resize(static_cast<size_t>(turns));
            return;
        }
    }
}

void Resampling::SetConfiguration()
{
    constexpr double most = 4e9; // sample numbers have 32 bits
    const qint64 samples = configuration.SampleCount();
    const Section& last = sections.back();
    const double seconds = last.at + static_cast<double>(samples - last.from) / last.hertz;
    if (seconds * rate > most)
        throw FormError(Tr("forms", "%1 Hz: the record would have too many samples").arg(NumberText(rate)));
    auto count = static_cast<qint64>(std::max(seconds * rate, 0.0));
    while (IsWithin(count, samples))
        ++count;
    while (count > 0 && !IsWithin(count - 1, samples))
        --count;
    configuration.rates = {{rate, count}};
    configuration.dataType = comtrade::DataType::Float32;
}

Resampling::Place Resampling::PlaceOf(qint64 number, const Section& section) const
{
    if (steps > 0) {
        const qint64 turn = number * steps % turns;
        return {number * steps / turns, static_cast<double>(turn) / static_cast<double>(turns),
                static_cast<size_t>(turn)};
    }
    const double position = (static_cast<double>(number) / rate - section.at) * section.hertz;
    const double sample = std::floor(position + Near);
    return {static_cast<qint64>(sample), std::max(position - sample, 0.0), 0};
}

// The time from the last sample of a section to the first of the next one belongs to the latter: it is one
// step of its rate.
size_t Resampling::SectionOf(qint64 number) const
{
    size_t section = current;
    const double time = static_cast<double>(number) / rate;
    while (section + 1 < sections.size() &&
           (time - sections[section + 1].at) * sections[section + 1].hertz > -1 + Near)
        ++section;
    return section;
}

// Whether the instant is not after the last of so many samples.
bool Resampling::IsWithin(qint64 number, qint64 samples) const
{
    const Section& section = sections[SectionOf(number)];
    const Place place = PlaceOf(number, section);
    const qint64 last = samples - 1 - section.from;
    return place.sample < last || (place.sample == last && place.phase <= Near);
}

void Resampling::Enter(size_t section)
{
    current = section;
    filter = LowPass(sections[section].hertz, rate);
}

// Holds the samples up to that one, if there are so many.
void Resampling::ReadUntil(qint64 sample)
{
    while (endHeld <= sample && !isAtEnd) {
        if (!source.Next(read)) {
            isAtEnd = true;
            return;
        }
        if (endHeld == 0 && read.times[0] != comtrade::Block::NoTime)
            firstStamp = read.times[0];
        const auto analogCount = static_cast<ptrdiff_t>(read.count * configuration.analog.size());
        const auto stateCount = static_cast<ptrdiff_t>(read.count * configuration.states.size());
        analog.insert(analog.end(), read.analog.begin(), read.analog.begin() + analogCount);
        states.insert(states.end(), read.states.begin(), read.states.begin() + stateCount);
        endHeld += static_cast<qint64>(read.count);
    }
}

// Forgets the samples before those that the next output needs, once they are half of those that are held: the
// rest moves.
void Resampling::DropOld()
{
    const Section& section = sections[SectionOf(output)];
    const qint64 before = section.from + PlaceOf(output, section).sample - filter.Reach() - 1;
    const qint64 count = std::min(before, endHeld) - firstHeld;
    if (count <= 0 || count < (endHeld - firstHeld) / 2)
        return;
    const auto channels = static_cast<ptrdiff_t>(configuration.analog.size());
    const auto stateChannels = static_cast<ptrdiff_t>(configuration.states.size());
    analog.erase(analog.begin(), analog.begin() + count * channels);
    states.erase(states.begin(), states.begin() + count * stateChannels);
    firstHeld += count;
}

const double* Resampling::Row(qint64 sample) const
{
    const qint64 held = std::clamp(sample, firstHeld, endHeld - 1) - firstHeld;
    return analog.data() + static_cast<size_t>(held) * configuration.analog.size();
}

const std::vector<double>& Resampling::FactorsAt(const Place& place)
{
    if (factorsOfTurn.empty()) {
        filter.FactorsAt(place.phase, factors);
        return factors;
    }
    std::vector<double>& kept = factorsOfTurn[place.turn];
    if (kept.empty())
        filter.FactorsAt(place.phase, kept);
    return kept;
}

// A sample beyond an end of the section: the point reflection of one within. Where the section is too short
// for that, its other end stands for it.
void Resampling::AddOutside(double factor, qint64 sample, const Section& within, double* to) const
{
    const qint64 edge = sample < within.from ? within.from : within.end - 1;
    const double* atEdge = Row(edge);
    const double* mirrored = Row(std::clamp(2 * edge - sample, within.from, within.end - 1));
    for (size_t i = 0; i < configuration.analog.size(); ++i)
        to[i] += factor * (2 * atEdge[i] - mirrored[i]);
}

void Resampling::Compute(const Place& place, double* values)
{
    Section within = sections[current];
    within.end = std::min(within.end, endHeld);
    const size_t channels = configuration.analog.size();
    sums.assign(channels, 0);
    qint64 sample = within.from + place.sample - filter.Reach() + 1;
    for (const double factor : FactorsAt(place)) {
        if (sample < within.from || sample >= within.end) {
            AddOutside(factor, sample, within, sums.data());
        } else {
            const double* const row = Row(sample);
            for (size_t i = 0; i < channels; ++i)
                sums[i] += factor * row[i];
        }
        ++sample;
    }
    for (size_t i = 0; i < channels; ++i)
        values[i] = static_cast<double>(static_cast<float>(sums[i]));
}

// The next output as the last record of the block; false after the last one.
bool Resampling::Deliver(comtrade::Block& block)
{
    if (const size_t section = SectionOf(output); section != current)
        Enter(section);
    const Place place = PlaceOf(output, sections[current]);
    const qint64 sample = sections[current].from + place.sample;
    ReadUntil(std::max(sample, sections[current].from) + filter.Reach());
    if (isAtEnd && !IsWithin(output, endHeld))
        return false;
    const size_t at = block.count++;
    Compute(place, block.analog.data() + at * configuration.analog.size());
    const qint64 stateRow = std::max(sample, firstHeld) - firstHeld;
    std::copy_n(states.begin() + stateRow * static_cast<ptrdiff_t>(configuration.states.size()),
                configuration.states.size(),
                block.states.begin() + static_cast<ptrdiff_t>(at * configuration.states.size()));
    constexpr double farthest = 1e18;
    const double stamp = static_cast<double>(output) / rate / configuration.StampSeconds();
    block.times[at] =
        std::fabs(stamp) < farthest ? firstStamp + std::llround(stamp) : comtrade::Block::NoTime;
    block.numbers[at] = static_cast<quint32>(++output);
    DropOld();
    return true;
}

bool Resampling::Next(comtrade::Block& block)
{
    const size_t channels = configuration.analog.size() + configuration.states.size();
    const size_t wanted = std::max<size_t>(1, (size_t{256} << 10U) / (16 + 8 * channels));
    block.Resize(wanted, configuration);
    block.count = 0;
    while (block.count < wanted && Deliver(block)) {
    }
    return block.count > 0;
}

namespace {

QString RatesText(const comtrade::Configuration& config)
{
    QStringList rates;
    for (const comtrade::SampleRate& rate : config.rates)
        if (rate.hertz > 0)
            rates += NumberText(rate.hertz);
    rates.removeDuplicates();
    return rates.join(QLatin1String(", "));
}

} // namespace

QString ResamplingText(const comtrade::Configuration& source, double rate)
{
    double band = rate;
    for (const comtrade::SampleRate& section : source.rates)
        if (section.hertz > 0)
            band = std::min(band, section.hertz);
    return Tr("forms",
              "The samples were computed for a rate of %1 Hz from those taken at %2 Hz, by a low-pass "
              "filter (FIR, linear phase, Kaiser window) that passes up to %3 Hz and attenuates by %4 dB "
              "from "
              "%5 Hz on.")
        .arg(NumberText(rate), RatesText(source), NumberText(band * LowPass::PassBand),
             NumberText(LowPass::Attenuation), NumberText(band * LowPass::StopBand));
}

QString EveryNthText(const comtrade::Configuration& source, int n)
{
    const QString rates = RatesText(source);
    return rates.isEmpty()
               ? Tr("forms", "One sample of %1 was kept, without a filter.").arg(n)
               : Tr("forms", "One sample of %1 was kept of those taken at %2 Hz, without a filter.")
                     .arg(n)
                     .arg(rates);
}

} // namespace forms
