// A recorder file read ahead against the same bytes in memory.
#include "recording/recorderfile.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <random>

namespace {

QByteArray SomeBytes(int count)
{
    QByteArray bytes(count, '\0');
    std::mt19937 random(1);
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

// Reads headers and areas as the sections of a recording have them, with gaps between.
void ExpectSameReads(int size, int area)
{
    const TestDirectory directory;
    const QByteArray bytes = SomeBytes(size);
    zu::RecorderFile file(directory.Write(QStringLiteral("file"), bytes));
    ASSERT_TRUE(file.OpenForReading());
    ASSERT_EQ(file.size(), size);
    for (int at = 0; at < size + area; at += 7) {
        for (const int count : {73, 57, area}) {
            ASSERT_EQ(file.pos(), at);
            ASSERT_EQ(file.read(count), bytes.mid(at, count)) << at << " " << count;
            at = static_cast<int>(file.pos());
        }
        ASSERT_TRUE(file.seek(at + 7));
    }
}

} // namespace

TEST(ReadAheadFile, GivesTheBytesOfSmallFiles)
{
    ExpectSameReads(1, 5);
    ExpectSameReads(65536, 100);
    ExpectSameReads(300001, 9600);
    ExpectSameReads(300001, 65536);
}

TEST(ReadAheadFile, GivesTheBytesOfLargeFiles)
{
    ExpectSameReads(1500000, 4096);
    ExpectSameReads(1500000, 300000);
}

TEST(ReadAheadFile, GoesBackAndBeyondItsEnd)
{
    const TestDirectory directory;
    const QByteArray bytes = SomeBytes(200000);
    zu::RecorderFile file(directory.Write(QStringLiteral("file"), bytes));
    ASSERT_TRUE(file.OpenForReading());
    for (const int at : {150000, 10, 199990, 0, 65536, 65535}) {
        ASSERT_TRUE(file.seek(at));
        EXPECT_EQ(file.read(20), bytes.mid(at, 20));
    }
    ASSERT_TRUE(file.seek(200001));
    EXPECT_EQ(file.read(20), QByteArray());
}

TEST(ReadAheadFile, IsNotOpenedIfItIsNotThere)
{
    zu::RecorderFile file(QStringLiteral("/nowhere/rec.ZU"));
    EXPECT_FALSE(file.OpenForReading());
}
