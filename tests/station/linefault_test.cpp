// Kinds of fault, and the sequence networks against the connections that the textbooks give for each kind.
#include "linemodels.h"

#include <gtest/gtest.h>

using station::Complex;
using station::FaultKind;
using station::LineModel;
using station::LinePhasors;

TEST(LineFault, NamesAreReadInUpperAndLowerCase)
{
    EXPECT_EQ(station::FaultKindNamed("bcg"), FaultKind::BCG);
    EXPECT_EQ(station::FaultKindNamed("ABC"), FaultKind::ABC);
    EXPECT_FALSE(station::FaultKindNamed("ACB"));
    for (const FaultKind kind : station::AllFaultKinds())
        EXPECT_EQ(station::FaultKindNamed(NameOf(kind)), kind);
}
