// zucmtr events, and what happened in the output of other commands.
#include "program.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

// The sample station, short, with its recording of a fault converted into out.
class Station : public Workplace
{
public:
    Station() { RunProgram(Path(), {"sample", "--out", ".", "--force"}); }

    Finished Run(const QStringList& arguments) const { return RunProgram(Path(), arguments); }

    QStringList Out() const { return QDir(Path("out")).entryList(QDir::Files | QDir::Hidden, QDir::Name); }
};

const QString Fault = QStringLiteral("Vostochnaya_000123.ZU");

QJsonObject JsonOf(const QString& text)
{
    return QJsonDocument::fromJson(text.toUtf8()).object();
}

QByteArray ContentOf(const QString& path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

// A record in ASCII with one discrete channel; its data given by the states.
void WriteRecord(const TestDirectory& place, const QString& name, const QString& channel,
                 const QString& states)
{
    place.Write(name + ".cfg",
                QStringLiteral("S,D,1999\n1,0A,1D\n1,%1,,W1,0\n50\n1\n1000,%2\n"
                               "01/02/2024,03:04:05.000000\n01/02/2024,03:04:05.002000\nASCII\n1\n")
                    .arg(channel)
                    .arg(states.size())
                    .toUtf8());
    QByteArray data;
    for (int i = 0; i < states.size(); ++i)
        data += QStringLiteral("%1,%2,%3\n").arg(i + 1).arg(i * 1000).arg(states[i]).toUtf8();
    place.Write(name + ".dat", data);
}

} // namespace

TEST(Events, AreAFewSentencesAndATable)
{
    const Station place;
    const Finished run = place.Run({"events", Fault});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_TRUE(run.out.startsWith(Fault + "\n  ")) << run.out;
    EXPECT_TRUE(run.out.contains("  Closed again after 560 ms, with success.\n")) << run.out;
    EXPECT_TRUE(run.out.contains(
        "\n  Time             From trigger, s  Since previous, s  Circuit              Signal                "
        "Kind       State\n"
        "  12:00:00.262083        +0.012083                     ВЛ 110 кВ Восточная  Пуск защит            "
        "start      1\n"
        "  12:00:00.306250        +0.056250           0.044167  ВЛ 110 кВ Восточная  Откл. от защит        "
        "trip       1\n"))
        << run.out;
}

TEST(Events, OfARecordAreThoseOfItsRecording)
{
    const Station place;
    ASSERT_EQ(place.Run({"convert", "--out", "out", Fault}).code, 0);
    const QString record = "out/" + place.Out().filter(".cfg").first();
    QJsonObject ofRecord = JsonOf(place.Run({"events", "--json", record}).out);
    const QJsonObject ofRecording = JsonOf(place.Run({"events", "--json", Fault}).out);
    EXPECT_EQ(ofRecord["file"].toString(), record);
    ofRecord["file"] = Fault;
    EXPECT_EQ(ofRecord, ofRecording);
    EXPECT_EQ(ofRecord["events"].toArray().size(), 12);
}

