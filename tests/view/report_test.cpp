#include "view/report.h"

#include <gtest/gtest.h>

namespace {

TEST(Report, GivesCircuitAndExtremes)
{
    const QString report =
        QStringLiteral("Наименование ЛЭП и/или оборудования №1: ВЛ 110\n"
                       "Экстремальные значения тока и напряжения:\n"
                       "макс_I = 6.03 кА\nмин_I = 1 мА\nмакс_U = 2 кВ\nмин_U = 1 кВ\n-----\n");
    EXPECT_EQ(view::StartedCircuit(report, {QStringLiteral("ВЛ"), QStringLiteral("ВЛ 110")}),
              QStringLiteral("ВЛ 110"));
    const QStringList figures = {QStringLiteral("As in the fault report:"),
                                 QString(),
                                 QStringLiteral("Экстремальные значения:"),
                                 QStringLiteral("макс_I = 6.03 кА"),
                                 QStringLiteral("мин_I = 1 мА"),
                                 QStringLiteral("макс_U = 2 кВ"),
                                 QStringLiteral("мин_U = 1 кВ"),
                                 QString()};
    EXPECT_EQ(view::Figures(report), figures);
    EXPECT_TRUE(view::Figures(QStringLiteral("none")).isEmpty());
}

TEST(Report, StartedCircuitIsThatOfTheConditionWhereNoneIsNamed)
{
    const QString report = QStringLiteral("Наименование ЛЭП и/или оборудования №1: \n"
                                          "Условие пуска №1:     Пуск ПП W10:I I1 больше\n");
    EXPECT_EQ(view::StartedCircuit(report, {QStringLiteral("W1"), QStringLiteral("W10"), QString()}),
              QStringLiteral("W10"));
    EXPECT_TRUE(view::StartedCircuit(report, {QStringLiteral("W2"), QString()}).isEmpty());
    EXPECT_TRUE(view::StartedCircuit(QString(), {QString()}).isEmpty());
}

} // namespace
