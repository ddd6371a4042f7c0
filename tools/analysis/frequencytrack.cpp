// Frequency and phasors for each sample.
#include "analysis/constants.h"
#include "analysis/frequency.h"
#include "analysis/spacevector.h"

#include <algorithm>
#include <cmath>

namespace analysis {

namespace {

constexpr double Farthest = 0.2;       // from the nominal frequency, as a part of it
constexpr double BankStep = 0.01;      // Hz
constexpr double LeastMagnitude = 0.1; // of the largest
constexpr int MostRounds = 6;
constexpr size_t BlockPeriods = 4;  // that share a filter
constexpr size_t ChangePeriods = 2; // between the means whose difference is the rate of change

// The middle one of the values that are not missing; NaN if all are.
double MedianOf(Wave values)
{
    values.erase(std::remove_if(values.begin(), values.end(), [](double value) { return std::isnan(value); }),
                 values.end());
    if (values.empty())
        return NoValue;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

class Tracker
{
public:
    Tracker(const FrequencySource& source, double rate_, double nominal)
        : rate(rate_), vector(source, 0, source.front()->size()), bank(rate, nominal),
          period(static_cast<size_t>(std::lround(rate / nominal)))
    {
        const double whole = FrequencyOf(source, rate, nominal, 0, vector.Count());
        guess = bank.Nearest(whole);
        for (const Phasor& phasor : vector.Track(bank.For(guess), 0, vector.Count()))
            largest = std::max(largest, std::abs(phasor)); // NaN does not replace it
    }

    Wave Frequencies()
    {
        Wave result;
        const size_t block = BlockPeriods * period;
        for (size_t begin = 0; begin < vector.Count(); begin += block) {
            const Wave part = Settled(begin, std::min(begin + block, vector.Count()));
            result.insert(result.end(), part.begin(), part.end());
        }
        return result;
    }

private:
    // Of the samples from begin to end - 1, by the filter for their frequency.
    Wave Settled(size_t begin, size_t end)
    {
        Wave hertz;
        for (int round = 0; round < MostRounds; ++round) {
            hertz = By(bank.For(guess), guess, begin, end);
            const double next = bank.Nearest(MedianOf(hertz));
            if (std::abs(next - guess) < BankStep / 2)
                break;
            guess = next;
        }
        return hertz;
    }

    // How far the phasor turns in a period, against the filter's own frequency.
    Wave By(const Fourier& filter, double own, size_t begin, size_t end) const
    {
        const size_t back = std::min(begin, period + filter.Window() - 1);
        const std::vector<Phasor> phasors = vector.Track(filter, begin - back, end);
        const double factor = rate / (2 * Pi * static_cast<double>(period));
        Wave hertz(end - begin, NoValue);
        for (size_t i = 0; i < hertz.size(); ++i) {
            if (i + back < period)
                continue;
            const Phasor& now = phasors[i + back];
            const Phasor& before = phasors[i + back - period];
            if (std::min(std::abs(now), std::abs(before)) >= LeastMagnitude * largest && largest > 0)
                hertz[i] = own + std::arg(now * std::conj(before)) * factor;
        }
        return hertz;
    }

    double rate;
    SpaceVector vector;
    FourierBank bank;
    size_t period;
    double guess;
    double largest = 0;
};

// The difference of the means over the last periods and those before them.
Wave ChangeOf(const Wave& hertz, double rate, size_t length)
{
    Wave change(hertz.size(), NoValue);
    double newer = 0; // sums
    double older = 0;
    size_t begin = 0; // of the values without a gap
    for (size_t i = 0; i < hertz.size(); ++i) {
        if (std::isnan(hertz[i])) {
            begin = i + 1;
            newer = older = 0;
            continue;
        }
        newer += hertz[i];
        if (i - begin >= length) {
            newer -= hertz[i - length];
            older += hertz[i - length];
        }
        if (i - begin >= 2 * length)
            older -= hertz[i - 2 * length];
        if (i + 1 - begin >= 2 * length)
            change[i] = (newer - older) / static_cast<double>(length) * rate / static_cast<double>(length);
    }
    return change;
}

} // namespace

FrequencyTrack FrequencyOf(const FrequencySource& source, double rate, double nominal)
{
    FrequencyTrack track;
    track.hertz = Tracker(source, rate, nominal).Frequencies();
    for (double& hertz : track.hertz)
        if (std::abs(hertz - nominal) > Farthest * nominal)
            hertz = NoValue;
    track.change =
        ChangeOf(track.hertz, rate, ChangePeriods * static_cast<size_t>(std::lround(rate / nominal)));
    return track;
}

double FourierBank::Nearest(double hertz) const
{
    const double known = std::isnan(hertz) ? nominal : hertz;
    const double within = std::clamp(known, nominal * (1 - Farthest), nominal * (1 + Farthest));
    return std::round(within / BankStep) * BankStep;
}

const Fourier& FourierBank::For(double hertz)
{
    const double nearest = Nearest(hertz);
    const auto found = filters.find(nearest);
    return found != filters.end() ? found->second
                                  : filters.emplace(nearest, Fourier(rate / nearest)).first->second;
}

std::vector<Phasor> TrackAt(const Wave& wave, const Wave& hertz, double rate, double nominal)
{
    FourierBank bank(rate, nominal);
    std::vector<Phasor> result(wave.size());
    for (size_t begin = 0; begin < wave.size();) {
        const double own = bank.Nearest(hertz[begin]);
        size_t end = begin + 1; // a filter serves until the frequency is nearer to the one after the next
        while (end < wave.size() && std::abs(bank.Nearest(hertz[end]) - own) < 1.5 * BankStep)
            ++end;
        const Fourier& filter = bank.For(own);
        const size_t from = begin - std::min(begin, filter.Window() - 1);
        const std::vector<Phasor> part = filter.Track(Wave(wave.begin() + static_cast<std::ptrdiff_t>(from),
                                                           wave.begin() + static_cast<std::ptrdiff_t>(end)));
        for (size_t i = begin; i < end; ++i) {
            const double turns = static_cast<double>(i - from) * own - static_cast<double>(i) * nominal;
            result[i] = part[i - from] * std::polar(1.0, 2 * Pi * std::remainder(turns / rate, 1));
        }
        begin = end;
    }
    return result;
}

} // namespace analysis
