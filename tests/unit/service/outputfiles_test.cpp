// The output of a successful conversion: names, commit, and what becomes of earlier files.
#include "support/recordings.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTextCodec>

namespace {

const QStringList Separate = {".cfg", ".dat", ".hdr", ".inf"};
const QStringList Temporary = {".cfgtmp", ".cfftmp", ".dattmp", ".hdrtmp", ".inftmp"};

// Puts a file with the text "earlier" under each of these names.
void WriteEarlier(const TestStation& station, const QStringList& extensions)
{
    for (const QString& extension : extensions)
        station.Directory().Write(OutFile(extension), "earlier");
}

// Extensions of the output files that still hold the text "earlier".
QStringList StillEarlier(const TestStation& station, const QStringList& extensions)
{
    QStringList left;
    for (const QString& extension : extensions) {
        const QString path = station.Directory().Path(OutFile(extension));
        if (QFile::exists(path) && ReadBytes(path) == "earlier")
            left.append(extension);
    }
    return left;
}

} // namespace

TEST(Output, SeparateFilesOfRevision2013)
{
    TestStation station;
    EXPECT_TRUE(station.Convert(SmallFile()));
    EXPECT_EQ(station.Directory().Names("out"), OutNames(Separate));
    EXPECT_EQ(Notes(station.Device()), QStringList{SuccessNote()});
}

TEST(Output, SeparateFilesOfRevision1999AreCfgAndDat)
{
    TestStation station("Тип Comtrade 1999=1");
    EXPECT_TRUE(station.Convert(SmallFile()));
    EXPECT_EQ(station.Directory().Names("out"), OutNames({".cfg", ".dat"}));
    EXPECT_EQ(Notes(station.Device()), QStringList{SuccessNote()});
}

TEST(Output, CffIsOneFile)
{
    TestStation station("Тип Comtrade CFF=1");
    EXPECT_TRUE(station.Convert(SmallFile()));
    EXPECT_EQ(station.Directory().Names("out"), OutNames({".cff"}));
    EXPECT_EQ(Notes(station.Device()), QStringList{SuccessNote()});
}

TEST(Output, NamesOfTheTemporaryFilesStayInTheDevice)
{
    TestStation station("Тип Comtrade CFF=1");
    const QString out = station.Directory().Path("out/");
    EXPECT_TRUE(station.Convert(SmallFile()));
    const ZuCmtrDevParam& device = station.Device();
    EXPECT_EQ((QStringList{device.TmpNameCfg, device.TmpNameDat, device.TmpNameHdr, device.TmpNameInf,
                           device.TmpNameCff}),
              OutNames({".cfgtmp", ".dattmp", ".hdrtmp", ".inftmp", ".cfftmp"}));
    EXPECT_EQ((QStringList{device.TmpPathCfg, device.TmpPathDat, device.TmpPathHdr, device.TmpPathInf,
                           device.TmpPathCff}),
              (QStringList{out + device.TmpNameCfg, out + device.TmpNameDat, out + device.TmpNameHdr,
                           out + device.TmpNameInf, out + device.TmpNameCff}));
    EXPECT_EQ((QStringList{device.FileCfg.fileName(), device.FileDat.fileName(), device.FileHdr.fileName(),
                           device.FileInf.fileName(), device.FileCff.fileName()}),
              (QStringList{device.TmpPathCfg, device.TmpPathDat, device.TmpPathHdr, device.TmpPathInf,
                           device.TmpPathCff}));
}

