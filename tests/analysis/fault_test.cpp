// A fault in a record of two circuits.
#include "analysis/fault.h"

#include "made.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using analysis::WantedPhasors;

constexpr int Count = 1200;
constexpr double Period = 48;

void AddWave(analysis::Oscillogram& record, const char* name, const char* circuit, const char* unit,
             double degrees, double before, double during)
{
    comtrade::AnalogChannel channel;
    channel.name = QString::fromLatin1(name);
    channel.circuit = QString::fromLatin1(circuit);
    channel.unit = QString::fromLatin1(unit);
    channel.a = 1;
    channel.primary = channel.secondary = 1;
    channel.primaryValues = true;
    record.config.analog.push_back(channel);
    analysis::Codes codes;
    for (int i = 0; i < Count; ++i) {
        const double angle = 2 * std::acos(-1) * (i / Period + degrees / 360);
        codes.Add(std::round(std::sqrt(2.0) * (i < 480 || i >= 900 ? before : during) * std::cos(angle)));
    }
    record.analog.push_back(codes);
}

// Phase A of the first circuit carries a fault, unless it is quiet.
analysis::Oscillogram Record(bool isQuiet)
{
    analysis::Oscillogram record = made::Record({{"Q1", "W1", QString(Count, '0')}}, 2400, 480);
    for (const char* circuit : {"W1", "W2"}) {
        const bool isFaulted = !isQuiet && circuit[1] == '1';
        const char* const currents[] = {"Ia", "Ib", "Ic"};
        const char* const voltages[] = {"Ua", "Ub", "Uc"};
        for (int phase = 0; phase < 3; ++phase) {
            const bool isHit = isFaulted && phase == 0;
            AddWave(record, currents[phase], circuit, "A", -120 * phase - (isHit ? 60 : 10), 200,
                    isHit ? 5000 : 200);
            AddWave(record, voltages[phase], circuit, "V", -120 * phase, 6000,
                    !isQuiet && phase == 0 ? 2000 : 6000);
        }
    }
    return record;
}

analysis::Findings Found(const analysis::Oscillogram& record, WantedPhasors wanted)
{
    const analysis::Signals signals(record);
    return analysis::FindFault(signals, analysis::CircuitsOf(record.config), {}, wanted);
}

bool IsOf(const analysis::Oscillogram& record, const char* circuit, const analysis::ChannelPhasors& one)
{
    return record.config.analog[one.channel].circuit == QLatin1String(circuit);
}

} // namespace

TEST(Fault, PhasorsOfItsCircuitAreTheSameWithoutTheOthers)
{
    const analysis::Oscillogram record = Record(false);
    const analysis::Findings all = Found(record, WantedPhasors::AllWaves);
    const analysis::Findings some = Found(record, WantedPhasors::FaultedCircuit);
    ASSERT_TRUE(all.fault && some.fault);
    EXPECT_EQ(some.fault->circuit, 0u);
    EXPECT_EQ(some.fault->Kind(), analysis::FaultKind::AG);
    EXPECT_EQ(some.fault->Onset(), all.fault->Onset());
    ASSERT_EQ(all.fault->phasors.size(), 12u);
    ASSERT_EQ(some.fault->phasors.size(), 6u);
    size_t at = 0;
    for (const analysis::ChannelPhasors& one : all.fault->phasors) {
        if (!IsOf(record, "W1", one))
            continue;
        const analysis::ChannelPhasors& other = some.fault->phasors[at++];
        EXPECT_EQ(other.channel, one.channel);
        EXPECT_EQ(other.before, one.before);
        EXPECT_EQ(other.during, one.during);
        EXPECT_EQ(other.after, one.after);
    }
    EXPECT_EQ(at, 6u);
}

TEST(Fault, WithoutItPhasorsAreForThoseWhoShowThem)
{
    const analysis::Oscillogram record = Record(true);
    const analysis::Findings all = Found(record, WantedPhasors::AllWaves);
    EXPECT_FALSE(all.fault);
    EXPECT_EQ(all.phasors.size(), 12u);
    EXPECT_TRUE(Found(record, WantedPhasors::FaultedCircuit).phasors.empty());
}
