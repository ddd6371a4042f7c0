// The exported functions over the one process-wide converter.
#include "service/zucmtrlib.h"
#include "support/recordings.h"

#include <gtest/gtest.h>

#include <QFile>

#include <stdexcept>

namespace {

const char BadNumber[] = "ConvertToComtrade: DevID>=m_DevParams.size()";

class ExportedFunctions : public testing::Test
{
protected:
    ExportedFunctions() { directory.MakeDirectory("out"); }
    ~ExportedFunctions() override
    {
        ZuCmtrConverterExit();
        ZuCmtrSetLogFilePath(QString());
    }

    // Initialises the converter and gives it device 0, with these lines in its section.
    void SetUpDevice(const QByteArray& deviceLines = QByteArray())
    {
        ini = directory.Write("ZuDrv.ini", DefaultsSection() + "[Device]\n" + deviceLines);
        unsigned int number = 99;
        ASSERT_TRUE(ZuCmtrConverterInit());
        ASSERT_TRUE(ZuCmtrLoadFromIniDefault(ini, "Defaults"));
        ASSERT_TRUE(ZuCmtrLoadFromIni(ini, "Device", &number));
        ASSERT_EQ(number, 0U);
    }

    bool Convert(const QString& name) const
    {
        return ZuCmtrConvertToComtrade(directory.Path(name), directory.Path("out"), 0);
    }

    TestDirectory directory;
    QString ini;
};

} // namespace

TEST_F(ExportedFunctions, NoneDoesAnythingBeforeInit)
{
    const QString file = directory.Write("rec.ZU", SmallFile());
    ini = directory.Write("ZuDrv.ini", DefaultsSection() + "[Device]\n");
    unsigned int number = 99;
    EXPECT_FALSE(ZuCmtrLoadFromIniDefault(ini, "Defaults"));
    EXPECT_FALSE(ZuCmtrLoadFromIni(ini, "Device", &number));
    EXPECT_EQ(number, 99U);
    EXPECT_FALSE(ZuCmtrConvertToComtrade(file, directory.Path("out"), 0));
    EXPECT_EQ(ZuCmtrGetLastError(), "");
    EXPECT_EQ(&ZuCmtrGetLastError(), &ZuCmtrGetLastError());
    EXPECT_EQ(ZuCmtrPopDevMessage(0), "");
    EXPECT_EQ(ZuCmtrGetDevLastError(0), "");
    EXPECT_EQ(ZuCmtrGetDevMsgCount(0), 0U);
    EXPECT_EQ(ZuCmtrGetDevWaitTime(0), 0U);
    EXPECT_EQ(ZuCmtrGetLastError(), "");
    ZuCmtrConverterExit();
    EXPECT_TRUE(directory.Names("out").isEmpty());
}

TEST_F(ExportedFunctions, LogPathIsSetWithoutAConverter)
{
    ZuCmtrSetLogFilePath(directory.Path("set.log"));
    SetUpDevice();
    EXPECT_EQ(directory.Names(), QStringList({"ZuDrv.ini", "set.log"}));
}

TEST_F(ExportedFunctions, SecondInitGivesFalseAndLeavesTheFirstConverterAlone)
{
    SetUpDevice("Время ожидания=7");
    EXPECT_FALSE(ZuCmtrConverterInit());
    EXPECT_EQ(ZuCmtrGetDevWaitTime(0), 7U);
}

TEST_F(ExportedFunctions, ExitTwiceIsHarmless)
{
    SetUpDevice();
    ZuCmtrConverterExit();
    ZuCmtrConverterExit();
    EXPECT_EQ(ZuCmtrGetLastError(), "");
}

TEST_F(ExportedFunctions, NumbersStartAgainAfterExit)
{
    SetUpDevice("Время ожидания=7");
    ZuCmtrConverterExit();
    SetUpDevice("Время ожидания=8"); // asserts number 0
    EXPECT_EQ(ZuCmtrGetDevWaitTime(0), 8U);
}

TEST_F(ExportedFunctions, PopOnAnEmptyQueueGivesAnEmptyTextAndLeavesLastErrorAlone)
{
    SetUpDevice();
    EXPECT_EQ(ZuCmtrPopDevMessage(0), "");
    EXPECT_EQ(ZuCmtrGetLastError(), "");
}

TEST_F(ExportedFunctions, MessageCountOfABadNumberIsZeroWithTheTextOfTheConversion)
{
    SetUpDevice();
    EXPECT_EQ(ZuCmtrGetDevMsgCount(1), 0U);
    EXPECT_EQ(ZuCmtrGetLastError(), BadNumber);
}

TEST_F(ExportedFunctions, WaitTimeOfABadNumberIsZeroWithTheTextOfTheConversion)
{
    SetUpDevice();
    EXPECT_EQ(ZuCmtrGetDevWaitTime(1), 0U);
    EXPECT_EQ(ZuCmtrGetLastError(), BadNumber);
}

TEST_F(ExportedFunctions, DeviceErrorOfABadNumberIsEmptyAndTheReasonIsInLastError)
{
    SetUpDevice();
    EXPECT_EQ(ZuCmtrGetDevLastError(1), "");
    EXPECT_EQ(ZuCmtrGetLastError(), BadNumber);
}

TEST_F(ExportedFunctions, MessageOfABadNumberIsEmptyWithTheTextOfTheConversion)
{
    SetUpDevice();
    EXPECT_EQ(ZuCmtrPopDevMessage(1), "");
    EXPECT_EQ(ZuCmtrGetLastError(), BadNumber);
}

