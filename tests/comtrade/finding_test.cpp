// Findings about a record, and its records in blocks.
#include "examples.h"

#include <gtest/gtest.h>

#include <cmath>

using comtrade::Finding;
using comtrade::Findings;

TEST(ComtradeFindings, OfOneKindInOneFileAreKeptUpToALimitAndCounted)
{
    Findings findings;
    EXPECT_EQ(findings.Heaviest(), Severity::Note);
    for (int line = 1; line <= 25; ++line)
        findings.Add({"a.dat", line, 0, Severity::Warning, reason::KeyTwice, "twice"});
    findings.Add({"b.dat", 7, 2, Severity::Error, reason::KeyTwice, "twice"});
    ASSERT_EQ(findings.All().size(), 11U);
    EXPECT_EQ(findings.All()[9].line, 10);
    EXPECT_EQ(findings.All()[10].file, "b.dat");
    EXPECT_EQ(findings.CountOf("a.dat", reason::KeyTwice), 25);
    EXPECT_EQ(findings.CountOf("b.dat", reason::KeyTwice), 1);
    EXPECT_EQ(findings.CountOf("b.dat", reason::KeyMissing), 0);
    EXPECT_EQ(findings.Heaviest(), Severity::Error);
}

TEST(ComtradeBlocks, HoldTheRecordsThatComeOneByOneToo)
{
    const TestDirectory directory;
    const QString path = directory.Write("rec.cfg", ExampleConfiguration());
    QByteArray data;
    for (int i = 1; i <= 20000; ++i)
        data += QByteArray::number(i) + (i % 7 == 0 ? "," : ",100") + ",5," + QByteArray::number(-i) + ",1\n";
    directory.Write("rec.dat", data + "x\n");

    comtrade::Record rows(path, comtrade::Strict());
    comtrade::Row row;
    comtrade::Record blocks(path, comtrade::Strict());
    comtrade::Block block;
    size_t records = 0;
    QString error = ErrorOf([&] {
        while (blocks.Next(block)) {
            for (size_t i = 0; i < block.count; ++i, ++records) {
                ASSERT_TRUE(rows.Next(row));
                ASSERT_EQ(block.numbers[i], row.number);
                ASSERT_EQ(block.times[i], row.hasTime ? row.time : comtrade::Block::NoTime);
                ASSERT_EQ(block.analog[2 * i + 1], row.analog[1]);
                ASSERT_EQ(block.states[i], row.states[0]);
            }
        }
    });
    EXPECT_EQ(records, 20000U);
    EXPECT_TRUE(error.endsWith("rec.dat, record 20001: n is 'x', which is no number")) << error;
    EXPECT_EQ(ErrorOf([&] { blocks.Next(block); }), error);
}
