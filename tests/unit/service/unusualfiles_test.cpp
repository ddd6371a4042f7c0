// Links, pipes and directories in the place of recorder files and of output files.
#include "support/recordings.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace {

const char NoOpening[] = "Ошибка открытия файла";
const char NoOpeningNote[] =
    "Ошибка обработки файла rec.ZU [Ошибка открытия файла], окончание осциллограммы некорректно";

void MakePipe(const QString& path)
{
    ASSERT_EQ(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
}

// A station whose directory is the current one, so that names without a directory are paths.
class UnusualInput : public testing::Test
{
protected:
    UnusualInput() : current(station.Directory().Path()) {}

    bool Convert() { return station.Converter().ConvertToComtrade("rec.ZU", "out", 0); }

    // Converts rec.ZU, whose continuation is something unusual; expects it to be left out with this note.
    void ExpectLeftOut(const QStringList& notes)
    {
        station.Directory().Write("rec.ZU", SmallFile());
        EXPECT_TRUE(Convert());
        EXPECT_EQ(Notes(station.Device()), notes + QStringList{SuccessNote()});
        EXPECT_EQ(station.Device().TotalSamples, 24);
    }

    TestStation station;
    CurrentDirectory current;
};

// Output files, each with the device lines that have it written.
struct Piece
{
    const char* extension;
    const char* deviceLines;
};

class UnusualOutput : public testing::TestWithParam<Piece>
{
protected:
    QString Temporary() const
    {
        return station.Directory().Path(OutFile(QString(GetParam().extension) + "tmp"));
    }

    // Converts, and expects a regular file under the final name and nothing under the temporary one.
    void ExpectPlainOutput()
    {
        EXPECT_TRUE(station.Convert(SmallFile()));
        const QFileInfo file(station.Directory().Path(OutFile(GetParam().extension)));
        EXPECT_TRUE(file.isFile());
        EXPECT_FALSE(file.isSymLink());
        EXPECT_GT(file.size(), 0);
        EXPECT_FALSE(QFileInfo(Temporary()).isSymLink());
        EXPECT_FALSE(QFile::exists(Temporary()));
    }

    TestStation station{GetParam().deviceLines};
};

INSTANTIATE_TEST_SUITE_P(Pieces, UnusualOutput,
                         testing::Values(Piece{".cfg", ""}, Piece{".dat", ""}, Piece{".hdr", ""},
                                         Piece{".inf", ""}, Piece{".cff", "Тип Comtrade CFF=1"}),
                         [](const auto& piece) { return std::string(piece.param.extension + 1); });

} // namespace

TEST_F(UnusualInput, DirectoryForAContinuationEndsTheChain)
{
    station.Directory().MakeDirectory("rec.Z01");
    ExpectLeftOut({NoOpeningNote});
}

TEST_F(UnusualInput, PipeForAContinuationEndsTheChainWithoutWaiting)
{
    MakePipe("rec.Z01");
    ExpectLeftOut({NoOpeningNote});
}

TEST_F(UnusualInput, DanglingLinkForAContinuationCountsAsNone)
{
    ASSERT_TRUE(QFile::link("nowhere", "rec.Z01"));
    ExpectLeftOut({});
}

TEST_F(UnusualInput, LinkToItselfForAContinuationCountsAsNone)
{
    ASSERT_TRUE(QFile::link("rec.Z01", "rec.Z01"));
    ExpectLeftOut({});
}

TEST_F(UnusualInput, LinkToAContinuationIsFollowed)
{
    station.Directory().Write("rec.ZU", SmallFile());
    station.Directory().Write("elsewhere", SmallFile());
    ASSERT_TRUE(QFile::link("elsewhere", "rec.Z01"));
    EXPECT_TRUE(Convert());
    EXPECT_EQ(station.Device().TotalSamples, 48);
}

TEST_F(UnusualInput, DirectoryForTheFirstFileFails)
{
    station.Directory().MakeDirectory("rec.ZU");
    EXPECT_FALSE(Convert());
    EXPECT_EQ(station.Device().LastError, NoOpening);
}

TEST_F(UnusualInput, PipeForTheFirstFileFailsWithoutWaiting)
{
    MakePipe("rec.ZU");
    EXPECT_FALSE(Convert());
    EXPECT_EQ(station.Device().LastError, NoOpening);
}

TEST_F(UnusualInput, DanglingLinkForTheFirstFileIsAMissingFile)
{
    ASSERT_TRUE(QFile::link("nowhere", "rec.ZU"));
    EXPECT_FALSE(Convert());
    EXPECT_EQ(station.Device().LastError, "Файл не существует [rec.ZU]");
}

TEST_P(UnusualOutput, DanglingLinkIsNotWrittenThrough)
{
    const QString target = station.Directory().Path("target");
    ASSERT_TRUE(QFile::link(target, Temporary()));
    ExpectPlainOutput();
    EXPECT_FALSE(QFile::exists(target));
}

TEST_P(UnusualOutput, LinkToAFileIsNotWrittenThrough)
{
    const QString target = station.Directory().Write("target", "precious");
    ASSERT_TRUE(QFile::link(target, Temporary()));
    ExpectPlainOutput();
    EXPECT_EQ(ReadBytes(target), "precious");
}

TEST_P(UnusualOutput, PipeIsReplacedWithoutWaiting)
{
    MakePipe(Temporary());
    ExpectPlainOutput();
}

TEST_P(UnusualOutput, FinalNameThatIsALinkIsReplacedAndNotWrittenThrough)
{
    const QString target = station.Directory().Write("target", "precious");
    ASSERT_TRUE(QFile::link(target, station.Directory().Path(OutFile(GetParam().extension))));
    ExpectPlainOutput();
    EXPECT_EQ(ReadBytes(target), "precious");
}

TEST_P(UnusualOutput, FinalNameThatIsADirectoryStaysWithTheNewFileBesideIt)
{
    station.Directory().Write(OutFile(GetParam().extension) + "/inside", "precious");
    EXPECT_TRUE(station.Convert(SmallFile()));
    EXPECT_EQ(Notes(station.Device()), QStringList{SuccessNote()});
    EXPECT_TRUE(QFile::exists(Temporary()));
    EXPECT_EQ(ReadBytes(station.Directory().Path(OutFile(GetParam().extension) + "/inside")), "precious");
}

TEST(UnusualFinalName, DirectoriesInPlaceOfHdrAndInfDoNotStopRevision1999)
{
    TestStation station("Тип Comtrade 1999=1");
    station.Directory().Write(OutFile(".hdr") + "/inside", "");
    station.Directory().Write(OutFile(".inf") + "/inside", "");
    EXPECT_TRUE(station.Convert(SmallFile()));
    EXPECT_EQ(station.Directory().Names("out"), OutNames({".cfg", ".dat"}));
    EXPECT_EQ(station.Directory().Names(OutFile(".hdr")), QStringList{"inside"});
}
