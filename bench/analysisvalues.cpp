// Values over a period against those that the signals were made with.
#include "analysis.h"

#include "analysis/harmonics.h"
#include "analysis/power.h"
#include "analysis/rms.h"
#include "analysis/unbalance.h"
#include "waves.h"

#include <algorithm>

namespace {

using bench::Nominal;

constexpr double Rates[] = {600, 640, 1200, 1280, 1875, 2000, 2400, 4800, 5120, 20000};
constexpr double VoltageAngle[] = {0.3, 0.3 - 2.1, 0.3 + 2.05};
constexpr double CurrentAngle[] = {-0.2, -0.2 - 2.2, -0.2 + 2.0};
constexpr double VoltageMagnitude[] = {100, 95, 107};
constexpr double CurrentMagnitude[] = {10, 14, 9};

// The largest differences, in percent of the value (of components and power: of the largest of them).
struct Worst : bench::LargestErrors
{
    void Add(double hertz, double measured, double truth, double whole)
    {
        const double percent = 100 * std::abs(measured - truth) / whole;
        bench::LargestErrors::Add(hertz, std::isnan(percent) ? 100 : percent);
    }
};

struct Errors
{
    Worst rms, rmsOfHighest, direct, harmonic, sequence, power;
};

// A wave with a direct component and harmonics, 5 % each.
std::vector<waves::Part> Distorted(const waves::Steady& steady, double magnitude, double angle)
{
    std::vector<waves::Part> parts = {{1, magnitude, angle}, {0, magnitude / 20, 0}};
    for (const int order : {3, 5, 7, 11})
        if (order <= waves::HighestOrder(steady))
            parts.push_back({order, magnitude / 20, 0.7 * order + angle});
    return parts;
}

double RmsOf(const std::vector<waves::Part>& parts)
{
    double squares = 0;
    for (const waves::Part& part : parts)
        squares += part.magnitude * part.magnitude;
    return std::sqrt(squares);
}

// The frequency is measured as that of a record is.
double MeasuredFrequency(const waves::Steady& steady)
{
    const auto count = static_cast<size_t>(6 * steady.rate / Nominal);
    const auto phases = steady.ThreePhases(count);
    return analysis::FrequencyOf(waves::SourceOf(phases), steady.rate, Nominal, 0, count);
}

void AddSingle(const waves::Steady& steady, double samplesPerPeriod, Errors& errors)
{
    const analysis::Wave wave = steady.Samples(static_cast<size_t>(4 * steady.rate / Nominal));
    const double magnitude = steady.parts[0].magnitude;
    const analysis::Rms rms(samplesPerPeriod);
    const analysis::Wave rmsTrack = rms.Track(wave);
    const analysis::Wave directTrack = analysis::Direct(samplesPerPeriod).Track(wave);
    for (size_t i = rms.Window(); i < wave.size(); ++i) {
        errors.rms.Add(steady.hertz, rmsTrack[i], RmsOf(steady.parts), magnitude);
        errors.direct.Add(steady.hertz, directTrack[i], steady.parts[1].magnitude, magnitude);
    }
    const analysis::Harmonics harmonics(samplesPerPeriod);
    const analysis::Spectrum spectrum = harmonics.Of(&wave[wave.size() - harmonics.Window()]);
    for (size_t i = 2; i < steady.parts.size(); ++i) {
        const auto place = static_cast<size_t>(steady.parts[i].order) - 1;
        errors.harmonic.Add(steady.hertz, std::abs(spectrum.harmonics[place]), steady.parts[i].magnitude,
                            magnitude);
    }
}

// RMS values with a single harmonic of 10 %. Those above 0.4 of the rate, where the filter of a recorder
// ends, are kept apart: their squares are folded to low frequencies.
void AddHarmonics(waves::Steady steady, double samplesPerPeriod, Errors& errors)
{
    const analysis::Rms rms(samplesPerPeriod);
    for (int order = 2; order <= waves::HighestOrder(steady); ++order) {
        steady.parts = {{1, 100, 0.3}, {order, 10, 1.1}};
        const analysis::Wave wave = steady.Samples(2 * rms.Window());
        for (size_t i = 0; i < rms.Window(); ++i)
            (order <= 0.4 * steady.SamplesPerPeriod() ? errors.rms : errors.rmsOfHighest)
                .Add(steady.hertz, rms.Of(&wave[i]), RmsOf(steady.parts), 100);
    }
}

analysis::PhaseTracks Tracks(const waves::Steady& like, const double* magnitudes, const double* angles,
                             const analysis::Fourier& filter)
{
    analysis::PhaseTracks tracks;
    for (size_t phase = 0; phase < analysis::Phases; ++phase) {
        waves::Steady steady = like;
        steady.parts = Distorted(steady, magnitudes[phase], angles[phase]);
        tracks[phase] = filter.Track(steady.Samples(static_cast<size_t>(4 * steady.rate / Nominal)));
    }
    return tracks;
}

analysis::PhasePhasors Made(const double* magnitudes, const double* angles)
{
    analysis::PhasePhasors phasors;
    for (size_t phase = 0; phase < analysis::Phases; ++phase)
        phasors[phase] = std::polar(magnitudes[phase], angles[phase]);
    return phasors;
}

void AddThreePhases(const waves::Steady& steady, double samplesPerPeriod, Errors& errors)
{
    const analysis::Fourier filter(samplesPerPeriod);
    const analysis::PhaseTracks voltages = Tracks(steady, VoltageMagnitude, VoltageAngle, filter);
    const analysis::PhaseTracks currents = Tracks(steady, CurrentMagnitude, CurrentAngle, filter);
    const analysis::PhasePhasors voltage = Made(VoltageMagnitude, VoltageAngle);
    const analysis::PhasePhasors current = Made(CurrentMagnitude, CurrentAngle);
    const analysis::Components components = analysis::ComponentsOf(voltage);
    const analysis::Power power = analysis::PowerOf(voltage, current);
    const double whole = std::abs(components.positive);
    for (size_t i = filter.Window(); i < voltages[0].size(); ++i) {
        const analysis::Components found = analysis::ComponentsOf(analysis::At(voltages, i));
        errors.sequence.Add(steady.hertz, std::abs(found.positive), whole, whole);
        errors.sequence.Add(steady.hertz, std::abs(found.negative), std::abs(components.negative), whole);
        errors.sequence.Add(steady.hertz, std::abs(found.zero), std::abs(components.zero), whole);
        const analysis::Power foundPower =
            analysis::PowerOf(analysis::At(voltages, i), analysis::At(currents, i));
        errors.power.Add(steady.hertz, foundPower.active, power.active, power.Apparent());
        errors.power.Add(steady.hertz, foundPower.reactive, power.reactive, power.Apparent());
        errors.power.Add(steady.hertz, foundPower.Apparent(), power.Apparent(), power.Apparent());
    }
}

void Add(const char* what, const Worst& worst, bench::AnalysisLines& lines)
{
    bench::AddErrors(what, "47 to 53 Hz", worst, {0.05, 0.2}, lines);
}

} // namespace

namespace bench {

AnalysisLines MeasureValues()
{
    Errors errors;
    for (const double rate : Rates) {
        for (double hertz = 47; hertz <= 53; hertz += 0.5) {
            waves::Steady steady;
            steady.rate = rate;
            steady.hertz = hertz;
            steady.parts = Distorted(steady, 100, 0.3);
            const double samplesPerPeriod = rate / MeasuredFrequency(steady);
            AddSingle(steady, samplesPerPeriod, errors);
            AddHarmonics(steady, samplesPerPeriod, errors);
            AddThreePhases(steady, samplesPerPeriod, errors);
        }
    }
    AnalysisLines lines;
    Add("RMS value, distorted", errors.rms, lines);
    lines.push_back(Reported("RMS value with 10 % of a harmonic above 0.4 of the rate",
                             errors.rmsOfHighest.elsewhere, "%"));
    Add("direct component", errors.direct, lines);
    Add("harmonics", errors.harmonic, lines);
    Add("symmetrical components", errors.sequence, lines);
    Add("P, Q, S", errors.power, lines);
    return lines;
}

} // namespace bench
