#include "forms/columnmatrix.h"

#include <gtest/gtest.h>

using forms::ColumnMatrix;

namespace {

// The numbers of three rows with two columns, after the matrix was made for so many.
std::vector<int> Packed(qint64 expectedRows)
{
    ColumnMatrix<int> matrix(2, expectedRows, 1000);
    const int rows[] = {1, 10, 2, 20, 3, 30};
    EXPECT_TRUE(matrix.Append(rows, 1));
    EXPECT_TRUE(matrix.Append(rows + 2, 2));
    EXPECT_EQ(matrix.Rows(), 3);
    const int* const packed = matrix.Packed();
    return {packed, packed + 6};
}

} // namespace

TEST(ColumnMatrix, HasColumnsOneAfterTheOther)
{
    const std::vector<int> expected{1, 2, 3, 10, 20, 30};
    EXPECT_EQ(Packed(3), expected);
}

TEST(ColumnMatrix, HoldsMoreOrFewerRowsThanExpected)
{
    const std::vector<int> expected{1, 2, 3, 10, 20, 30};
    EXPECT_EQ(Packed(-1), expected);
    EXPECT_EQ(Packed(1), expected);
    EXPECT_EQ(Packed(50), expected);
    EXPECT_EQ(Packed(qint64{1} << 60), expected);
}

TEST(ColumnMatrix, TakesNoMoreBytesThanAllowed)
{
    ColumnMatrix<double> matrix(3, 10, sizeof(double) * 4 * 3 + 1);
    const std::vector<double> row(3);
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(matrix.Append(row.data(), 1));
    EXPECT_FALSE(matrix.Append(row.data(), 1));
    EXPECT_EQ(matrix.Rows(), 4);
}
