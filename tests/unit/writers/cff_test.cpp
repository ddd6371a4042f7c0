// The CFF container.
#include "recorderfile/recorderfile.h"
#include "support/device.h"

#include <gtest/gtest.h>

namespace {

// Four piece files of a device, and the CFF file that they go to.
class CffFile : public testing::Test
{
protected:
    CffFile()
    {
        SetPiece(Device().FileCfg, "cfg", "C1\nC2\n");
        SetPiece(Device().FileInf, "inf", "I1\r\nI2\r\n");
        SetPiece(Device().FileHdr, "hdr", "H1\nH2\n");
        SetPiece(Device().FileDat, "dat", "1,0,5\n");
        Device().FileCff.setFileName(station.Directory().Path("cff"));
    }

    void SetPiece(QFile& file, const char* name, const QByteArray& bytes)
    {
        file.setFileName(station.Directory().Write(name, bytes));
    }

    ZuCmtrDevParam& Device() { return station.Device(); }
    bool Write() { return station.Converter().WriteCff(&Device()); }
    QString Marker() { return station.Converter().LastError; }
    QByteArray Cff() { return ReadBytes(station.Directory().Path("cff")); }
    QStringList Names() { return station.Directory().Names(); }

    void ExpectAllClosed()
    {
        ZuCmtrDevParam& device = Device();
        for (const QFile* file :
             {&device.FileCfg, &device.FileDat, &device.FileHdr, &device.FileInf, &device.FileCff})
            EXPECT_FALSE(file->isOpen()) << file->fileName();
    }

    TestStation station;
};

const QStringList PiecesOnly{"ZuDrv.ini", "cfg", "dat", "hdr", "inf"};
const QStringList PiecesAndCff{"ZuDrv.ini", "cff", "cfg", "dat", "hdr", "inf"};

class CffPiece : public CffFile, public testing::WithParamInterface<const char*>
{
protected:
    QFile& Piece()
    {
        for (QFile* file : {&Device().FileCfg, &Device().FileDat, &Device().FileHdr})
            if (file->fileName().endsWith(GetParam()))
                return *file;
        return Device().FileInf;
    }
};

} // namespace

TEST_F(CffFile, JoinsThePiecesWithInfBeforeHdr)
{
    EXPECT_TRUE(Write());
    EXPECT_EQ(Cff(), "--- file type: CFG ---\r\nC1\nC2\n"
                     "--- file type: INF ---\r\nI1\r\nI2\r\n"
                     "--- file type: HDR ---\r\nH1\nH2\n"
                     "--- file type: DAT ASCII ---\r\n1,0,5\n");
    EXPECT_EQ(Marker(), "0");
    EXPECT_EQ(Names(), (QStringList{"ZuDrv.ini", "cff"}));
    ExpectAllClosed();
}

TEST_F(CffFile, HasTheSameMarksInUtf8)
{
    Device().ComtradeUtf8 = true;
    EXPECT_TRUE(Write());
    EXPECT_TRUE(Cff().startsWith("--- file type: CFG ---\r\nC1\n"));
    EXPECT_TRUE(Cff().endsWith("--- file type: DAT ASCII ---\r\n1,0,5\n"));
}

TEST_F(CffFile, OfBinaryDataNamesItsSize)
{
    Device().ComtradeBin = true;
    Device().DatBytes = 1234;
    const QByteArray data(1234, '\x1A');
    SetPiece(Device().FileDat, "dat", data);
    EXPECT_TRUE(Write());
    EXPECT_TRUE(Cff().endsWith("H2\n--- file type: DAT BINARY: 1234 ---\r\n" + data));
}

TEST_F(CffFile, NamesTheSizeInSixtyFourBits)
{
    Device().ComtradeBin = true;
    Device().DatBytes = 5000000000; // as the DAT writer counted
    EXPECT_TRUE(Write());
    EXPECT_TRUE(Cff().contains("--- file type: DAT BINARY: 5000000000 ---\r\n"));
}

