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

// Highway also asks for instructions that the code here does without.
TEST_F(VectorTargets, AreThoseThatHighwayFinds)
{
    EXPECT_EQ(hwy::SupportedTargets() & zu::SupportedVectorTargets(),
              hwy::SupportedTargets() & (HWY_AVX2 | HWY_SSSE3 | HWY_NEON));
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
