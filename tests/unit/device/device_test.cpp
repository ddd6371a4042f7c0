// The two device classes: built-in values, copying, message queue and release.
#include "device/zucmtrdevparam.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "support/files.h"

#include <gtest/gtest.h>

TEST(DeviceDefaults, BuiltInValues)
{
    const ZuCmtrDevParamDefault param;
    EXPECT_EQ(param.PowerSystem, "PowerSystem");
    EXPECT_EQ(param.Subject, "Subject");
    EXPECT_EQ(param.Object, "Object");
    EXPECT_EQ(param.Source, "Source");
    EXPECT_EQ(param.SoftwareVersion, "0.0");
    EXPECT_TRUE(param.HardwareVersion.isNull());
    EXPECT_EQ(param.Model, "MK7.06");
    EXPECT_EQ(param.ZuVersion, 1U);
    EXPECT_EQ(param.WaitTime, 60000U);
    EXPECT_EQ(param.TimeCode, "+3");
    EXPECT_TRUE(param.CimId.isNull());
    EXPECT_TRUE(param.CabinetNumber.isNull());
    EXPECT_TRUE(param.SerialNumber.isNull());
    EXPECT_TRUE(param.LastError.isNull());
}

TEST(DeviceDefaults, BuiltInSwitches)
{
    const ZuCmtrDevParamDefault param;
    EXPECT_FALSE(param.DeleteSource);
    EXPECT_FALSE(param.ComtradeBin);
    EXPECT_FALSE(param.ComtradeCff);
    EXPECT_FALSE(param.ComtradeUtf8);
    EXPECT_TRUE(param.RenameSignals);
    EXPECT_FALSE(param.AdditionalIndexes);
    EXPECT_FALSE(param.Comtrade1999);
}

TEST(DeviceDefaults, TextsAreCopiedButForTheLastError)
{
    ZuCmtrDevParamDefault defaults;
    QString ZuCmtrDevParamDefault::* const texts[] = {
        &ZuCmtrDevParamDefault::PowerSystem,     &ZuCmtrDevParamDefault::Subject,
        &ZuCmtrDevParamDefault::Object,          &ZuCmtrDevParamDefault::Source,
        &ZuCmtrDevParamDefault::SoftwareVersion, &ZuCmtrDevParamDefault::HardwareVersion,
        &ZuCmtrDevParamDefault::Model,           &ZuCmtrDevParamDefault::TimeCode,
        &ZuCmtrDevParamDefault::CimId,           &ZuCmtrDevParamDefault::CabinetNumber,
        &ZuCmtrDevParamDefault::SerialNumber};
    int number = 0;
    for (const auto text : texts)
        defaults.*text = QString::number(++number);
    defaults.LastError = "of the defaults";

    ZuCmtrDevParam device;
    device.LastError = "own";
    device.SetDefaultParam(&defaults);
    number = 0;
    for (const auto text : texts)
        EXPECT_EQ(device.*text, QString::number(++number));
    EXPECT_EQ(device.LastError, "own");
}

TEST(DeviceDefaults, NumbersAndSwitchesAreCopied)
{
    ZuCmtrDevParamDefault defaults;
    bool ZuCmtrDevParamDefault::* const switches[] = {
        &ZuCmtrDevParamDefault::DeleteSource,  &ZuCmtrDevParamDefault::ComtradeBin,
        &ZuCmtrDevParamDefault::ComtradeCff,   &ZuCmtrDevParamDefault::ComtradeUtf8,
        &ZuCmtrDevParamDefault::RenameSignals, &ZuCmtrDevParamDefault::AdditionalIndexes,
        &ZuCmtrDevParamDefault::Comtrade1999};
    for (const auto flag : switches)
        defaults.*flag = !(defaults.*flag);
    defaults.ZuVersion = 2;
    defaults.WaitTime = 5;

    ZuCmtrDevParam device;
    device.SetDefaultParam(&defaults);
    for (const auto flag : switches)
        EXPECT_EQ(device.*flag, defaults.*flag);
    EXPECT_EQ(device.ZuVersion, 2U);
    EXPECT_EQ(device.WaitTime, 5U);
}

TEST(Device, StartsWithoutWorkingState)
{
    const ZuCmtrDevParam device;
    EXPECT_EQ(device.Resorter, nullptr);
    EXPECT_TRUE(device.LogMessages.empty());
    for (const QString* text :
         {&device.TmpNameCfg, &device.TmpNameDat, &device.TmpNameHdr, &device.TmpNameInf, &device.TmpNameCff,
          &device.TmpPathCfg, &device.TmpPathDat, &device.TmpPathHdr, &device.TmpPathInf, &device.TmpPathCff})
        EXPECT_TRUE(text->isNull());
    for (const QFile* file :
         {&device.FileCfg, &device.FileDat, &device.FileHdr, &device.FileInf, &device.FileCff})
        EXPECT_FALSE(file->isOpen());
}

TEST(Device, PreResortFailsWithoutAResorter)
{
    ZuCmtrDevParam device;
    EXPECT_FALSE(device.PreResort());
}

TEST(Device, PreResortGivesTheResortersResult)
{
    ZuCmtrDevParam device;
    device.Resorter = new ResorterZuCmtrConv(&device);
    EXPECT_TRUE(device.PreResort());
    EXPECT_TRUE(device.Resorter->Prepared);
    device.Clear();
}

TEST(DeviceQueue, PopOnAnEmptyQueueGivesAnEmptyText)
{
    ZuCmtrDevParam device;
    EXPECT_EQ(device.PopLogMessages(), "");
    EXPECT_TRUE(device.LogMessages.empty());
}

TEST(DeviceQueue, FirstInIsFirstOut)
{
    ZuCmtrDevParam device;
    device.LogMessages = {"one", "two", "three"};
    EXPECT_EQ(device.PopLogMessages(), "one");
    EXPECT_EQ(device.LogMessages, (std::vector<QString>{"two", "three"}));
}

TEST(DeviceQueue, ClearLogEmptiesTheQueueAndTheLastError)
{
    ZuCmtrDevParam device;
    device.LogMessages = {"one"};
    device.LastError = "why";
    device.ClearLog();
    EXPECT_TRUE(device.LogMessages.empty());
    EXPECT_TRUE(device.LastError.isNull());
}

TEST(Device, ClearReleasesTheResorterAndClosesTheFilesWithWhatWasWritten)
{
    const TestDirectory directory;
    ZuCmtrDevParam device;
    device.Resorter = new ResorterZuCmtrConv(&device);
    QFile* const files[] = {&device.FileCfg, &device.FileDat, &device.FileHdr, &device.FileInf,
                            &device.FileCff};
    for (size_t i = 0; i < 5; ++i) {
        files[i]->setFileName(directory.Path(QString::number(i)));
        ASSERT_TRUE(files[i]->open(QIODevice::WriteOnly));
        files[i]->write("text");
    }
    device.Clear();
    EXPECT_EQ(device.Resorter, nullptr);
    for (size_t i = 0; i < 5; ++i) {
        EXPECT_FALSE(files[i]->isOpen());
        EXPECT_EQ(ReadBytes(directory.Path(QString::number(i))), "text");
    }
}
