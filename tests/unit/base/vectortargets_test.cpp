// The instruction sets that are chosen from, against what Highway's own library finds.
#include "base/vectortargets.h"

#include "recording/itemdecoder.h"
#include "writers/codetiles.h"

#include <gtest/gtest.h>

#include <hwy/targets.h>

namespace {

// Restores what the processor has.
class VectorTargets : public testing::Test
{
protected:
    ~VectorTargets() override { hwy::SetSupportedTargetsForTest(0); }
};

TEST_F(VectorTargets, AreThoseThatHighwayFinds)
{
    const zu::VectorTargets found = zu::SupportedVectorTargets();
#if HWY_ARCH_X86 // where Highway also asks for instructions that the code here does without
    EXPECT_EQ(found & hwy::SupportedTargets(), hwy::SupportedTargets() & (HWY_AVX2 | HWY_SSSE3));
#else
    EXPECT_NE(found, 0);
    EXPECT_EQ(found & hwy::SupportedTargets(), found);
#endif
}

TEST_F(VectorTargets, OfAnOlderProcessorChooseItsCode)
{
    hwy::SetSupportedTargetsForTest(HWY_SSE4 | HWY_SSSE3);
    EXPECT_EQ(&zu::ItemDecodersFor(hwy::SupportedTargets()), &zu::ItemDecodersFor(HWY_SSSE3));
    EXPECT_EQ(zu::TileTurnerFor(hwy::SupportedTargets()), zu::TileTurnerFor(HWY_SSSE3));
}

TEST_F(VectorTargets, OfANewerProcessorChooseTheBestCodeThatThereIs)
{
    hwy::SetSupportedTargetsForTest(HWY_AVX3 | HWY_AVX2 | HWY_SSE4 | HWY_SSSE3);
    EXPECT_EQ(&zu::ItemDecodersFor(hwy::SupportedTargets()), &zu::ItemDecodersFor(HWY_AVX2));
    EXPECT_EQ(zu::TileTurnerFor(hwy::SupportedTargets()), zu::TileTurnerFor(HWY_AVX2));
}

} // namespace