TEST_F(CffFile, EmptyPieceLeavesItsMarkDirectlyBeforeTheNext)
{
    SetPiece(Device().FileHdr, "hdr", "");
    EXPECT_TRUE(Write());
    EXPECT_TRUE(Cff().contains("--- file type: HDR ---\r\n--- file type: DAT ASCII ---\r\n"));
}

TEST_F(CffFile, ReplacesAnEarlierOne)
{
    station.Directory().Write("cff", QByteArray(5000, 'x'));
    EXPECT_TRUE(Write());
    EXPECT_TRUE(Cff().startsWith("--- file type: CFG ---\r\n"));
    EXPECT_TRUE(Cff().endsWith("1,0,5\n"));
}

TEST(CffMarks, OfTheFirstThreeAre24BytesWithTheirLineEnd)
{
    EXPECT_EQ(ZuCmtrConverter::SecNameLen, 22);
    for (const QString& mark :
         {ZuCmtrConverter::SecNameCFG, ZuCmtrConverter::SecNameINF, ZuCmtrConverter::SecNameHDR})
        EXPECT_EQ(mark.length() + 2, 24);
}

class CffSizes : public CffFile, public testing::WithParamInterface<int>
{};

TEST_P(CffSizes, OfPiecesDoNotMatter)
{
    QByteArray data;
    for (int i = 0; i < GetParam(); ++i)
        data.append(static_cast<char>(i * 7 + i / 256));
    SetPiece(Device().FileCfg, "cfg", data);
    SetPiece(Device().FileDat, "dat", data);
    EXPECT_TRUE(Write());
    EXPECT_TRUE(Cff().startsWith("--- file type: CFG ---\r\n" + data + "--- file type: INF ---\r\n"));
    EXPECT_TRUE(Cff().endsWith("--- file type: DAT ASCII ---\r\n" + data));
}

INSTANTIATE_TEST_SUITE_P(AroundTheBuffer, CffSizes, testing::Values(1, 16383, 16384, 16385, 32768, 100001));

TEST_P(CffPiece, MissingLeavesTheMarkerMinusOne)
{
    QFile::remove(Piece().fileName());
    EXPECT_FALSE(Write());
    EXPECT_EQ(Marker(), "-1");
    EXPECT_EQ(Names().size(), 4); // three pieces and the ini file
    ExpectAllClosed();
}

TEST_P(CffPiece, StillOpenLeavesTheMarkerZeroAndAllFiles)
{
    ASSERT_TRUE(Piece().open(QIODevice::ReadOnly));
    EXPECT_FALSE(Write());
    EXPECT_EQ(Marker(), "0");
    EXPECT_EQ(Names(), PiecesOnly);
    EXPECT_TRUE(Piece().isOpen());
}

TEST_P(CffPiece, ThatCannotBeOpenedLeavesTheMarkerZeroAndTheOthersClosed)
{
    Piece().setFileName(station.Directory().MakeDirectory("directory")); // there, but no file
    EXPECT_FALSE(Write());
    EXPECT_EQ(Marker(), "0");
    EXPECT_EQ(Names(), PiecesOnly);
    ExpectAllClosed();
}

INSTANTIATE_TEST_SUITE_P(OfRecord, CffPiece, testing::Values("cfg", "dat", "hdr", "inf"));

TEST_F(CffFile, ThatCannotBeOpenedLeavesThePieces)
{
    Device().FileCff.setFileName(station.Directory().Path("no/such/cff"));
    EXPECT_FALSE(Write());
    EXPECT_EQ(Marker(), "0");
    EXPECT_EQ(Names(), PiecesOnly);
    ExpectAllClosed();
}

TEST_F(CffFile, ThatCannotBeWrittenLeavesThePieces)
{
    SetPiece(Device().FileCfg, "cfg", QByteArray(100000, 'x'));
    Device().FileCff.setFileName("/dev/full");
    EXPECT_FALSE(Write());
    EXPECT_EQ(Marker(), "0");
    EXPECT_EQ(Names(), PiecesOnly);
    ExpectAllClosed();
}

