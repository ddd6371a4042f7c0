// Which path a start comment takes: copied as it is, cut, or taken apart by its kind.
#include "support/readyrecording.h"

#include <gtest/gtest.h>

namespace {

const QByteArray KnownQ1("nAnMax=1\n"
                         "A01=Q1:Ia,V_L=110 E_G=L S_G=CT\n"
                         "nBayMax=1\n"
                         "BAY01=Q1,Линия 1,W1\n");

// A recording with the channels Q1:Ia, Q2:Ia (of unknown equipment) and Ia.
recorderfile::Recording WithComment(const QString& comment)
{
    recorderfile::Recording recording;
    recording.comment = comment;
    recording.Add(recorderfile::AnalogChannel{"Q1:Ia", "A", {1, 2}})
        .Add(recorderfile::AnalogChannel{"Q2:Ia", "A", {1, 2}})
        .Add(recorderfile::AnalogChannel{"Ia", "A", {1, 2}});
    return recording;
}

struct Path
{
    const char* name;
    const char* comment;
    const char* condition; // null: stays a null string
    const char* circuit;
    const char* setting;
};

void PrintTo(const Path& path, std::ostream* out)
{
    *out << path.comment;
}

class StartCommentPath : public testing::TestWithParam<Path>
{};

constexpr char Two[] = "Порог срабатывания - 2.000 A, порог возврата - 2.000 A";
constexpr char NotGiven[] = "Порог срабатывания - 2 Гц, порог возврата -  Гц";
constexpr char Frequency[] = "Порог срабатывания - 49.5 Гц, порог возврата - 49.5 Гц";
constexpr char Harmonic[] = "Номер гармоники 5, порог срабатывания - 2.000 A";

} // namespace

TEST_P(StartCommentPath, GivesConditionCircuitAndSetting)
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
    Copied, StartCommentPath,
    testing::Values(Path{"EmptyComment", "", "", "", ""},
                    Path{"AnotherBeginning", "Внешний пуск, (GPS) 'x'", "Внешний пуск, (GPS) 'x'", "", ""},
                    Path{"SmallLetter", "пуск ДЗ (Q1:Ia,2,t) y", "пуск ДЗ (Q1:Ia,2,t) y", "", ""},
                    Path{"ShortWord", "Пус", "Пус", "", ""},
                    Path{"BlankAhead", " Пуск xyz, 12", " Пуск xyz, 12", "", ""},
                    Path{"NoItem", "Пуск ДЗ () 'y', z", "Пуск ДЗ () 'y', z", "", ""},
                    Path{"OneItem", "Пуск ДЗ (Q1:Ia) y", "Пуск ДЗ (Q1:Ia) y", "", ""},
                    Path{"EmptyItemEndsTheList", "Пуск ДЗ (Q1:Ia,,2,1.5) y", "Пуск ДЗ (Q1:Ia,,2,1.5) y", "",
                         ""},
                    Path{"SixItems", "Пуск ДЗ (Q1:Ia,2,3,4,5,6) y", "Пуск ДЗ (Q1:Ia,2,3,4,5,6) y", "", ""},
                    Path{"NoSuchChannel", "Пуск ДЗ (Q1:Ib,2,t) y, 'z'", "Пуск ДЗ (Q1:Ib,2,t) y, 'z'", "", ""},
                    Path{"NoSuchGroup", "Пуск ПП (Q1:U,2,t) y", "Пуск ПП (Q1:U,2,t) y", "", ""},
                    Path{"GroupNamedByItsPhase", "Пуск ПП (Q1:Ia,2,t) y", "Пуск ПП (Q1:Ia,2,t) y", "", ""},
                    Path{"NoSuchFrequencyChannel", "Пуск Ч (Q1:F,2,t) y", "Пуск Ч (Q1:F,2,t) y", "", ""},
                    Path{"NoSuchHarmonicChannel", "Пуск Г (Q1:F,5,2,t) y", "Пуск Г (Q1:F,5,2,t) y", "", ""},
                    Path{"NoSuchChannelOfUnknownKind", "Пуск ЖЖ (Q1:F,2) y", "Пуск ЖЖ (Q1:F,2) y", "", ""}),
    [](const auto& path) { return std::string(path.param.name); });

