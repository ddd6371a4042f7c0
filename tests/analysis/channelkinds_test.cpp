#include "analysis/channelkinds.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace {

QString Shown(const analysis::ChannelUse& use)
{
    return QLatin1String(NameOf(use.kind)) + (use.active ? QStringLiteral(" 1") : QStringLiteral(" 0"));
}

comtrade::Configuration Named(const QString& name, bool normalState = false)
{
    comtrade::Configuration config;
    config.states.resize(1);
    config.states[0].number = 7;
    config.states[0].name = name + QStringLiteral(" ВЛ 110 кВ Южная");
    config.states[0].circuit = QStringLiteral("ВЛ 110 кВ Южная");
    config.states[0].normalState = normalState;
    return config;
}

QString Guessed(const char* name, bool normalState = false)
{
    const comtrade::Configuration config = Named(QString::fromUtf8(name), normalState);
    return Shown(analysis::ChannelKinds(config, {}).Of(0));
}

QString Known(const char* name, const char* group, const char* type)
{
    const comtrade::Configuration config = Named(QString::fromUtf8(name));
    const QByteArray information = QByteArray("[Russian_Comtrade_Edition Status_Channel_#1_#1_#1]\r\n"
                                              "Protection_Device_Group=") +
                                   group + "\r\nStatus_Signal_Type=" + type + "\r\nStatus_ID=W1:" + name +
                                   "\r\nStatus_Channel_Number=7\r\n";
    return Shown(analysis::ChannelKinds(config, information).Of(0));
}

TEST(ChannelKinds, AreThoseOfTheDictionary)
{
    EXPECT_EQ(Known("ДЗ 1 ст", "Relay_Protection", "Tripping"), QString("trip 1"));
    EXPECT_EQ(Known("ДЗ 1 ст", "Relay_Protection", "Starting"), QString("start 1"));
    EXPECT_EQ(Known("Q1", "Operation_Control_Automation", "Status_Breaker"), QString("breaker 1"));
    EXPECT_EQ(Known("РПО", "Operation_Control_Automation", "Status_Breaker"), QString("breaker 0"));
    EXPECT_EQ(Known("Выключатель отключен", "Operation_Control_Automation", "Status_Breaker"),
              QString("breaker 0"));
    EXPECT_EQ(Known("Откл", "Relay_Protection", "Output_Relay"), QString("other 1"));
    EXPECT_EQ(Known("Команда 5", "Emergency_Control_Automation", "Starting"), QString("other 1"));
}

TEST(ChannelKinds, ReclosingIsFoundByItsName)
{
    EXPECT_EQ(Known("АПВ", "Control_Automation", "Logic"), QString("reclosing 1"));
    EXPECT_EQ(Known("Пуск ТАПВ", "Relay_Protection", "Starting"), QString("reclosing 1"));
    EXPECT_EQ(Known("АПВ выведено", "Control_Automation", "Protection_Outage"), QString("other 1"));
    EXPECT_EQ(Known("АВР", "Control_Automation", "Logic"), QString("other 1"));
    EXPECT_EQ(Known("Откл с запретом АПВ", "Relay_Protection", "Tripping"), QString("trip 1"));
    EXPECT_EQ(Guessed("Пуск ОАПВ"), QString("reclosing 1"));
    EXPECT_EQ(Guessed("AR in progress"), QString("reclosing 1"));
}

TEST(ChannelKinds, AreGuessedFromRussianAndEnglishNames)
{
    const std::vector<std::pair<const char*, const char*>> names = {{"Пуск ДЗ", "start 1"},
                                                                    {"Откл. от ТЗНП", "trip 1"},
                                                                    {"РПВ", "breaker 1"},
                                                                    {"РПО", "breaker 0"},
                                                                    {"Выключатель включен", "breaker 1"},
                                                                    {"Положение выключателя", "breaker 1"},
                                                                    {"Опер. ток", "other 1"},
                                                                    {"АПВ выведено", "other 1"},
                                                                    {"Дверь", "other 1"},
                                                                    {"Z1 pickup", "start 1"},
                                                                    {"21 Start", "start 1"},
                                                                    {"Trip A", "trip 1"},
                                                                    {"CB open", "breaker 0"},
                                                                    {"Breaker closed", "breaker 1"},
                                                                    {"52b", "breaker 0"},
                                                                    {"52a", "breaker 1"},
                                                                    {"Reclose", "reclosing 1"},
                                                                    {"Reclosing blocked", "other 1"},
                                                                    {"Manual start", "other 1"},
                                                                    {"CB not ready", "other 1"}};
    for (const auto& [name, kind] : names)
        EXPECT_EQ(Guessed(name), QString(kind)) << name;
}

TEST(ChannelKinds, SignalWithNormalStateOneIsThereInStateZero)
{
    EXPECT_EQ(Guessed("Trip", true), QString("trip 0"));
    EXPECT_EQ(Guessed("52a", true), QString("breaker 1")); // of a contact the state is what counts
}

TEST(ChannelKinds, SectionOfAnotherSignalIsNotBelieved)
{
    const comtrade::Configuration config = Named(QStringLiteral("Пуск"));
    const analysis::ChannelKinds kinds(config, "[Russian_Comtrade_Edition Status_Channel_#1_#1_#1]\r\n"
                                               "Status_Signal_Type=Tripping\r\nStatus_ID=W1:Откл\r\n"
                                               "Status_Channel_Number=7\r\n");
    EXPECT_EQ(Shown(kinds.Of(0)), QString("start 1"));
    EXPECT_EQ(kinds.CircuitOf("W1"), QString());
}

} // namespace
