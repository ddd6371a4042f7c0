// Steady signals of IEC/IEEE 60255-118-1, made harder: frequency and harmonics at once. The standard varies
// the frequency of pure sines, and adds harmonics at the nominal frequency.
#include "analysis.h"

#include "waves.h"

#include <algorithm>

namespace {

using bench::Nominal;

// Periods of 50 Hz are whole numbers of samples at some, and not at others.
constexpr double Rates[] = {600, 640, 1000, 1200, 1280, 1875, 2000, 2400, 4800, 5120, 9600, 20000};
constexpr double Periods = 6; // of the stretch whose frequency is measured

struct Worst : bench::LargestErrors // total vector error
{
    double frequency = 0; // mHz

    void AddFrequency(double hertz) { frequency = std::max(frequency, hertz * 1e3); }
};

double ErrorOf(analysis::Phasor measured, analysis::Phasor truth)
{
    return std::isnan(measured.real()) ? 100 : 100 * std::abs(measured - truth) / std::abs(truth);
}

double Difference(double measured, double truth)
{
    return std::isnan(measured) ? 1 : std::abs(measured - truth);
}

// The frequency of the stretch, and the phasor at the end by the filter for it.
void AddStretch(const waves::Steady& steady, Worst& worst)
{
    const auto count = static_cast<size_t>(Periods * steady.rate / Nominal);
    const auto phases = steady.ThreePhases(count);
    const double hertz = analysis::FrequencyOf(waves::SourceOf(phases), steady.rate, Nominal, 0, count);
    worst.AddFrequency(Difference(hertz, steady.hertz));
    const analysis::Fourier filter(steady.rate / (std::isnan(hertz) ? Nominal : hertz));
    const analysis::Phasor measured = filter.Of(&phases[0][count - filter.Window()]);
    worst.Add(steady.hertz, ErrorOf(measured, steady.PhasorAt(steady.parts.front(), count - 1)));
}

// Frequency and phasors of each sample.
void AddTrack(const waves::Steady& steady, Worst& worst)
{
    const auto count = static_cast<size_t>(2 * Periods * steady.rate / Nominal);
    const auto phases = steady.ThreePhases(count);
    const analysis::FrequencyTrack track =
        analysis::FrequencyOf(waves::SourceOf(phases), steady.rate, Nominal);
    const std::vector<analysis::Phasor> phasors =
        analysis::TrackAt(phases[0], track.hertz, steady.rate, Nominal);
    const auto settled = static_cast<size_t>(3 * steady.rate / Nominal);
    for (size_t i = settled; i < count; ++i) {
        const double turns = std::remainder(Nominal * static_cast<double>(i) / steady.rate, 1);
        const analysis::Phasor truth =
            steady.PhasorAt(steady.parts.front(), i) * std::polar(1.0, -2 * waves::Pi * turns);
        worst.AddFrequency(Difference(track.hertz[i], steady.hertz));
        worst.Add(steady.hertz, ErrorOf(phasors[i], truth));
    }
}

// Calls add for each rate, frequency and single harmonic of 10 % from `lowest` on (1: none).
template <typename Add>
void ForEachSignal(double step, int orderStep, Add add)
{
    for (const double rate : Rates) {
        for (double hertz = 45; hertz <= 55; hertz += step) {
            waves::Steady steady;
            steady.rate = rate;
            steady.hertz = hertz;
            const int highest = waves::HighestOrder(steady);
            for (int order = 1; order <= highest; order += order < 13 ? 1 : orderStep) {
                steady.parts = {{1, 100, 0.4}};
                if (order > 1)
                    steady.parts.push_back({order, 10, 1.1});
                add(steady);
            }
        }
    }
}

// What a recorder without an anti-aliasing filter would make of harmonics beyond half the rate.
double WorstFolded(double rate)
{
    Worst worst;
    for (double hertz = 45; hertz <= 55; hertz += 0.5) {
        waves::Steady steady;
        steady.rate = rate;
        steady.hertz = hertz;
        for (int order = waves::HighestOrder(steady) + 1; order <= 50; ++order) {
            steady.parts = {{1, 100, 0.4}, {order, 10, 1.1}};
            AddStretch(steady, worst);
        }
    }
    return std::max(worst.atNominal, worst.elsewhere);
}

void Add(const char* what, const Worst& worst, bench::AnalysisLines& lines)
{
    const std::string name = what;
    bench::AddErrors(name + ", total vector error", "45 to 55 Hz", worst, {0.1, 1}, lines);
    lines.push_back(bench::AtMost(name + ", frequency", worst.frequency, 5, "mHz"));
}

} // namespace

namespace bench {

AnalysisLines MeasurePhasors()
{
    AnalysisLines lines;
    Worst stretch;
    ForEachSignal(0.5, 1, [&](const waves::Steady& steady) { AddStretch(steady, stretch); });
    Add("phasor of a stretch", stretch, lines);
    Worst track;
    ForEachSignal(0.73, 6, [&](const waves::Steady& steady) { AddTrack(steady, track); });
    ForEachSignal(5, 6, [&](const waves::Steady& steady) { AddTrack(steady, track); });
    Add("phasors of each sample", track, lines);
    lines.push_back(Reported("harmonics beyond half of 600/s, total vector error", WorstFolded(600), "%"));
    return lines;
}

} // namespace bench
