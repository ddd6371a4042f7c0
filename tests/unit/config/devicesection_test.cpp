// A whole device section: order of the log, defaults, dependent keys, and what a device makes of it.
#include "base/codecs.h"
#include "devicesection.h"
#include "resorter/ResorterZuCmtrConv.h"

#include <gtest/gtest.h>

class DeviceSection : public testing::Test
{
protected:
    SectionLoader loader;
    ZuCmtrDevParamDefault param;
};

TEST_F(DeviceSection, LogsItsKeysInReadingOrder)
{
    ASSERT_TRUE(loader.LoadParam(param, SectionText::Whole(), false));
    const QStringList expected{"Энергосистема: ЭС ",
                               "Субъект: МЭС ",
                               "Объект: ПС ",
                               "Источник: РАС ",
                               "Версия ПО: 3.1 ",
                               "Версия аппаратной части: 1.7 ",
                               "Модель: MK7.11 ",
                               "Версия ZU: 2 (МК7.11) ",
                               "Удалять исходные: Да  ",
                               "Время ожидания: 500 мс ",
                               "Тип Comtrade CFF: Да (CFF)  ",
                               "Тип Comtrade BIN: Да (Binary)  ",
                               "Кодировка Comtrade UTF8: Да (UTF8)  ",
                               "Переименовать сигналы Comtrade: Да  ",
                               "Идентификатор Cim: 7f3a ",
                               "Номер шкафа: 12 ",
                               "Серийный номер: 0042 ",
                               "Доп.индексы для имен сигналов: Да  ",
                               "Тип Comtrade 1999: Да (Comtrade 1999)  "};
    EXPECT_EQ(loader.Log(), expected);
}

TEST_F(DeviceSection, WithoutKeysHasTheDefaultsAndTagsThem)
{
    ASSERT_TRUE(loader.LoadParam(param, SectionText(), true));
    const QString tag = QStringLiteral("[принято по умолчанию]");
    const QStringList expected{"Энергосистема: PowerSystem " + tag,
                               "Субъект: Subject " + tag,
                               "Объект: Object " + tag,
                               "Источник: Source " + tag,
                               "Версия ПО: 0.0 " + tag,
                               "Версия аппаратной части:  " + tag,
                               "Модель: MK7.06 " + tag,
                               "Версия ZU: 1 (МК7.06-МК7.08) " + tag,
                               "Удалять исходные: Нет  " + tag,
                               "Время ожидания: 60000 мс " + tag,
                               "Тип Comtrade CFF: Нет (cfg/dat ...)  " + tag,
                               "Тип Comtrade BIN: Нет (ASCII)  " + tag,
                               "Кодировка Comtrade UTF8: Нет (CP1251)  " + tag,
                               "Переименовать сигналы Comtrade: Да  " + tag,
                               "Доп.индексы для имен сигналов: Нет  " + tag,
                               "Тип Comtrade 1999: Нет (Comtrade 2013)  " + tag};
    EXPECT_EQ(loader.Log(), expected);
}

TEST_F(DeviceSection, OfDefaultsNeedsTheHardwareVersionButNotTheRevision)
{
    EXPECT_FALSE(loader.LoadParam(param, SectionText::Whole().Drop("Версия аппаратной части"), false));
    EXPECT_EQ(param.LastError, "Отсутствует необходимый параметр: Версия аппаратной части");
    EXPECT_TRUE(loader.LoadParam(param, SectionText::Other().Drop("Тип Comtrade 1999"), false));
    EXPECT_EQ(loader.LogLine("Тип Comtrade 1999"),
              "Тип Comtrade 1999: Нет (Comtrade 2013)  [принято по умолчанию]");
}

TEST_F(DeviceSection, EmptyTextIsAbsent)
{
    EXPECT_FALSE(loader.LoadParam(param, SectionText::Whole().Set("Модель", ""), false));
    EXPECT_EQ(param.LastError, "Отсутствует необходимый параметр: Модель");
    EXPECT_FALSE(loader.LoadParam(param, SectionText::Whole().Set("Модель", " ; note"), false));
    EXPECT_EQ(param.LastError, "Отсутствует необходимый параметр: Модель");
}

