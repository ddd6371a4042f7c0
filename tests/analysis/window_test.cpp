// Phasors of a circuit's waves.
#include "analysis/window.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

using analysis::Phases;
using analysis::Phasor;

constexpr size_t Count = 400;

class Waves
{
public:
    explicit Waves(bool hasVoltages)
    {
        std::mt19937 random(1);
        std::normal_distribution<double> normal(0, 100);
        for (analysis::Wave& wave : waves) {
            wave.resize(Count);
            for (double& value : wave)
                value = normal(random);
        }
        circuit.hasVoltages = hasVoltages;
        for (size_t phase = 0; phase < Phases; ++phase) {
            circuit.currents[phase] = &waves[phase];
            if (hasVoltages)
                circuit.voltages[phase] = &waves[Phases + phase];
        }
    }

    std::array<analysis::Wave, 2 * Phases> waves;
    analysis::CircuitWaves circuit;
};

bool IsSame(Phasor a, Phasor b)
{
    const auto isSame = [](double x, double y) { return x == y || (std::isnan(x) && std::isnan(y)); };
    return isSame(a.real(), b.real()) && isSame(a.imag(), b.imag());
}

} // namespace

TEST(Window, OfACircuitIsThatOfEachWaveToTheLastBit)
{
    for (const bool hasVoltages : {false, true}) {
        Waves waves(hasVoltages);
        waves.waves[1][200] = std::nan("");
        for (const double period : {12.0, 47.3, 48.0}) {
            const analysis::Meter meter(period);
            for (const size_t length : {meter.Window() / 2, meter.Window(), 2 * meter.Window()}) {
                for (const size_t first : {size_t{0}, size_t{77}, size_t{190}, Count - length}) {
                    const analysis::CircuitState state = meter.Of(waves.circuit, first, length);
                    EXPECT_EQ(state.hasVoltages, hasVoltages);
                    for (size_t phase = 0; phase < Phases; ++phase) {
                        EXPECT_TRUE(
                            IsSame(state.currents[phase], meter.Of(waves.waves[phase], first, length)));
                        if (hasVoltages) {
                            EXPECT_TRUE(IsSame(state.voltages[phase],
                                               meter.Of(waves.waves[Phases + phase], first, length)));
                        }
                    }
                }
            }
        }
    }
}

TEST(Window, BeyondTheWavesHasNoPhasors)
{
    for (const bool hasVoltages : {false, true}) {
        const Waves waves(hasVoltages);
        const analysis::Meter meter(48);
        for (const size_t length : {size_t{0}, size_t{48}}) {
            const analysis::CircuitState state = meter.Of(waves.circuit, Count - 47, length);
            for (size_t phase = 0; phase < Phases; ++phase) {
                EXPECT_TRUE(std::isnan(state.currents[phase].real()));
                EXPECT_EQ(std::isnan(state.voltages[phase].real()), hasVoltages);
            }
        }
    }
}

TEST(Window, SecondHarmonicIsMeasuredBesideTheFundamental)
{
    analysis::Wave wave(Count);
    for (size_t i = 0; i < Count; ++i) {
        const double angle = 2 * std::acos(-1) * static_cast<double>(i) / 48;
        wave[i] = std::sqrt(2.0) * (100 * std::sin(angle) + 12 * std::cos(2 * angle + 0.4));
    }
    for (const size_t first : {0u, 5u, 100u})
        EXPECT_NEAR(analysis::Meter(48).SecondHarmonic(wave, first), 12, 1e-9);
    EXPECT_EQ(analysis::Meter(48).SecondHarmonic(wave, Count - 47), 0);
}
