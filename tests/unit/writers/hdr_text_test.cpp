// The whole text of a fault report.
#include "support/readyrecording.h"
#include "unit/writers/stoppingcodec.h"

#include <gtest/gtest.h>

#include <QTextCodec>

#include <stdexcept>

namespace {

using recorderfile::AnalogChannel;
using recorderfile::Recording;

// 15 periods of 48 samples. The code is `before` up to sample 527, which ends the 11th period, and then `at`.
AnalogChannel Stepped(const QString& name, const QString& unit, int16_t before, int16_t at)
{
    AnalogChannel channel{name, unit, std::vector<int16_t>(720, at)};
    std::fill_n(channel.samples.begin(), 528, before);
    return channel;
}

// The fault is at sample 624, so that the moments are the samples 576 and 96, all in whole periods.
Recording FaultOfQ1()
{
    Recording recording;
    recording.comment = "Пуск ДЗ (Q1:Ia,2,1.5,t) Q1 откл";
    recording.trigMicroseconds = 10000;
    AnalogChannel ia = Stepped("Q1:Ia", "А", 500, 2500);
    ia.primary = 600;
    ia.scale = 0.001F;
    return recording.Add(Stepped("Q1:Ua", "В", 20000, 3000))
        .Add(Stepped("Q1:Ub", "В", 20000, 21000))
        .Add(Stepped("Q1:Uc", "В", 20000, 24000))
        .Add(Stepped("Q1:3U0", "кВ", 0, 48))
        .Add(ia)
        .Add(Stepped("Q1:Ib", "A", 7, 8))
        .Add(Stepped("W1:Ic", "кА", 1, 2));
}

constexpr char Station[] = "nAnMax=1\n"
                           "A01=Q1:Ia,V_L=110 E_G=L S_G=CT\n"
                           "nBayMax=1\n"
                           "BAY01=Q1,Линия 1,W1\n";

// U1 and U2 are a third of the sum of constant codes. Ia is 0.6 A a code.
constexpr char Report[] = R"(Территориальная энергосистема:          PowerSystem
Субъект электроэнергетики:              Subject
Объект электроэнергетики:               Object
Источник:                               Source
Версия ПО:                              1.0
Наименование файла:                     240131,120000.0,+3t,Object,Source.Subject
Дата и время:                           31/01/2024,12:00:00.010000
Временной код:                          +3
----------------------------------------------------------
Информация о пуске:
----------------------------------------------------------
Наименование ЛЭП и/или оборудования №1: Линия 1
Условие пуска №1:                       Пуск ДЗ Линия 1:Ia Линия 1 откл
Дата и время пуска:                     31/01/2024,12:00:00.010000
Уставка пуска:                          Порог срабатывания - 1.200 кА, порог возврата - 0.900 кА
Действующие значения фазных напряжений и токов в момент до срабатывания по условию пуска:
Ua:  модуль = 20.00 кВ,    угол =  90 град.
Ub:  модуль = 20.00 кВ,    угол =  90 град.
Uc:  модуль = 20.00 кВ,    угол =  90 град.
3U0: модуль = 0.00 кВ,     угол =  90 град.
Ia:  модуль = 0.30 кА,     угол =  90 град.
Ib:  модуль = 7.00 кА,     угол =  90 град.
Ic:  модуль = 1.00 кА,     угол =  90 град.
3I0: модуль = -- кА,       угол = -- град.
Симметричные составляющие токов и напряжений в момент до срабатывания по условию пуска:
U1:  модуль = 20.00 кВ,    угол =  90 град.
U2:  модуль = 20.00 кВ,    угол =  90 град.
3U0: модуль = 60.00 кВ,    угол =  90 град.
I1:  модуль = 0.10 кА,     угол =  90 град.
I2:  модуль = 0.10 кА,     угол =  90 град.
3I0: модуль = 0.31 кА,     угол =  90 град.
Действующие значения фазных напряжений и токов в момент срабатывания по условию пуска:
Ua:  модуль = 3.00 кВ,     угол =  90 град.
Ub:  модуль = 21.00 кВ,    угол =  90 град.
Uc:  модуль = 24.00 кВ,    угол =  90 град.
3U0: модуль = 48.00 кВ,    угол =  90 град.
Ia:  модуль = 1.50 кА,     угол =  90 град.
Ib:  модуль = 8.00 кА,     угол =  90 град.
Ic:  модуль = 2.00 кА,     угол =  90 град.
3I0: модуль = -- кА,       угол = -- град.
Симметричные составляющие токов и напряжений в момент срабатывания по условию пуска:
U1:  модуль = 16.00 кВ,    угол =  90 град.
U2:  модуль = 16.00 кВ,    угол =  90 град.
3U0: модуль = 48.00 кВ,    угол =  90 град.
I1:  модуль = 0.50 кА,     угол =  90 град.
I2:  модуль = 0.50 кА,     угол =  90 град.
3I0: модуль = 1.51 кА,     угол =  90 град.
Экстремальные значения тока и напряжения:
макс_I = 1.50 кА
мин_I = 7.00 А
макс_U = 24.00 кВ
мин_U = 3.00 кВ
----------------------------------------------------------
)";

