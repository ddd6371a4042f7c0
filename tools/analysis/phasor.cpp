#include "analysis/phasor.h"

#include <Eigen/Dense>

#include <algorithm>
#include <cmath>
#include <limits>

namespace analysis {

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr int MostHarmonics = 25;

// Columns: the powers of time, then cosine and sine of each harmonic; time 0 is the last sample.
Eigen::MatrixXd Design(size_t window, double step, int harmonics, int degree)
{
    const auto rows = static_cast<Eigen::Index>(window);
    const Eigen::Index first = degree + 1;
    Eigen::MatrixXd design(rows, first + 2 * harmonics);
    for (Eigen::Index row = 0; row < rows; ++row) {
        const double at = static_cast<double>(row - rows + 1);
        for (Eigen::Index power = 0; power < first; ++power)
            design(row, power) = std::pow(at / static_cast<double>(rows), static_cast<double>(power));
        for (Eigen::Index k = 1; k <= harmonics; ++k) {
            design(row, first + 2 * k - 2) = std::cos(static_cast<double>(k) * step * at);
            design(row, first + 2 * k - 1) = std::sin(static_cast<double>(k) * step * at);
        }
    }
    return design;
}

// The highest harmonic below half the rate that leaves no more unknowns than samples.
int HarmonicsOf(size_t window, double samplesPerPeriod, const Model& model)
{
    const int wanted = model.harmonics > 0 ? model.harmonics : MostHarmonics;
    const int direct = model.degree + 1;
    const int fitting = (static_cast<int>(window) - direct) / 2;
    const int below = static_cast<int>(std::ceil(samplesPerPeriod / 2 - 0.25)) - 1;
    return std::max(1, std::min({wanted, fitting, below}));
}

} // namespace

Fourier::Fourier(double samplesPerPeriod, size_t window, const Model& model) : step(2 * Pi / samplesPerPeriod)
{
    const size_t count = window > 0 ? window : static_cast<size_t>(std::ceil(samplesPerPeriod - 1e-6));
    const int harmonics = HarmonicsOf(count, samplesPerPeriod, model);
    const Eigen::MatrixXd design = Design(count, step, harmonics, model.degree);
    // Rows of the pseudo-inverse: what each sample adds to the cosine and the sine of the fundamental.
    const Eigen::MatrixXd inverse = design.completeOrthogonalDecomposition().pseudoInverse();
    const Eigen::Index first = model.degree + 1;
    for (size_t i = 0; i < count; ++i) {
        const auto column = static_cast<Eigen::Index>(i);
        weights.push_back(Phasor(inverse(first, column), -inverse(first + 1, column)) / std::sqrt(2.0));
    }
}

Phasor Fourier::Of(const double* first) const
{
    double real = 0;
    double imaginary = 0;
    for (size_t i = 0; i < weights.size(); ++i) {
        real += weights[i].real() * first[i];
        imaginary += weights[i].imag() * first[i];
    }
    return {real, imaginary};
}

std::vector<Phasor> Fourier::Track(const std::vector<double>& wave) const
{
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    std::vector<Phasor> result(wave.size(), Phasor(none, none));
    for (size_t last = weights.size() - 1; last < wave.size(); ++last)
        result[last] = Of(&wave[last + 1 - weights.size()]) *
                       std::polar(1.0, -std::remainder(step * static_cast<double>(last), 2 * Pi));
    return result;
}

Components ComponentsOf(Phasor a, Phasor b, Phasor c)
{
    const Phasor turn = std::polar(1.0, 2 * Pi / 3);
    return {(a + b + c) / 3.0, (a + turn * b + turn * turn * c) / 3.0,
            (a + turn * turn * b + turn * c) / 3.0};
}

} // namespace analysis
