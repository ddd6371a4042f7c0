// Which way a start comment goes: copied as it is, cut, or taken apart by its kind.
#include "support/readyrecording.h"

#include <gtest/gtest.h>

namespace {

const QByteArray KnownQ1("nAnMax=1\n"
                         "A01=Q1:Ia,V_L=110 E_G=L S_G=CT\n"
                         "nBayMax=1\n"
                         "BAY01=Q1,Линия 1,W1\n");

// A recording with the channels Q1:Ia, Q2:Ia (not of a known equipment) and Ia.
recorderfile::Recording WithComment(const QString& comment)
{
    recorderfile::Recording recording;
    recording.comment = comment;
    recording.Add(recorderfile::AnalogChannel{"Q1:Ia", "A", {1, 2}})
        .Add(recorderfile::AnalogChannel{"Q2:Ia", "A", {1, 2}})
        .Add(recorderfile::AnalogChannel{"Ia", "A", {1, 2}});
    return recording;
}

struct Road
{
    const char* name;
    const char* comment;
    const char* condition; // null: stays a null string
    const char* circuit;
    const char* setting;
};

void PrintTo(const Road& road, std::ostream* out)
{
    *out << road.comment;
}

class StartCommentRoad : public testing::TestWithParam<Road>
{};

constexpr char Two[] = "Порог срабатывания - 2.000 A, порог возврата - 2.000 A";
constexpr char Untold[] = "Порог срабатывания - 2 Гц, порог возврата -  Гц";
constexpr char Frequency[] = "Порог срабатывания - 49.5 Гц, порог возврата - 49.5 Гц";
constexpr char Harmonic[] = "Номер гармоники 5, порог срабатывания - 2.000 A";

} // namespace

TEST_P(StartCommentRoad, GivesConditionCircuitAndSetting)
{
    TestStation station(KnownQ1);
    ReadyRecording recording(station, WithComment(QString::fromUtf8(GetParam().comment)));
    const ZuFileFormat& file = recording.First();
    EXPECT_EQ(file.StartCondition, QString::fromUtf8(GetParam().condition));
    EXPECT_EQ(file.StartCondition.isNull(), GetParam().condition == nullptr);
    EXPECT_EQ(file.StartCircuit, QString::fromUtf8(GetParam().circuit));
    EXPECT_EQ(file.StartSetting, QString::fromUtf8(GetParam().setting));
    EXPECT_FALSE(file.StartCircuit.isNull());
    EXPECT_FALSE(file.StartSetting.isNull());
}

INSTANTIATE_TEST_SUITE_P(
    Copied, StartCommentRoad,
    testing::Values(Road{"EmptyComment", "", "", "", ""},
                    Road{"AnotherBeginning", "Внешний пуск, (GPS) 'x'", "Внешний пуск, (GPS) 'x'", "", ""},
                    Road{"SmallLetter", "пуск ДЗ (Q1:Ia,2,t) y", "пуск ДЗ (Q1:Ia,2,t) y", "", ""},
                    Road{"ShortWord", "Пус", "Пус", "", ""},
                    Road{"BlankAhead", " Пуск xyz, 12", " Пуск xyz, 12", "", ""},
                    Road{"NoItem", "Пуск ДЗ () 'y', z", "Пуск ДЗ () 'y', z", "", ""},
                    Road{"OneItem", "Пуск ДЗ (Q1:Ia) y", "Пуск ДЗ (Q1:Ia) y", "", ""},
                    Road{"EmptyItemEndsTheList", "Пуск ДЗ (Q1:Ia,,2,1.5) y", "Пуск ДЗ (Q1:Ia,,2,1.5) y", "",
                         ""},
                    Road{"SixItems", "Пуск ДЗ (Q1:Ia,2,3,4,5,6) y", "Пуск ДЗ (Q1:Ia,2,3,4,5,6) y", "", ""},
                    Road{"NoSuchChannel", "Пуск ДЗ (Q1:Ib,2,t) y, 'z'", "Пуск ДЗ (Q1:Ib,2,t) y, 'z'", "", ""},
                    Road{"NoSuchGroup", "Пуск ПП (Q1:U,2,t) y", "Пуск ПП (Q1:U,2,t) y", "", ""},
                    Road{"GroupNamedByItsPhase", "Пуск ПП (Q1:Ia,2,t) y", "Пуск ПП (Q1:Ia,2,t) y", "", ""},
                    Road{"NoSuchFrequencyChannel", "Пуск Ч (Q1:F,2,t) y", "Пуск Ч (Q1:F,2,t) y", "", ""},
                    Road{"NoSuchHarmonicChannel", "Пуск Г (Q1:F,5,2,t) y", "Пуск Г (Q1:F,5,2,t) y", "", ""},
                    Road{"NoSuchChannelOfUnknownKind", "Пуск ЖЖ (Q1:F,2) y", "Пуск ЖЖ (Q1:F,2) y", "", ""}),
    [](const auto& road) { return std::string(road.param.name); });