TEST_F(DeviceSection, MinusOneIsAbsent)
{
    EXPECT_FALSE(loader.LoadParam(param, SectionText::Whole().Set("Время ожидания", "-1"), false));
    EXPECT_EQ(param.LastError, "Отсутствует необходимый параметр: Время ожидания");
    EXPECT_TRUE(loader.LoadParam(param, SectionText::Whole().Set("Время ожидания", "-1"), true));
    EXPECT_EQ(loader.LogLine("Время ожидания"), "Время ожидания: 60000 мс [принято по умолчанию]");
    EXPECT_TRUE(param.Comtrade1999);
    EXPECT_TRUE(loader.LoadParam(param, SectionText::Other().Set("Тип Comtrade 1999", "-1"), false));
    EXPECT_EQ(loader.LogLine("Тип Comtrade 1999"),
              "Тип Comtrade 1999: Да (Comtrade 1999)  [принято по умолчанию]");
}

TEST_F(DeviceSection, FurtherIndexesAreNotAskedForWithoutRenaming)
{
    SectionText section = SectionText::Whole();
    section.Set("Переименовать сигналы Comtrade", "0").Set("Доп.индексы для имен сигналов", "7");
    EXPECT_TRUE(loader.LoadParam(param, section, false));
    EXPECT_FALSE(param.AdditionalIndexes);
    EXPECT_EQ(loader.LogLine("Доп.индексы для имен сигналов"), QString());
    EXPECT_EQ(loader.Log().size(), 18);
}

TEST_F(DeviceSection, DefaultedCabinetNumberIsTaggedOnlyBesideACimIdentifier)
{
    param.CabinetNumber = QStringLiteral("5");
    SectionText section = SectionText::Whole().Drop("Номер шкафа");
    ASSERT_TRUE(loader.LoadParam(param, section, true));
    EXPECT_EQ(loader.LogLine("Номер шкафа"), "Номер шкафа: 5 [принято по умолчанию]");
    param.CimId = QString();
    ASSERT_TRUE(loader.LoadParam(param, section.Drop("Идентификатор Cim"), true));
    EXPECT_EQ(loader.LogLine("Номер шкафа"), "Номер шкафа: 5 ");
    EXPECT_EQ(loader.LogLine("Идентификатор Cim"), QString());
}

TEST_F(DeviceSection, EmptyOptionalTextsMakeNoLine)
{
    SectionText section = SectionText::Whole();
    section.Drop("Идентификатор Cim").Set("Номер шкафа", "").Set("Серийный номер", "");
    ASSERT_TRUE(loader.LoadParam(param, section, false));
    EXPECT_EQ(loader.Log().size(), 16);
    ASSERT_TRUE(loader.LoadParam(param, SectionText::Whole().Drop("Номер шкафа"), true));
    EXPECT_EQ(loader.LogLine("Номер шкафа"), QString());
}

TEST_F(DeviceSection, FailureLeavesTheFieldsBeforeItChanged)
{
    EXPECT_FALSE(loader.LoadParam(param, SectionText::Whole().Set("Тип Comtrade BIN", "2"), true));
    EXPECT_EQ(param.LastError, "Ошибка значения параметра: Тип Comtrade BIN");
    EXPECT_TRUE(param.ComtradeCff);
    EXPECT_FALSE(param.ComtradeBin);
    EXPECT_EQ(param.CimId, QString());
    EXPECT_EQ(loader.Log().size(), 12);
    EXPECT_EQ(loader.Log().last(), "Ошибка значения параметра: Тип Comtrade BIN");
}

TEST_F(DeviceSection, SuccessLeavesTheLastErrorAlone)
{
    param.LastError = QStringLiteral("earlier");
    EXPECT_TRUE(loader.LoadParam(param, SectionText::Whole(), false));
    EXPECT_EQ(param.LastError, "earlier");
}

