// What the check reports is what happens: each ini file is also loaded by the converter itself.
#include "inicheck/inicheck.h"

#include "config/QSettingsRu.h"
#include "device/zucmtrdevparam.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "station/station.h"
#include "support/device.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using inicheck::Finding;
using inicheck::Findings;

struct Truth
{
    const char* was;     // a line of the sample's ini file, or a part of one
    const char* becomes; // what takes its place
    bool loads;
    int unsorted; // entries of both kinds without a place in the order
    int bays;     // that are kept
};

void PrintTo(const Truth& truth, std::ostream* out)
{
    *out << truth.becomes;
}

class CheckAgainstTheConverter : public testing::TestWithParam<Truth>
{
protected:
    TestDirectory directory;
};

// The number of lines with a finding that contains the text.
int Count(const Findings& findings, const QString& part)
{
    std::set<int> lines;
    for (const Finding& finding : findings) {
        if (finding.text.contains(part))
            lines.insert(finding.line);
    }
    return static_cast<int>(lines.size());
}

} // namespace

TEST_P(CheckAgainstTheConverter, SaysWhatHappens)
{
    const Truth& truth = GetParam();
    const QString good = station::MakeIni({});
    ASSERT_EQ(good.count(truth.was), 1);
    directory.Write("a.ini", QString(good).replace(truth.was, truth.becomes).toUtf8());
    const QString path = directory.Path("a.ini");

    ZuCmtrDevParamDefault defaults;
    ZuCmtrDevParam device;
    bool loads = defaults.LoadFromIniDef(path, station::DefaultsSection(), false);
    device.SetDefaultParam(&defaults);
    loads = loads && device.LoadFromIni(path, station::DeviceSection());
    EXPECT_EQ(loads, truth.loads);

    const Findings findings =
        inicheck::Check({path, station::DefaultsSection(), {station::DeviceSection()}, {}});
    EXPECT_EQ(Count(findings, "does not load") > 0, !loads);
    if (loads) {
        const auto unsorted =
            static_cast<int>(device.Resorter->AnUnsorted.size() + device.Resorter->DiUnsorted.size());
        EXPECT_EQ(unsorted, truth.unsorted);
        EXPECT_EQ(Count(findings, "unsorted") + Count(findings, "dropped: "), truth.unsorted);
        EXPECT_EQ(static_cast<int>(device.Resorter->BayParams.size()), truth.bays);
        EXPECT_EQ(Count(findings, "BAY"), 7 - truth.bays);
    }
    device.Clear();
    QSettingsRu::Clear();
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CheckAgainstTheConverter,
    testing::Values(
        Truth{"[Vostochnaya]", "[Vostochnaya]", true, 0, 7}, Truth{"Версия ZU=1", "Версия ZU=3", false, 0, 0},
        Truth{"Тип Comtrade BIN=0", "Тип Comtrade BIN=", false, 0, 0},
        Truth{"Тип Comtrade BIN=0", "Тип Comtrade BIN=0 ; comment", true, 0, 7},
        Truth{"Тип Comtrade BIN=0", "Тип Comtrade BIN=no", false, 0, 0}, Truth{"A01=", "A01=,", false, 0, 0},
        Truth{"D01=", "D01=,", true, 1, 7}, Truth{"A02=", "A02=X,V_L=12,", true, 1, 7},
        Truth{"A03=", "A03=X:Y,V_L=110 E_G=L S_G=VT,", true, 0, 7}, Truth{"A04=", "A04=X:Y ;", true, 1, 7},
        Truth{"D02=", "D02=X:Y,V_L=110 E_G=Q D_G=RP S_T=FD,", true, 1, 7},
        Truth{"BAY03=", "BAY03=X;", true, 0, 6}, Truth{"BAY03=", "BAY3=", true, 0, 6}));
