// Eight devices convert at once on eight threads, with the same bytes as one after the other.
#include "service/zucmtrlib.h"
#include "support/device.h"
#include "support/stationfiles.h"

#include <gtest/gtest.h>

#include <QDir>

#include <thread>

namespace {

constexpr int Devices = 8;
constexpr int Recordings = 100;

// Device n has one of the output forms.
QByteArray DeviceSections()
{
    QByteArray sections;
    for (int device = 0; device < Devices; ++device) {
        const auto bit = [device](int index) { return QByteArray::number(device >> index & 1); };
        sections += "[Device" + QByteArray::number(device) + "]\nОбъект=Object" + QByteArray::number(device) +
                    "\nТип Comtrade CFF=" + bit(0) + "\nТип Comtrade BIN=" + bit(1) +
                    "\nКодировка Comtrade UTF8=" + bit(2) +
                    "\nТип Comtrade 1999=" + QByteArray(device == 6 ? "1" : "0") +
                    "\nnAnMax=1\nA01=ВЛ-110 Восточная:Ua,V_L=110 E_G=L S_G=VT\n";
    }
    return sections;
}

class Threads : public testing::Test
{
protected:
    void SetUp() override
    {
        const QString ini =
            directory.Write(QStringLiteral("ZuDrv.ini"), DefaultsSection() + DeviceSections());
        ASSERT_TRUE(ZuCmtrConverterInit());
        ASSERT_TRUE(ZuCmtrLoadFromIniDefault(ini, QStringLiteral("Defaults")));
        for (int device = 0; device < Devices; ++device) {
            unsigned int number = 0;
            ASSERT_TRUE(ZuCmtrLoadFromIni(ini, QStringLiteral("Device%1").arg(device), &number));
        }
        station::StationOptions options;
        options.analogChannels = 6;
        options.discreteChannels = 4;
        options.seconds = 0.1;
        for (const recorderfile::NamedFile& file : AllStationFiles(options))
            names.append(directory.Write(QStringLiteral("in/") + file.name, file.bytes));
    }

    void TearDown() override { ZuCmtrConverterExit(); }

    // The station's recordings over and over through one device, into a directory of its own.
    void ConvertAll(const QString& out, unsigned int device)
    {
        for (int i = 0; i < Recordings; ++i) {
            if (!ZuCmtrConvertToComtrade(names[i % names.size()], out, device))
                failures[device] += 1;
            while (ZuCmtrGetDevMsgCount(device) > 0)
                ZuCmtrPopDevMessage(device);
        }
    }

    QString Out(const QString& kind, int device) const
    {
        return directory.MakeDirectory(kind + QString::number(device));
    }

    TestDirectory directory;
    QStringList names;
    int failures[Devices] = {};
};

TEST_F(Threads, EightDevicesAtOnceGiveTheBytesOfOneAfterTheOther)
{
    for (int device = 0; device < Devices; ++device)
        ConvertAll(Out(QStringLiteral("one"), device), static_cast<unsigned int>(device));

    std::vector<std::thread> threads;
    for (int device = 0; device < Devices; ++device) {
        const QString out = Out(QStringLiteral("all"), device);
        threads.emplace_back([this, out, device] { ConvertAll(out, static_cast<unsigned int>(device)); });
    }
    for (std::thread& thread : threads)
        thread.join();

    for (int device = 0; device < Devices; ++device) {
        EXPECT_EQ(failures[device], 0) << device;
        const QString one = QStringLiteral("one%1").arg(device);
        const QString all = QStringLiteral("all%1").arg(device);
        ASSERT_EQ(directory.Names(one), directory.Names(all));
        EXPECT_FALSE(directory.Names(one).isEmpty());
        for (const QString& name : directory.Names(one)) {
            EXPECT_TRUE(ReadBytes(directory.Path(one + QLatin1Char('/') + name)) ==
                        ReadBytes(directory.Path(all + QLatin1Char('/') + name)))
                << device << ' ' << name;
        }
    }
}

} // namespace