TEST(Events, AreOneCsvTableForAllFiles)
{
    const Station place;
    WriteRecord(place, "a", "Trip \"Z1\"", "0001111111");
    WriteRecord(place, "b", "52a", "1100000000");
    const Finished run = place.Run({"events", "--csv", "a.cfg", "none.cfg", "b.cfg"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "file,at,time,since,circuit,channel,name,kind,state,active,changes,bounce\r\n"
                       "a.cfg,2024-02-01T03:04:05.003000,0.001000,,W1,1,\"Trip \"\"Z1\"\"\",trip,1,1,1,0\r\n"
                       "b.cfg,2024-02-01T03:04:05.002000,0.000000,,W1,1,52a,breaker,0,0,1,0\r\n");
    EXPECT_EQ(run.err, "zucmtr: none.cfg: there is no such file; check the path\n");
}

TEST(Events, GoOnAfterAFileThatCannotBeRead)
{
    const Station place;
    WriteRecord(place, "a", "Trip", "0001111111");
    WriteRecord(place, "cut", "Trip", "0001111111");
    place.Write("cut.dat", "1,0,0\n2,10\n");
    place.Write("junk.ZU", "junk");
    const Finished run = place.Run({"events", "--json", "cut.cfg", "junk.ZU", "a.cfg"});
    EXPECT_EQ(run.code, 1);
    const QStringList lines = run.out.split('\n');
    EXPECT_EQ(JsonOf(lines[0])["reason"].toString(), "recordUnreadable");
    EXPECT_EQ(JsonOf(lines[1])["reason"].toString(), "recordingUnreadable");
    EXPECT_EQ(JsonOf(lines[2])["events"].toArray().size(), 1);
    EXPECT_EQ(run.err.count('\n'), 2);
}

TEST(Events, AreInRussian)
{
    const Station place;
    WriteRecord(place, "a", "Trip", "0001111111");
    const Finished run =
        RunProgram(place.Path(), {"events", "a.cfg"}, {{"LC_ALL", "ru_RU.UTF-8"}, {"LANGUAGE", ""}});
    EXPECT_EQ(
        run.out,
        "a.cfg\n"
        "  В записи нет присоединения с токами трёх фаз, поэтому короткое замыкание обнаружить нельзя.\n"
        "\n"
        "  Время            От пуска, с  От предыдущего, с  Присоединение  Сигнал  Вид         Состояние\n"
        "  03:04:05,003000    +0,001000                     W1             Trip    отключение  1\n");
}

TEST(Events, CsvAndJsonAreNotBoth)
{
    const Finished run = RunProgram(QString(), {"events", "--csv", "--json", "a.cfg"});
    EXPECT_EQ(run.code, 2);
    EXPECT_TRUE(run.err.contains("--csv")) << run.err;
}

TEST(Events, AreWrittenBesideTheRecordWithIt)
{
    const Station place;
    const Finished run = place.Run({"convert", "--events", "--view", "--json", "--out", "out", Fault});
    EXPECT_EQ(run.code, 0) << run.err;
    const QJsonObject object = JsonOf(run.out);
    const QString name = object["record"].toString();
    EXPECT_EQ(place.Out(), (QStringList{name + ".cfg", name + ".dat", name + ".events.json",
                                        name + ".events.txt", name + ".hdr", name + ".html", name + ".inf"}));
    EXPECT_EQ(object["files"].toArray().size(), 7);
    const QJsonObject stored = JsonOf(ContentOf(place.Path("out/" + name + ".events.json")));
    EXPECT_EQ(stored["file"].toString(), "out/" + name + ".cfg");
    EXPECT_EQ(stored["events"].toArray(),
              JsonOf(place.Run({"events", "--json", Fault}).out)["events"].toArray());
    const Finished shown = place.Run({"events", "out/" + name + ".cfg"});
    EXPECT_EQ(QString::fromUtf8(ContentOf(place.Path("out/" + name + ".events.txt"))), shown.out);
    EXPECT_EQ(object["summary"].toObject()["events"].toInt(), 12);
}

TEST(Events, AreWrittenBesideARecordThatIsThere)
{
    const Station place;
    ASSERT_EQ(place.Run({"convert", "--out", "out", Fault}).code, 0);
    const Finished run = place.Run({"convert", "--events", "--json", "--out", "out", Fault});
    EXPECT_EQ(JsonOf(run.out)["status"].toString(), "present") << run.out;
    EXPECT_EQ(place.Out().filter(".events.").size(), 2);
    EXPECT_EQ(JsonOf(run.out)["files"].toArray().size(), 6);
}

TEST(Events, ThatCannotBeWrittenKeepTheRecordAndTheRecording)
{
    const Station place;
    ASSERT_EQ(place.Run({"convert", "--out", "out", Fault}).code, 0);
    const QString name = place.Out().first().section('.', 0, -2);
    QDir(place.Path("out")).mkdir(name + ".events.txt");
    for (const QStringList& again : {QStringList(), QStringList{"--again"}}) {
        const Finished run = place.Run(
            QStringList{"convert", "--events", "--json", "--remove-source", "--out", "out", Fault} + again);
        EXPECT_EQ(run.code, 1);
        EXPECT_EQ(JsonOf(run.out)["reason"].toString(), "eventsNotWritten");
        EXPECT_EQ(JsonOf(run.out)["error"].toString(),
                  "converted, but its events could not be written: 'out/" + name +
                      ".events.txt' is not a regular file; move it away; the recording is kept");
        EXPECT_TRUE(QFile::exists(place.Path(Fault)));
        EXPECT_EQ(place.Out(), (QStringList{name + ".cfg", name + ".dat", name + ".hdr", name + ".inf"}));
    }
}

TEST(Events, AreInTheDescriptionOfARecording)
{
    const Station place;
    const QJsonObject object = JsonOf(place.Run({"info", "--json", "--no-channels", Fault}).out);
    const QJsonObject summary = object["summary"].toObject();
    EXPECT_EQ(summary["events"].toInt(), 12);
    EXPECT_EQ(summary["operating"], JsonOf(place.Run({"events", "--json", Fault}).out)["operating"]);
    EXPECT_TRUE(place.Run({"info", "--no-channels", Fault}).out.contains("\n  What happened:       "));
}

TEST(Events, DescriptionNeedsNoChoiceOfTheRecorder)
{
    const Station place;
    place.Write("ZuDrv.ini", ContentOf(place.Path("ZuDrv.ini")) + "\n[Another]\nИсточник=X\n");
    const Finished run = place.Run({"info", "--json", "--no-channels", Fault});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(JsonOf(run.out)["summary"].toObject()["events"].toInt(), 12);
    const Finished events = place.Run({"events", Fault});
    EXPECT_EQ(events.code, 2);
    EXPECT_TRUE(events.err.contains("--device")) << events.err;
}
