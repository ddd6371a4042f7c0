#include "analysis/superimposed.h"

#include "analysis/constants.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

namespace analysis {

namespace {

// From so many samples a period on, a cubic is good to a few parts in 10,000 of the fundamental.
constexpr double EnoughForCubic = 40;

// Weights of the samples around a point; `part` of a step after the sample in the middle of the first half.
std::vector<double> Weights(double part, size_t taps)
{
    std::vector<double> weights(taps);
    const double middle = static_cast<double>(taps) / 2 - 1 + part;
    double sum = 0;
    for (size_t i = 0; i < taps; ++i) {
        const double x = static_cast<double>(i) - middle;
        if (taps == 4) { // Lagrange
            weights[i] = 1;
            for (size_t k = 0; k < taps; ++k)
                if (k != i)
                    weights[i] *=
                        (middle - static_cast<double>(k)) / (static_cast<double>(i) - static_cast<double>(k));
        } else {
            const auto sinc = [](double y) { return std::abs(y) < 1e-9 ? 1 : std::sin(Pi * y) / (Pi * y); };
            weights[i] = sinc(x) * sinc(x / (static_cast<double>(taps) / 2));
        }
        sum += weights[i];
    }
    for (double& weight : weights)
        weight /= sum;
    return weights;
}

// Bits of a number that is not negative: greater numbers have greater bits, which are quicker to compare.
quint64 BitsOf(double number)
{
    quint64 bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

double NumberOf(quint64 bits)
{
    double number = 0;
    std::memcpy(&number, &bits, sizeof number);
    return number;
}

using Bits = std::vector<quint64>;

// Keeps the numbers from `least` to `greatest`; `place` is then its place among these. False, and nothing is
// changed, if that is not there.
bool Narrow(Bits& numbers, quint64 least, quint64 greatest, size_t& place)
{
    size_t below = 0;
    size_t within = 0;
    for (const quint64 number : numbers) {
        below += number < least ? 1 : 0;
        within += number - least <= greatest - least ? 1 : 0;
    }
    if (place < below || place >= below + within || within == numbers.size())
        return false;
    size_t next = 0;
    for (const quint64 number : numbers) { // without a branch that nobody can foresee
        numbers[next] = number;
        next += number - least <= greatest - least ? 1 : 0;
    }
    numbers.resize(within);
    place -= below;
    return true;
}

// The number that would be at `place` if they were sorted. As std::nth_element finds it, in a tenth of its
// time: a sample of them shows about where it is.
quint64 NumberAt(size_t place, Bits& numbers)
{
    constexpr size_t worthwhile = 256;
    constexpr size_t sampled = 64;
    constexpr size_t margin = 10; // in the sample: seldom too little
    bool isNarrowed = true;
    while (numbers.size() > worthwhile && isNarrowed) {
        std::array<quint64, sampled> sample{};
        for (size_t i = 0; i < sampled; ++i)
            sample[i] = numbers[i * numbers.size() / sampled];
        std::sort(sample.begin(), sample.end());
        const size_t about = place * sampled / numbers.size();
        isNarrowed = Narrow(numbers, sample[about - std::min(about, margin)],
                            sample[std::min(about + margin, sampled - 1)], place);
    }
    const auto found = numbers.begin() + static_cast<ptrdiff_t>(place);
    std::nth_element(numbers.begin(), found, numbers.end());
    return *found;
}

// The differences from `before` on with four taps; loops over samples that do not depend on each other.
void SuperimposeByCubic(const Wave& wave, const std::vector<double>& weights, size_t before, Wave& result)
{
    const double w0 = weights[0];
    const double w1 = weights[1];
    const double w2 = weights[2];
    const double w3 = weights[3];
    const double* earlier = wave.data();
    const double* now = wave.data() + before;
    double* difference = result.data() + before;
    const size_t count = wave.size() - before;
    for (size_t i = 0; i < count; ++i)
        difference[i] = now[i] - (0.0 + w0 * earlier[i] + w1 * earlier[i + 1] + w2 * earlier[i + 2] +
                                  w3 * earlier[i + 3]);
}

// A standard deviation is so many times the median of the sizes.
constexpr double Consistency = 1.4826;

// Of the sizes of the values that are there; 0 without any.
double MedianOf(const Wave& wave, size_t begin, size_t end)
{
    end = std::min(end, wave.size());
    begin = std::min(begin, end);
    const quint64 infinite = BitsOf(std::numeric_limits<double>::infinity());
    Bits sizes(end - begin + 1);
    size_t next = 0;
    for (size_t i = begin; i < end; ++i) {
        sizes[next] = BitsOf(std::abs(wave[i]));
        next += sizes[next] <= infinite ? 1 : 0; // a missing one is above
    }
    sizes.resize(next);
    return sizes.empty() ? 0 : NumberOf(NumberAt(sizes.size() / 2, sizes));
}

} // namespace

Wave Superimposed(const Wave& wave, double period)
{
    const size_t taps = period >= EnoughForCubic ? 4 : 16;
    const auto whole = static_cast<size_t>(std::ceil(period - 1e-9));
    const std::vector<double> weights = Weights(static_cast<double>(whole) - period, taps);
    // The samples before the point: the one at n - whole is the middle of the first half.
    const size_t before = whole + taps / 2 - 1;
    const size_t after = taps / 2 > whole ? taps / 2 - whole : 0;
    Wave result(wave.size(), NoValue);
    if (taps == 4) { // `after` is 0
        if (wave.size() > before)
            SuperimposeByCubic(wave, weights, before, result);
        return result;
    }
    for (size_t n = before; n + after < wave.size(); ++n) {
        double delayed = 0;
        for (size_t i = 0; i < taps; ++i)
            delayed += weights[i] * wave[n - before + i];
        result[n] = wave[n] - delayed;
    }
    return result;
}

double NoiseOf(const Wave& wave, size_t begin, size_t end)
{
    return Consistency * MedianOf(wave, begin, end);
}

double LesserNoise(const Wave& wave, size_t begin, size_t end)
{
    const double part = MedianOf(wave, begin, end);
    size_t missing = 0;
    size_t below = 0;
    for (const double value : wave) {
        missing += std::isnan(value) ? 1 : 0;
        below += std::abs(value) < part ? 1 : 0;
    }
    const bool isPartLess = below <= (wave.size() - missing) / 2; // the median's place among all
    return Consistency * (isPartLess ? part : MedianOf(wave, 0, wave.size()));
}

double LargestOf(const Wave& wave, size_t begin, size_t end)
{
    constexpr size_t lanes = 4; // side by side, as each would wait for the one before
    std::array<double, lanes> largest{};
    end = std::min(end, wave.size());
    size_t i = begin;
    const auto take = [&](size_t lane) {
        const double size = std::abs(wave[i + lane]);
        largest[lane] = size > largest[lane] ? size : largest[lane]; // a missing one is not
    };
    for (; i + lanes <= end; i += lanes)
        for (size_t lane = 0; lane < lanes; ++lane)
            take(lane);
    for (; i < end; ++i)
        take(0);
    return *std::max_element(largest.begin(), largest.end());
}

std::optional<Departure> FirstBeyond(const Wave& differences, double limit, size_t begin, size_t end)
{
    constexpr size_t near = 3;
    end = std::min(end, differences.size());
    for (size_t n = begin; n < end; ++n) {
        if (!(std::abs(differences[n]) > limit))
            continue;
        size_t next = n + 1;
        while (next < std::min(end, n + 1 + near) && !(std::abs(differences[next]) > limit))
            ++next;
        if (next == std::min(end, n + 1 + near))
            continue;
        const double growth = std::abs(differences[next]) - std::abs(differences[n]);
        const double steps = static_cast<double>(next - n);
        const double back = growth > 0 ? std::abs(differences[n]) / growth * steps : 1;
        return Departure{n, static_cast<double>(n) - std::min(back, 1.0)};
    }
    return std::nullopt;
}

} // namespace analysis
