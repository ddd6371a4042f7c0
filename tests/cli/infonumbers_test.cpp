// zucmtr info: durations, rates, counts and times, for records from any program, and the same for a recording
// and its record.
#include "base/chainnames.h"
#include "program.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace {

using recorderfile::Encode;

// A record from another program: one analog channel, one state, ASCII.
struct Foreign
{
    QStringList rates = {"100,301"}; // lines of the configuration
    int rateCount = -1;              // -1: as many as there are lines
    int samples = 301;
    double step = 10; // of the stamps; negative: there are none
    QString start = "01/02/2024,03:04:05.000006";
    QString multiplier = "1";
    QString zone = "x,x"; // empty: revision 1999
    QString codes = "7";  // of the samples, one after the other, from the first again
    QString states = "0";
};

QByteArray ConfigurationOf(const Foreign& record)
{
    const int count = record.rateCount < 0 ? record.rates.size() : record.rateCount;
    QStringList lines = {QString("S,D,%1").arg(record.zone.isEmpty() ? 1999 : 2013),
                         "2,1A,1D",
                         "1,Ia,A,W1,kA,1,0,0,-9,9,1,1,P",
                         "1,On,,W1,0",
                         "50",
                         QString::number(count)};
    lines << record.rates << record.start << "01/02/2024,03:04:06"
          << "ASCII" << record.multiplier;
    if (!record.zone.isEmpty())
        lines << record.zone << "0,0";
    return lines.join("\r\n").toUtf8() + "\r\n";
}

QByteArray DataOf(const Foreign& record)
{
    const QStringList codes = record.codes.split(' ');
    QString text;
    for (int i = 0; i < record.samples; ++i)
        text += QString("%1,%2,%3,%4\r\n")
                    .arg(i + 1)
                    .arg(record.step < 0 ? QString() : QString::number(std::llround(i * record.step)))
                    .arg(codes[i % codes.size()])
                    .arg(record.states[i % record.states.size()]);
    return text.toUtf8();
}

class ForeignInfo : public testing::Test
{
protected:
    void Write(const Foreign& record) const
    {
        place.Write("a.cfg", ConfigurationOf(record));
        place.Write("a.dat", DataOf(record));
    }

    Finished Text(const Foreign& record) const
    {
        Write(record);
        return RunProgram(place.Path(), {"info", "a.cfg"});
    }

    // The text after a label.
    QString Line(const Foreign& record, const QString& label) const
    {
        for (const QString& line : Text(record).out.split('\n'))
            if (line.startsWith("  " + label + ":"))
                return line.mid(label.size() + 3).trimmed();
        return QString();
    }

    QJsonObject Json(const Foreign& record) const
    {
        Write(record);
        return JsonOfFile();
    }

    QJsonObject JsonOfFile() const
    {
        const Finished run = RunProgram(place.Path(), {"info", "--json", "a.cfg"});
        return QJsonDocument::fromJson(run.out.toUtf8()).object();
    }

    const TestDirectory place;
};

// The objects that `info --json` prints for the files.
std::vector<QJsonObject> InfoOf(const TestDirectory& place, const QStringList& files)
{
    const Finished run = RunProgram(place.Path(), QStringList{"info", "--json"} + files);
    EXPECT_EQ(run.code, 0) << run.err;
    std::vector<QJsonObject> objects;
    for (const QString& line : run.out.split('\n', Qt::SkipEmptyParts))
        objects.push_back(QJsonDocument::fromJson(line.toUtf8()).object());
    return objects;
}

QList<int> Changes(const QJsonObject& object)
{
    QList<int> changes;
    for (const QJsonValue& channel : object["discrete"].toArray())
        changes << channel.toObject()["changes"].toInt(-1);
    return changes;
}

} // namespace

TEST_F(ForeignInfo, DurationFollowsFromRateAndSampleNumber)
{
    Foreign record;
    EXPECT_EQ(Line(record, "Duration"), "3.010000 s");
    EXPECT_EQ(Json(record)["seconds"].toDouble(), 3.01);
    record.step = -1;
    EXPECT_EQ(Line(record, "Duration"), "3.010000 s");
    EXPECT_EQ(Json(record)["seconds"].toDouble(), 3.01);
}

