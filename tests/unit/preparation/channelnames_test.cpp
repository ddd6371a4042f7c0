// The names of all channels of a recording, and finding a channel by them.
#include "resorter/bayoptionalparam.h"
#include "support/device.h"
#include "support/loadedfile.h"

#include <gtest/gtest.h>

using namespace recorderfile;

namespace {

// A recording with channels of these names, renamed for the station's device.
class RenamedFile
{
public:
    RenamedFile(const QStringList& analog, const QStringList& discrete,
                const QByteArray& deviceLines = QByteArray(), bool additionalIndexes = true)
        : station(deviceLines), file(Named(analog, discrete))
    {
        EXPECT_TRUE(file.Ok()) << file->ErrorText;
        station.Device().RenameSignals = true;
        station.Device().AdditionalIndexes = additionalIndexes;
        result = file->RenameAllChannelsName(&station.Device());
    }

    /// What RenameAllChannelsName returned.
    bool Result() const { return result; }
    ZuFileFormat* operator->() { return &file.File(); }
    AnChannelData& An(size_t index = 0) { return file.An(index); }
    DiChannelData& Di(size_t index = 0) { return file.Di(index); }

private:
    static Recording Named(const QStringList& analog, const QStringList& discrete)
    {
        Recording recording;
        for (const QString& name : analog)
            recording.Add(AnalogChannel{name, "А", {1}});
        for (const QString& name : discrete)
            recording.Add(DiscreteChannel{name});
        return recording;
    }

    TestStation station;
    LoadedFile file;
    bool result = false;
};

struct PhaseCase
{
    const char *title, *signal, *phase;
};

void PrintTo(const PhaseCase& row, std::ostream* out)
{
    *out << row.title;
}

class Phase : public testing::TestWithParam<PhaseCase>
{};

} // namespace

TEST_P(Phase, FollowsFromTheSignalsLength)
{
    RenamedFile file({QString("Q1:") + GetParam().signal}, {});
    EXPECT_EQ(file.An().CfgSignal, QString(GetParam().signal));
    EXPECT_EQ(file.An().CfgPhase, QString(GetParam().phase));
}

INSTANTIATE_TEST_SUITE_P(
    Signals, Phase,
    testing::Values(PhaseCase{"OnePhase", "Ua", "A"}, PhaseCase{"TwoPhases", "Uab", "AB"},
                    PhaseCase{"Threefold", "3I0", "0"}, PhaseCase{"ThreefoldCyrillic", "3Iф", "Ф"},
                    PhaseCase{"OneCharacter", "I", ""}, PhaseCase{"FourCharacters", "Iсум", ""},
                    PhaseCase{"None", "", ""}, PhaseCase{"Zero", "I0", "0"},
                    PhaseCase{"ThreefoldOfTwo", "3I", "I"}, PhaseCase{"Cyrillic", "Iф", "Ф"},
                    PhaseCase{"AnyCharacters", "?!z", "!Z"}, PhaseCase{"FourWithThree", "3U0n", ""},
                    PhaseCase{"ThreeLater", "I3c", "3C"}));

TEST(ChannelNames, AreGivenToAnalogAndDiscreteChannels)
{
    RenamedFile file({"Q1:Ia", "W1:Ub"}, {"Q1:Реле", "W1:x"}, "nBayMax=1\nBAY01=W1,Line one,W-1");
    EXPECT_TRUE(file.Result());
    EXPECT_EQ(file.An(0).CfgName, QString("Ia Q1"));
    EXPECT_EQ(file.An(0).CfgCircuit, QString("Q1"));
    EXPECT_EQ(file.An(0).CfgSignal, QString("Ia"));
    EXPECT_EQ(file.An(0).CfgPhase, QString("A"));
    EXPECT_EQ(file.An(0).AddIndexPos, 2);
    EXPECT_EQ(file.An(0).BayParam, nullptr);
    EXPECT_EQ(file.An(0).Name, QString("Q1:Ia"));
    EXPECT_EQ(file.An(1).CfgName, QString("Ub Line one"));
    EXPECT_EQ(file.An(1).BayParam->BayName, QString("W1"));
    EXPECT_EQ(file.Di(0).CfgName, QString("Реле Q1"));
    EXPECT_EQ(file.Di(0).CfgCircuit, QString("Q1"));
    EXPECT_EQ(file.Di(0).AddIndexPos, 4);
    EXPECT_EQ(file.Di(0).BayParam, nullptr);
    EXPECT_EQ(file.Di(1).CfgName, QString("x Line one"));
    EXPECT_EQ(file.Di(1).CfgCircuit, QString("W1"));
    EXPECT_EQ(file.Di(1).BayParam->BayName, QString("W1"));
}

TEST(ChannelNames, WithoutAdditionalIndexesNoChannelHasAPlaceForOne)
{
    RenamedFile file({"Q1:Ia", "plain", "Q1:Ib"}, {"Q1:x", "plain", "Q1:y"}, "", false);
    for (size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(file.An(i).AddIndexPos, -1);
        EXPECT_EQ(file.Di(i).AddIndexPos, -1);
    }
}

