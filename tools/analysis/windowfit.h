// The weights of filters that take one harmonic out of a window of samples. Internal to the analysis: the
// only header that knows Eigen.
#pragma once

#include "analysis/phasor.h"

#include <Eigen/Dense>

#include <vector>

namespace analysis {

/// Finds weights that pass one harmonic and suppress the direct component and all other harmonics, with the
/// least sum of squares: the rows of the least-squares fit of a Fourier series to the window.
///
/// In a window of one period and more than 32 samples only the outer 8 weights at each end are fitted; those
/// between are the plain Fourier kernel, whose sum can slide along the wave. The ends make up for a period
/// that is not a whole number of samples, as the end corrections of Gregory's quadrature do.
class WindowFit
{
public:
    /// Arguments as of Fourier.
    WindowFit(double samplesPerPeriod, size_t window, const Model& model);

    size_t Window() const { return window; }
    /// Of the fundamental, rad per sample.
    double Step() const { return step; }
    /// Weights at each end that are fitted; 0: all are.
    size_t Ends() const { return ends; }
    /// The highest harmonic that is told from the others.
    int Harmonics() const { return harmonics; }

    /// Weights of a harmonic from 0 to Harmonics(), for its RMS phasor with the angle at the last sample; for
    /// 0 the direct component.
    std::vector<Phasor> Weights(int order) const;

private:
    using Solver = Eigen::CompleteOrthogonalDecomposition<Eigen::MatrixXd>;
    // The conditions on one half of the symmetric (cosine) or antisymmetric (sine) part of the weights.
    enum Parity { Even, Odd };

    Eigen::Index Conditions() const { return harmonics + 2; }
    double Time(size_t pair) const;
    double Share(size_t pair) const;
    Eigen::VectorXd Column(Parity parity, size_t pair) const;
    Solver SolverOf(Parity parity) const;
    Eigen::VectorXd PartOf(Parity parity, int order) const;

    double step; // rad per sample
    size_t window;
    int degree;
    int harmonics;
    size_t pairs; // samples at equal distances from the centre; the middle one of an odd window is a pair too
    size_t ends;
    Eigen::VectorXd importance; // of each condition of the even part
    Solver even;
    Solver odd;
};

} // namespace analysis