TEST(Output, PreparationOfTheFirstFileShowsInAllPieces)
{
    TestStation station("nAnMax=2\nA01=Q1:Ib,V_L=110 E_G=L S_G=CT\nA02=Q1:Ia,V_L=110 E_G=L S_G=CT");
    recorderfile::Recording recording = SmallRecording();
    recording.comment = "Пуск вручную";
    recording.Add(recorderfile::AnalogChannel{"Q1:Ib", "А", std::vector<int16_t>(24, 2)});
    EXPECT_TRUE(station.Convert(recorderfile::Encode(recording)));
    EXPECT_EQ(ReadLines(station.Directory().Path(OutFile(".cfg"))).at(2).section(',', 0, 1), "1,Ib Q1");
    EXPECT_EQ(ReadLines(station.Directory().Path(OutFile(".dat"))).at(0), "1,0,2,1,0");
    EXPECT_TRUE(ReadBytes(station.Directory().Path(OutFile(".hdr")))
                    .contains(ZuCmtrConverter::codec_CP1251->fromUnicode("Пуск вручную")));
    EXPECT_EQ(station.Output("inf").left(8), "[Public ");
}

TEST(Output, EarlierFilesAreReplaced)
{
    TestStation station;
    WriteEarlier(station, Separate);
    EXPECT_TRUE(station.Convert(SmallFile()));
    EXPECT_EQ(station.Directory().Names("out"), OutNames(Separate));
    EXPECT_TRUE(StillEarlier(station, Separate).isEmpty());
}

TEST(Output, SecondConversionOfTheSameNameReplacesTheFirst)
{
    TestStation station;
    EXPECT_TRUE(station.Convert(SmallFile(7)));
    EXPECT_TRUE(station.Output("dat").startsWith("1,0,7,0\n"));
    EXPECT_TRUE(station.Convert(SmallFile(8)));
    EXPECT_TRUE(station.Output("dat").startsWith("1,0,8,0\n"));
    EXPECT_EQ(station.Directory().Names("out"), OutNames(Separate));
}

TEST(Output, Revision1999RemovesAnEarlierHdrAndInf)
{
    TestStation station("Тип Comtrade 1999=1");
    WriteEarlier(station, Separate);
    EXPECT_TRUE(station.Convert(SmallFile()));
    EXPECT_EQ(station.Directory().Names("out"), OutNames({".cfg", ".dat"}));
    EXPECT_TRUE(StillEarlier(station, Separate).isEmpty());
}

TEST(Output, Revision1999LeavesAnEarlierCffAlone)
{
    TestStation station("Тип Comtrade 1999=1");
    WriteEarlier(station, {".cff"});
    EXPECT_TRUE(station.Convert(SmallFile()));
    EXPECT_EQ(StillEarlier(station, {".cff"}), QStringList{".cff"});
}

TEST(Output, CffReplacesAnEarlierCffAndLeavesSeparateFilesAlone)
{
    TestStation station("Тип Comtrade CFF=1");
    WriteEarlier(station, Separate + QStringList{".cff"});
    EXPECT_TRUE(station.Convert(SmallFile()));
    EXPECT_EQ(station.Directory().Names("out"), OutNames({".cff", ".cfg", ".dat", ".hdr", ".inf"}));
    EXPECT_EQ(StillEarlier(station, Separate + QStringList{".cff"}), Separate);
}

TEST(Output, LeftoversUnderTheTemporaryNamesAreRemoved)
{
    TestStation station("Тип Comtrade 1999=1");
    WriteEarlier(station, Temporary);
    EXPECT_TRUE(station.Convert(SmallFile()));
    EXPECT_EQ(station.Directory().Names("out"), OutNames({".cfftmp", ".cfg", ".dat"}));
}

TEST(Output, LeftoversOfACffAreRemovedToo)
{
    TestStation station("Тип Comtrade CFF=1");
    WriteEarlier(station, Temporary);
    EXPECT_TRUE(station.Convert(SmallFile()));
    EXPECT_EQ(station.Directory().Names("out"), OutNames({".cff"}));
}

