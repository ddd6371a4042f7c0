// Rows and columns of codes turned into each other.
#include "comtrade/columns.h"

#include <gtest/gtest.h>

namespace {

constexpr qint16 Untouched = -1;

qint16 CodeOf(size_t column, size_t row)
{
    return static_cast<qint16>(column * 1000 + row);
}

} // namespace

// Below, at and above the squares of eight by eight that are turned at once. Nothing is written beyond the
// rows.
TEST(Columns, BecomeRows)
{
    constexpr size_t from = 5;
    for (const size_t width : {size_t{1}, size_t{7}, size_t{8}, size_t{19}, size_t{32}})
        for (const size_t count : {size_t{0}, size_t{1}, size_t{8}, size_t{15}, size_t{16}, size_t{128}}) {
            std::vector<std::vector<qint16>> memory(width);
            std::vector<const qint16*> columns;
            for (size_t i = 0; i < width; ++i) {
                for (size_t j = 0; j < from + count; ++j)
                    memory[i].push_back(CodeOf(i, j));
                columns.push_back(memory[i].data());
            }
            std::vector<qint16> expected;
            for (size_t j = 0; j < count; ++j)
                for (size_t i = 0; i < width; ++i)
                    expected.push_back(CodeOf(i, from + j));
            expected.resize(expected.size() + 8 * width, Untouched);
            std::vector<qint16> rows(expected.size(), Untouched);
            comtrade::TurnColumns(columns, from, count, rows.data());
            EXPECT_EQ(rows, expected) << width << " columns, " << count << " rows";
        }
}