TEST_F(ExportedFunctions, LastErrorIsOneLiveTextUntilExit)
{
    SetUpDevice();
    const QString& text = ZuCmtrGetLastError();
    EXPECT_EQ(text, "");
    ZuCmtrGetDevMsgCount(4294967295U);
    EXPECT_EQ(text, BadNumber);
    EXPECT_EQ(&text, &ZuCmtrGetLastError());
}

TEST_F(ExportedFunctions, LastErrorIsNotClearedBySuccess)
{
    SetUpDevice();
    ZuCmtrGetDevMsgCount(1);
    directory.Write("rec.ZU", SmallFile());
    EXPECT_TRUE(Convert("rec.ZU"));
    EXPECT_EQ(ZuCmtrGetDevMsgCount(0), 1U);
    EXPECT_EQ(ZuCmtrGetLastError(), BadNumber);
}

TEST_F(ExportedFunctions, FailedDefaultsLeaveTheirTextInLastError)
{
    const QString missing = directory.Path("missing.ini");
    ZuCmtrConverterInit();
    EXPECT_FALSE(ZuCmtrLoadFromIniDefault(missing, "Defaults"));
    EXPECT_EQ(ZuCmtrGetLastError(), QStringLiteral("Нет доступа к ini-файлу [%1]").arg(missing));
}

TEST_F(ExportedFunctions, FailedDeviceLeavesNoTextInLastError)
{
    SetUpDevice();
    unsigned int number = 99;
    EXPECT_FALSE(ZuCmtrLoadFromIni(directory.Path("missing.ini"), "Device", &number));
    EXPECT_EQ(number, 99U);
    EXPECT_EQ(ZuCmtrGetLastError(), "");
}

TEST_F(ExportedFunctions, DeviceBeforeTheDefaultsIsRefused)
{
    ini = directory.Write("ZuDrv.ini", DefaultsSection() + "[Device]\n");
    unsigned int number = 99;
    ZuCmtrConverterInit();
    EXPECT_FALSE(ZuCmtrLoadFromIni(ini, "Device", &number));
    EXPECT_EQ(number, 99U);
    EXPECT_EQ(ZuCmtrGetLastError(), "");
    EXPECT_EQ(ZuCmtrGetDevWaitTime(0), 0U); // there is no device
    EXPECT_EQ(ZuCmtrGetLastError(), BadNumber);
}

TEST_F(ExportedFunctions, ReasonOfAFailedConversionIsTheDevicesLastError)
{
    SetUpDevice();
    EXPECT_FALSE(Convert("missing.ZU"));
    EXPECT_EQ(ZuCmtrGetDevLastError(0), "Файл не существует [" + directory.Path("missing.ZU") + "]");
    EXPECT_EQ(ZuCmtrGetDevMsgCount(0), 0U);
    EXPECT_EQ(ZuCmtrGetLastError(), "");
}

TEST_F(ExportedFunctions, NotesOfAConversionAreFetchedOldestFirst)
{
    SetUpDevice();
    const QString file = directory.Write("rec.ZU", SmallFile());
    directory.Write("rec.Z01", "");
    EXPECT_TRUE(Convert("rec.ZU"));
    EXPECT_EQ(ZuCmtrGetDevMsgCount(0), 2U);
    EXPECT_TRUE(ZuCmtrPopDevMessage(0).startsWith("Ошибка обработки файла "));
    EXPECT_EQ(ZuCmtrGetDevMsgCount(0), 1U);
    EXPECT_EQ(ZuCmtrPopDevMessage(0), SuccessNote());
    EXPECT_EQ(ZuCmtrGetDevMsgCount(0), 0U);
    EXPECT_EQ(ZuCmtrGetDevLastError(0), "");
}

TEST_F(ExportedFunctions, ExitForgetsTheIniFilesThatWereRead)
{
    SetUpDevice("Время ожидания=7");
    unsigned int number = 99;
    directory.Write("ZuDrv.ini", DefaultsSection() + "[Device]\nВремя ожидания=8\n");
    ASSERT_TRUE(ZuCmtrLoadFromIni(ini, "Device", &number));
    EXPECT_EQ(ZuCmtrGetDevWaitTime(number), 7U); // still as it was read first
    ZuCmtrConverterExit();
    SetUpDevice("Время ожидания=9");
    EXPECT_EQ(ZuCmtrGetDevWaitTime(0), 9U);
}

TEST_F(ExportedFunctions, ConversionLetsOutOfRangeOfAChainWithoutDiscreteChannelsPass)
{
    SetUpDevice();
    recorderfile::Recording recording = SmallRecording();
    recording.sections.pop_back();
    directory.Write("rec.ZU", recorderfile::Encode(recording));
    directory.Write("rec.Z01", recorderfile::Encode(recording));
    EXPECT_THROW(Convert("rec.ZU"), std::out_of_range);
}

TEST_F(ExportedFunctions, ConversionLetsOutOfRangeOfACommentWithTwoValuesPass)
{
    SetUpDevice();
    recorderfile::Recording recording = SmallRecording();
    recording.comment = "Пуск ДЗ(Q1:Ia,1.5) больше";
    directory.Write("rec.ZU", recorderfile::Encode(recording));
    EXPECT_THROW(Convert("rec.ZU"), std::out_of_range);
    EXPECT_TRUE(directory.Names("out").isEmpty());
}