TEST(Output, SourceIsRemovedOnlyWithTheSwitch)
{
    for (const char* lines : {"Удалять исходные=1", "Удалять исходные=1\nТип Comtrade CFF=1"}) {
        TestStation station(lines);
        EXPECT_TRUE(station.Convert(SmallFile()));
        EXPECT_EQ(station.Directory().Names(), QStringList{"ZuDrv.ini"});
    }
    TestStation station;
    EXPECT_TRUE(station.Convert(SmallFile()));
    EXPECT_EQ(station.Directory().Names(), (QStringList{"ZuDrv.ini", "rec.ZU"}));
}

TEST(Output, OutputDirectoryIsTakenAsItIsGiven)
{
    TestStation station;
    const QString file = station.Directory().Write("rec.ZU", SmallFile());
    const CurrentDirectory current(station.Directory().Path("out"));
    EXPECT_TRUE(station.Converter().ConvertToComtrade(file, ".", 0));
    EXPECT_EQ(station.Device().TmpPathCfg, "./" + OutName() + ".cfgtmp");
    EXPECT_EQ(station.Directory().Names("out"), OutNames(Separate));
}

TEST(RenameTmpFile, TakesTheLastThreeCharactersOff)
{
    const TestDirectory directory;
    EXPECT_TRUE(ZuCmtrConverter::RenameTmpFile(directory.Write("rec.cfgtmp", "new")));
    EXPECT_EQ(directory.Names(), QStringList{"rec.cfg"});
    EXPECT_EQ(ReadBytes(directory.Path("rec.cfg")), "new");
}

TEST(RenameTmpFile, ReplacesAnEarlierFile)
{
    const TestDirectory directory;
    directory.Write("rec.cfg", "earlier");
    EXPECT_TRUE(ZuCmtrConverter::RenameTmpFile(directory.Write("rec.cfgtmp", "new")));
    EXPECT_EQ(directory.Names(), QStringList{"rec.cfg"});
    EXPECT_EQ(ReadBytes(directory.Path("rec.cfg")), "new");
}

TEST(RenameTmpFile, FailsWithoutATemporaryFile)
{
    const TestDirectory directory;
    EXPECT_FALSE(ZuCmtrConverter::RenameTmpFile(directory.Path("rec.cfgtmp")));
    EXPECT_TRUE(directory.Names().isEmpty());
}

TEST(RenameTmpFile, FailsOverADirectoryAndLeavesBoth)
{
    const TestDirectory directory;
    directory.Write("rec.cfg/inside", "");
    EXPECT_FALSE(ZuCmtrConverter::RenameTmpFile(directory.Write("rec.cfgtmp", "new")));
    EXPECT_EQ(directory.Names(), QStringList{"rec.cfgtmp"});
    EXPECT_EQ(directory.Names("rec.cfg"), QStringList{"inside"});
}

TEST(RenameTmpFile, CyrillicNamesAreFileNamesToo)
{
    const TestDirectory directory;
    EXPECT_TRUE(ZuCmtrConverter::RenameTmpFile(directory.Write("ПС Южная.cfgtmp", "new")));
    EXPECT_EQ(directory.Names(), QStringList{"ПС Южная.cfg"});
}

TEST(RemoveOldFile, RemovesTheFinalFileAndNotTheTemporaryOne)
{
    const TestDirectory directory;
    directory.Write("rec.hdr", "earlier");
    EXPECT_TRUE(ZuCmtrConverter::RemoveOldFile(directory.Write("rec.hdrtmp", "new")));
    EXPECT_EQ(directory.Names(), QStringList{"rec.hdrtmp"});
}

TEST(RemoveOldFile, NothingToRemoveIsSuccess)
{
    const TestDirectory directory;
    EXPECT_TRUE(ZuCmtrConverter::RemoveOldFile(directory.Path("rec.hdrtmp")));
}

TEST(RemoveOldFile, FailsForADirectory)
{
    const TestDirectory directory;
    directory.Write("rec.hdr/inside", "");
    EXPECT_FALSE(ZuCmtrConverter::RemoveOldFile(directory.Path("rec.hdrtmp")));
    EXPECT_EQ(directory.Names("rec.hdr"), QStringList{"inside"});
}
