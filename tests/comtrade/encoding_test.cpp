// Encodings of texts, from names as they are in records.
#include "comtrade/text.h"
#include "examples.h"

#include <gtest/gtest.h>

#include <QTextCodec>

namespace {

// A configuration with these names.
QString TextWith(const QString& station, const QStringList& analog, const QString& unit, const QString& state)
{
    QString text =
        station + QStringLiteral(",REC,1999\r\n%1,%2A,1D\r\n").arg(analog.size() + 1).arg(analog.size());
    int number = 0;
    for (const QString& name : analog)
        text += QStringLiteral("%1,%2,,,%3,1,0,0,-32767,32767,1,1,P\r\n").arg(++number).arg(name, unit);
    return text + QStringLiteral("1,%1,,,0\r\n50\r\n1\r\n1000,1\r\n01/02/2003,00:00:00.000000\r\n"
                                 "01/02/2003,00:00:00.000000\r\nASCII\r\n1\r\n")
                      .arg(state);
}

struct Names
{
    const char* station;
    QStringList analog;
    const char* unit;
    const char* state;
};

const std::vector<Names>& Russian()
{
    static const std::vector<Names> names{
        {"ПС", {"Ia"}, "A", "Trip"},
        {"ПС 110 кВ Восточная", {"Ток ф.А", "Ток ф.В", "Ток ф.С"}, "А", "Отключение"},
        {"Station", {"Iа", "Iв", "Iс"}, "А", "Start"},
        {"Station", {"IA", "IB"}, "кВ", "Start"},
        {"СЕВЕРНАЯ", {"ВЛ ЮЖНАЯ IA"}, "A", "РПВ"},
        {"Северная", {"Ia"}, "A", "Trip"},
        {"Юг", {"Ia"}, "A", "Trip"},
        {"Ёлкино", {"UA 1СШ", "UB 1СШ"}, "В", "УРОВ"},
        {"Подстанция №5 «Заря»", {"Напряжение 3U0 ВЛ-110 Щёлково", "Частота"}, "Гц", "Пуск осциллографа"},
        {"ЛЭП-220 Яйва — Соликамск", {"Iф.А", "3I0"}, "А", "Сраб. 1 ст. ТЗНП"},
        {"Блок 3", {"Ток возбуждения"}, "кА", "Вкл. АГП"}};
    return names;
}

const std::vector<Names>& Chinese()
{
    static const std::vector<Names> names{
        {"变电站", {"Ia"}, "A", "Trip"},
        {"220kV城东变电站", {"A相电流", "B相电流", "C相电流"}, "A", "保护跳闸"},
        {"Station", {"电压"}, "kV", "启动"},
        {"Station", {"Ia"}, "A", "跳闸"},
        {"主变高压侧", {"零序电流", "母线电压Ua"}, "V", "断路器合位"}};
    return names;
}

const std::vector<Names>& Western()
{
    static const std::vector<Names> names{{"Station", {"Überstrom"}, "A", "Auslösung"},
                                          {"Générateur", {"Ia"}, "A", "Déclenchement"},
                                          {"Subestação Três Marias", {"Tensão A"}, "kV", "Disparo"},
                                          {"Västerås", {"Ström L1"}, "A", "Utlösning"},
                                          {"Estación Peñas", {"Tensión A"}, "kV", "Disparo"}};
    return names;
}

QByteArray Encoded(const QString& text, const char* codec)
{
    return QTextCodec::codecForName(codec)->fromUnicode(text);
}

void ExpectFound(const std::vector<Names>& all, const char* name, const char* codec)
{
    for (const Names& names : all) {
        const QString text = TextWith(names.station, names.analog, names.unit, names.state);
        if (!QTextCodec::codecForName(codec)->canEncode(text))
            continue;
        const QByteArray bytes = Encoded(text, codec);
        EXPECT_EQ(comtrade::EncodingOf(bytes), name) << names.station;
        EXPECT_EQ(comtrade::DecodedText(bytes), text) << name;
    }
}

} // namespace

TEST(ComtradeEncoding, OfRussianNamesIsFound)
{
    ExpectFound(Russian(), "CP1251", "windows-1251");
    ExpectFound(Russian(), "CP866", "IBM866");
    ExpectFound(Russian(), "KOI8-R", "KOI8-R");
    ExpectFound(Russian(), "UTF-8", "UTF-8");
}

TEST(ComtradeEncoding, OfChineseNamesIsFound)
{
    ExpectFound(Chinese(), "GBK", "GBK");
    ExpectFound(Chinese(), "UTF-8", "UTF-8");
}

TEST(ComtradeEncoding, OfWesternNamesIsFound)
{
    ExpectFound(Western(), "Latin-1", "ISO-8859-1");
}