TEST_F(ForeignInfo, SeveralRatesAreAllShownWithTheirLastSamples)
{
    Foreign record;
    record.rates = QStringList{"1000,100", "50,150", "2400,301"};
    EXPECT_EQ(Line(record, "Sampling rate"),
              "1000 Hz up to sample 100; 50 Hz up to sample 150; 2400 Hz up to sample 301");
    EXPECT_EQ(Line(record, "Samples"), "301");
    const QJsonObject object = Json(record);
    EXPECT_EQ(object["rates"].toArray(), (QJsonArray{QJsonObject{{"rate", 1000}, {"lastSample", 100}},
                                                     QJsonObject{{"rate", 50}, {"lastSample", 150}},
                                                     QJsonObject{{"rate", 2400}, {"lastSample", 301}}}));
    EXPECT_TRUE(object["rate"].isNull()) << "there is no one rate";
    EXPECT_DOUBLE_EQ(object["seconds"].toDouble(), 100 / 1000.0 + 50 / 50.0 + 151 / 2400.0);
}

TEST_F(ForeignInfo, OneRateIsANumberToo)
{
    const QJsonObject object = Json(Foreign());
    EXPECT_EQ(object["rate"].toDouble(), 100);
    EXPECT_EQ(object["rates"].toArray(), (QJsonArray{QJsonObject{{"rate", 100}, {"lastSample", 301}}}));
    EXPECT_EQ(Line(Foreign(), "Sampling rate"), "100 Hz");
}

TEST_F(ForeignInfo, WithoutAConstantRateTheStampsCount)
{
    Foreign record;
    record.rates = QStringList{"0,301"};
    record.rateCount = 0;
    EXPECT_EQ(Line(record, "Sampling rate"), "not constant, the samples have time stamps");
    EXPECT_EQ(Line(record, "Duration"), "0.003000 s");
    const QJsonObject object = Json(record);
    EXPECT_TRUE(object["rate"].isNull());
    EXPECT_EQ(object["rates"].toArray(),
              (QJsonArray{QJsonObject{{"rate", QJsonValue()}, {"lastSample", 301}}}));
    record.multiplier = "1000";
    EXPECT_DOUBLE_EQ(Json(record)["seconds"].toDouble(), 3);
    record.start = "01/02/2024,03:04:05.000006007"; // then the stamps are nanoseconds
    EXPECT_DOUBLE_EQ(Json(record)["seconds"].toDouble(), 0.003);
}

TEST_F(ForeignInfo, StampsCountOnlyWhereTheRateIsNotConstant)
{
    Foreign record;
    record.rates = QStringList{"100,200", "0,301"};
    EXPECT_EQ(Line(record, "Sampling rate"), "100 Hz up to sample 200; not constant up to sample 301");
    EXPECT_DOUBLE_EQ(Json(record)["seconds"].toDouble(), 2 + 100 * 10e-6);
}

TEST_F(ForeignInfo, DurationIsUnknownWithoutRateAndStamps)
{
    Foreign record;
    record.rates = QStringList{"0,301"};
    record.step = -1;
    EXPECT_EQ(Line(record, "Duration"), "unknown");
    EXPECT_EQ(Json(record)["seconds"], QJsonValue(QJsonValue::Null));
}

TEST_F(ForeignInfo, MissingValuesAreCounted)
{
    Foreign record;
    record.samples = 12;
    record.rates = QStringList{"100,12"};
    record.codes = "1  3 4"; // every fourth is empty
    EXPECT_EQ(Line(record, "Missing values"), "3");
    const QJsonObject object = Json(record);
    EXPECT_EQ(object["missing"].toInt(), 3);
    EXPECT_EQ(object["analog"].toArray()[0].toObject()["missing"].toInt(), 3);
}

TEST_F(ForeignInfo, ChangesAreTheSamplesWhoseStateDiffersFromTheOneBefore)
{
    Foreign record;
    record.samples = 10;
    record.rates = QStringList{"100,10"};
    record.states = "1110100110";
    EXPECT_EQ(Changes(Json(record)), QList<int>{5});
    record.states = "1";
    EXPECT_EQ(Changes(Json(record)), QList<int>{0});
}