INSTANTIATE_TEST_SUITE_P(Cut, StartCommentRoad,
                         testing::Values(Road{"AtTheComma", "Пуск xyz, 12", "Пуск xyz", "", ""},
                                         Road{"NotWithoutComma", "Пуск xyz 12", "Пуск xyz 12", "", ""},
                                         Road{"AtTheFirstComma", "Пуск xyz,1,2", "Пуск xyz", "", ""},
                                         Road{"OpenOnly", "Пуск ДЗ (Q1:Ia,2", "Пуск ДЗ (Q1:Ia", "", ""},
                                         Road{"CloseOnly", "Пуск ДЗ Q1:Ia) 2,3", "Пуск ДЗ Q1:Ia) 2", "", ""},
                                         Road{"CloseBeforeOpen", "Пуск ) ДЗ (Q1:Ia,2,t), z",
                                              "Пуск ) ДЗ (Q1:Ia", "", ""},
                                         Road{"CleanedFirst", "Пуск 'x'(GPS)y, 12", "Пуск xy", "", ""},
                                         Road{"ApostropheBeforeTheWord", "'Пуск' xyz", "Пуск xyz", "", ""},
                                         Road{"GpsBeforeTheWord", "(GPS)Пуск xyz", "Пуск xyz", "", ""}),
                         [](const auto& road) { return std::string(road.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Kinds, StartCommentRoad,
    testing::Values(
        Road{"SingleChannel", "Пуск ДЗ (Q1:Ia,2,t) y", "Пуск ДЗ Q1:Ia y", "Q1", Two},
        Road{"GroupPP", "Пуск ПП (Q1:I,2,t) y", "Пуск ПП Q1:I y", "Q1", Two},
        Road{"GroupOP", "Пуск ОП (Q1:I,2,t) y", "Пуск ОП Q1:I y", "Q1", Two},
        Road{"GroupNP", "Пуск НП (Q1:I,2,t) y", "Пуск НП Q1:I y", "Q1", Two},
        Road{"UnknownEquipment", "Пуск ДЗ (Q2:Ia,2,t) y", "Пуск ДЗ Q2:Ia y", "", Two},
        Road{"RawChannelName", "Пуск ДЗ (Ia,2,t) y", "Пуск ДЗ Ia y", "", Two},
        Road{"RawGroupName", "Пуск ПП (I,2,t) y", "Пуск ПП I y", "", Two},
        Road{"Discrete", "Пуск ДП (a,b) Q1:x", "Пуск по изменению ДС Q1:x", "Q1", ""},
        Road{"DiscreteOfUnknown", "Пуск ДП (a,b) Q2:x, z", "Пуск по изменению ДС Q2:x", "", ""},
        Road{"DiscreteWithoutTail", "Пуск ДП (a,b)", "Пуск по изменению ДС ", "", ""},
        Road{"DiscreteOfThree", "Пуск ДП (Q1:a,b,c) Q2:x", nullptr, "Q1", ""},
        Road{"DiscreteOfFour", "Пуск ДП (Q1:a,b,c,d) Q2:x", nullptr, "Q1", ""},
        Road{"DiscreteOfFive", "Пуск ДП (Q1:a,2,c,d,e) 'x'", "Пуск ДП (Q1:a,2,c,d,e) x", "Q1", Untold},
        Road{"FrequencyStart", "Пуск Ч (Q1:Ia,49.5,t) y, z", "Пуск по частоте Q1:Ia y", "Q1", Frequency},
        Road{"HarmonicStart", "Пуск 'Г' (Q1:Ia,5,2,t) y, z", "Пуск Г (Q1:Ia,5,2,t) y, z", "Q1", Harmonic},
        Road{"HarmonicOfFive", "Пуск Г (Q1:Ia,5,2,t,u) y", "Пуск Г (Q1:Ia,5,2,t,u) y", "Q1", Harmonic},
        Road{"HarmonicOfThree", "Пуск Г (Q1:Ia,5,2) y", nullptr, "Q1", ""},
        Road{"SingleOfFive", "Пуск 'ДЗ' (Q1:Ia,2,c,d,e) x, z", "Пуск ДЗ (Q1:Ia,2,c,d,e) x, z", "Q1", Untold},
        Road{"GroupOfFive", "Пуск ОП (Q1:I,2,c,d,e) x", "Пуск ОП (Q1:I,2,c,d,e) x", "Q1", Untold},
        Road{"UnknownOfFive", "Пуск ЖЖ (Q1:Ia,2,c,d,e) x", "Пуск ЖЖ (Q1:Ia,2,c,d,e) x", "Q1", Untold},
        Road{"UnknownOfThree", "Пуск ЖЖ (Q1:Ia,2,c) x", nullptr, "Q1", ""},
        Road{"SmallKindIsUnknown", "Пуск дз (Q1:Ia,2,c) x", nullptr, "Q1", ""},
        Road{"SmallGroupKindIsUnknown", "Пуск пп (Q1:I,2,c) x", "Пуск пп (Q1:I,2,c) x", "", ""}),
    [](const auto& road) { return std::string(road.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Shapes, StartCommentRoad,
    testing::Values(
        Road{"NoBlankBeforeOpen", "Пуск ДЗ(Q1:Ia,2,t) y", "Пуск ДЗ Q1:Ia y", "Q1", Two},
        Road{"SeveralBlanksBeforeOpen", "Пуск ДЗ   (Q1:Ia,2,t) y", "Пуск ДЗ Q1:Ia y", "Q1", Two},
        Road{"FreeTextBeforeTheKind", "Пуск по току ДЗ (Q1:Ia,2,t) y", "Пуск ДЗ Q1:Ia y", "Q1", Two},
        Road{"FifthCharacterIsKept", "Пуск_а ДЗ (Q1:Ia,2,t) y", "Пуск_ДЗ Q1:Ia y", "Q1", Two},
        // With no blank the kind begins at the second character, here "ускДЗ".
        Road{"NoBlankAtAll", "ПускДЗ(Q1:Ia,2,t)y", nullptr, "Q1", ""},
        Road{"InsideIsTrimmed", "Пуск ДЗ (  Q1:Ia,2,t  ) y", "Пуск ДЗ Q1:Ia y", "Q1", Two},
        Road{"ItemsAreNotTrimmed", "Пуск ДЗ (Q1 : Ia ,2,t) y", "Пуск ДЗ Q1 : Ia  y", "Q1", Two},
        Road{"TailIsTrimmedBeforeTheCut", "Пуск ДЗ (Q1:Ia,2,t)  y , z", "Пуск ДЗ Q1:Ia y ", "Q1", Two},
        Road{"TailIsCutAtItsFirstComma", "Пуск ДЗ (Q1:Ia,2,t) y,z,w", "Пуск ДЗ Q1:Ia y", "Q1", Two},
        Road{"NoTail", "Пуск ДЗ (Q1:Ia,2,t)", "Пуск ДЗ Q1:Ia ", "Q1", Two},
        Road{"FirstOfTwoClosings", "Пуск ДЗ (Q1:Ia,2,t) y) w", "Пуск ДЗ Q1:Ia y) w", "Q1", Two},
        Road{"FirstOfTwoOpenings", "Пуск ДЗ (Q1:Ia,2,(t) y", "Пуск ДЗ Q1:Ia y", "Q1", Two},
        Road{"TwoColonsNameNoEquipment", "Пуск ДЗ (Q1:Ia,2,t:u) y", "Пуск ДЗ Q1:Ia y", "", Two},
        Road{"GpsAndApostrophes", "Пуск (GPS)'ДЗ' (Q1:Ia,2,t) y", "Пуск ДЗ Q1:Ia y", "Q1", Two},
        Road{"SmallGpsIsAnItem", "Пуск (gps) y", "Пуск (gps) y", "", ""}),
    [](const auto& road) { return std::string(road.param.name); });

TEST(StartCommentSignal, IsTheDisplayTextOfTheEquipmentsBay)
{
    TestStation station(KnownQ1);
    ReadyRecording byChannel(station, WithComment("Пуск ДЗ (Q1:Ia,2,t) y"));
    EXPECT_EQ(byChannel.First().StartSignal, "Линия 1");
    ReadyRecording byTail(station, WithComment("Пуск ДП (a,b) Q1:x"));
    EXPECT_EQ(byTail.First().StartSignal, "Линия 1");
}

TEST(StartCommentSignal, StaysNullWithoutAKnownEquipment)
{
    TestStation station(KnownQ1);
    for (const char* comment : {"Пуск ДЗ (Q2:Ia,2,t) y", "Внешний пуск", "Пуск xyz", "Пуск ДП (Q1:a,b) x"}) {
        ReadyRecording recording(station, WithComment(QString::fromUtf8(comment)));
        EXPECT_TRUE(recording.First().StartSignal.isNull()) << comment;
    }
}
