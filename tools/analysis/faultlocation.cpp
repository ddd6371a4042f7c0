#include "analysis/faultlocation.h"

#include "analysis/constants.h"

#include <algorithm>
#include <cmath>

namespace analysis {

namespace {

// Distances by each method in one window after the other.
using Estimates = std::vector<std::vector<Distance>>;

double Quantile(std::vector<double> values, double part)
{
    const auto at = values.begin() + static_cast<ptrdiff_t>(static_cast<double>(values.size() - 1) * part);
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

std::vector<double> ValuesOf(const Estimates& all, size_t method, double Distance::* value)
{
    std::vector<double> values;
    for (const std::vector<Distance>& one : all)
        values.push_back(one[method].*value);
    return values;
}

Distance MiddleOf(const Estimates& all, size_t method)
{
    constexpr double half = 0.5;
    const auto middle = [&](double Distance::* value) {
        const std::vector<double> values = ValuesOf(all, method, value);
        return std::isnan(values.front()) ? NoValue : Quantile(values, half);
    };
    return {all.front()[method].method, middle(&Distance::percent), middle(&Distance::km),
            middle(&Distance::resistance)};
}

Coupled CoupledOf(const LocatedCircuit& circuit, const Meter& meter, size_t first, size_t length)
{
    if (!circuit.parallel)
        return {};
    const PhasePhasors currents = meter.Of(*circuit.parallel, first, length).currents;
    return {ComponentsOf(currents).zero};
}

} // namespace

void Locate(FaultPart& part, const FaultStretch& stretch, const LocatedCircuit& circuit, const Meter& meter)
{
    const size_t whole = stretch.to - std::min(stretch.from, stretch.to);
    const size_t length = std::min(whole, meter.Window() + meter.Window() / 2);
    if (length < meter.Window() / 2) {
        part.lack = Lack::TooShort;
        return;
    }
    const size_t step = std::max<size_t>(1, meter.Window() / 16);
    Estimates all;
    std::vector<double> lows, highs;
    Change change;
    change.before = stretch.before;
    for (size_t first = stretch.from + (whole - length) / 2; first + length <= stretch.to; first += step) {
        change.during = meter.Of(circuit.waves, first, length);
        const Coupled coupled = CoupledOf(circuit, meter, first, length);
        const std::vector<Distance> distances = DistancesOf(part.kind, change, circuit.line, coupled);
        if (std::any_of(distances.begin(), distances.end(),
                        [](const Distance& distance) { return !std::isfinite(distance.percent); }))
            continue; // a value is missing
        all.push_back(distances);
        const DistanceRange range =
            RangeOf(part.kind, change, circuit.line, coupled, distances.back().method);
        lows.push_back(range.fromPercent);
        highs.push_back(range.toPercent);
    }
    if (all.empty()) {
        part.lack = Lack::TooShort;
        return;
    }
    for (size_t method = 0; method < all.front().size(); ++method)
        part.distances.push_back(MiddleOf(all, method));
    part.best = part.distances.size() - 1;
    const std::vector<double> spread = ValuesOf(all, *part.best, &Distance::percent);
    constexpr double low = 0.1;
    constexpr double high = 0.9;
    constexpr double wide = 4; // percent of the line
    const double from = std::min(Quantile(lows, 0.5), Quantile(spread, low));
    const double to = std::max(Quantile(highs, 0.5), Quantile(spread, high));
    if (to - from > wide)
        part.range = DistanceRange{std::clamp(from, 0.0, 100.0), std::clamp(to, 0.0, 100.0)};
}

} // namespace analysis
