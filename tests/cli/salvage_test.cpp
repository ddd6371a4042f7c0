// zucmtr convert --salvage: damaged recordings.
#include "program.h"

#include "station/station.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace {

constexpr int LastChannel = 86; // bytes of its section, which has one change

station::StationOptions Small(int segments = 1)
{
    station::StationOptions options;
    options.seconds = 0.25;
    options.segments = segments;
    return options;
}

// A station with one recording, rec.ZU with its continuations, and the ini file of the sample.
class Station : public TestDirectory
{
public:
    explicit Station(int segments = 1) : files(station::MakeFiles(Small(segments), Start))
    {
        Write("ZuDrv.ini", station::MakeIni(Small(segments)).toUtf8());
        MakeDirectory("out");
        Restore();
    }

    // Puts the undamaged files back.
    void Restore() const
    {
        for (size_t i = 0; i < files.size(); ++i)
            Write(NameOf(i), files[i].bytes);
    }

    // Cuts so many bytes off a file.
    void Cut(int bytes, size_t file = 0) const { Write(NameOf(file), files[file].bytes.chopped(bytes)); }

    Finished Convert(const QStringList& options) const
    {
        return RunProgram(Path(), QStringList{"convert", "--out", "out"} + options + QStringList{"rec.ZU"});
    }

    QByteArray Record(const QString& extension) const
    {
        for (const QString& name : Names("out")) {
            if (name.endsWith(extension))
                return ReadBytes(Path("out/" + name));
        }
        return QByteArray();
    }

    // Name of the last discrete channel.
    static QString LastName() { return "ВЛ-220 Северная:Пуск защит"; }

    static constexpr auto Start = station::StartKind::PositiveSequence;

private:
    static QString NameOf(size_t file) { return file == 0 ? "rec.ZU" : QString("rec.Z0%1").arg(file); }

    const std::vector<recorderfile::NamedFile> files;
};

QJsonObject ObjectOf(const QString& line)
{
    return QJsonDocument::fromJson(line.toUtf8()).object();
}

const QString Name = "240131,115959.8,+3t,ПС Узловая,РАС-1.Восточные сети";

} // namespace

TEST(Salvage, ConvertsWhatIsWholeAndSaysWhatIsLost)
{
    const Station place;
    place.Cut(35);
    EXPECT_EQ(place.Convert({}).code, 1);
    EXPECT_EQ(place.Names("out"), QStringList());
    const Finished run = place.Convert({"--salvage"});
    EXPECT_EQ(run.code, 3) << run.err;
    EXPECT_EQ(run.err, QString());
    EXPECT_EQ(run.out, "rec.ZU -> " + Name +
                           " (salvaged: 32 of 32 analog, 63 of 64 discrete channels); lost channels: '" +
                           Station::LastName() + "'\n");
    EXPECT_TRUE(place.Record(".cfg").contains("\n95,32A,63D"));
}

TEST(Salvage, SaysItToProgramsToo)
{
    const Station place;
    place.Cut(35);
    const QJsonObject object = ObjectOf(place.Convert({"--salvage", "--json"}).out);
    EXPECT_EQ(object["status"], "converted");
    EXPECT_EQ(object["verified"], true);
    const QJsonObject salvaged = object["salvaged"].toObject();
    EXPECT_EQ(salvaged, (QJsonObject{{"analog", 32},
                                     {"discrete", 63},
                                     {"allAnalog", 32},
                                     {"allDiscrete", 64},
                                     {"channels", 96},
                                     {"lost", QJsonArray{Station::LastName()}},
                                     {"nameless", 0},
                                     {"lostFiles", QJsonArray()}}));
    EXPECT_FALSE(ObjectOf(place.Convert({"--json", "--out", "."}).out).contains("salvaged"));
}

TEST(Salvage, NamesLostChannelsByTheDictionary)
{
    const Station place;
    place.Cut(LastChannel + 10); // nothing is left of the last channel
    EXPECT_EQ(place.Convert({"--salvage"}).out,
              "rec.ZU -> " + Name +
                  " (salvaged: 32 of 32 analog, 62 of 64 discrete channels); lost channels: "
                  "'ВЛ-110 Западная:Пуск ОМП', '" +
                  Station::LastName() + "'\n");
}

