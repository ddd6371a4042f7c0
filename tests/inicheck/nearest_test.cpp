// The known word that the user meant.
#include "inicheck/nearest.h"

#include <gtest/gtest.h>

using inicheck::Nearest;

namespace {

const QStringList Known = {"Объект", "Источник", "Тип Comtrade CFF", "Тип Comtrade BIN", "nAnMax"};

}

TEST(Nearest, TakesTheFewestChangedLetters)
{
    EXPECT_EQ(Nearest("Обьект", Known), "Объект");
    EXPECT_EQ(Nearest("Тип Comtrade  BiN", Known), "Тип Comtrade BIN");
    EXPECT_EQ(Nearest("nanmax", Known), "nAnMax");
    EXPECT_EQ(Nearest("Источники", Known), "Источник");
}

TEST(Nearest, GivesNothingForAStranger)
{
    EXPECT_EQ(Nearest("Оператор", Known), QString());
    EXPECT_EQ(Nearest(QString(), Known), QString());
    EXPECT_EQ(Nearest("x", Known), QString());
    EXPECT_EQ(Nearest(QString(1000000, 'x'), Known), QString());
}
