// Line models to simulate, and the phasors of what came out.
#pragma once

#include "station/linephasors.h"
#include "station/linesimulation.h"

#include <cmath>

// A line of 110 kV and 60 km with a load of 300 A, and a fault in 40 % of it.
inline station::LineModel UsualModel()
{
    using station::Complex;
    station::LineModel model = {};
    model.line = {60, 0.16, 0.41, 0.31, 1.25};
    model.infeed = {{1.2, 9.5}, {1.0, 7.0}};
    model.healthy = {{6.0, 31.0}, {12.0, 70.0}};
    model.remote = {{3.0, 19.0}, {4.0, 26.0}};
    model.voltage = 64000;
    model.lineLoad = {280, -90};
    model.healthyLoad = {-120, 40};
    model.frequency = 50;
    model.fraction = 0.4;
    return model;
}

// A fault at the moment (s), and nothing after it.
inline station::Course FaultAt(double time, const station::FaultState& fault)
{
    station::Course course;
    course.actions.push_back({time, station::FaultChange{fault}});
    return course;
}

// The phasor (RMS) of one phase from the period of samples that starts with `first`, by full-cycle Fourier.
// `turns` is the reference's angle at the first sample of all.
inline station::Complex PhasorOf(const std::vector<station::PhaseValues>& values, size_t phase, size_t first,
                                 size_t period, double turns)
{
    station::Complex sum;
    for (size_t i = first; i < first + period; ++i) {
        const double angle = 2 * M_PI * (static_cast<double>(i) / static_cast<double>(period) + turns);
        sum += values.at(i).at(phase) * station::Complex(std::sin(angle), std::cos(angle));
    }
    return sum * (std::sqrt(2.0) / static_cast<double>(period));
}
