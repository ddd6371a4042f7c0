// Two devices of one converter do not affect each other.
#include "support/recordings.h"

#include <gtest/gtest.h>

namespace {

class TwoDevices : public testing::Test
{
protected:
    TwoDevices() : station("[Other]\nОбъект=Другой\nТип Comtrade BIN=1\nТип Comtrade 1999=1")
    {
        unsigned int number = 0;
        EXPECT_TRUE(station.Converter().LoadFromIni(station.Directory().Path("ZuDrv.ini"), "Other", &number));
        EXPECT_EQ(number, 1U);
    }

    bool Convert(const QString& name, unsigned int device)
    {
        return station.Converter().ConvertToComtrade(station.Directory().Path(name),
                                                     station.Directory().Path("out"), device);
    }

    const ZuCmtrDevParam& Device(size_t number) { return *station.Converter().m_DevParams.at(number); }

    TestStation station;
};

QString OtherName()
{
    return OutName().replace("Object", "Другой");
}

} // namespace

TEST_F(TwoDevices, EachWritesItsOwnFiles)
{
    station.Directory().Write("rec.ZU", SmallFile());
    EXPECT_TRUE(Convert("rec.ZU", 0));
    EXPECT_TRUE(Convert("rec.ZU", 1));
    EXPECT_EQ(station.Directory().Names("out"),
              OutNames({".cfg", ".dat", ".hdr", ".inf"}) +
                  QStringList({OtherName() + ".cfg", OtherName() + ".dat"}));
    EXPECT_EQ(Notes(Device(0)), QStringList{SuccessNote()});
    EXPECT_EQ(Notes(Device(1)),
              QStringList{"Преобразование в Comtrade выполнено успешно, файл " + OtherName()});
}

TEST_F(TwoDevices, ResultsDoNotDependOnTheOther)
{
    TestStation alone;
    ASSERT_TRUE(alone.Convert(SmallFile()));
    station.Directory().Write("rec.ZU", SmallFile());
    station.Directory().Write("long.ZU", SmallFile(9));
    station.Directory().Write("long.Z01", SmallFile(9));
    EXPECT_TRUE(Convert("long.ZU", 1));
    EXPECT_TRUE(Convert("rec.ZU", 0));
    EXPECT_TRUE(Convert("long.ZU", 1));
    for (const char* extension : {"cfg", "dat", "hdr", "inf"})
        EXPECT_EQ(ReadBytes(station.Directory().Path(OutFile(QString(".") + extension))),
                  alone.Output(extension))
            << extension;
    EXPECT_EQ(Device(0).TotalSamples, 24);
    EXPECT_EQ(Device(1).TotalSamples, 48);
}

TEST_F(TwoDevices, FailureOfOneLeavesErrorAndNotesOfTheOtherAlone)
{
    station.Directory().Write("rec.ZU", SmallFile());
    EXPECT_TRUE(Convert("rec.ZU", 0));
    EXPECT_FALSE(Convert("missing.ZU", 1));
    EXPECT_EQ(Notes(Device(0)), QStringList{SuccessNote()});
    EXPECT_TRUE(Device(0).LastError.isNull());
    EXPECT_TRUE(Device(1).LogMessages.empty());
    EXPECT_EQ(Device(1).LastError, "Файл не существует [" + station.Directory().Path("missing.ZU") + "]");
    EXPECT_TRUE(Convert("rec.ZU", 0));
    EXPECT_FALSE(Device(1).LastError.isNull());
}