TEST_F(ForeignInfo, FewerOrMoreSamplesThanTheConfigurationSaysAreForgiven)
{
    const std::pair<int, const char*> counts[] = {{300, "samplesLacking"}, {302, "samplesLeftOver"}};
    for (const auto& [samples, reason] : counts) {
        Foreign record;
        record.samples = samples;
        const Finished run = Text(record);
        EXPECT_EQ(run.code, 0);
        EXPECT_TRUE(run.out.contains("note: a.dat")) << run.out;
        const QJsonObject object = Json(record);
        EXPECT_EQ(object["samples"].toInt(), 301);
        EXPECT_EQ(object["samplesFound"].toInt(), samples);
        const QJsonArray forgiven = object["forgiven"].toArray();
        EXPECT_EQ(forgiven.last().toObject()["reason"].toString(), reason);
        EXPECT_EQ(forgiven.last().toObject()["severity"].toString(), "error");
        EXPECT_FALSE(object.contains("error"));
    }
}

TEST_F(ForeignInfo, DataThatEndWithinASampleAreReadUpToIt)
{
    Write(Foreign());
    QFile data(place.Path("a.dat"));
    ASSERT_TRUE(data.resize(data.size() - 4));
    const QJsonObject object = JsonOfFile();
    EXPECT_FALSE(object.contains("error"));
    EXPECT_EQ(object["samplesFound"].toInt(), 300);
    EXPECT_EQ(object["missing"].toInt(), 0);
    const QJsonArray forgiven = object["forgiven"].toArray();
    EXPECT_EQ(forgiven[forgiven.size() - 2].toObject()["reason"].toString(), "sampleCutOff");
}

TEST_F(ForeignInfo, DataThatCannotBeReadLeaveTheirCountsOpen)
{
    Write(Foreign());
    QFile data(place.Path("a.dat"));
    ASSERT_TRUE(data.open(QIODevice::ReadOnly));
    place.Write("a.dat", data.readAll().replace("\n300,", "\ntext that is no sample\n300,"));
    const QJsonObject object = JsonOfFile();
    EXPECT_EQ(object["reason"].toString(), "dataUnreadable");
    EXPECT_TRUE(object["error"].toString().contains("a.dat, record 300: ")) << object["error"].toString();
    EXPECT_EQ(object["seconds"].toDouble(), 3.01);
    EXPECT_FALSE(object.contains("missing"));
    EXPECT_TRUE(object["discrete"].toArray()[0].toObject()["changes"].isNull());
    EXPECT_TRUE(object["analog"].toArray()[0].toObject()["missing"].isNull());
}

TEST_F(ForeignInfo, TimesHaveTheOffsetOfTheTimeCode)
{
    const QString moment = "2024-02-01T03:04:05.000006";
    const QMap<QString, QString> offsets = {
        {"+3,+3", "+03:00"},    {"0,+3", "+00:00"},     {"-4,-4", "-04:00"}, {"-7h15,x", "-07:15"},
        {"+10h30,x", "+10:30"}, {"+05ч30,x", "+05:30"}, {"x,+3", ""},        {"", ""},
    };
    for (auto one = offsets.begin(); one != offsets.end(); ++one) {
        Foreign record;
        record.zone = one.key();
        const QJsonObject object = Json(record);
        EXPECT_EQ(object["start"].toString(), moment + one.value()) << one.key();
        EXPECT_EQ(object["trigger"].toString(), "2024-02-01T03:04:06" + one.value()) << one.key();
    }
}

TEST_F(ForeignInfo, PiecesAreAList)
{
    EXPECT_EQ(Json(Foreign())["pieces"].toArray(), QJsonArray());
    EXPECT_EQ(Line(Foreign(), "Further pieces"), "none");
    place.Write("a.hdr", "12345");
    place.Write("a.inf", "123");
    EXPECT_EQ(JsonOfFile()["pieces"].toArray(),
              (QJsonArray{QJsonObject{{"piece", "header"}, {"bytes", 5}},
                          QJsonObject{{"piece", "information"}, {"bytes", 3}}}));
    EXPECT_EQ(Line(Foreign(), "Further pieces"), "header 5 bytes, information 3 bytes");
}