TEST(Salvage, LeavesAWholeRecordingAsItIs)
{
    const Station plain;
    const Station salvaged;
    EXPECT_EQ(plain.Convert({}).code, 0);
    const Finished run = salvaged.Convert({"--salvage"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "rec.ZU -> " + Name + "\n");
    for (const char* extension : {".cfg", ".dat", ".hdr", ".inf"})
        EXPECT_EQ(salvaged.Record(extension), plain.Record(extension)) << extension;
}

TEST(Salvage, IsAWarningForThoseWhoAskForNothingElse)
{
    const Station place;
    place.Cut(35);
    const Finished run = place.Convert({"--salvage", "--quiet"});
    EXPECT_EQ(run.code, 3);
    EXPECT_EQ(run.out, QString());
    EXPECT_TRUE(run.err.startsWith("zucmtr: rec.ZU -> " + Name + " (salvaged: 32 of 32 analog, "));
}

TEST(Salvage, KeepsTheRecording)
{
    const Station place;
    place.MakeDirectory("archive");
    for (const QStringList& options : {QStringList{"--remove-source"}, QStringList{"--archive", "archive"}}) {
        place.Cut(35);
        const Finished run = place.Convert(options + QStringList{"--salvage"});
        EXPECT_EQ(run.code, 3);
        EXPECT_TRUE(run.out.endsWith("'; the recording is kept, as it is damaged\n")) << run.out;
        EXPECT_TRUE(QFile::exists(place.Path("rec.ZU")));
        EXPECT_EQ(place.Names("archive"), QStringList());
    }
}

TEST(Salvage, KnowsItsRecordAndReplacesItByAMoreCompleteOne)
{
    const Station place;
    place.Cut(20000);
    EXPECT_EQ(place.Convert({"--salvage"}).code, 3);
    const QByteArray first = place.Record(".dat");
    const Finished again = place.Convert({"--salvage"});
    EXPECT_EQ(again.code, 3);
    EXPECT_TRUE(again.out.contains(" discrete channels); it was there already; lost channels: "))
        << again.out;
    place.Cut(35); // more of it came
    EXPECT_EQ(place.Convert({"--salvage"}).code, 3);
    EXPECT_NE(place.Record(".dat"), first);
    place.Restore();
    const Finished whole = place.Convert({});
    EXPECT_EQ(whole.code, 0) << whole.err;
    EXPECT_EQ(whole.out, "rec.ZU -> " + Name + "\n");
    EXPECT_EQ(place.Convert({"--salvage"}).out, "rec.ZU -> " + Name + "; it was there already\n");
}

TEST(Salvage, DoesNotReplaceTheRecordOfTheWholeRecording)
{
    const Station place;
    EXPECT_EQ(place.Convert({}).code, 0);
    const QByteArray data = place.Record(".dat");
    place.Cut(35);
    const Finished run = place.Convert({"--salvage"});
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.err.contains("; the recording is damaged, so that this may be the record of the whole "
                                 "one); move it away, "))
        << run.err;
    EXPECT_EQ(place.Record(".dat"), data);
}

TEST(Salvage, OfAChainKeepsTheChannelsThatAreWholeInAllFiles)
{
    for (const size_t file : {0U, 1U, 2U}) {
        const Station place(3);
        place.Cut(1, file);
        const Finished run = place.Convert({"--salvage"});
        EXPECT_EQ(run.code, 3) << run.err;
        EXPECT_EQ(run.out, "rec.ZU -> " + Name +
                               " (salvaged: 32 of 32 analog, 63 of 64 discrete channels); lost channels: '" +
                               Station::LastName() + "'\n");
        EXPECT_TRUE(place.Record(".cfg").contains("\n2400,1800"));
        place.Restore();
        EXPECT_EQ(place.Convert({}).code, 0);
    }
}

TEST(Salvage, OfAChainEndsBeforeAFileWithTooLittle)
{
    const Station place(3);
    place.Cut(30000, 2);
    const Finished run = place.Convert({"--salvage", "--remove-source"});
    EXPECT_EQ(run.code, 3);
    EXPECT_TRUE(run.out.startsWith(
        "rec.ZU -> " + Name + " (salvaged: 32 of 32 analog, 64 of 64 discrete channels, 2 of 3 files); "))
        << run.out;
    EXPECT_TRUE(
        run.out.contains("; not in the record: rec.Z02; the recording is kept, as 'rec.Z02' is not in "
                         "the record"))
        << run.out;
    EXPECT_TRUE(place.Record(".cfg").contains("\n2400,1200"));
}

TEST(Salvage, FailsWhereNothingIsWhole)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording()).left(300));
    const Finished run = place.Convert({"--salvage", "a.ZU"});
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.err.endsWith("; no channel of it is whole, so that there is nothing to salvage\n"))
        << run.err;
    EXPECT_EQ(place.Names("out"), QStringList());
    EXPECT_EQ(place.Convert({"--salvage", "--trust-writer", "a.ZU"}).code, 2);
}

