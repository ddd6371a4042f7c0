// The converter object: statics, loading, getters of the devices.
#include "base/codecs.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "support/recordings.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

const char BadNumber[] = "ConvertToComtrade: DevID>=m_DevParams.size()";

// A converter that is released with the object, and an ini file whose section [Bad] does not load.
class Converter : public testing::Test
{
protected:
    ~Converter() override
    {
        converter.Clear();
        ZuCmtrConverter::LogFilePath = QString();
    }

    TestDirectory directory;
    QString ini = directory.Write("ZuDrv.ini", DefaultsSection() + "[Device]\n[Bad]\nВремя ожидания=-2\n");
    ZuCmtrConverter converter;
};

} // namespace

TEST_F(Converter, StartsEmpty)
{
    EXPECT_EQ(converter.DefaultParam, nullptr);
    EXPECT_TRUE(converter.m_DevParams.empty());
    EXPECT_TRUE(converter.LastError.isNull());
    EXPECT_TRUE(converter.Mutex.tryLock());
    EXPECT_FALSE(converter.Mutex.tryLock()); // not recursive
    converter.Mutex.unlock();
}

TEST(ConverterStatics, AreTheObjectsOfBase)
{
    EXPECT_EQ(&ZuCmtrConverter::LogFilePath, &zu::LogFilePath);
    EXPECT_EQ(&ZuCmtrConverter::codec_CP1251, &zu::CodecCP1251);
    EXPECT_EQ(&ZuCmtrConverter::codec_CP866, &zu::CodecCP866);
    EXPECT_EQ(&ZuCmtrConverter::codec_UTF8, &zu::CodecUtf8);
    EXPECT_EQ(&ZuCmtrConverter::codecIni, &zu::CodecIni);
    EXPECT_EQ(&ZuCmtrConverter::ZuExtensions, &zu::ChainExtensions);
}

TEST_F(Converter, WritesTheLogOfBase)
{
    zu::LogFilePath = directory.Path("log.txt");
    ZuCmtrConverter::WriteToLog(QStringLiteral("one"));
    ZuCmtrConverter::WriteToLog(std::vector<QString>{"two", "Три"});
    EXPECT_EQ(ReadBytes(directory.Path("log.txt")), "one\ntwo\nТри\n");
}

TEST(ConverterStatics, FloatsAreComparedInTheirOwnWidth)
{
    EXPECT_TRUE(ZuCmtrConverter::IsFloatEqual(0.0F, 0x1p-24F));
    EXPECT_FALSE(ZuCmtrConverter::IsFloatEqual(0.0, 0x1p-24));
    EXPECT_TRUE(ZuCmtrConverter::IsFloatEqual(0.0, 0x1p-53));
}

TEST(ConverterStatics, SoftwareRevisionNamesTheProgram)
{
    EXPECT_EQ(ZuCmtrConverter::SoftwareRevision, "VELTORINE(ZuComtradeConverter)");
}

TEST_F(Converter, SecondLoadOfTheDefaultsIsRefusedWithoutAText)
{
    ASSERT_TRUE(converter.LoadFromIniDefault(ini, "Defaults"));
    const ZuCmtrDevParamDefault* first = converter.DefaultParam;
    converter.LastError = "before";
    EXPECT_FALSE(converter.LoadFromIniDefault(ini, "Defaults"));
    EXPECT_EQ(converter.LastError, "before");
    EXPECT_EQ(converter.DefaultParam, first);
}

TEST_F(Converter, DefaultsThatFailStayInPlace)
{
    EXPECT_FALSE(converter.LoadFromIniDefault(ini, "Device"));
    EXPECT_EQ(converter.LastError, "Отсутствует необходимый параметр: Энергосистема");
    ASSERT_NE(converter.DefaultParam, nullptr);
    EXPECT_EQ(converter.DefaultParam->LastError, "Отсутствует необходимый параметр: Энергосистема");
    converter.LastError = "before";
    EXPECT_FALSE(converter.LoadFromIniDefault(ini, "Defaults"));
    EXPECT_EQ(converter.LastError, "before");
}

TEST_F(Converter, DeviceBeforeTheDefaultsIsRefused)
{
    unsigned int number = 99;
    EXPECT_FALSE(converter.LoadFromIni(ini, "Device", &number));
    EXPECT_EQ(number, 99U);
    EXPECT_TRUE(converter.m_DevParams.empty());
}

TEST_F(Converter, FailedDeviceTakesNoNumber)
{
    unsigned int number = 99;
    ASSERT_TRUE(converter.LoadFromIniDefault(ini, "Defaults"));
    EXPECT_TRUE(converter.LoadFromIni(ini, "Device", &number));
    EXPECT_EQ(number, 0U);
    number = 99;
    EXPECT_FALSE(converter.LoadFromIni(ini, "Bad", &number));
    EXPECT_EQ(number, 99U);
    EXPECT_TRUE(converter.LastError.isNull());
    EXPECT_TRUE(converter.LoadFromIni(ini, "Device", &number));
    EXPECT_EQ(number, 1U);
    EXPECT_EQ(converter.m_DevParams.size(), 2U);
}

