// zucmtr convert with --form, --data, --revision and --encoding.
#include "program.h"

#include <gtest/gtest.h>

namespace {

// The files of the record, by their extensions, in the order of the alphabet.
QStringList Extensions(const Workplace& place)
{
    QStringList extensions;
    for (const QString& name : place.Names(QStringLiteral("out")))
        extensions << name.section(QLatin1Char('.'), -1);
    return extensions;
}

QString LineOf(const QString& form)
{
    return QStringLiteral("rec.ZU -> %1 (%2)\n").arg(ShortRecordName(), form);
}

class Form : public testing::Test
{
protected:
    void SetUp() override { place.Write("rec.ZU", recorderfile::Encode(ShortRecording())); }

    QString Converted(const QStringList& options) const
    {
        const Finished run = place.Convert(options + QStringList{"rec.ZU"});
        EXPECT_EQ(run.code, 0) << run.err;
        return run.out;
    }

    QByteArray Piece(const char* extension) const
    {
        return ReadBytes(place.Path(QStringLiteral("out/") + ShortRecordName() + QLatin1String(extension)));
    }

    const Workplace place;
};

} // namespace

TEST_F(Form, ContainerIsOneFileOfRevision2013)
{
    EXPECT_EQ(Converted({"--form", "cff"}), LineOf("cff 2013 ascii utf8"));
    EXPECT_EQ(Extensions(place), QStringList{"cff"});
}

TEST_F(Form, EachOptionHasPrecedenceOverTheIniFile)
{
    EXPECT_EQ(Converted({"--revision", "1999", "--data", "binary", "--encoding", "cp1251"}),
              LineOf("cfg 1999 binary cp1251"));
    EXPECT_EQ(Extensions(place), (QStringList{"cfg", "dat"}));
    const QList<QByteArray> lines = Piece(".cfg").split('\n');
    EXPECT_TRUE(lines.first().endsWith(",1999"));
    EXPECT_TRUE(lines.contains("Binary"));
    EXPECT_TRUE(lines.first().startsWith("\xcf\xd1 \xd3\xe7\xeb\xee\xe2\xe0\xff,")); // ПС Узловая
}

TEST_F(Form, TheIniFileIsAsItWas)
{
    const QByteArray before = ReadBytes(place.Path("ZuDrv.ini"));
    Converted({"--form", "cff"});
    EXPECT_EQ(ReadBytes(place.Path("ZuDrv.ini")), before);
}

TEST_F(Form, WithoutOptionsTheLineHasNoForm)
{
    EXPECT_EQ(Converted({}), "rec.ZU -> " + ShortRecordName() + "\n");
}

TEST_F(Form, RecordOfAnotherFormIsReplacedByTheNextRun)
{
    Converted({"--data", "ascii"});
    const QByteArray ascii = Piece(".dat");
    EXPECT_EQ(Converted({"--data", "binary"}), LineOf("cfg 2013 binary utf8"));
    EXPECT_NE(Piece(".dat"), ascii);
    EXPECT_EQ(Converted({"--data", "binary"}),
              LineOf("cfg 2013 binary utf8").replace(")\n", "); it was there already\n"));
}

TEST_F(Form, ContainerOfRevision1999IsRefused)
{
    const Finished run = place.Convert({"--form", "cff", "--revision", "1999", "rec.ZU"});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err,
              "zucmtr: --form cff and --revision 1999: a CFF file is of revision 2013; leave one of the "
              "two out\nRun 'zucmtr convert --help' for the options and an example.\n");
    EXPECT_EQ(Extensions(place), QStringList());
}

TEST_F(Form, IniFileThatDoesNotLoadIsNamedAsTheUserNamesIt)
{
    place.Write("ZuDrv.ini", QByteArray(PlainIni()).replace("Источник", "Исток"));
    const Finished run = place.Convert({"--form", "cff", "rec.ZU"});
    EXPECT_EQ(run.code, 2);
    EXPECT_TRUE(run.err.contains("of 'ZuDrv.ini' does not load")) << run.err;
    EXPECT_FALSE(run.err.contains("zucmtr-")) << run.err;
}