INSTANTIATE_TEST_SUITE_P(Cut, StartCommentPath,
                         testing::Values(Path{"AtTheComma", "Пуск xyz, 12", "Пуск xyz", "", ""},
                                         Path{"NotWithoutComma", "Пуск xyz 12", "Пуск xyz 12", "", ""},
                                         Path{"AtTheFirstComma", "Пуск xyz,1,2", "Пуск xyz", "", ""},
                                         Path{"OpenOnly", "Пуск ДЗ (Q1:Ia,2", "Пуск ДЗ (Q1:Ia", "", ""},
                                         Path{"CloseOnly", "Пуск ДЗ Q1:Ia) 2,3", "Пуск ДЗ Q1:Ia) 2", "", ""},
                                         Path{"CloseBeforeOpen", "Пуск ) ДЗ (Q1:Ia,2,t), z",
                                              "Пуск ) ДЗ (Q1:Ia", "", ""},
                                         Path{"CleanedFirst", "Пуск 'x'(GPS)y, 12", "Пуск xy", "", ""},
                                         Path{"ApostropheBeforeTheWord", "'Пуск' xyz", "Пуск xyz", "", ""},
                                         Path{"GpsBeforeTheWord", "(GPS)Пуск xyz", "Пуск xyz", "", ""}),
                         [](const auto& path) { return std::string(path.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Kinds, StartCommentPath,
    testing::Values(
        Path{"SingleChannel", "Пуск ДЗ (Q1:Ia,2,t) y", "Пуск ДЗ Q1:Ia y", "Q1", Two},
        Path{"GroupPP", "Пуск ПП (Q1:I,2,t) y", "Пуск ПП Q1:I y", "Q1", Two},
        Path{"GroupOP", "Пуск ОП (Q1:I,2,t) y", "Пуск ОП Q1:I y", "Q1", Two},
        Path{"GroupNP", "Пуск НП (Q1:I,2,t) y", "Пуск НП Q1:I y", "Q1", Two},
        Path{"UnknownEquipment", "Пуск ДЗ (Q2:Ia,2,t) y", "Пуск ДЗ Q2:Ia y", "", Two},
        Path{"RawChannelName", "Пуск ДЗ (Ia,2,t) y", "Пуск ДЗ Ia y", "", Two},
        Path{"RawGroupName", "Пуск ПП (I,2,t) y", "Пуск ПП I y", "", Two},
        Path{"Discrete", "Пуск ДП (a,b) Q1:x", "Пуск по изменению ДС Q1:x", "Q1", ""},
        Path{"DiscreteOfUnknown", "Пуск ДП (a,b) Q2:x, z", "Пуск по изменению ДС Q2:x", "", ""},
        Path{"DiscreteWithoutTail", "Пуск ДП (a,b)", "Пуск по изменению ДС ", "", ""},
        Path{"DiscreteOfThree", "Пуск ДП (Q1:a,b,c) Q2:x", nullptr, "Q1", ""},
        Path{"DiscreteOfFour", "Пуск ДП (Q1:a,b,c,d) Q2:x", nullptr, "Q1", ""},
        Path{"DiscreteOfFive", "Пуск ДП (Q1:a,2,c,d,e) 'x'", "Пуск ДП (Q1:a,2,c,d,e) x", "Q1", NotGiven},
        Path{"FrequencyStart", "Пуск Ч (Q1:Ia,49.5,t) y, z", "Пуск по частоте Q1:Ia y", "Q1", Frequency},
        Path{"HarmonicStart", "Пуск 'Г' (Q1:Ia,5,2,t) y, z", "Пуск Г (Q1:Ia,5,2,t) y, z", "Q1", Harmonic},
        Path{"HarmonicOfFive", "Пуск Г (Q1:Ia,5,2,t,u) y", "Пуск Г (Q1:Ia,5,2,t,u) y", "Q1", Harmonic},
        Path{"HarmonicOfThree", "Пуск Г (Q1:Ia,5,2) y", nullptr, "Q1", ""},
        Path{"SingleOfFive", "Пуск 'ДЗ' (Q1:Ia,2,c,d,e) x, z", "Пуск ДЗ (Q1:Ia,2,c,d,e) x, z", "Q1",
             NotGiven},
        Path{"GroupOfFive", "Пуск ОП (Q1:I,2,c,d,e) x", "Пуск ОП (Q1:I,2,c,d,e) x", "Q1", NotGiven},
        Path{"UnknownOfFive", "Пуск ЖЖ (Q1:Ia,2,c,d,e) x", "Пуск ЖЖ (Q1:Ia,2,c,d,e) x", "Q1", NotGiven},
        Path{"UnknownOfThree", "Пуск ЖЖ (Q1:Ia,2,c) x", nullptr, "Q1", ""},
        Path{"SmallKindIsUnknown", "Пуск дз (Q1:Ia,2,c) x", nullptr, "Q1", ""},
        Path{"SmallGroupKindIsUnknown", "Пуск пп (Q1:I,2,c) x", "Пуск пп (Q1:I,2,c) x", "", ""}),
    [](const auto& path) { return std::string(path.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Shapes, StartCommentPath,
    testing::Values(
        Path{"NoBlankBeforeOpen", "Пуск ДЗ(Q1:Ia,2,t) y", "Пуск ДЗ Q1:Ia y", "Q1", Two},
        Path{"SeveralBlanksBeforeOpen", "Пуск ДЗ   (Q1:Ia,2,t) y", "Пуск ДЗ Q1:Ia y", "Q1", Two},
        Path{"FreeTextBeforeTheKind", "Пуск по току ДЗ (Q1:Ia,2,t) y", "Пуск ДЗ Q1:Ia y", "Q1", Two},
        Path{"FifthCharacterIsKept", "Пуск_а ДЗ (Q1:Ia,2,t) y", "Пуск_ДЗ Q1:Ia y", "Q1", Two},
        // Without a blank the kind starts at the second character, here "ускДЗ".
        Path{"NoBlankAtAll", "ПускДЗ(Q1:Ia,2,t)y", nullptr, "Q1", ""},
        Path{"InsideIsTrimmed", "Пуск ДЗ (  Q1:Ia,2,t  ) y", "Пуск ДЗ Q1:Ia y", "Q1", Two},
        Path{"ItemsAreNotTrimmed", "Пуск ДЗ (Q1 : Ia ,2,t) y", "Пуск ДЗ Q1 : Ia  y", "Q1", Two},
        Path{"TailIsTrimmedBeforeTheCut", "Пуск ДЗ (Q1:Ia,2,t)  y , z", "Пуск ДЗ Q1:Ia y ", "Q1", Two},
        Path{"TailIsCutAtItsFirstComma", "Пуск ДЗ (Q1:Ia,2,t) y,z,w", "Пуск ДЗ Q1:Ia y", "Q1", Two},
        Path{"NoTail", "Пуск ДЗ (Q1:Ia,2,t)", "Пуск ДЗ Q1:Ia ", "Q1", Two},
        Path{"FirstOfTwoClosings", "Пуск ДЗ (Q1:Ia,2,t) y) w", "Пуск ДЗ Q1:Ia y) w", "Q1", Two},
        Path{"FirstOfTwoOpenings", "Пуск ДЗ (Q1:Ia,2,(t) y", "Пуск ДЗ Q1:Ia y", "Q1", Two},
        Path{"TwoColonsNameNoEquipment", "Пуск ДЗ (Q1:Ia,2,t:u) y", "Пуск ДЗ Q1:Ia y", "", Two},
        Path{"GpsAndApostrophes", "Пуск (GPS)'ДЗ' (Q1:Ia,2,t) y", "Пуск ДЗ Q1:Ia y", "Q1", Two},
        Path{"SmallGpsIsAnItem", "Пуск (gps) y", "Пуск (gps) y", "", ""}),
    [](const auto& path) { return std::string(path.param.name); });

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
