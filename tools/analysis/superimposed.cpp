#include "analysis/superimposed.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

namespace analysis {

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr double None = std::numeric_limits<double>::quiet_NaN();

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

// Bits of a number that is not negative: greater numbers have greater bits.
quint64 BitsOf(double number)
{
    quint64 bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

// The numbers among which the one at `place` is by 11 of their bits; `place` is then its place among these.
std::vector<double> Narrowed(const std::vector<double>& numbers, int shift, size_t& place)
{
    constexpr size_t Bins = 2048;
    const auto binOf = [shift](double number) { return (BitsOf(number) >> shift) % Bins; };
    std::array<quint32, Bins> counts{};
    for (const double number : numbers)
        ++counts[binOf(number)];
    size_t bin = 0;
    for (; place >= counts[bin]; ++bin)
        place -= counts[bin];
    std::vector<double> chosen(counts[bin] + 1);
    size_t next = 0;
    for (const double number : numbers) { // without a branch that nobody can foresee
        chosen[next] = number;
        next += binOf(number) == bin ? 1 : 0;
    }
    chosen.resize(next);
    return chosen;
}

// The number that would be at `place` if they were sorted; none is negative. As std::nth_element finds it, in
// a fifth of its time: by the exponents, then by the digits after them.
double NumberAt(size_t place, std::vector<double> numbers)
{
    constexpr size_t worthwhile = 512;
    for (int shift = 52; shift > 0 && numbers.size() > worthwhile; shift -= 11)
        numbers = Narrowed(numbers, shift, place);
    const auto found = numbers.begin() + static_cast<ptrdiff_t>(place);
    std::nth_element(numbers.begin(), found, numbers.end());
    return *found;
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
    Wave result(wave.size(), None);
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
    std::vector<double> sizes;
    begin = std::min(begin, wave.size());
    end = std::min(end, wave.size());
    sizes.reserve(end - begin);
    for (size_t i = begin; i < end; ++i)
        if (!std::isnan(wave[i]))
            sizes.push_back(std::abs(wave[i]));
    if (sizes.empty())
        return 0;
    const size_t middle = sizes.size() / 2;
    constexpr double consistency = 1.4826;
    return consistency * NumberAt(middle, std::move(sizes));
}

double LargestOf(const Wave& wave, size_t begin, size_t end)
{
    double largest = 0;
    for (size_t i = begin; i < std::min(end, wave.size()); ++i)
        if (std::abs(wave[i]) > largest) // false for a missing one
            largest = std::abs(wave[i]);
    return largest;
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
