// The setting of a start comment: which items are the values, and how they are scaled.
#include "support/readyrecording.h"

#include <gtest/gtest.h>

namespace {

struct Setting
{
    const char* name;
    float primary;
    const char* kindAndItems;
    const char* text;
};

void PrintTo(const Setting& setting, std::ostream* out)
{
    *out << setting.primary << ' ' << setting.kindAndItems;
}

class StartCommentSetting : public testing::TestWithParam<Setting>
{};

// A recording whose channel Q1:Ia has this ratio and the unit A (Latin), with the start comment.
recorderfile::Recording StartedBy(const QString& comment, float primary)
{
    recorderfile::Recording recording;
    recording.comment = comment;
    recorderfile::AnalogChannel channel{"Q1:Ia", "A", {1, 2}};
    channel.primary = primary;
    recording.Add(channel);
    return recording;
}

} // namespace

TEST_P(StartCommentSetting, Reads)
{
    TestStation station;
    ReadyRecording recording(
        station, StartedBy("Пуск " + QString::fromUtf8(GetParam().kindAndItems) + " y", GetParam().primary));
    EXPECT_EQ(recording.First().StartSetting, QString::fromUtf8(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(
    Thresholds, StartCommentSetting,
    testing::Values(Setting{"Thousands", 600, "ДЗ (Q1:Ia,2,1.5,t)",
                            "Порог срабатывания - 1.200 кA, порог возврата - 0.900 кA"},
                    Setting{"BelowThousand", 100, "ДЗ (Q1:Ia,2,1.5,t)",
                            "Порог срабатывания - 200.000 A, порог возврата - 150.000 A"},
                    Setting{"ExactlyThousand", 500, "ДЗ (Q1:Ia,2,1,t)",
                            "Порог срабатывания - 1.000 кA, порог возврата - 0.500 кA"},
                    Setting{"ReturnValueIsNotAsked", 1, "ДЗ (Q1:Ia,999,2000,t)",
                            "Порог срабатывания - 999.000 A, порог возврата - 2000.000 A"},
                    Setting{"NegativeThousands", 1000, "ДЗ (Q1:Ia,-2,1,t)",
                            "Порог срабатывания - -2000.000 A, порог возврата - 1000.000 A"},
                    Setting{"ThreeDecimals", 1, "ДЗ (Q1:Ia,2.5,1234,t)",
                            "Порог срабатывания - 2.500 A, порог возврата - 1234.000 A"},
                    Setting{"RatioIsSinglePrecision", 0.1F, "ДЗ (Q1:Ia,1e12,1e12,t)",
                            "Порог срабатывания - 100000001.490 кA, порог возврата - 100000001.490 кA"},
                    Setting{"ThreeItemsNameOneValue", 1, "ДЗ (Q1:Ia,2,7)",
                            "Порог срабатывания - 2.000 A, порог возврата - 2.000 A"},
                    Setting{"GroupTakesPhaseA", 600, "ПП (Q1:I,2,1.5,t)",
                            "Порог срабатывания - 1.200 кA, порог возврата - 0.900 кA"},
                    Setting{"BlanksAroundNumbersDoNotMatter", 100, "ДЗ (Q1:Ia, 2 , 1.5,t)",
                            "Порог срабатывания - 200.000 A, порог возврата - 150.000 A"}),
    [](const auto& setting) { return std::string(setting.param.name); });

INSTANTIATE_TEST_SUITE_P(NotNumbers, StartCommentSetting,
                         testing::Values(Setting{"PickUpIsAText", 600, "ДЗ (Q1:Ia,u,1.5,t)",
                                                 "Порог срабатывания - u A, порог возврата - 1.5 A"},
                                         Setting{"ReturnIsAText", 600, "ДЗ (Q1:Ia,2,v,t)",
                                                 "Порог срабатывания - 2 A, порог возврата - v A"},
                                         Setting{"DecimalCommaIsASeparator", 600, "ДЗ (Q1:Ia,2;5,1.5,t)",
                                                 "Порог срабатывания - 2;5 A, порог возврата - 1.5 A"},
                                         Setting{"MarkerInAValueIsFilledByTheNext", 600,
                                                 "ДЗ (Q1:Ia,%2,1.5,t)",
                                                 "Порог срабатывания - 1.5 A, порог возврата - 1.5 A"},
                                         Setting{"HarmonicPickUpIsAText", 600, "Г (Q1:Ia,5,u,t)",
                                                 "Номер гармоники 5, порог срабатывания - u A"}),
                         [](const auto& setting) { return std::string(setting.param.name); });

INSTANTIATE_TEST_SUITE_P(Frequencies, StartCommentSetting,
                         testing::Values(Setting{"ThreeItems", 600, "Ч (Q1:Ia,49.50,50)",
                                                 "Порог срабатывания - 49.50 Гц, порог возврата - 49.50 Гц"},
                                         Setting{"FourItems", 600, "Ч (Q1:Ia,49.50,50,51)",
                                                 "Порог срабатывания - 49.50 Гц, порог возврата - 50 Гц"},
                                         Setting{"FiveItems", 600, "Ч (Q1:Ia,49.50,50,51,52)",
                                                 "Порог срабатывания - 49.50 Гц, порог возврата - 51 Гц"},
                                         Setting{"NeverScaled", 600, "Ч (Q1:Ia,2000,u,t)",
                                                 "Порог срабатывания - 2000 Гц, порог возврата - u Гц"}),
                         [](const auto& setting) { return std::string(setting.param.name); });

INSTANTIATE_TEST_SUITE_P(Harmonics, StartCommentSetting,
                         testing::Values(Setting{"Thousands", 600, "Г (Q1:Ia,5,2,t)",
                                                 "Номер гармоники 5, порог срабатывания - 1.200 кA"},
                                         Setting{"BelowThousand", 100, "Г (Q1:Ia,5,2,t)",
                                                 "Номер гармоники 5, порог срабатывания - 200.000 A"},
                                         Setting{"ExactlyThousand", 500, "Г (Q1:Ia,5,2,t)",
                                                 "Номер гармоники 5, порог срабатывания - 1.000 кA"},
                                         Setting{"NumberIsAText", 100, "Г (Q1:Ia,x,2,t,u)",
                                                 "Номер гармоники x, порог срабатывания - 200.000 A"}),
                         [](const auto& setting) { return std::string(setting.param.name); });
