// Guesses from names and units.
#include "dictionary/guess.h"

#include "support/files.h"

#include <gtest/gtest.h>

using dictionary::Signal;

TEST(DictionaryGuess, FindsTheLevelAmongTheNumbersOfAName)
{
    EXPECT_EQ(dictionary::LevelInName("ВЛ-110 Восточная"), 110);
    EXPECT_EQ(dictionary::LevelInName("1СШ-220"), 220);
    EXPECT_EQ(dictionary::LevelInName("Т-10 110 кВ"), 110);
    EXPECT_EQ(dictionary::LevelInName("АТ-1"), 0);
    EXPECT_EQ(dictionary::LevelInName("ВЛ-1100"), 0);
    EXPECT_EQ(dictionary::LevelInName(""), 0);
}

TEST(DictionaryGuess, TakesTheLevelsOfTheRecordingWhereANameHasNone)
{
    const dictionary::Levels levels =
        dictionary::LevelsOf({{"ВЛ-110 А:Ia", "А"}, {"ВЛ-110 А:Ib", "А"}, {"ВЛ-220 Б:Ia", "А"}});
    EXPECT_EQ(levels.usual, 110);
    EXPECT_EQ(levels.highest, 220);
    EXPECT_EQ(dictionary::GuessAnalog({"АТ-1:Ia", "А"}, levels).kilovolts, 220);
    EXPECT_EQ(dictionary::GuessAnalog({"Л Южная:Ia", "А"}, levels).kilovolts, 110);
    EXPECT_FALSE(dictionary::GuessAnalog({"АТ-1:Ia", "А"}, levels).levelFromName);
    EXPECT_EQ(dictionary::LevelsOf({{"АТ-1:Ia", "А"}}).highest, 110);
}

struct Analog
{
    const char* name;
    const char* unit;
    const char* equipment;
    const char* signal;
};

class DictionaryGuessAnalog : public testing::TestWithParam<Analog>
{};

TEST_P(DictionaryGuessAnalog, IsByNameAndUnit)
{
    const dictionary::Guess guess =
        dictionary::GuessAnalog({QString::fromUtf8(GetParam().name), QString::fromUtf8(GetParam().unit)}, {});
    EXPECT_EQ(guess.equipmentGroup, GetParam().equipment);
    EXPECT_EQ(guess.signalGroup, GetParam().signal);
}

INSTANTIATE_TEST_SUITE_P(
    Names, DictionaryGuessAnalog,
    testing::Values(Analog{"ВЛ-110 Восточная:Ia", "А", "L", "CT"},
                    Analog{"ВЛ-110 Восточная:3U0", "кВ", "L", "VT"},
                    Analog{"ТН 1СШ-110:Ub", "В", "VTB", "VT"}, Analog{"Частота 1СШ-110:Fa", "Гц", "VTB", "F"},
                    Analog{"АТ-1:Ic", "A", "AT", "CT"}, Analog{"Т-2:Ic", "A", "T", "CT"},
                    Analog{"Г-3:Ia", "A", "G", "CT"}, Analog{"ШР-1:Ia", "A", "BPR", "CT"},
                    Analog{"БСК-1:Ia", "A", "CB", "CT"}, Analog{"ШСВ-110:Ia", "A", "BCT", "CT"},
                    Analog{"Прочее:Ia", "A", "", "CT"}, // no equipment that is known
                    Analog{"ВЛ-110:Ia", "мм", "L", ""}, // a current has another unit
                    Analog{"ВЛ-110:Температура", "В", "L", ""}, Analog{"", "", "", ""}));

TEST(DictionaryGuess, OfDiscreteSignalsIsByWords)
{
    const dictionary::Guess tripped = dictionary::GuessDiscrete({"ВЛ-110:Откл. от защит", {}}, {});
    EXPECT_EQ(tripped.deviceGroup, "RP");
    EXPECT_EQ(tripped.statusType, "FD");
    const dictionary::Guess unknown = dictionary::GuessDiscrete({"ВЛ-110:Резерв", {}}, {});
    EXPECT_EQ(unknown.deviceGroup, "");
    EXPECT_EQ(unknown.statusType, "");
}
