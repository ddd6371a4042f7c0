#include "analysis/linedata.h"
#include "analysis/linematch.h"

#include "text/reasons.h"

#include <gtest/gtest.h>

namespace {

const char* const Whole = "[ВЛ-110 Восточная]\nlength=50\nr1=0.16\nx1=0.41\nr0=0.31\nx0=1.25\n";

// The row, word and text of each problem.
QStringList Problems(const QByteArray& text)
{
    QStringList shown;
    for (const analysis::LineProblem& problem : analysis::ParseLines(text).problems)
        shown << QStringLiteral("%1 %2 %3: %4")
                     .arg(problem.row)
                     .arg(QLatin1String(problem.isError ? "error" : "warning"), QLatin1String(problem.reason),
                          problem.text);
    return shown;
}

TEST(LineData, SectionIsALineWithItsNumbers)
{
    const analysis::LineFile file =
        analysis::ParseLines(QByteArray(Whole) + "r0m=0.15 ; with the second circuit\nx0m=0.7\n"
                                                 "parallel=W2\nvoltages=ТН 1СШ-110\n");
    EXPECT_TRUE(file.problems.empty());
    ASSERT_EQ(file.lines.size(), 1u);
    const analysis::Line& line = file.lines.front();
    EXPECT_EQ(line.circuit, QString("ВЛ-110 Восточная"));
    EXPECT_EQ(line.row, 1);
    EXPECT_EQ(line.length, 50);
    EXPECT_EQ(line.r1, 0.16);
    EXPECT_EQ(line.x1, 0.41);
    EXPECT_EQ(line.r0, 0.31);
    EXPECT_EQ(line.x0, 1.25);
    EXPECT_EQ(line.mutualR, 0.15);
    EXPECT_EQ(line.mutualX, 0.7);
    EXPECT_EQ(line.parallel, QString("W2"));
    EXPECT_EQ(line.voltages, QString("ТН 1СШ-110"));
    EXPECT_TRUE(line.IsKnown());
}

TEST(LineData, ZonesAreCirclesAndPolygonsInPrimaryOhms)
{
    const analysis::LineFile file = analysis::ParseLines(
        QByteArray(Whole) + "zone1=mho 5 8.5 9.9\nzone3= polygon  0,0 10,0  8.5,20.5 -2,20\n");
    EXPECT_TRUE(file.problems.empty());
    const std::vector<analysis::Zone>& zones = file.lines.front().zones;
    ASSERT_EQ(zones.size(), 2u);
    EXPECT_TRUE(zones[0].IsCircle());
    EXPECT_EQ(zones[0].radius, 9.9);
    EXPECT_EQ(zones[0].corners.front().x, 8.5);
    EXPECT_EQ(zones[1].number, 3);
    EXPECT_FALSE(zones[1].IsCircle());
    ASSERT_EQ(zones[1].corners.size(), 4u);
    EXPECT_EQ(zones[1].corners[2].x, 20.5);
    EXPECT_EQ(zones[1].corners[3].r, -2);
}

TEST(LineData, EachWrongValueIsAnErrorThatSaysWhatToDo)
{
    const char* const rows =
        "[W]\nlength=0\nr1=-1\nx1=0,41\nr0=nan\nx0=1e999\nzone1=mho 1 2\nzone2=mho 1 2 0\n"
        "zone3=polygon 0,0 1,1\nzone4=polygon 0,0 1,1 2,2\nzone5=polygon 0,0 1 2,2\n"
        "zone6=circle\nzone7=mho 1 2 3,5\n";
    const QStringList wanted = {
        "2 error numberOutOfRange: [W] length = '0': it has to be above 0",
        "3 error numberOutOfRange: [W] r1 = '-1': it cannot be below 0",
        "4 error notANumber: [W] x1 = '0,41': write a decimal point: 0.41",
        "5 error notANumber: [W] r0 = 'nan': 'nan' is not a number",
        "6 error notANumber: [W] x0 = '1e999': '1e999' is not a number",
        "7 error badZone: [W] zone1 = 'mho 1 2': a mho circle is written as: mho R X radius",
        "8 error badZone: [W] zone2 = 'mho 1 2 0': the radius has to be above 0",
        "9 error badZone: [W] zone3 = 'polygon 0,0 1,1': a polygon has at least three corners: polygon R,X "
        "R,X R,X",
        "10 error badZone: [W] zone4 = 'polygon 0,0 1,1 2,2': the corners enclose nothing",
        "11 error badZone: [W] zone5 = 'polygon 0,0 1 2,2': the corner '1' is not R,X; write corners with "
        "blanks between them and decimal points: 0,0 10,0 8.5,20",
        "12 error badZone: [W] zone6 = 'circle': a zone is 'mho R X radius' or 'polygon R,X R,X R,X ...', in "
        "primary ohms",
        "13 error badZone: [W] zone7 = 'mho 1 2 3,5': write a decimal point: 3.5"};
    EXPECT_EQ(Problems(rows), wanted);
}

TEST(LineData, RowsThatDoNothingAreWarnings)
{
    const QStringList wanted = {
        "1 warning lineOutsideSection: ignored: 'r1=1' is before the first section; put it under the "
        "[circuit] it is of",
        "4 warning strayLine: ignored: 'stray' is neither a [circuit] nor key=value",
        "5 warning unknownKey: ignored: [W] has the unknown key 'R1'; known are length, r1, x1, r0, x0, r0m, "
        "x0m, parallel, voltages, zone1 ... zone9",
        "7 warning keyTwice: [W] has 'length' twice; the last one counts",
        "3 warning keyMissing: [W] lacks r1, x1, r0, x0; without it there is no distance to a fault on it"};
    EXPECT_EQ(Problems("r1=1\n; a comment = 1\n[W]\nstray\nR1=1\nlength=1\nlength=2\n# note\n"), wanted);
}

TEST(LineData, SectionTwiceIsAnError)
{
    EXPECT_EQ(Problems(QByteArray(Whole) + Whole),
              QStringList("7 error sectionTwice: [ВЛ-110 Восточная] is there already in line 1; put both "
                          "into one section"));
}

TEST(LineData, OtherEncodingIsAnError)
{
    const QStringList problems = Problems("[W]\n\xc2\xcb=1\n");
    ASSERT_EQ(problems.size(), 1);
    EXPECT_TRUE(problems.first().startsWith("2 error notUtf8: ")) << problems.first().toStdString();
    EXPECT_TRUE(Problems(QByteArray("\xef\xbb\xbf") + Whole).isEmpty()); // a byte order mark is fine
}

TEST(LineData, DraftWithoutNumbersIsNoMistake)
{
    const analysis::LineFile file = analysis::ParseLines("[W]\nlength=\nr1=\nx1=\nr0=\nx0=\nvoltages=\n");
    EXPECT_TRUE(file.problems.empty());
    EXPECT_FALSE(file.lines.front().IsKnown());
    EXPECT_EQ(file.lines.front().missing, analysis::NeededLineKeys());
}

TEST(LineData, NamesOfCircuitsAreFoundAsWrittenByEquipmentAndByTheirLetters)
{
    comtrade::Configuration config;
    comtrade::StateChannel start;
    start.number = 1;
    start.name = QStringLiteral("Пуск Q1 south");
    start.circuit = QStringLiteral("Q1 south");
    config.states = {start};
    const analysis::ChannelKinds kinds(config, "[Russian_Comtrade_Edition Status_Channel_#1_#1_#1]\r\n"
                                               "Status_Signal_Type=Starting\r\nStatus_ID=Q1:Пуск\r\n"
                                               "Status_Channel_Number=1\r\n");
    std::vector<analysis::Circuit> circuits(3);
    circuits[0].name = QStringLiteral("Q1 south");
    circuits[1].name = QStringLiteral("ВЛ 110 кВ Южная");
    circuits[2].name = QStringLiteral("ВЛ 110 кВ Южная 2");
    EXPECT_EQ(analysis::CircuitNamed("Q1 south", circuits, kinds), QString("Q1 south"));
    EXPECT_EQ(analysis::CircuitNamed("Q1", circuits, kinds), QString("Q1 south"));
    EXPECT_EQ(analysis::CircuitNamed("ВЛ-110 Южная", circuits, kinds), QString("ВЛ 110 кВ Южная"));
    EXPECT_EQ(analysis::CircuitNamed("ВЛ-110", circuits, kinds), QString());
    circuits[2].name = QStringLiteral("ВЛ-110 \"Южная\"");
    EXPECT_EQ(analysis::CircuitNamed("ВЛ 110 Южная", circuits, kinds), QString()); // two are like it
    circuits.pop_back();
    analysis::Lines lines =
        analysis::ParseLines("[ВЛ-110 Южная]\nvoltages=Q1\n[Other]\nlength=1\n[Q1]\n").lines;
    lines = analysis::LinesOf(lines, circuits, kinds);
    ASSERT_EQ(lines.size(), 1u); // nothing is known of the others
    EXPECT_EQ(lines.front().circuit, QString("ВЛ 110 кВ Южная"));
    EXPECT_EQ(lines.front().voltages, QString("Q1 south"));
    EXPECT_FALSE(lines.front().IsKnown());
}

} // namespace
