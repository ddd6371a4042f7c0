// Ini files that nobody wrote by hand.
#include "support/device.h"

#include <gtest/gtest.h>

namespace {

class HostileIni : public testing::Test
{
protected:
    // Loads defaults and device from this text; returns whether both loaded.
    bool Load(const QByteArray& text, const QString& group = QStringLiteral("Device"))
    {
        const QString ini = directory.Write(QStringLiteral("ZuDrv.ini"), text);
        ZuCmtrConverter converter;
        unsigned int number = 0;
        const bool loaded = converter.LoadFromIniDefault(ini, QStringLiteral("Defaults")) &&
                            converter.LoadFromIni(ini, group, &number);
        converter.Clear();
        return loaded;
    }

    TestDirectory directory;
};

TEST_F(HostileIni, AKeyAndASectionOfAMegabyteAreRead)
{
    const QByteArray mega(1 << 20, 'k');
    EXPECT_TRUE(Load(DefaultsSection() + "[" + mega + "]\nnAnMax=1\n" + mega + "=1\nA01=" + mega + ":Ia\n",
                     QString::fromLatin1(mega)));
}

TEST_F(HostileIni, ALastLineWithoutAnEndCounts)
{
    EXPECT_FALSE(Load(DefaultsSection() + "[Device]\nТип Comtrade BIN=7"));
    EXPECT_TRUE(Load(DefaultsSection() + "[Device]\nТип Comtrade BIN=1"));
}

TEST_F(HostileIni, NulsStayInTheTextsTheyStandIn)
{
    EXPECT_TRUE(Load(DefaultsSection() +
                     QByteArray("[Device]\nx\0y=1\nnAnMax=1\nA01=a\0b:Ia,V_L=110\0 E_G=L S_G=CT\n", 57)));
}

TEST_F(HostileIni, InvalidUtf8IsReplacedAndRead)
{
    EXPECT_TRUE(Load(DefaultsSection() + "[Device]\nОбъект=\xff\xfe\xc3\n\xc0\xaf=1\n"));
}

TEST_F(HostileIni, CarriageReturnsAloneMakeOneLine)
{
    EXPECT_FALSE(Load(DefaultsSection().replace('\n', '\r')));
}

TEST_F(HostileIni, AnEmptyFileFailsAtTheFirstKey)
{
    EXPECT_FALSE(Load(QByteArray()));
}

TEST_F(HostileIni, BillionsOfEntriesAreThoseThatAreThere)
{
    EXPECT_TRUE(Load(DefaultsSection() +
                     "[Device]\nnAnMax=4294967294\nnDiMax=4294967294\nnBayMax=4294967294\n"
                     "A4294967294=a:b\nA2147483647=a:c\nD-1=x:y\nBAY01=a,b\n"));
}

} // namespace