TEST(ChannelNames, AnalogNameWithoutColonStopsNoAnalogChannel)
{
    RenamedFile file({"plain", "Q1:Ia"}, {"Q1:x"});
    EXPECT_TRUE(file.Result());
    EXPECT_EQ(file.An(0).CfgName, QString("plain"));
    EXPECT_EQ(file.An(0).CfgCircuit, QString("plain"));
    EXPECT_EQ(file.An(0).CfgSignal, QString(""));
    EXPECT_EQ(file.An(0).CfgPhase, QString(""));
    EXPECT_EQ(file.An(0).AddIndexPos, -1);
    EXPECT_EQ(file.An(1).CfgName, QString("Ia Q1"));
    EXPECT_EQ(file.Di(0).CfgName, QString("x Q1"));
}

TEST(ChannelNames, LastAnalogNameWithoutColonKeepsAllDiscreteNamesEmpty)
{
    RenamedFile file({"Q1:Ia", "plain"}, {"Q1:x", "Q1:y"});
    EXPECT_FALSE(file.Result());
    for (size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(file.Di(i).CfgName, QString());
        EXPECT_EQ(file.Di(i).CfgCircuit, QString());
        EXPECT_EQ(file.Di(i).AddIndexPos, 0);
        EXPECT_EQ(file.Di(i).BayParam, nullptr);
    }
}

TEST(ChannelNames, WithoutAnalogChannelsAllDiscreteNamesStayEmpty)
{
    RenamedFile file({}, {"Q1:x"});
    EXPECT_FALSE(file.Result());
    EXPECT_EQ(file.Di().CfgName, QString());
    EXPECT_FALSE(RenamedFile({}, {}).Result());
    EXPECT_TRUE(RenamedFile({"Q1:Ia"}, {}).Result());
}

TEST(ChannelNames, FirstDiscreteNameWithoutColonStopsThoseAfterIt)
{
    RenamedFile file({"Q1:Ia"}, {"Q1:x", "plain", "Q1:y"});
    EXPECT_FALSE(file.Result());
    EXPECT_EQ(file.Di(0).CfgName, QString("x Q1"));
    EXPECT_EQ(file.Di(1).CfgName, QString("plain"));
    EXPECT_EQ(file.Di(1).CfgCircuit, QString("plain"));
    EXPECT_EQ(file.Di(1).AddIndexPos, -1);
    EXPECT_EQ(file.Di(2).CfgName, QString());
    EXPECT_EQ(file.Di(2).CfgCircuit, QString());
}

TEST(FindChannel, ByCircuitAndSignalTakesTheFirstInFileOrder)
{
    RenamedFile file({"Q1:Ib", "Q1 : Ia", "Q1:Ia", "Q2:Ia"}, {});
    EXPECT_EQ(file->FindAnChannel("Q1", "Ia"), &file.An(1));
    EXPECT_EQ(file->FindAnChannel("Q2", "Ia"), &file.An(3));
    EXPECT_EQ(file->FindAnChannel("Q2", "Ib"), nullptr);
    EXPECT_EQ(file->FindAnChannel("q1", "Ia"), nullptr);
    EXPECT_EQ(file->FindAnChannel("Q1", "ia"), nullptr);
    EXPECT_EQ(file->FindAnChannel(" Q1", "Ia"), nullptr);
}

TEST(FindChannel, BySpecificationWithAColonTrimsBothParts)
{
    RenamedFile file({"plain", "Q1:Ia", "A:B:C"}, {});
    EXPECT_EQ(file->FindAnChannel("Q1 : Ia"), &file.An(1));
    EXPECT_EQ(file->FindAnChannel(" Q1:Ia\t"), &file.An(1));
    EXPECT_EQ(file->FindAnChannel("A:B:C"), &file.An(2));
    EXPECT_EQ(file->FindAnChannel("Q1:Ib"), nullptr);
    EXPECT_EQ(file->FindAnChannel("plain:"), &file.An(0)) << "its signal is empty";
}

TEST(FindChannel, BySpecificationWithoutAColonComparesTheRawName)
{
    RenamedFile file({"Q1:Ia", "Ia", "Ib ", "Ib"}, {});
    EXPECT_EQ(file->FindAnChannel("Ia"), &file.An(1));
    EXPECT_EQ(file->FindAnChannel("Ib"), &file.An(3));
    EXPECT_EQ(file->FindAnChannel("Ib "), &file.An(2));
    EXPECT_EQ(file->FindAnChannel(" Ia"), nullptr);
    EXPECT_EQ(file->FindAnChannel("Q1"), nullptr);
    EXPECT_EQ(RenamedFile({"Q1:Ia"}, {})->FindAnChannel("Ia"), nullptr);
}