// A recording of three files. Its states: one that never changes, a pulse shorter than a sample, an inverted
// one that repeats itself, and one that differs in each file.
TEST(InfoOfBoth, ChangesOfARecordingAreThoseOfItsRecord)
{
    const Workplace place;
    for (int n = 0; n < 3; ++n) {
        recorderfile::Recording recording;
        recording.Add(recorderfile::AnalogChannel{"Q1:Ia", "А", std::vector<int16_t>(240, 1)});
        recording.Add(recorderfile::DiscreteChannel{"Q1:stays", 0, {{0, 1}}});
        recording.Add(recorderfile::DiscreteChannel{"Q1:short", 0, {{0, 0}, {50100, 1}, {50200, 0}}});
        recording.Add(
            recorderfile::DiscreteChannel{"Q1:twice", 1, {{0, 1}, {20000, 1}, {40000, 0}, {60000, 1}}});
        recording.Add(recorderfile::DiscreteChannel{"Q1:each", 0, {{0, static_cast<uint8_t>(n % 2)}}});
        recording.Add(recorderfile::DiscreteChannel{"Q1:none", 0, {}});
        place.Write(zu::ContinuationName("rec.ZU", n), Encode(recording));
    }
    ASSERT_EQ(place.Convert({"rec.ZU"}).code, 0);
    const std::vector<QJsonObject> both = InfoOf(place, {"rec.ZU", "out/" + ShortRecordName() + ".cfg"});
    ASSERT_EQ(both.size(), 2U);
    EXPECT_EQ(Changes(both[0]), (QList<int>{0, 0, 6, 2, 0}));
    EXPECT_EQ(Changes(both[1]), (QList<int>{0, 0, 6, 2, 0}));
}

namespace {

recorderfile::Recording RandomRecording(std::mt19937& random, int number)
{
    const auto upTo = [&](int most) { return static_cast<int>(random() % static_cast<unsigned>(most + 1)); };
    recorderfile::Recording recording = ShortRecording(number);
    recording.sections.clear();
    const float rates[] = {100, 1200, 1800, 2400, 9600};
    const float rate = rates[number % 5];
    const int points = 1 + upTo(2000);
    if (number % 4 != 3) { // else states alone
        recorderfile::AnalogChannel channel{"Q1:Ia", "А", std::vector<int16_t>(size_t(points), 1)};
        channel.rate = rate;
        recording.Add(channel);
    } else {
        recording.duration = static_cast<uint32_t>(1 + upTo(500000));
    }
    const int last = static_cast<int>(1e6F * static_cast<float>(points) / rate);
    for (int i = 0; i < 6; ++i) {
        std::vector<uint32_t> times;
        for (int n = upTo(30); n > 0; --n)
            times.push_back(static_cast<uint32_t>(upTo(last + 1000)));
        std::sort(times.begin(), times.end());
        recorderfile::DiscreteChannel channel{QString("Q1:x%1").arg(i), static_cast<uint8_t>(upTo(1)), {}};
        for (const uint32_t time : times)
            channel.changes.push_back({time, static_cast<uint8_t>(upTo(1))});
        recording.Add(channel);
    }
    return recording;
}

// Without what only one of the two has.
QJsonObject Shared(const QJsonObject& object)
{
    QJsonObject shared;
    for (const char* key : {"channels", "rate", "rates", "samples", "seconds", "start", "trigger"})
        shared[key] = object[key];
    return shared;
}

// A second count, of the states of the record's ASCII data.
QList<int> ChangesInData(const TestDirectory& place, const QString& record, int analog)
{
    QList<int> changes;
    QStringList before;
    for (const QString& line : ReadLines(place.Path("out/" + record + ".dat"))) {
        const QStringList states = line.split(',').mid(2 + analog);
        for (int i = 0; i < states.size(); ++i) {
            if (changes.size() <= i)
                changes << 0;
            if (!before.isEmpty() && before[i] != states[i])
                ++changes[i];
        }
        before = states;
    }
    return changes;
}

} // namespace

