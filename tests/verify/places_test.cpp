// The verification says where a record is wrong, what is there and what should be.
#include "scene.h"

#include <QFile>

#include <gtest/gtest.h>

namespace {

const QString Name = QStringLiteral("240131,120000.2,+3t,Object,Source.Subject");

// The record's file with one text, which must be there, replaced by another.
QByteArray With(const QByteArray& bytes, const QByteArray& before, const QByteArray& after)
{
    const int position = bytes.indexOf(before);
    EXPECT_GE(position, 0) << before.toStdString();
    return position < 0 ? bytes : QByteArray(bytes).replace(position, before.size(), after);
}

Scene Made(const char* lines)
{
    return Scene(lines, SmallRecording());
}

} // namespace

TEST(Places, CodeOfAnAsciiRecord)
{
    const Scene scene = Made("");
    EXPECT_EQ(scene.VerdictWith("dat", With(scene.Bytes("dat"), "2,417,130,", "2,417,131,")),
              "'" + Name +
                  ".dat', record 2, analog channel 1 (Ia Q1): the record says '131', the recording '130'");
}

TEST(Places, MarkOfAMissingValueInPlaceOfACode)
{
    const Scene scene = Made("");
    for (const char* mark : {"2,417,99999,", "2,417,,"})
        EXPECT_EQ(
            scene.VerdictWith("dat", With(scene.Bytes("dat"), "2,417,130,", mark)),
            "'" + Name +
                ".dat', record 2, analog channel 1 (Ia Q1): the record says 'missing', the recording '130'");
}

TEST(Places, CodeOfASecondSegment)
{
    const Scene scene = Made("");
    EXPECT_EQ(scene.VerdictWith("dat", With(scene.Bytes("dat"), "\n6,2083,5,10,", "\n6,2083,5,9,")),
              "'" + Name +
                  ".dat', record 6, analog channel 2 (Ub Q1): the record says '9', the recording '10'");
}

TEST(Places, StateOfAnAsciiRecord)
{
    const Scene scene = Made("");
    EXPECT_EQ(
        scene.VerdictWith("dat",
                          With(scene.Bytes("dat"), "\n3,833,-7,12,0,1,0,0\n", "\n3,833,-7,12,0,1,1,0\n")),
        "'" + Name + ".dat', record 3, state channel 2 (откл Q1): the record says '1', the recording '0'");
}

TEST(Places, TimeAndNumberOfARecord)
{
    const Scene scene = Made("");
    const QByteArray data = scene.Bytes("dat");
    EXPECT_EQ(scene.VerdictWith("dat", With(data, "\n3,833,", "\n3,834,")),
              "'" + Name + ".dat', record 3, time: the record says '834', the recording '833'");
    EXPECT_NE(scene.VerdictWith("dat", With(data, "\n3,833,", "\n4,833,")), QString());
}

TEST(Places, CodeAndStateOfABinaryRecord)
{
    const Scene scene = Made("Тип Comtrade BIN=1");
    const int size = 8 + 3 * 2 + 2;
    QByteArray data = scene.Bytes("dat");
    data[size * 2 + 8 + 2] = 13; // the second channel's 12
    EXPECT_EQ(scene.VerdictWith("dat", data),
              "'" + Name +
                  ".dat', record 3, analog channel 2 (Ub Q1): the record says '13', the recording '12'");
    data = scene.Bytes("dat");
    data[size * 9 + 14] = 5; // the third state is off at the end
    EXPECT_EQ(scene.VerdictWith("dat", data),
              "'" + Name +
                  ".dat', record 10, state channel 3 (x Q2): the record says '1', the recording '0'");
}

TEST(Places, CoefficientsOfTheConfiguration)
{
    const Scene scene = Made("");
    const QByteArray configuration = scene.Bytes("cfg");
    EXPECT_EQ(
        scene.VerdictWith("cfg", With(configuration, ",62.5,", ",62.6,")),
        "'" + Name +
            ".cfg', analog channel 1 (Ia Q1), multiplier a: the record says '62.6', the recording '62.5'");
    EXPECT_EQ(scene.VerdictWith("cfg", With(configuration, ",-186,", ",-187,")),
              "'" + Name +
                  ".cfg', analog channel 1 (Ia Q1), offset b: the record says '-187', the recording '-186'");
    EXPECT_EQ(
        scene.VerdictWith("cfg", With(configuration, ",3906.25,", ",3906.24,")),
        "'" + Name +
            ".cfg', analog channel 1 (Ia Q1), skew: the record says '3906.24', the recording '3906.25'");
    EXPECT_EQ(
        scene.VerdictWith("cfg", With(configuration, ",2048,", ",2047,")),
        "'" + Name +
            ".cfg', analog channel 2 (Ub Q1), highest code: the record says '2047', the recording '2048'");
}

