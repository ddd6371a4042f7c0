// Continuations that do not fit: the chain ends before them, with a note, and the conversion goes on.
#include "base/chainnames.h"
#include "support/recordings.h"

#include <gtest/gtest.h>

namespace {

class ChainCut : public testing::Test
{
protected:
    // A station whose directory is the current one, so that names without a directory are paths.
    explicit ChainCut(const QByteArray& deviceLines = QByteArray())
        : station(deviceLines), current(station.Directory().Path())
    {}

    void Write(const QString& name, const QByteArray& bytes = SmallFile())
    {
        station.Directory().Write(name, bytes);
    }

    bool Convert(const QString& name) { return station.Converter().ConvertToComtrade(name, "out", 0); }

    TestStation station;
    CurrentDirectory current;
};

class ChainCutDeletingSources : public ChainCut
{
protected:
    ChainCutDeletingSources() : ChainCut("Удалять исходные=1") {}
};

QString LoadNote(const QString& file, const QString& reason)
{
    return "Ошибка обработки файла " + file + " [" + reason + "], окончание осциллограммы некорректно";
}

QString DifferenceNote(const QString& later, const QString& first)
{
    return "Параметры файлов [" + later + "] и [" + first + "] различны, окончание осциллограммы некорректно";
}

const char NoHeader[] = "Ошибка при чтении файла [ZuFileHeader]";

QByteArray OtherIdentity()
{
    recorderfile::Recording recording = SmallRecording();
    recording.identity = "другой";
    return recorderfile::Encode(recording);
}

} // namespace

TEST_F(ChainCut, ContinuationThatDoesNotLoadIsANoteThatNamesTheFirstFile)
{
    Write("rec.ZU");
    Write("rec.Z01", "");
    EXPECT_TRUE(Convert("rec.ZU"));
    EXPECT_EQ(Notes(station.Device()), (QStringList{LoadNote("rec.ZU", NoHeader), SuccessNote()}));
    EXPECT_TRUE(station.Device().LastError.isNull());
    EXPECT_EQ(station.Device().TotalSamples, 24);
}

TEST_F(ChainCut, FilesAfterOneThatDoesNotLoadAreNotOpened)
{
    Write("rec.ZU");
    Write("rec.Z01");
    Write("rec.Z02", "");
    Write("rec.Z03");
    Write("rec.Z04", "");
    EXPECT_TRUE(Convert("rec.ZU"));
    EXPECT_EQ(Notes(station.Device()), (QStringList{LoadNote("rec.ZU", NoHeader), SuccessNote()}));
    EXPECT_EQ(station.Device().TotalSamples, 48);
}

TEST_F(ChainCut, NameOf40CharactersIsQuotedWhole)
{
    const QString name = QString(37, 'n') + ".ZU";
    Write(name);
    Write(QString(37, 'n') + ".Z01", "");
    EXPECT_TRUE(Convert(name));
    EXPECT_EQ(Notes(station.Device()).first(), LoadNote(name, NoHeader));
}

TEST_F(ChainCut, NameOf41CharactersIsQuotedByItsLast37)
{
    const QString name = "first" + QString(33, 'n') + ".ZU";
    Write(name);
    Write("first" + QString(33, 'n') + ".Z01", "");
    EXPECT_TRUE(Convert(name));
    EXPECT_EQ(Notes(station.Device()).first(), LoadNote(" ...t" + QString(33, 'n') + ".ZU", NoHeader));
}

TEST_F(ChainCut, PlaceMarkersInTheNameAreFilledToo)
{
    Write("r%2.ZU");
    Write("r%2.Z01", "");
    EXPECT_TRUE(Convert("r%2.ZU"));
    EXPECT_EQ(Notes(station.Device()).first(), LoadNote("r" + QString(NoHeader) + ".ZU", NoHeader));
}

TEST_F(ChainCut, DifferentContinuationIsANoteWithBothNamesInFull)
{
    const QString base(60, 'n');
    Write(base + ".ZU");
    Write(base + ".Z01", OtherIdentity());
    EXPECT_TRUE(Convert(base + ".ZU"));
    EXPECT_EQ(Notes(station.Device()),
              (QStringList{DifferenceNote(base + ".Z01", base + ".ZU"), SuccessNote()}));
    EXPECT_TRUE(station.Device().LastError.isNull());
    EXPECT_EQ(station.Device().TotalSamples, 24);
}