TEST(InfoOfBoth, RandomRecordingsAndTheirRecordsShowTheSame)
{
    const Workplace place;
    std::mt19937 random(20240131);
    constexpr int count = 20;
    QStringList recordings;
    QStringList records;
    for (int n = 0; n < count; ++n) {
        const QString name = QString("r%1.ZU").arg(n, 2, 10, QLatin1Char('0'));
        const recorderfile::Recording recording = RandomRecording(random, n);
        place.Write(name, Encode(recording));
        for (int part = 1; part <= n % 3; ++part)
            place.Write(zu::ContinuationName(name, part), Encode(recording));
        recordings << name;
        records << "out/" + ShortRecordName(n);
    }
    ASSERT_EQ(place.Convert(recordings).code, 0);
    QStringList configurations;
    for (const QString& record : records)
        configurations << record + ".cfg";
    const std::vector<QJsonObject> first = InfoOf(place, recordings);
    const std::vector<QJsonObject> second = InfoOf(place, configurations);
    ASSERT_EQ(first.size(), size_t(count));
    ASSERT_EQ(second.size(), size_t(count));
    int all = 0;
    for (int n = 0; n < count; ++n) {
        const auto i = static_cast<size_t>(n);
        EXPECT_EQ(Shared(first[i]), Shared(second[i])) << recordings[n];
        EXPECT_GT(first[i]["seconds"].toDouble(), 0) << recordings[n];
        EXPECT_EQ(Changes(first[i]), Changes(second[i])) << recordings[n];
        EXPECT_EQ(Changes(second[i]),
                  ChangesInData(place, records[n].mid(4), first[i]["analog"].toArray().size()))
            << recordings[n];
        for (const int changes : Changes(first[i]))
            all += changes;
    }
    EXPECT_GT(all, 500) << "there is something to count";
}

TEST(InfoOfBoth, HeaderThatIsTooShortIsNotedBeforeSamplesAreLost)
{
    const Workplace place;
    recorderfile::Recording recording = ShortRecording();
    recording.duration = 800; // two of the three samples
    place.Write("rec.ZU", Encode(recording));
    const std::vector<QJsonObject> objects = InfoOf(place, {"rec.ZU"});
    ASSERT_EQ(objects.size(), 1U);
    EXPECT_EQ(
        objects[0]["notes"].toArray(),
        QJsonArray{"by the durations in the headers of its files, its record will hold 2 of the 3 samples"});
    EXPECT_EQ(place.Convert({"rec.ZU"}).code, 0);
    const Finished run = RunProgram(place.Path(), {"info", "--json", "out/" + ShortRecordName() + ".cfg"});
    EXPECT_EQ(QJsonDocument::fromJson(run.out.toUtf8()).object()["samplesFound"].toInt(), 2);
}

TEST(InfoOfBoth, EndOfAChainHasAWordAndAText)
{
    const auto end = [](const QByteArray& second, int files) {
        const Workplace place;
        const QByteArray bytes = Encode(ShortRecording());
        for (int n = 0; n < files; ++n)
            place.Write(zu::ContinuationName("rec.ZU", n), n == 1 ? second : bytes);
        const QJsonObject object = InfoOf(place, {"rec.ZU"})[0];
        return object["chainEnd"].toString() + ": " + object["chainEndText"].toString();
    };
    const QByteArray good = Encode(ShortRecording());
    recorderfile::Recording other = ShortRecording();
    other.identity = "X";
    EXPECT_EQ(end(good, 1), "noNextFile: there is no rec.Z01");
    EXPECT_EQ(end(good, 2), "noNextFile: there is no rec.Z02");
    EXPECT_EQ(end(good.left(300), 3), "nextFileUnreadable: rec.Z01 cannot be read");
    EXPECT_EQ(end(Encode(other), 3), "nextFileDiffers: rec.Z01 differs from the first file");
    EXPECT_EQ(end(good, 16), "allFiles: it has all the files that a recording can have");
}
