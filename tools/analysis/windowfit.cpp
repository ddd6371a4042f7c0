#include "analysis/windowfit.h"

#include "analysis/constants.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace analysis {

namespace {

constexpr int MostHarmonics = 50;
constexpr size_t FittedEnds = 8;
constexpr size_t MostFittedWindow = 32; // samples

// What a large weight at an end costs against a harmonic that leaks: small enough to leave the suppression to
// the conditions, large enough to keep weights from growing where the conditions are nearly the same.
constexpr double Damping = 1e-4;

// The highest harmonic below half the rate that leaves no more unknowns than samples. One nearer to half the
// rate than a quarter of the fundamental cannot be told from its mirror image within a period.
int HarmonicsOf(size_t window, double samplesPerPeriod, const Model& model)
{
    const int wanted = model.harmonics > 0 ? model.harmonics : MostHarmonics;
    const int direct = model.degree + 1;
    const int fitting = (static_cast<int>(std::min<size_t>(window, 100000)) - direct) / 2;
    const int below = static_cast<int>(std::ceil(std::min(samplesPerPeriod, 1000.0) / 2 - 0.25)) - 1;
    return std::max(1, std::min({wanted, fitting, below}));
}

size_t WindowOf(double samplesPerPeriod)
{
    return static_cast<size_t>(std::ceil(samplesPerPeriod - 1e-6));
}

} // namespace

WindowFit::WindowFit(double samplesPerPeriod, size_t window_, const Model& model)
    : step(2 * Pi / samplesPerPeriod), window(window_ > 0 ? window_ : WindowOf(samplesPerPeriod)),
      degree(model.degree), harmonics(HarmonicsOf(window, samplesPerPeriod, model)), pairs((window + 1) / 2),
      ends(window_ == 0 && degree == 0 && window > MostFittedWindow ? FittedEnds : 0),
      importance(Eigen::VectorXd::Ones(Conditions()))
{
    if (ends > 0)
        for (Eigen::Index k = 1; k <= harmonics; ++k)
            importance(k) = 1 / static_cast<double>(k);
    even = SolverOf(Even);
    odd = SolverOf(Odd);
}

// Pair 0 is the outermost.
double WindowFit::Time(size_t pair) const
{
    return static_cast<double>(window - 1) / 2 - static_cast<double>(pair);
}

// Samples of a pair, as a root: with it, the least sum of squares over the pairs is that over the samples.
double WindowFit::Share(size_t pair) const
{
    return 2 * pair + 1 == window ? 1 : std::sqrt(2.0);
}

// What the pair adds to each condition: for the even part the direct component, the cosines and the square of
// the time, for the odd part the time and the sines.
Eigen::VectorXd WindowFit::Column(Parity parity, size_t pair) const
{
    const double time = Time(pair);
    Eigen::VectorXd column(Conditions());
    const double twice = 2 * std::cos(step * time);
    double before = parity == Even ? 1 : 0;
    double value = parity == Even ? twice / 2 : std::sin(step * time);
    const double part = time / static_cast<double>(window);
    column(0) = parity == Even ? 1 : (degree > 0 ? part : 0);
    column(harmonics + 1) = parity == Even && degree > 1 ? part * part : 0;
    for (Eigen::Index k = 1; k <= harmonics; ++k) {
        column(k) = value;
        const double next = twice * value - before;
        before = value;
        value = next;
    }
    return column * Share(pair);
}

WindowFit::Solver WindowFit::SolverOf(Parity parity) const
{
    const size_t fitted = ends > 0 ? ends : pairs;
    const auto columns = static_cast<Eigen::Index>(fitted);
    const Eigen::Index rows = Conditions();
    Eigen::MatrixXd conditions = Eigen::MatrixXd::Zero(ends > 0 ? rows + columns : rows, columns);
    for (size_t pair = 0; pair < fitted; ++pair) {
        const auto column = static_cast<Eigen::Index>(pair);
        conditions.block(0, column, rows, 1) = importance.cwiseProduct(Column(parity, pair));
        if (ends > 0)
            conditions(rows + column, column) = Damping;
    }
    return Solver(conditions);
}

// The weights of one sample of each pair.
Eigen::VectorXd WindowFit::PartOf(Parity parity, int order) const
{
    Eigen::VectorXd part = Eigen::VectorXd::Zero(static_cast<Eigen::Index>(pairs));
    const Solver& solver = parity == Even ? even : odd;
    Eigen::VectorXd wanted = Eigen::VectorXd::Zero(solver.rows());
    if (parity == Even || order > 0)
        wanted(order) = 1;
    if (ends > 0 && (parity == Even || order > 0)) {
        const double amplitude = (order == 0 ? 1 : 2) * step / (2 * Pi);
        for (size_t pair = 0; pair < pairs; ++pair) {
            const double angle = static_cast<double>(order) * step * Time(pair);
            const double weight = amplitude * (parity == Even ? std::cos(angle) : std::sin(angle));
            part(static_cast<Eigen::Index>(pair)) = weight;
            wanted.head(Conditions()) -= Column(parity, pair) * (weight * Share(pair));
        }
    }
    wanted.head(Conditions()) = wanted.head(Conditions()).cwiseProduct(importance);
    const Eigen::VectorXd solved = solver.solve(wanted);
    for (Eigen::Index pair = 0; pair < solved.size(); ++pair)
        part(pair) += solved(pair) / Share(static_cast<size_t>(pair));
    return part;
}

std::vector<Phasor> WindowFit::Weights(int order) const
{
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    if (order > harmonics)
        return std::vector<Phasor>(window, Phasor(none, none));
    const Eigen::VectorXd cosine = PartOf(Even, order);
    const Eigen::VectorXd sine = PartOf(Odd, order);
    std::vector<Phasor> weights(window);
    const double turn = static_cast<double>(order) * step * static_cast<double>(window - 1) / 2;
    const Phasor atLast = order == 0 ? Phasor(1) : std::polar(std::sqrt(0.5), std::remainder(turn, 2 * Pi));
    for (size_t pair = 0; pair < pairs; ++pair) {
        const auto place = static_cast<Eigen::Index>(pair);
        const double odder = Time(pair) == 0 ? 0 : sine(place);
        weights[pair] = Phasor(cosine(place), odder) * atLast;
        weights[window - 1 - pair] = Phasor(cosine(place), -odder) * atLast;
    }
    return weights;
}

} // namespace analysis