TEST(Salvage, PlansWithoutWriting)
{
    const Station place;
    place.Cut(35);
    const Finished run = place.Convert({"--salvage", "--dry-run"});
    EXPECT_EQ(run.code, 3);
    EXPECT_TRUE(run.out.startsWith("rec.ZU -> out/" + Name + " (salvaged: 32 of 32 analog, 63 of 64 "));
    EXPECT_EQ(place.Names("out"), QStringList());
}

// The library numbers the channels of an equipment by their places in the dictionary.
TEST(Salvage, HasTheEquipmentsChannelsByTheirNumbersInTheRecord)
{
    const Station place;
    place.Cut(25000);
    EXPECT_EQ(place.Convert({"--salvage"}).code, 3);
    QStringList circuits = {QString()}; // of the analog channels, from 1
    for (const QByteArray& line : place.Record(".cfg").split('\n')) {
        if (line.split(',').size() == 13)
            circuits << QString::fromUtf8(line.split(',')[3]);
    }
    EXPECT_GT(circuits.size(), 10);
    EXPECT_LT(circuits.size(), 32);
    QString equipment;
    int numbers = 0;
    for (const QByteArray& line : place.Record(".inf").split('\n')) {
        const QString key = QString::fromUtf8(line).section('=', 0, 0);
        const QString value = QString::fromUtf8(line).section('=', 1).trimmed();
        if (key == "Equipment_ID")
            equipment = value;
        if (!key.endsWith("T_Channel_Number") && !key.endsWith("F_Channel_Number"))
            continue;
        for (const QString& number : value.split(',')) {
            if (number.isEmpty() || number == "0")
                continue;
            ASSERT_LT(number.toInt(), circuits.size());
            EXPECT_EQ(circuits[number.toInt()], equipment) << number;
            ++numbers;
        }
    }
    EXPECT_GT(numbers, 5);
    EXPECT_TRUE(place.Record(".inf").contains("\nStatusChannelCount=0\r"));
}

TEST(Salvage, OfARecordingWithoutStatesIsRightAfterOneWithStates)
{
    const Workplace place;
    recorderfile::Recording recording = ShortRecording(1);
    place.Write("a.ZU", Encode(ShortRecording()));
    place.Write("b.ZU", Encode(recording).chopped(5));
    const Finished run = place.Convert({"--salvage", "a.ZU", "b.ZU"});
    EXPECT_EQ(run.code, 3) << run.err;
    EXPECT_TRUE(run.out.contains(" (salvaged: 1 of 1 analog, 0 of 1 discrete channels)")) << run.out;
}

TEST(Salvage, IsShownByInfo)
{
    const Station place;
    place.Cut(35);
    const Finished run = RunProgram(place.Path(), {"info", "rec.ZU"});
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.out.contains("\n  note: whole: 32 analog and 63 discrete of 96 channels; 'zucmtr convert "
                                 "--salvage' converts them\n"))
        << run.out;
    const QJsonObject object = ObjectOf(RunProgram(place.Path(), {"info", "--json", "rec.ZU"}).out);
    EXPECT_EQ(object["reason"], "recordingUnreadable");
    EXPECT_EQ(object["salvageable"].toObject()["discrete"], 63);
    place.Restore();
    EXPECT_FALSE(
        ObjectOf(RunProgram(place.Path(), {"info", "--json", "rec.ZU"}).out).contains("salvageable"));
}

TEST(Salvage, OfSeveralAtOnceIsThatOfEach)
{
    const TestDirectory place;
    place.MakeDirectory("out");
    place.Write("ZuDrv.ini", station::MakeIni(Small()).toUtf8());
    QStringList files;
    int cut = 0;
    for (const station::StartKind start : station::PossibleStarts(Small())) {
        const QByteArray bytes = station::MakeFiles(Small(), start).front().bytes;
        files << QString("r%1.ZU").arg(files.size());
        place.Write(files.last(), bytes.chopped(cut));
        cut += 1500;
        place.MakeDirectory("out/" + files.last());
    }
    const QStringList options = {"convert", "--salvage", "--ini", "ZuDrv.ini", "--out"};
    const Finished one = RunProgram(place.Path(), options + QStringList{"out"} + files);
    place.MakeDirectory("many");
    const Finished many = RunProgram(place.Path(), options + QStringList{"many", "-j4"} + files);
    EXPECT_EQ(one.code, many.code);
    EXPECT_TRUE(one.err.contains(QString(", %1 of them salvaged in part").arg(files.size() - 1))) << one.err;
    EXPECT_EQ(many.out, one.out);
    for (const QString& name : place.Names("many"))
        EXPECT_EQ(ReadBytes(place.Path("many/" + name)), ReadBytes(place.Path("out/" + name))) << name;
}
