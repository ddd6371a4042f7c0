// The channel order of a recording can depend on the recording before it: the verification follows, and can
// also start afresh.
#include "recorderfile/recorderfile.h"
#include "support/device.h"
#include "verify/verifier.h"

#include <gtest/gtest.h>

using namespace recorderfile;

namespace {

const char* const dictionary = "nAnMax=2\n"
                               "A01=Q1:Ia,V_L=110 E_G=L S_G=CT\n"
                               "A02=Q1:Ib,V_L=110 E_G=L S_G=CT\n";

// The signals in this order, with codes that distinguish them, this many minutes after the others.
Recording With(const QStringList& names, int minutes)
{
    Recording recording;
    recording.startTime += static_cast<uint32_t>(minutes) * 60;
    recording.trigTime += static_cast<uint32_t>(minutes) * 60;
    for (const QString& name : names) {
        const auto code = static_cast<int16_t>(name.at(name.size() - 1).unicode());
        recording.Add(AnalogChannel{name, QStringLiteral("А"), {code, 1, 2}});
    }
    return recording.Add(DiscreteChannel{QStringLiteral("Q1:x"), 0, {{0, 1}}});
}

class Order : public testing::Test
{
protected:
    Order() : station(dictionary) {}

    void Convert(const Recording& recording, const QString& name)
    {
        ASSERT_TRUE(station.Convert(Encode(recording), name));
    }

    void Check(verify::Verifier& verifier, const QString& name)
    {
        EXPECT_NO_THROW(verifier.Check(station.Directory().Path(name), station.Directory().Path("out")))
            << name;
    }

    verify::Verifier MakeVerifier() const
    {
        return {station.Directory().Path("ZuDrv.ini"), "Defaults", "Device"};
    }

    TestStation station;
    const Recording shuffled = With({"Q1:Ix", "Q1:Ia", "Q1:Ib"}, 0);
    const Recording sorted = With({"Q1:Ia", "Q1:Ib", "Q1:Ix"}, 10); // keeps the order of the shuffled one
};

} // namespace

TEST_F(Order, KeptOrderOfTheRecordingBeforeIsRight)
{
    Convert(shuffled, "a.ZU");
    Convert(sorted, "b.ZU");
    verify::Verifier verifier = MakeVerifier();
    Check(verifier, "a.ZU");
    Check(verifier, "b.ZU");
}

TEST_F(Order, RecordingThatWasNotVerifiedCounts)
{
    Convert(shuffled, "a.ZU");
    Convert(sorted, "b.ZU");
    verify::Verifier verifier = MakeVerifier();
    verifier.Examine(station.Directory().Path("a.ZU"));
    Check(verifier, "b.ZU");
}

TEST_F(Order, OrderOfAFreshDeviceIsRightAtAnyTime)
{
    Convert(sorted, "b.ZU");
    Convert(shuffled, "a.ZU");
    verify::Verifier verifier = MakeVerifier();
    Check(verifier, "a.ZU");
    Check(verifier, "b.ZU");
}

TEST_F(Order, RecordOfAnotherRecordingIsNot)
{
    Convert(sorted, "b.ZU");
    Recording changed = sorted;
    std::get<AnalogChannel>(changed.sections[1]).samples[2] = 3;
    station.Directory().Write("b.ZU", Encode(changed));
    verify::Verifier verifier = MakeVerifier();
    EXPECT_THROW(verifier.Check(station.Directory().Path("b.ZU"), station.Directory().Path("out")),
                 verify::Mismatch);
}
