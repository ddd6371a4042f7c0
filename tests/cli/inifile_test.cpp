// Ini files that the converter does not take, and what zucmtr reports before the first conversion.
#include "program.h"

#include <QTextCodec>

#include <gtest/gtest.h>

namespace {

using recorderfile::Encode;

// A place whose ini file is in the encoding; with Mark it starts with a byte order mark.
enum class Mark { Without, With };

void Rewrite(const Workplace& place, const char* codec, Mark mark = Mark::Without)
{
    const QString text = QString::fromUtf8(PlainIni());
    QTextCodec::ConverterState state(mark == Mark::With ? QTextCodec::DefaultConversion
                                                        : QTextCodec::IgnoreHeader);
    place.Write("ZuDrv.ini",
                QTextCodec::codecForName(codec)->fromUnicode(text.constData(), text.size(), &state));
}

QString Lost(const QString& encoding)
{
    return QString("it is in %1, not in UTF-8; the converter takes it as UTF-8 and finds none of its keys, "
                   "so that "
                   "no section loads; rewrite it: iconv -f %1 -t UTF-8 old.ini > new.ini\n")
        .arg(encoding);
}

QString Read(const QString& encoding)
{
    return QString("it is in %1, not in UTF-8; the converter reads it correctly because of its byte order "
                   "mark, but "
                   "other programs may not; rewrite it: iconv -f %1 -t UTF-8 old.ini > new.ini\n")
        .arg(encoding);
}

} // namespace

TEST(IniFile, InAnotherEncodingIsReportedAsThatByEachCommand)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording()));
    for (const char* encoding : {"CP1251", "CP866", "KOI8-R", "UTF-16LE", "UTF-16BE"}) {
        Rewrite(place, encoding);
        for (const QStringList& command :
             {QStringList{"convert", "--out", "out", "a.ZU"}, QStringList{"convert", "--json", "a.ZU"},
              QStringList{"watch", "--once", "--out", "out", "."}, QStringList{"view", "a.ZU"}}) {
            const Finished run = RunProgram(place.Path(), command);
            EXPECT_EQ(run.code, 2) << command.join(' ');
            EXPECT_TRUE(run.err.endsWith("ZuDrv.ini: " + Lost(encoding))) << run.err;
            EXPECT_EQ(run.err.count('\n'), 1) << run.err;
        }
        const Finished check = RunProgram(place.Path(), {"check"});
        EXPECT_EQ(check.code, 1);
        EXPECT_EQ(check.out, "ZuDrv.ini: error: " + Lost(encoding));
    }
}

TEST(IniFile, WithAByteOrderMarkIsReadAndReported)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording()));
    for (const char* encoding : {"UTF-16", "UTF-32"}) {
        Rewrite(place, encoding, Mark::With);
        const Finished run = RunProgram(place.Path(), {"convert", "-q", "--again", "--out", "out", "a.ZU"});
        EXPECT_EQ(run.code, 0);
        EXPECT_EQ(run.err, "zucmtr: ZuDrv.ini: " + Read(encoding));
        const Finished check = RunProgram(place.Path(), {"check"});
        EXPECT_EQ(check.code, 0);
        EXPECT_TRUE(check.out.startsWith("ZuDrv.ini:1: note: " + Read(encoding))) << check.out;
        EXPECT_EQ(RunProgram(place.Path(), {"view", "a.ZU", "-o", "a.html"}).code, 0);
    }
}

TEST(IniFile, WithSomeBadBytesStaysUtf8)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording()));
    place.Write("ZuDrv.ini", PlainIni() + "; \xCE\xE1\xFA\xE5\xEA\xF2=1\n\xCE\xE1\xFA\xE5\xEA\xF2=1\n");
    const Finished run = place.Convert({"a.ZU"});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.err, QString());
}

// Once, not with each recording: none of them could be converted.
TEST(IniFile, CommaInTheStationsNameIsReportedOnceWithItsLineAndNothingIsStarted)
{
    const Workplace place({{"Объект", "ПС, Узловая"}, {"Время ожидания", "1"}});
    const int line = ReadBytes(place.Path("ZuDrv.ini")).split('\n').indexOf("Объект=ПС, Узловая") + 1;
    ASSERT_GT(line, 0);
    place.Write("a.ZU", Encode(ShortRecording()));
    place.Write("b.ZU", Encode(ShortRecording(10)));
    const QString warning =
        QString("zucmtr: ZuDrv.ini:%1: Объект 'ПС, Узловая' holds a comma or a line end: no "
                "program opens a record with it; take it out\n")
            .arg(line);
    const QString end = "zucmtr: nothing is converted: with [Vostochnaya] of 'ZuDrv.ini' as it is no record "
                        "would be right; correct the line above\n";
    for (const QStringList& command :
         {QStringList{"convert", "-q", "--out", "out", "."},
          QStringList{"convert", "--json", "--out", "out", "."}, QStringList{"convert", "--dry-run", "."},
          QStringList{"watch", "--once", "--out", "out", "."}}) {
        const Finished run = RunProgram(place.Path(), command);
        EXPECT_EQ(run.code, 2) << command.join(' ');
        EXPECT_EQ(run.out, QString()) << command.join(' ');
        EXPECT_EQ(QString(run.err).replace("./ZuDrv.ini", "ZuDrv.ini"), warning + end);
    }
    EXPECT_EQ(place.Names("out").filter(".cfg"), QStringList());
}

TEST(IniFile, CommaInTheStationsNameIsReportedOnceWhereRecordsAreNotReadBack)
{
    const Workplace place({{"Объект", "ПС, Узловая"}});
    place.Write("a.ZU", Encode(ShortRecording()));
    place.Write("b.ZU", Encode(ShortRecording(10)));
    const Finished run = place.Convert({"-q", "--no-verify", "a.ZU", "b.ZU"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err.count('\n'), 1) << run.err;
    EXPECT_TRUE(run.err.contains("Объект 'ПС, Узловая' holds a comma")) << run.err;
}

TEST(IniFile, CommaInADefaultThatIsNotInForceIsNotReported)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording()));
    QByteArray ini = PlainIni({{"Объект", "ПС Узловая"}, {"Источник", "РАС"}});
    const QByteArray key = "\nИсточник=";
    ini.insert(ini.indexOf(key) + key.size(), "X, "); // of the defaults, which come first
    place.Write("ZuDrv.ini", ini);
    EXPECT_EQ(place.Convert({"a.ZU"}).err, QString());
}
