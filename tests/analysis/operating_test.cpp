#include "analysis/operating.h"

#include "made.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

// A signal of W1 with a state for each 10 ms.
made::State Signal(const char* name, const char* states, const char* circuit = "W1")
{
    return {QString::fromUtf8(name), QString::fromUtf8(circuit), QString::fromLatin1(states)};
}

const std::vector<made::State> Story = {
    Signal("start", "00000111100000000000"), Signal("trip", "00000011100000000000"),
    Signal("52a", "11111111000000000111"), Signal("52b", "00000000011111111000")};

analysis::Fault FaultOf(std::vector<std::pair<double, double>> parts)
{
    analysis::Fault fault;
    for (const auto& [onset, clearing] : parts) {
        analysis::FaultPart part;
        part.onset = onset;
        part.afterReclosing = !fault.parts.empty() && onset > *fault.parts.back().clearing;
        if (!std::isnan(clearing))
            part.clearing = clearing;
        fault.parts.push_back(part);
    }
    return fault;
}

analysis::Operating Of(const std::vector<made::State>& states,
                       const std::optional<analysis::Fault>& fault = std::nullopt)
{
    const analysis::Oscillogram record = made::Record(states, 100, 4);
    const std::vector<analysis::Circuit> circuits = analysis::CircuitsOf(record.config);
    const analysis::ChannelKinds kinds(record.config, {});
    return OperatingOf(EventsOf(record, kinds).events, record.config, circuits, fault);
}

void ExpectTime(const std::optional<double>& time, double wanted)
{
    ASSERT_TRUE(time.has_value());
    EXPECT_NEAR(*time, wanted, 1e-9);
}

TEST(Operating, TimesCountFromTheOnset)
{
    const analysis::Operating operating = Of(Story, FaultOf({{0.005, 0.047}}));
    EXPECT_TRUE(operating.isFromOnset);
    EXPECT_EQ(operating.circuit, QString("W1"));
    ExpectTime(operating.from, 0.005);
    ExpectTime(operating.start, 0.005);
    ExpectTime(operating.trip, 0.015);
    ExpectTime(operating.breaker, 0.035); // the first contact
    ExpectTime(operating.clearing, 0.042);
    ExpectTime(operating.deadTime, 0.09); // of that contact
    EXPECT_EQ(operating.reclosed, true);
}

TEST(Operating, WithoutAFaultTheFirstStartIsTheirOrigin)
{
    const analysis::Operating operating = Of(Story);
    EXPECT_FALSE(operating.isFromOnset);
    EXPECT_EQ(operating.circuit, QString());
    ExpectTime(operating.from, 0.01);
    ExpectTime(operating.start, 0);
    ExpectTime(operating.trip, 0.01);
    ExpectTime(operating.breaker, 0.03);
    EXPECT_FALSE(operating.clearing.has_value());
}

TEST(Operating, NothingIsKnownWithoutEvents)
{
    const analysis::Operating operating = Of({Signal("start", "00000000000000000000")});
    EXPECT_FALSE(operating.from.has_value());
    EXPECT_FALSE(operating.start.has_value());
    EXPECT_FALSE(operating.breaker.has_value());
    EXPECT_FALSE(operating.reclosed.has_value());
}

TEST(Operating, EventsBeforeTheOnsetDoNotCount)
{
    const analysis::Operating operating =
        Of({Signal("start", "01000111100000000000"), Signal("trip", "01100001111111111111")},
           FaultOf({{0.005, 0.047}}));
    ExpectTime(operating.start, 0.005);
    ExpectTime(operating.trip, 0.025);
}

TEST(Operating, PulseIsNeitherTripNorOpening)
{
    analysis::Oscillogram record =
        made::Record({Signal("trip", "00001000000000000000"), Signal("trip", "00000000000001111111"),
                      Signal("52a", "00000100000000000000")},
                     1000, 0);
    const std::vector<analysis::Circuit> circuits = analysis::CircuitsOf(record.config);
    const analysis::ChannelKinds kinds(record.config, {});
    const analysis::Operating operating =
        OperatingOf(EventsOf(record, kinds).events, record.config, circuits, FaultOf({{0, 0.01}}));
    ExpectTime(operating.trip, 0.013);
    EXPECT_FALSE(operating.breaker.has_value());
}

TEST(Operating, OnsetMayBeFoundALittleAfterTheStart)
{
    ExpectTime(Of(Story, FaultOf({{0.011, 0.047}})).start, -0.001);
}

TEST(Operating, AreThoseOfTheFaultedCircuit)
{
    std::vector<made::State> states = Story;
    states.insert(states.begin() + 1, Signal("start", "00001111100000000000", "W2"));
    ExpectTime(Of(states, FaultOf({{-0.01, 0.047}})).start, 0.02);
}

TEST(Operating, AreThoseOfTheRecordIfTheCircuitHasNone)
{
    std::vector<made::State> states = {Signal("door", "00001111100000000000")};
    for (made::State state : Story) {
        state.circuit = QStringLiteral("W2");
        states.push_back(state);
    }
    const analysis::Operating operating = Of(states, FaultOf({{0.005, 0.047}}));
    EXPECT_EQ(operating.circuit, QString());
    ExpectTime(operating.start, 0.005);
}

TEST(Operating, ClearingOfAnEvolvingFaultIsItsEnd)
{
    ExpectTime(Of(Story, FaultOf({{0.005, 0.02}, {0.02, 0.047}})).clearing, 0.042);
}

TEST(Operating, ReclosingOntoTheFaultHasNoSuccess)
{
    const analysis::Operating operating = Of(Story, FaultOf({{0.005, 0.047}, {0.131, std::nan("")}}));
    ExpectTime(operating.clearing, 0.042);
    EXPECT_EQ(operating.reclosed, false);
}

TEST(Operating, BreakerThatOpensAgainHasNoSuccess)
{
    std::vector<made::State> states = Story;
    states[2].states = QStringLiteral("11111111000000111000");
    EXPECT_EQ(Of(states).reclosed, false);
}

TEST(Operating, BreakerThatStaysOpenWasNotReclosed)
{
    std::vector<made::State> states = Story;
    states[2].states = QStringLiteral("11111111000000000000");
    states[3].states = QStringLiteral("00000000011111111111");
    const analysis::Operating operating = Of(states);
    EXPECT_FALSE(operating.deadTime.has_value());
    EXPECT_FALSE(operating.reclosed.has_value());
}

} // namespace