TEST(DeviceIniFile, ThatCannotBeReadIsNamedInErrorAndLog)
{
    const TestDirectory directory;
    const QString path = directory.Path(QStringLiteral("none.ini"));
    zu::LogFilePath = directory.Path(QStringLiteral("log"));
    ZuCmtrDevParam device;
    EXPECT_FALSE(device.LoadFromIni(path, QStringLiteral("S")));
    EXPECT_EQ(device.LastError, QStringLiteral("Нет доступа к ini-файлу [%1]").arg(path));
    EXPECT_EQ(ReadLines(zu::LogFilePath), QStringList{device.LastError});
    EXPECT_EQ(device.Resorter, nullptr);
    zu::LogFilePath = QString();
}

class DeviceLoad : public testing::Test
{
protected:
    ~DeviceLoad() override { device.Clear(); }

    SectionLoader loader;
    ZuCmtrDevParam device;
};

TEST_F(DeviceLoad, TakesEveryDefaultForAnEmptySection)
{
    ASSERT_TRUE(loader.LoadDevice(device, SectionText()));
    EXPECT_EQ(loader.Log().size(), 16);
    EXPECT_TRUE(device.LogMessages.empty());
    EXPECT_EQ(device.WaitTime, 60000U);
    EXPECT_EQ(device.Resorter->Device, &device);
}

TEST_F(DeviceLoad, DropsCffBesideRevision1999WithOneMessage)
{
    ASSERT_TRUE(loader.LoadDevice(device, SectionText::Whole()));
    EXPECT_TRUE(device.Comtrade1999);
    EXPECT_FALSE(device.ComtradeCff);
    const QString message = QStringLiteral(
        "Значение параметра Тип Comtrade CFF=1 несовместимо с Comtrade 1999 и будет проигнорировано");
    EXPECT_EQ(device.LogMessages, std::vector<QString>{message});
    EXPECT_EQ(loader.LogLine("Тип Comtrade CFF"), "Тип Comtrade CFF: Да (CFF)  ");
    EXPECT_FALSE(loader.Log().contains(message));
}

TEST_F(DeviceLoad, KeepsCffOfRevision2013)
{
    ASSERT_TRUE(loader.LoadDevice(device, SectionText::Whole().Set("Тип Comtrade 1999", "0")));
    EXPECT_TRUE(device.ComtradeCff);
    EXPECT_TRUE(device.LogMessages.empty());
}

TEST_F(DeviceLoad, EmptiesTheQueueFirst)
{
    device.LogMessages = {QStringLiteral("old")};
    EXPECT_FALSE(loader.LoadDevice(device, SectionText().Set("Версия ZU", "9")));
    EXPECT_TRUE(device.LogMessages.empty());
    EXPECT_EQ(device.Resorter, nullptr);
    EXPECT_EQ(device.LastError, "Ошибка значения параметра: Версия ZU");
}

TEST_F(DeviceLoad, GivesTheResorterTheCodecOfTheSwitch)
{
    ASSERT_TRUE(loader.LoadDevice(device, SectionText()));
    EXPECT_EQ(device.Resorter->InfCodec, zu::CodecCP1251);
    ZuCmtrDevParam other;
    ASSERT_TRUE(loader.LoadDevice(other, SectionText().Set("Кодировка Comtrade UTF8", "1")));
    EXPECT_EQ(other.Resorter->InfCodec, zu::CodecUtf8);
    other.Clear();
}

TEST_F(DeviceLoad, FailedDictionaryFailsTheLoadAndKeepsTheResorter)
{
    EXPECT_FALSE(loader.LoadDevice(device, SectionText().Set("nAnMax", "abc").Set("Объект", "ПС")));
    ASSERT_NE(device.Resorter, nullptr);
    EXPECT_EQ(device.Resorter->InfCodec, zu::CodecCP1251);
    EXPECT_EQ(device.Resorter->PowerObject.StationName, "ПС");
    EXPECT_EQ(device.LastError, QString());
    EXPECT_EQ(loader.Log().last(), "Ошибка значения параметра: nAnMax");
}