TEST_F(ChainCut, FirstDifferenceDropsAllFilesFromThereOn)
{
    Write("rec.ZU");
    Write("rec.Z01");
    Write("rec.Z02", OtherIdentity());
    Write("rec.Z03");
    Write("rec.Z04", OtherIdentity());
    EXPECT_TRUE(Convert("rec.ZU"));
    EXPECT_EQ(Notes(station.Device()), (QStringList{DifferenceNote("rec.Z02", "rec.ZU"), SuccessNote()}));
    EXPECT_EQ(station.Device().TotalSamples, 48);
    EXPECT_EQ(station.Device().TotalTime, 20000U);
}

TEST_F(ChainCut, NoteOnLoadingComesBeforeTheNoteOnADifference)
{
    Write("rec.ZU");
    Write("rec.Z01", OtherIdentity());
    Write("rec.Z02", "");
    EXPECT_TRUE(Convert("rec.ZU"));
    EXPECT_EQ(Notes(station.Device()), (QStringList{LoadNote("rec.ZU", NoHeader),
                                                    DifferenceNote("rec.Z01", "rec.ZU"), SuccessNote()}));
}

TEST_F(ChainCut, ContinuationOfAnotherSampleRateIsCut)
{
    recorderfile::Recording later = SmallRecording();
    FirstAnalog(later).rate = 1200;
    Write("rec.ZU");
    Write("rec.Z01", recorderfile::Encode(later));
    EXPECT_TRUE(Convert("rec.ZU"));
    EXPECT_EQ(Notes(station.Device()), (QStringList{DifferenceNote("rec.Z01", "rec.ZU"), SuccessNote()}));
    EXPECT_EQ(station.Device().SampleRate, 2400.0);
    EXPECT_EQ(station.Device().TotalSamples, 24);
}

// Steps of the primary value that pass one by one, but not both together.
TEST_F(ChainCut, EachFileIsComparedWithTheFirst)
{
    const float primaries[] = {0.75F, 0.75F + 0x1p-24F, 0.75F + 0x1p-23F};
    for (int i = 0; i < 3; ++i) {
        recorderfile::Recording recording = SmallRecording();
        FirstAnalog(recording).primary = primaries[i];
        Write(zu::ContinuationName("rec.ZU", i), recorderfile::Encode(recording));
    }
    EXPECT_TRUE(Convert("rec.ZU"));
    EXPECT_EQ(Notes(station.Device()), (QStringList{DifferenceNote("rec.Z02", "rec.ZU"), SuccessNote()}));
    EXPECT_EQ(station.Device().TotalSamples, 48);
}

TEST_F(ChainCut, BadChannelsOfADroppedFileDoNotMatter)
{
    recorderfile::Recording later = SmallRecording();
    later.identity = "другой";
    later.Add(recorderfile::AnalogChannel{"Q1:Ib", "А", {1, 2}, 1200});
    Write("rec.ZU");
    Write("rec.Z01", recorderfile::Encode(later));
    EXPECT_TRUE(Convert("rec.ZU"));
}

TEST_F(ChainCutDeletingSources, FilesOfTheChainGo)
{
    for (const char* name : {"rec.ZU", "rec.Z01", "rec.Z02"})
        Write(name);
    EXPECT_TRUE(Convert("rec.ZU"));
    EXPECT_EQ(station.Directory().Names(), QStringList{"ZuDrv.ini"});
}

TEST_F(ChainCutDeletingSources, FilesFromOneThatDoesNotLoadOnSurvive)
{
    Write("rec.ZU");
    Write("rec.Z01");
    Write("rec.Z02", "");
    Write("rec.Z03");
    EXPECT_TRUE(Convert("rec.ZU"));
    EXPECT_EQ(station.Directory().Names(), (QStringList{"ZuDrv.ini", "rec.Z02", "rec.Z03"}));
}

TEST_F(ChainCutDeletingSources, FilesFromADifferentOneOnSurvive)
{
    Write("rec.ZU");
    Write("rec.Z01");
    Write("rec.Z02", OtherIdentity());
    Write("rec.Z03");
    EXPECT_TRUE(Convert("rec.ZU"));
    EXPECT_EQ(station.Directory().Names(), (QStringList{"ZuDrv.ini", "rec.Z02", "rec.Z03"}));
}

TEST_F(ChainCut, SourcesStayWithoutTheSwitch)
{
    Write("rec.ZU");
    Write("rec.Z01");
    EXPECT_TRUE(Convert("rec.ZU"));
    EXPECT_EQ(station.Directory().Names(), (QStringList{"ZuDrv.ini", "rec.Z01", "rec.ZU"}));
}