// What the report says about a start that names no circuit, from its line 12 on.
constexpr char ReportOfNothing[] = R"(Наименование ЛЭП и/или оборудования №1: 
Условие пуска №1:                       Внешний пуск
Дата и время пуска:                     31/01/2024,12:00:00.250000
Уставка пуска:                          
Действующие значения фазных напряжений и токов в момент до срабатывания по условию пуска:
Ua:  модуль = -- кВ,       угол = -- град.
Ub:  модуль = -- кВ,       угол = -- град.
Uc:  модуль = -- кВ,       угол = -- град.
3U0: модуль = -- кВ,       угол = -- град.
Ia:  модуль = -- кА,       угол = -- град.
Ib:  модуль = -- кА,       угол = -- град.
Ic:  модуль = -- кА,       угол = -- град.
3I0: модуль = -- кА,       угол = -- град.
Симметричные составляющие токов и напряжений в момент до срабатывания по условию пуска:
U1:  модуль = -- кВ,       угол = -- град.
U2:  модуль = -- кВ,       угол = -- град.
3U0: модуль = -- кВ,       угол = -- град.
I1:  модуль = -- кА,       угол = -- град.
I2:  модуль = -- кА,       угол = -- град.
3I0: модуль = -- кА,       угол = -- град.
Действующие значения фазных напряжений и токов в момент срабатывания по условию пуска:
Ua:  модуль = -- кВ,       угол = -- град.
Ub:  модуль = -- кВ,       угол = -- град.
Uc:  модуль = -- кВ,       угол = -- град.
3U0: модуль = -- кВ,       угол = -- град.
Ia:  модуль = -- кА,       угол = -- град.
Ib:  модуль = -- кА,       угол = -- град.
Ic:  модуль = -- кА,       угол = -- град.
3I0: модуль = -- кА,       угол = -- град.
Симметричные составляющие токов и напряжений в момент срабатывания по условию пуска:
U1:  модуль = -- кВ,       угол = -- град.
U2:  модуль = -- кВ,       угол = -- град.
3U0: модуль = -- кВ,       угол = -- град.
I1:  модуль = -- кА,       угол = -- град.
I2:  модуль = -- кА,       угол = -- град.
3I0: модуль = -- кА,       угол = -- град.
Экстремальные значения тока и напряжения:
макс_I = -- А
макс_I = -- А
макс_U = -- В
макс_U = -- В
----------------------------------------------------------
)";

Recording ExternalStart()
{
    Recording recording;
    recording.comment = "Внешний пуск";
    return recording.Add(Stepped("Q1:Ua", "В", 1, 2)).Add(Stepped("Q1:Ia", "А", 1, 2));
}

} // namespace

TEST(HdrText, InUtf8IsExact)
{
    TestStation station(QByteArray(Station) + "Кодировка Comtrade UTF8=1");
    ASSERT_TRUE(station.Convert(recorderfile::Encode(FaultOfQ1())));
    EXPECT_EQ(QString::fromUtf8(station.Output("hdr")), QString::fromUtf8(Report));
    EXPECT_EQ(station.Output("hdr"), QByteArray(Report));
    EXPECT_EQ(station.Output("hdr").count('\n'), 53);
}

TEST(HdrText, InCp1251IsExact)
{
    TestStation station(Station);
    ASSERT_TRUE(station.Convert(recorderfile::Encode(FaultOfQ1())));
    const QByteArray hdr = station.Output("hdr");
    EXPECT_EQ(hdr, QTextCodec::codecForName("CP1251")->fromUnicode(QString::fromUtf8(Report)));
    EXPECT_EQ(hdr.count('\xB9'), 2); // the number sign of lines 12 and 13
}

TEST(HdrText, OfAStartWithoutCircuitIsComplete)
{
    TestStation station("Кодировка Comtrade UTF8=1");
    ASSERT_TRUE(station.Convert(recorderfile::Encode(ExternalStart())));
    const QByteArray hdr = station.Output("hdr");
    EXPECT_EQ(hdr.count('\n'), 53);
    EXPECT_TRUE(
        hdr.endsWith(QByteArray("Информация о пуске:\n") + QByteArray(58, '-') + "\n" + ReportOfNothing));
}

TEST(HdrText, WithoutChannelsHasAllLines)
{
    TestStation station;
    ReadyRecording recording(station, Recording());
    EXPECT_EQ(recording.Hdr().count('\n'), 53);
}

TEST(HdrFile, IsClosedAtTheEnd)
{
    TestStation station;
    ReadyRecording recording(station, ExternalStart());
    recording.Hdr();
    EXPECT_FALSE(station.Device().FileHdr.isOpen());
}

TEST(HdrFile, ThatCannotBeOpenedFails)
{
    TestStation station;
    ReadyRecording recording(station, ExternalStart());
    station.Device().FileHdr.setFileName(station.Directory().Path("no/such/hdr"));
    EXPECT_FALSE(station.Converter().WriteHdr(recording.Files(), &station.Device()));
}

TEST(HdrFile, StoppedAtALineFailsAndStaysOpen)
{
    for (const int lines : {0, 1, 11, 12, 15, 24, 25, 31, 40, 46, 47, 48, 51, 52}) {
        TestStation station;
        ReadyRecording recording(station, ExternalStart());
        {
            const StoppedWriting stopped(lines);
            EXPECT_FALSE(station.Converter().WriteHdr(recording.Files(), &station.Device()));
        }
        EXPECT_TRUE(station.Device().FileHdr.isOpen());
        station.Device().FileHdr.close();
        EXPECT_EQ(ReadBytes(station.Directory().Path("hdr")).count('\n'), lines);
    }
}

TEST(HdrFile, WithoutSegmentsIsOutOfRange)
{
    TestStation station;
    const ReadyRecording recording(station, ExternalStart());
    std::vector<ZuFileFormat*> none;
    EXPECT_THROW(station.Converter().WriteHdr(&none, &station.Device()), std::out_of_range);
}
