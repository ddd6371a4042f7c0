// What each path on which a piece cannot be written leaves on the disk.
#include "support/recordings.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include <csignal>
#include <sys/resource.h>

namespace {

const QStringList Finals = {".cff", ".cfg", ".dat", ".hdr", ".inf"};

// No file grows beyond this many bytes as long as the object lives: writes behave as on a full disk.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes) : signalBefore(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, signalBefore);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit before{};
    void (*signalBefore)(int);
};

// A station that deletes sources, with earlier final files of all kinds.
class FailedWrites : public testing::Test
{
protected:
    explicit FailedWrites(const QByteArray& deviceLines = QByteArray())
        : station("Удалять исходные=1\n" + deviceLines)
    {
        for (const QString& extension : Finals)
            station.Directory().Write(OutFile(extension), "earlier");
    }

    // Makes the temporary file impossible to open: a directory that is not empty has its name.
    void Block(const QString& extension) { station.Directory().Write(OutFile(extension) + "/inside", ""); }
    void Unblock(const QString& extension)
    {
        QDir(station.Directory().Path(OutFile(extension))).removeRecursively();
    }

    // Expects the earlier files as they were and, besides, temporary files of these extensions alone.
    void ExpectEarlierFilesAnd(const QStringList& temporary) const
    {
        QStringList names = OutNames(Finals + temporary);
        names.sort();
        EXPECT_EQ(station.Directory().Names("out"), names);
        for (const QString& extension : Finals)
            EXPECT_EQ(Bytes(extension), "earlier") << extension;
    }

    QByteArray Bytes(const QString& extension) const
    {
        return ReadBytes(station.Directory().Path(OutFile(extension)));
    }

    bool SourceIsThere() const { return QFile::exists(station.Directory().Path("rec.ZU")); }

    TestStation station;
};

struct Case
{
    const char* blocked;
    QStringList left;
};

class BlockedPiece : public FailedWrites, public testing::WithParamInterface<Case>
{};

INSTANTIATE_TEST_SUITE_P(Pieces, BlockedPiece,
                         testing::Values(Case{".cfgtmp", {}}, Case{".dattmp", {".cfgtmp"}},
                                         Case{".hdrtmp", {".cfgtmp", ".dattmp"}},
                                         Case{".inftmp", {".cfgtmp", ".dattmp", ".hdrtmp"}}),
                         [](const auto& one) { return std::string(one.param.blocked + 1); });

class FailedCff : public FailedWrites
{
protected:
    FailedCff() : FailedWrites("Тип Comtrade CFF=1") {}
};

class FailedBinaryDat : public FailedWrites
{
protected:
    FailedBinaryDat() : FailedWrites("Тип Comtrade BIN=1") {}

    // Converts a recording whose DAT file of 240000 bytes does not fit.
    bool ConvertTooMuch()
    {
        recorderfile::Recording recording;
        recording.Add(recorderfile::AnalogChannel{"Q1:Ia", "А", std::vector<int16_t>(20000, 1)})
            .Add(recorderfile::DiscreteChannel{"Q1:x"});
        return ConvertWithRoomFor(100000, recording);
    }

    bool ConvertWithRoomFor(rlim_t bytesOfAFile, const recorderfile::Recording& recording)
    {
        station.Directory().Write("rec.ZU", recorderfile::Encode(recording));
        const FileSizeLimit limit(bytesOfAFile);
        return station.Converter().ConvertToComtrade(station.Directory().Path("rec.ZU"),
                                                     station.Directory().Path("out"), 0);
    }
};

} // namespace

TEST_P(BlockedPiece, FailsWithItsTemporaryName)
{
    Block(GetParam().blocked);
    EXPECT_FALSE(station.Convert(SmallFile()));
    EXPECT_EQ(station.Device().LastError, "Ошибка записи в [" + OutName() + GetParam().blocked + "]");
    EXPECT_TRUE(station.Device().LogMessages.empty());
    EXPECT_TRUE(station.Converter().LastError.isNull());
}

TEST_P(BlockedPiece, LeavesThePiecesBeforeItAndAllThatWasThere)
{
    Block(GetParam().blocked);
    EXPECT_FALSE(station.Convert(SmallFile()));
    ExpectEarlierFilesAnd(GetParam().left);
    EXPECT_TRUE(SourceIsThere());
}

TEST_P(BlockedPiece, PiecesBeforeItAreComplete)
{
    TestStation good;
    ASSERT_TRUE(good.Convert(SmallFile()));
    Block(GetParam().blocked);
    EXPECT_FALSE(station.Convert(SmallFile()));
    for (const QString& extension : GetParam().left)
        EXPECT_EQ(Bytes(extension), good.Output(extension.mid(1, 3))) << extension;
}

TEST_P(BlockedPiece, NextConversionOfTheNameClearsTheDebris)
{
    Block(GetParam().blocked);
    EXPECT_FALSE(station.Convert(SmallFile()));
    Unblock(GetParam().blocked);
    EXPECT_TRUE(station.Convert(SmallFile()));
    EXPECT_EQ(station.Directory().Names("out"), OutNames(Finals));
    EXPECT_NE(Bytes(".cfg"), "earlier");
    EXPECT_TRUE(station.Device().LastError.isNull());
}

