#include "analysis/interpolation.h"

#include "analysis/constants.h"

#include <algorithm>
#include <cmath>

namespace analysis {

namespace {

constexpr double SameMoment = 1e-6; // in parts of a step
constexpr size_t MostNodes = 8;     // of a polynomial; more magnify noise at the ends of a piece
constexpr qint64 FarthestNode = 8;  // samples from the moment
constexpr double KaiserBeta = 8;    // suppression of mirror images by 80 dB

// The modified Bessel function of the first kind and order 0.
double Bessel(double x)
{
    double sum = 1;
    double term = 1;
    for (int k = 1; term > 1e-12 * sum; ++k) {
        term *= (x / 2 / k) * (x / 2 / k);
        sum += term;
    }
    return sum;
}

double Sinc(double x)
{
    return std::abs(x) < 1e-9 ? 1 : std::sin(Pi * x) / (Pi * x);
}

// x from -1 to 1.
double Kaiser(double x)
{
    return Bessel(KaiserBeta * std::sqrt(std::max(0.0, 1 - x * x))) / Bessel(KaiserBeta);
}

struct Node
{
    double time, value;
};

double Lagrange(const std::vector<Node>& nodes, double time)
{
    double sum = 0;
    for (const Node& node : nodes) {
        double product = node.value;
        for (const Node& other : nodes)
            if (other.time != node.time)
                product *= (time - other.time) / (node.time - other.time);
        sum += product;
    }
    return sum;
}

} // namespace

SampleTimes::SampleTimes(const TimeAxis& axis_, qint64 first_, qint64 samples_)
    : axis(axis_), first(first_), samples(samples_)
{
    const auto& known = axis.Pieces();
    for (size_t i = 0; i < known.size(); ++i) {
        // The first sample of a rate comes one of its steps after the last one of the rate before.
        const qint64 begin = known[i].from - first - (i > 0 ? 1 : 0);
        const qint64 end = i + 1 < known.size() ? known[i + 1].from - first : samples;
        pieces.push_back({std::max<qint64>(begin, 0), std::min(end, samples)});
    }
}

SampleTimes::Stretch SampleTimes::Around(qint64 before) const
{
    const auto piece = std::find_if(pieces.begin(), pieces.end(),
                                    [before](const Stretch& stretch) { return before + 1 < stretch.end; });
    if (piece != pieces.end())
        return *piece;
    const double step = At(before + 1) - At(before);
    const auto isAlike = [step](double other) { return other >= step / 2 && other <= step * 2; };
    Stretch stretch{before, before + 2};
    while (stretch.begin > 0 && before - stretch.begin < FarthestNode &&
           isAlike(At(stretch.begin) - At(stretch.begin - 1)))
        --stretch.begin;
    while (stretch.end < samples && stretch.end - before <= FarthestNode &&
           isAlike(At(stretch.end) - At(stretch.end - 1)))
        ++stretch.end;
    return stretch;
}

Interpolation::Interpolation(SampleTimes times_, double start, double interval, size_t count)
    : times(std::move(times_))
{
    qint64 before = 0;
    moments.reserve(count);
    for (size_t i = 0; i < count; ++i) {
        const double time = start + static_cast<double>(i) * interval;
        while (before + 2 < times.Count() && times.At(before + 1) <= time)
            ++before;
        moments.push_back(Placed(time, before));
    }
}

Interpolation::Moment Interpolation::Placed(double time, qint64 before)
{
    if (times.Count() < 2)
        return {times.Count() == 1 ? Way::Sample : Way::Outside, 0, time, 0};
    const double step = times.At(before + 1) - times.At(before);
    const double at = step > 0 ? (time - times.At(before)) / step : 0;
    if (std::abs(at) < SameMoment || std::abs(at - 1) < SameMoment)
        return {Way::Sample, at < 0.5 ? before : before + 1, time, 0};
    if (at < 0 || at > 1)
        return {Way::Outside, before, time, 0};
    const SampleTimes::Stretch stretch = times.Around(before);
    if (!times.HasRates() || before - Half + 1 < stretch.begin || before + Half >= stretch.end)
        return {Way::Polynomial, before, time, 0};
    if (kernels.empty() || std::abs(at - part) > SameMoment) {
        Kernel kernel{};
        double sum = 0;
        for (size_t i = 0; i < kernel.size(); ++i) {
            const double distance = static_cast<double>(static_cast<qint64>(i) - Half + 1) - at;
            kernel[i] = Sinc(distance) * Kaiser(distance / Half);
            sum += kernel[i];
        }
        for (double& weight : kernel)
            weight /= sum;
        kernels.push_back(kernel);
        part = at;
    }
    return {Way::Kernel, before, time, kernels.size() - 1};
}

double Interpolation::KernelSum(const std::vector<double>& values, const Moment& moment) const
{
    const Kernel& kernel = kernels[moment.kernel];
    const double* first = &values[static_cast<size_t>(moment.before - Half + 1)];
    double sum = 0;
    for (size_t i = 0; i < kernel.size(); ++i)
        sum += kernel[i] * first[i];
    return sum;
}

double Interpolation::Polynomial(const std::vector<double>& values, const Moment& moment) const
{
    const auto valueAt = [&](qint64 sample) { return values[static_cast<size_t>(sample)]; };
    if (std::isnan(valueAt(moment.before)) || std::isnan(valueAt(moment.before + 1)))
        return NoValue;
    const SampleTimes::Stretch stretch = times.Around(moment.before);
    const qint64 begin = std::max(stretch.begin, moment.before - FarthestNode);
    const qint64 end = std::min(stretch.end, moment.before + FarthestNode + 2);
    std::vector<Node> nodes;
    qint64 left = moment.before;
    qint64 right = moment.before + 1;
    while (nodes.size() < MostNodes && (left >= begin || right < end)) {
        const bool isLeft =
            right >= end || (left >= begin && moment.time - times.At(left) <= times.At(right) - moment.time);
        const qint64 sample = isLeft ? left-- : right++;
        if (!std::isnan(valueAt(sample)))
            nodes.push_back({times.At(sample), valueAt(sample)});
    }
    return Lagrange(nodes, moment.time);
}

std::vector<double> Interpolation::Of(const std::vector<double>& values) const
{
    std::vector<double> result;
    result.reserve(moments.size());
    for (const Moment& moment : moments) {
        double value = NoValue;
        if (moment.way == Way::Sample)
            value = values[static_cast<size_t>(moment.before)];
        if (moment.way == Way::Kernel)
            value = KernelSum(values, moment);
        if (moment.way == Way::Polynomial || (moment.way == Way::Kernel && std::isnan(value)))
            value = Polynomial(values, moment);
        result.push_back(value);
    }
    return result;
}

} // namespace analysis