TEST(Places, NamesOfTheConfiguration)
{
    const Scene scene = Made("");
    const QByteArray configuration = scene.Bytes("cfg");
    EXPECT_EQ(scene.VerdictWith("cfg", With(configuration, "\n3,x Q2,", "\n3,y Q2,")),
              "'" + Name +
                  ".cfg', state channel 3 (x Q2), name: the record says 'y Q2', the recording 'x Q2'");
    EXPECT_EQ(scene.VerdictWith("cfg", With(configuration, "Object,", "Objekt,")),
              "'" + Name + ".cfg', station: the record says 'Objekt', the recording 'Object'");
}

TEST(Places, StampsAndCountOfTheConfiguration)
{
    const Scene scene = Made("");
    const QByteArray configuration = scene.Bytes("cfg");
    EXPECT_EQ(scene.VerdictWith("cfg", With(configuration, "12:00:00.250000", "12:00:00.250001")),
              "'" + Name +
                  ".cfg', trigger, time of day: the record says '12:00:00.250001', the recording "
                  "'12:00:00.250000'");
    EXPECT_EQ(scene.VerdictWith("cfg", With(configuration, "2400,10", "2400,11")),
              "'" + Name + ".cfg', number of the last sample: the record says '11', the recording '10'");
}

TEST(Places, LineOfTheReport)
{
    const Scene scene = Made("");
    const QByteArray report = scene.Bytes("hdr");
    EXPECT_EQ(scene.VerdictWith("hdr", With(report, "\n" + QByteArray(58, '-') + "\n", "\n\n")),
              "'" + Name + ".hdr', line 9: the record says '', the recording '" + QString(58, '-') + "'");
    EXPECT_EQ(scene.VerdictWith("hdr", report + "\n"),
              "'" + Name + ".hdr' goes on after line 53, which should be its last");
}

TEST(Places, KeyOfTheInformation)
{
    const Scene scene = Made("");
    EXPECT_EQ(
        scene.VerdictWith("inf", With(scene.Bytes("inf"), "Channel_Multiplier=62.5", "Channel_Multiplier=0")),
        "'" + Name +
            ".inf', line 26: the record says 'Channel_Multiplier=0', the recording "
            "'Channel_Multiplier=62.5'");
}

TEST(Places, PiecesOfACff)
{
    const Scene scene = Made("Тип Comtrade CFF=1");
    const QByteArray whole = scene.Bytes("cff");
    EXPECT_EQ(scene.VerdictWith("cff", With(whole, "2,417,130,", "2,417,131,")),
              "'" + Name +
                  ".cff', record 2, analog channel 1 (Ia Q1): the record says '131', the recording '130'");
    EXPECT_EQ(
        scene.VerdictWith("cff", With(whole, ",62.5,", ",62.6,")),
        "'" + Name +
            ".cff', analog channel 1 (Ia Q1), multiplier a: the record says '62.6', the recording '62.5'");
    EXPECT_EQ(
        scene.VerdictWith("cff", With(whole, "Station_Name=Object", "Station_Name=Objekt")),
        "'" + Name +
            ".cff', line 6: the record says 'Station_Name=Objekt', the recording 'Station_Name=Object'");
}

TEST(Places, MissingPieceIsNamed)
{
    for (const char* extension : {"cfg", "dat", "hdr", "inf"}) {
        const Scene scene = Made("");
        ASSERT_TRUE(QFile::remove(scene.Path(extension)));
        EXPECT_TRUE(scene.Verdict().contains(Name)) << scene.Verdict();
        EXPECT_TRUE(scene.Verdict().contains(QLatin1String(extension))) << scene.Verdict();
    }
}

TEST(Places, RecordingThatIsGoneIsReported)
{
    const Scene scene = Made("");
    ASSERT_TRUE(QFile::remove(scene.Recording()));
    EXPECT_EQ(scene.Verdict(),
              QStringLiteral("the recording cannot be read: there is no such file; check the path")
                  .arg(scene.Recording()));
}