TEST_F(FailedBinaryDat, LeavesTheCfgAndThePartialDat)
{
    EXPECT_FALSE(ConvertTooMuch());
    EXPECT_EQ(station.Device().LastError, "Ошибка записи в [" + OutName() + ".dattmp]");
    ExpectEarlierFilesAnd({".cfgtmp", ".dattmp"});
    EXPECT_EQ(QFileInfo(station.Directory().Path(OutFile(".dattmp"))).size(), 100000);
    EXPECT_TRUE(SourceIsThere());
}

TEST_F(FailedBinaryDat, LastBlockThatFailsOnlyWhenItLeavesTheBufferIsAFailure)
{
    // Records of 100 bytes: a block of 261800 that fits, and one of 16300 that the file's buffer still takes.
    recorderfile::Recording recording;
    for (int i = 1; i <= 46; ++i)
        recording.Add(
            recorderfile::AnalogChannel{QStringLiteral("Q1:I%1").arg(i), "А", std::vector<int16_t>(2781, 1)});
    EXPECT_FALSE(ConvertWithRoomFor(262000, recording));
    EXPECT_EQ(station.Device().LastError, "Ошибка записи в [" + OutName() + ".dattmp]");
    ExpectEarlierFilesAnd({".cfgtmp", ".dattmp"});
    EXPECT_TRUE(SourceIsThere());
    EXPECT_TRUE(ConvertWithRoomFor(300000, recording));
    EXPECT_EQ(Bytes(".dat").size(), 278100);
    EXPECT_FALSE(SourceIsThere());
}

TEST_F(FailedBinaryDat, NextConversionOfTheDeviceGoesThrough)
{
    EXPECT_FALSE(ConvertTooMuch());
    EXPECT_TRUE(station.Convert(SmallFile(7)));
    EXPECT_EQ(Bytes(".dat").size(), 24 * 12);
    EXPECT_FALSE(station.Device().FileDat.isOpen());
}

TEST_F(FailedWrites, OutputDirectoryThatIsAFileFailsAtTheFirstPiece)
{
    const QString file = station.Directory().Write("rec.ZU", SmallFile());
    const QString notDirectory = station.Directory().Write("plain", "text");
    EXPECT_FALSE(station.Converter().ConvertToComtrade(file, notDirectory, 0));
    EXPECT_EQ(station.Device().LastError, "Ошибка записи в [" + OutName() + ".cfgtmp]");
    EXPECT_EQ(ReadBytes(notDirectory), "text");
}

TEST_F(FailedWrites, NameOfACommittedFileThatIsADirectoryIsNoFailure)
{
    QFile::remove(station.Directory().Path(OutFile(".cfg")));
    Block(".cfg");
    EXPECT_TRUE(station.Convert(SmallFile()));
    EXPECT_EQ(Notes(station.Device()), QStringList{SuccessNote()});
    EXPECT_TRUE(station.Device().LastError.isNull());
    EXPECT_EQ(station.Directory().Names("out"), OutNames({".cff", ".cfgtmp", ".dat", ".hdr", ".inf"}));
    EXPECT_EQ(station.Directory().Names(OutFile(".cfg")), QStringList{"inside"});
    EXPECT_NE(Bytes(".dat"), "earlier");
    EXPECT_NE(Bytes(".inf"), "earlier");
    EXPECT_FALSE(SourceIsThere());
}

TEST_F(FailedCff, CountsAsSuccess)
{
    Block(".cfftmp");
    EXPECT_TRUE(station.Convert(SmallFile()));
    EXPECT_EQ(Notes(station.Device()), QStringList{SuccessNote()});
    EXPECT_TRUE(station.Device().LastError.isNull());
    EXPECT_EQ(station.Converter().LastError, "0");
}

TEST_F(FailedCff, LeavesThePiecesAndTheEarlierFilesButNotTheSource)
{
    Block(".cfftmp");
    EXPECT_TRUE(station.Convert(SmallFile()));
    ExpectEarlierFilesAnd({".cfgtmp", ".dattmp", ".hdrtmp", ".inftmp"});
    EXPECT_FALSE(SourceIsThere());
}

TEST_F(FailedCff, PartialFileStaysBesideThePieces)
{
    recorderfile::Recording recording = SmallRecording();
    for (int i = 0; i < 600; ++i)
        recording.Add(recorderfile::DiscreteChannel{QStringLiteral("Q1:x%1").arg(i)});
    station.Directory().Write("rec.ZU", recorderfile::Encode(recording));
    {
        const FileSizeLimit limit(90000); // holds each piece, but not all of them
        EXPECT_TRUE(station.Converter().ConvertToComtrade(station.Directory().Path("rec.ZU"),
                                                          station.Directory().Path("out"), 0));
    }
    EXPECT_EQ(station.Converter().LastError, "0");
    ExpectEarlierFilesAnd({".cfftmp", ".cfgtmp", ".dattmp", ".hdrtmp", ".inftmp"});
    EXPECT_TRUE(Bytes(".cfftmp").startsWith("--- file type: CFG ---\r\n" + Bytes(".cfgtmp")));
    EXPECT_FALSE(SourceIsThere());
}

TEST_F(FailedCff, NextConversionReplacesTheCff)
{
    Block(".cfftmp");
    EXPECT_TRUE(station.Convert(SmallFile()));
    Unblock(".cfftmp");
    EXPECT_TRUE(station.Convert(SmallFile()));
    EXPECT_EQ(station.Directory().Names("out"), OutNames(Finals));
    EXPECT_TRUE(Bytes(".cff").startsWith("--- file type: CFG ---\r\n"));
    EXPECT_EQ(Bytes(".cfg"), "earlier");
}
