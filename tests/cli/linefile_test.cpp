// lines.ini: found, refused, explained and drafted.
#include "program.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>

namespace {

const QByteArray Good = "[ВЛ-110 Восточная]\nlength=50\nr1=0.16\nx1=0.41\nr0=0.31\nx0=1.25\n";
const QString Fault = QStringLiteral("Vostochnaya_000123.ZU");

class Station : public Workplace
{
public:
    Station() { RunProgram(Path(), {"sample", "--out", ".", "--force", "--seconds", "0.5"}); }

    Finished Run(const QStringList& arguments) const { return RunProgram(Path(), arguments); }
};

QString ContentOf(const QString& path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return QString::fromUtf8(file.readAll());
}

} // namespace

TEST(LineFile, WithAMistakeEndsEveryCommandThatNeedsIt)
{
    const Station place;
    place.Write("lines.ini", Good + "zone1=1\n[W]\nlength=x\n");
    const QString where =
        "lines.ini:7: [ВЛ-110 Восточная] zone1 = '1': a zone is 'mho R X radius' or 'polygon R,X R,X "
        "R,X ...', in primary ohms\nlines.ini:9: [W] length = 'x': 'x' is not a number\n";
    for (const QStringList& command :
         {QStringList{"events"}, QStringList{"convert", "--out", "out", "--events"},
          QStringList{"convert", "--out", "out", "--json"},
          QStringList{"watch", "--once", "--events", "--out", "out"}}) {
        const bool watches = command.first() == QLatin1String("watch");
        const Finished run = place.Run(command + QStringList{watches ? QStringLiteral(".") : Fault});
        EXPECT_EQ(run.code, 2) << command.first();
        EXPECT_TRUE(run.err.endsWith("zucmtr: " + where) || run.err.endsWith("zucmtr: ./" + where))
            << run.err;
    }
    EXPECT_EQ(place.Run({"convert", "--out", "out", Fault}).code, 0); // needs it not
    EXPECT_EQ(place.Run({"info", Fault}).code, 0);
}

TEST(LineFile, IsNamedByItsOption)
{
    const Station place;
    place.Write("bad.ini", "[W]\nx1=1,5\n");
    const Finished run = place.Run({"events", "--lines", "bad.ini", Fault});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, "zucmtr: --lines: bad.ini:2: [W] x1 = '1,5': write a decimal point: 1.5\n");
    const Finished none = place.Run({"events", "--lines", "none.ini", Fault});
    EXPECT_EQ(none.code, 2);
    EXPECT_TRUE(none.err.startsWith("zucmtr: --lines: 'none.ini' cannot be read: ")) << none.err;
}

TEST(LineFile, OfARecordIsBesideIt)
{
    const Station place;
    ASSERT_EQ(place.Run({"convert", "--out", "out", Fault}).code, 0);
    place.Write("out/lines.ini", "[W]\nx1=0\n");
    const Finished run = RunShell(place.Path(), "zucmtr events out/*.cfg");
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, "zucmtr: out/lines.ini:2: [W] x1 = '0': it has to be above 0\n");
}

TEST(LineFile, IsExplainedBesideTheIniFile)
{
    const Station place;
    place.Write("lines.ini",
                Good + "zone1=mho 1 2 3\n[ВЛ-110 Западная]\nvoltages=ТН 1СШ-111\n[ВЛ-110 Западнаа]\n");
    const Finished run = place.Run({"check", "ZuDrv.ini"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(
        run.out.split('\n').filter(QRegularExpression("^lines.ini")).join('\n'),
        "lines.ini: note: lines of the dictionary without a section: 'ВЛ-220 Северная'\n"
        "lines.ini:1: note: [ВЛ-110 Восточная]: 50 km; equipment of [Vostochnaya]; 'ВЛ 110 кВ Восточная' in "
        "records; zones: 1\n"
        "lines.ini:8: note: [ВЛ-110 Западная]: equipment of [Vostochnaya]; 'ВЛ 110 кВ Западная' in records; "
        "voltages of 'ТН 1СШ-111'\n"
        "lines.ini:8: note: [ВЛ-110 Западная] is yet to be filled in: length, r1, x1, r0, x0\n"
        "lines.ini:8: warning: [ВЛ-110 Западная] voltages: the ini file has no equipment and no bay 'ТН "
        "1СШ-111'; "
        "is 'ТН 1СШ-110' meant?\n"
        "lines.ini:10: warning: [ВЛ-110 Западнаа] is no equipment of the dictionary and no bay; it serves "
        "records "
        "that have a circuit of this name, and nothing else; is 'ВЛ-110 Западная' meant?\n"
        "lines.ini:10: note: [ВЛ-110 Западнаа] is yet to be filled in: length, r1, x1, r0, x0");
}

TEST(LineFile, IsDraftedWithTheDictionary)
{
    const Station place;
    EXPECT_EQ(place.Run({"dictionary", "--line-data", "lines.ini", "-o", "new.ini", Fault}).code, 0);
    const QString draft = ContentOf(place.Path("lines.ini"));
    EXPECT_EQ(draft.section('\n', 0, 14),
              "; length in km, r1 x1 r0 x0 in primary ohms per km, with a decimal point\n"
              "\n"
              "[ВЛ-110 Восточная]\nlength=\nr1=\nx1=\nr0=\nx0=\n"
              "\n"
              "[ВЛ-110 Западная]\nlength=\nr1=\nx1=\nr0=\nx0=");
    EXPECT_EQ(draft.section('\n', 15, 15), "voltages= ; the circuit whose voltages serve this line");
    EXPECT_EQ(place.Run({"events", Fault}).code, 0); // nothing is wrong with a draft
    const Finished again = place.Run({"dictionary", "--line-data", "lines.ini", Fault});
    EXPECT_EQ(again.code, 2);
    EXPECT_EQ(
        again.err,
        "zucmtr: --line-data: 'lines.ini' is there already; choose another name, or replace it by --force\n");
}