TEST_F(Converter, DeviceWithABadDictionaryTakesNoNumber)
{
    ini = directory.Write("other.ini", DefaultsSection() + "[Device]\nnAnMax=x\n");
    unsigned int number = 99;
    ASSERT_TRUE(converter.LoadFromIniDefault(ini, "Defaults"));
    EXPECT_FALSE(converter.LoadFromIni(ini, "Device", &number));
    EXPECT_EQ(number, 99U);
    EXPECT_TRUE(converter.m_DevParams.empty());
}

TEST_F(Converter, LoadedDeviceHasItsDictionaryOrdered)
{
    ini = directory.Write("other.ini", DefaultsSection() + "[Device]\nnAnMax=2\n"
                                                           "A01=Q1:Ia,V_L=110 E_G=L S_G=CT\n"
                                                           "A02=Q2:Ia,V_L=220 E_G=L S_G=CT\n");
    unsigned int number = 99;
    ASSERT_TRUE(converter.LoadFromIniDefault(ini, "Defaults"));
    ASSERT_TRUE(converter.LoadFromIni(ini, "Device", &number));
    EXPECT_TRUE(converter.m_DevParams[0]->Resorter->Prepared);
    EXPECT_EQ(converter.m_DevParams[0]->Resorter->AnSorted, (std::vector<unsigned int>{1, 0}));
}

TEST_F(Converter, DeviceStartsFromTheDefaultsThatWereLoaded)
{
    ini = directory.Write("other.ini", DefaultsSection().replace("Объект=Object", "Объект=ПС 1") +
                                           "[Device]\nИсточник=РАС 2\n");
    unsigned int number = 99;
    ASSERT_TRUE(converter.LoadFromIniDefault(ini, "Defaults"));
    ASSERT_TRUE(converter.LoadFromIni(ini, "Device", &number));
    EXPECT_EQ(converter.m_DevParams[0]->Object, "ПС 1");
    EXPECT_EQ(converter.m_DevParams[0]->Source, "РАС 2");
    EXPECT_EQ(converter.DefaultParam->Source, "Source");
}

TEST_F(Converter, LoadingIsLoggedUnderAHeadLineEach)
{
    ZuCmtrConverter::LogFilePath = directory.Path("log.txt");
    unsigned int number = 99;
    ASSERT_TRUE(converter.LoadFromIniDefault(ini, "Defaults"));
    const int defaultLines = ReadLines(directory.Path("log.txt")).size();
    ASSERT_FALSE(converter.LoadFromIni(ini, "Bad", &number));
    const QStringList lines = ReadLines(directory.Path("log.txt"));
    EXPECT_EQ(lines.first(), ">Параметры по умолчанию для преобразования ZU в Comtrade");
    EXPECT_EQ(lines.at(1), "Энергосистема: PowerSystem ");
    EXPECT_EQ(lines.at(defaultLines), ">Bad");
    EXPECT_EQ(lines.last(), "Ошибка значения параметра: Время ожидания");
}

TEST_F(Converter, GettersOfABadNumberGiveNothingAndStoreOneText)
{
    QString text = "as it was";
    EXPECT_FALSE(converter.GetDevLastError(0, text));
    EXPECT_EQ(converter.LastError, BadNumber);
    converter.LastError = QString();
    EXPECT_FALSE(converter.PopDevMessage(0, text));
    EXPECT_EQ(converter.LastError, BadNumber);
    converter.LastError = QString();
    EXPECT_EQ(converter.GetDevMsgCount(0), 0U);
    EXPECT_EQ(converter.LastError, BadNumber);
    converter.LastError = QString();
    EXPECT_EQ(converter.GetDevWaitTime(0), 0U);
    EXPECT_EQ(converter.LastError, BadNumber);
    EXPECT_EQ(text, "as it was");
    EXPECT_TRUE(converter.Mutex.tryLock()); // left unlocked
    converter.Mutex.unlock();
}

TEST_F(Converter, PopOfABadNumberDoesNotWaitForTheMutex)
{
    QString text;
    converter.Mutex.lock();
    EXPECT_FALSE(converter.PopDevMessage(0, text));
    converter.Mutex.unlock();
    EXPECT_EQ(converter.LastError, BadNumber);
}

TEST(ConverterGetters, PopTakesTheOldestMessageAndLeavesTheTextOfAnEmptyQueueAlone)
{
    TestStation station;
    station.Device().LogMessages = {"one", "two"};
    QString text;
    EXPECT_EQ(station.Converter().GetDevMsgCount(0), 2U);
    EXPECT_TRUE(station.Converter().PopDevMessage(0, text));
    EXPECT_EQ(text, "one");
    EXPECT_TRUE(station.Converter().PopDevMessage(0, text));
    EXPECT_EQ(text, "two");
    EXPECT_FALSE(station.Converter().PopDevMessage(0, text));
    EXPECT_EQ(text, "two");
    EXPECT_TRUE(station.Converter().LastError.isNull());
}

TEST(ConverterGetters, LastErrorAndWaitTimeAreTheDevices)
{
    TestStation station("Время ожидания=2147483647");
    station.Device().LastError = "why";
    QString text;
    EXPECT_TRUE(station.Converter().GetDevLastError(0, text));
    EXPECT_EQ(text, "why");
    EXPECT_EQ(station.Converter().GetDevWaitTime(0), 2147483647U);
}
