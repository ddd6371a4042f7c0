// The COMTRADE name of a channel, made from its name in the recording.
#include "recording/zufileformat.h"
#include "resorter/bayoptionalparam.h"
#include "support/device.h"

#include <gtest/gtest.h>

namespace {

// What RenameSignal leaves; the fields start with marks.
struct Renamed
{
    bool hasColon = false;
    QString circuit = "?", signal = "?", name = "?";
    int indexPos = -77;
    BayOptionalParam* bay = nullptr;
};

Renamed Rename(const QString& raw, ZuCmtrDevParam& device, BayOptionalParam* bayBefore = nullptr)
{
    ZuFileFormat file;
    Renamed result;
    result.bay = bayBefore;
    result.hasColon = file.RenameSignal(raw, &device, result.circuit, result.signal, result.name,
                                        result.indexPos, result.bay);
    return result;
}

struct NameCase
{
    const char *title, *raw;
    const char *circuit, *signal;
    const char* signalFirst; // CFG name with the signal first, and its index position
    int signalFirstPos;
    const char* circuitFirst;
    int circuitFirstPos;
};

void PrintTo(const NameCase& row, std::ostream* out)
{
    *out << row.title;
}

class NameWithColon : public testing::TestWithParam<NameCase>
{};

} // namespace

TEST_P(NameWithColon, SplitsIntoCircuitAndSignalInTheDevicesOrder)
{
    TestStation station;
    for (const bool signalFirst : {true, false}) {
        station.Device().RenameSignals = signalFirst;
        const Renamed renamed = Rename(GetParam().raw, station.Device());
        EXPECT_TRUE(renamed.hasColon);
        EXPECT_EQ(renamed.circuit, QString(GetParam().circuit));
        EXPECT_EQ(renamed.signal, QString(GetParam().signal));
        EXPECT_EQ(renamed.name, QString(signalFirst ? GetParam().signalFirst : GetParam().circuitFirst));
        EXPECT_EQ(renamed.indexPos, signalFirst ? GetParam().signalFirstPos : GetParam().circuitFirstPos);
        EXPECT_EQ(renamed.bay, nullptr);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Recorded, NameWithColon,
    testing::Values(NameCase{"Usual", "Q1:Ia", "Q1", "Ia", "Ia Q1", 2, "Q1 Ia", 5},
                    NameCase{"NoSignal", "Q1:", "Q1", "", " Q1", 0, "Q1 ", 3},
                    NameCase{"BlanksAtTheColon", "Q1 : Ia", "Q1", "Ia", "Ia Q1", 2, "Q1 Ia", 5},
                    NameCase{"BlanksAllRound", " \tQ1\t: Ia ", "Q1", "Ia", "Ia Q1", 2, "Q1 Ia", 5},
                    NameCase{"TwoColons", "A:B:C", "A", "B:C", "B:C A", 3, "A B:C", 5},
                    NameCase{"NoCircuit", ":Ia", "", "Ia", "Ia ", 2, " Ia", 3},
                    NameCase{"ColonAlone", ":", "", "", " ", 0, " ", 1},
                    NameCase{"Cyrillic", "ВЛ 1:Реле", "ВЛ 1", "Реле", "Реле ВЛ 1", 4, "ВЛ 1 Реле", 9}));

TEST(SignalName, WithoutColonStaysAsItIs)
{
    TestStation station("nBayMax=1\nBAY01= plain ,Shown");
    BayOptionalParam before;
    const Renamed renamed = Rename(" plain ", station.Device(), &before);
    EXPECT_FALSE(renamed.hasColon);
    EXPECT_EQ(renamed.circuit, QString(" plain "));
    EXPECT_EQ(renamed.signal, QString(""));
    EXPECT_EQ(renamed.name, QString(" plain "));
    EXPECT_EQ(renamed.indexPos, -1);
    EXPECT_EQ(renamed.bay, &before) << "not touched";
}

TEST(SignalName, ShowsTheBaysDisplayText)
{
    TestStation station("nBayMax=1\nBAY01=W1,Line one,W-1");
    station.Device().RenameSignals = true;
    Renamed renamed = Rename("W1 : Ia", station.Device());
    EXPECT_EQ(renamed.circuit, QString("W1")) << "keeps the recording's text";
    EXPECT_EQ(renamed.name, QString("Ia Line one"));
    EXPECT_EQ(renamed.indexPos, 2);
    ASSERT_NE(renamed.bay, nullptr);
    EXPECT_EQ(renamed.bay->BayName, QString("W1"));

    station.Device().RenameSignals = false;
    renamed = Rename("W1:Ia", station.Device());
    EXPECT_EQ(renamed.name, QString("Line one Ia"));
    EXPECT_EQ(renamed.indexPos, 11);
}

TEST(SignalName, BayWithoutDisplayTextIsSetAndNotShown)
{
    TestStation station("nBayMax=1\nBAY01=W1,,X");
    const Renamed renamed = Rename("W1:Ia", station.Device());
    EXPECT_EQ(renamed.name, QString("Ia W1"));
    ASSERT_NE(renamed.bay, nullptr);
    EXPECT_EQ(renamed.bay->BayName, QString("W1"));
}

TEST(SignalName, UnknownCircuitLeavesTheBayAsItWas)
{
    TestStation station("nBayMax=1\nBAY01=W1,Line one,W-1");
    EXPECT_EQ(Rename("W2:Ia", station.Device()).bay, nullptr);
    EXPECT_EQ(Rename("w1:Ia", station.Device()).bay, nullptr) << "another case";
    EXPECT_EQ(Rename("W-1:Ia", station.Device()).bay, nullptr) << "the circuit name of the bay";
    BayOptionalParam before;
    EXPECT_EQ(Rename("W2:Ia", station.Device(), &before).bay, &before);
}

TEST(SignalName, PlaceMarkersInTheSignalAreFilledInTurn)
{
    TestStation station;
    station.Device().RenameSignals = true;
    EXPECT_EQ(Rename("Q1:%2", station.Device()).name, QString("Q1 Q1"));
}

TEST(SignalName, DeviceWithoutReSorterKnowsNoBays)
{
    ZuCmtrDevParam device;
    device.RenameSignals = true;
    EXPECT_EQ(Rename("W1:Ia", device).name, QString("Ia W1"));
}