TEST_F(CffFile, PieceWithoutASizeOfItsOwnLeavesAPartialFile)
{
    Device().FileInf.setFileName("/proc/version"); // gives bytes, but its size is 0
    EXPECT_FALSE(Write());
    EXPECT_EQ(Marker(), "0");
    EXPECT_EQ(Names(), PiecesAndCff);
    EXPECT_TRUE(Cff().startsWith("--- file type: CFG ---\r\nC1\nC2\n--- file type: INF ---\r\n"));
    ExpectAllClosed();
}

TEST(CffConversion, HoldsThePiecesOfSeparateFiles)
{
    using namespace recorderfile;
    const QByteArray recording = Encode(
        Recording().Add(AnalogChannel{"Q1:Ia", "A", {1, 2, 3}}).Add(DiscreteChannel{"Q1:x", 0, {{0, 1}}}));
    for (const char* form : {"Тип Comtrade BIN=0\n", "Тип Comtrade BIN=1\n"}) {
        TestStation separate{form};
        TestStation joined(QByteArray(form) + "Тип Comtrade CFF=1");
        ASSERT_TRUE(separate.Convert(recording));
        ASSERT_TRUE(joined.Convert(recording));
        const bool binary = separate.Device().ComtradeBin;
        EXPECT_EQ(
            joined.Output("cff"),
            "--- file type: CFG ---\r\n" + separate.Output("cfg") + "--- file type: INF ---\r\n" +
                separate.Output("inf") + "--- file type: HDR ---\r\n" + separate.Output("hdr") +
                (binary ? "--- file type: DAT BINARY: 36 ---\r\n" : "--- file type: DAT ASCII ---\r\n") +
                separate.Output("dat"));
        EXPECT_EQ(joined.Directory().Names("out").size(), 1);
    }
}

class FileCopy : public testing::Test
{
protected:
    FileCopy() : from(directory.Write("from", "0123456789")), to(directory.Path("to"))
    {
        from.open(QIODevice::ReadOnly);
        to.open(QIODevice::WriteOnly);
    }

    bool Copy(int size) { return converter.fileBinDataCopy(&to, &from, buffer, size); }

    QByteArray Copied()
    {
        to.close();
        return ReadBytes(directory.Path("to"));
    }

    ZuCmtrConverter converter;
    TestDirectory directory;
    char buffer[64] = {};
    QFile from;
    QFile to;
};

TEST_F(FileCopy, RefusesAnEmptyBuffer)
{
    EXPECT_FALSE(Copy(0));
    EXPECT_FALSE(Copy(-1));
    EXPECT_FALSE(converter.fileBinDataCopy(&to, &from, nullptr, 64));
    EXPECT_EQ(Copied(), "");
}

TEST_F(FileCopy, GoesToThePresentPosition)
{
    to.write("ab");
    EXPECT_TRUE(Copy(3));
    EXPECT_EQ(Copied(), "ab0123456789");
}

TEST_F(FileCopy, OfAnEmptyFileSucceeds)
{
    from.close();
    from.setFileName(directory.Write("empty", ""));
    ASSERT_TRUE(from.open(QIODevice::ReadOnly));
    EXPECT_TRUE(Copy(64));
    EXPECT_EQ(Copied(), "");
}

TEST_F(FileCopy, OfAClosedFileFails)
{
    from.close();
    EXPECT_FALSE(Copy(64));
}

TEST_F(FileCopy, ToAClosedFileFails)
{
    to.close();
    EXPECT_FALSE(Copy(64));
}

TEST_F(FileCopy, ThatEndsShortOfTheSizeFails)
{
    ASSERT_TRUE(from.seek(4));
    EXPECT_FALSE(Copy(4));
    EXPECT_EQ(Copied(), "456789");
}
