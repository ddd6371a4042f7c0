// The sample archive, and recordings cut into segments.
#include "station/samplearchive.h"

#include "station/segments.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>

#include <algorithm>

using recorderfile::NamedFile;
using recorderfile::Recording;

namespace {

QMap<QString, QByteArray> FilesOf(const station::ArchiveOptions& options)
{
    QMap<QString, QByteArray> files;
    EXPECT_TRUE(station::MakeArchive(options, [&](const NamedFile& file) {
        EXPECT_FALSE(files.contains(file.name)) << file.name.toStdString();
        files.insert(file.name, file.bytes);
        return true;
    }));
    return files;
}

QStringList EndingWith(const QMap<QString, QByteArray>& files, const char* end)
{
    QStringList names = files.keys();
    names.erase(std::remove_if(names.begin(), names.end(),
                               [end](const QString& name) { return !name.endsWith(QLatin1String(end)); }),
                names.end());
    return names;
}

} // namespace

TEST(SampleArchive, HasTheRecordingsAskedForEachWithItsTruth)
{
    const QMap<QString, QByteArray> files = FilesOf({12, 3});
    const QStringList recordings = EndingWith(files, ".ZU");
    EXPECT_EQ(recordings.size(), 12);
    EXPECT_EQ(EndingWith(files, "/ZuDrv.ini").size(), station::ArchiveDirectories().size());
    EXPECT_EQ(EndingWith(files, "/lines.ini").size(), station::ArchiveDirectories().size());
    for (const QString& recording : recordings) {
        const QJsonObject truth =
            QJsonDocument::fromJson(files[recording.chopped(3) + ".truth.json"]).object();
        EXPECT_EQ(recording.section('/', 1), truth["file"].toString());
        EXPECT_EQ(truth["trigger"].toString().left(4), "2024") << recording.toStdString();
    }
}

TEST(SampleArchive, IsTheSameForTheSameSeedAlone)
{
    EXPECT_EQ(FilesOf({10, 1}), FilesOf({10, 1}));
    EXPECT_NE(FilesOf({10, 1}).values(), FilesOf({10, 2}).values());
}

TEST(SampleArchive, NumbersOfARecorderRiseWithItsTriggers)
{
    const QMap<QString, QByteArray> files = FilesOf({40, 1});
    QMap<QString, QStringList> triggers;
    for (const QString& name : EndingWith(files, ".truth.json"))
        triggers[name.section('/', 0, 0)]
            << QJsonDocument::fromJson(files[name]).object()["trigger"].toString();
    for (const QStringList& ofOne : triggers)
        EXPECT_TRUE(std::is_sorted(ofOne.begin(), ofOne.end())) << ofOne.join(' ').toStdString();
    EXPECT_LT(triggers["lesnaya-1"].last(), "2024-06"); // and is silent from then on
    EXPECT_GT(triggers["uzlovaya-1"].last(), "2024-10");
}

TEST(SampleArchive, HasARecordingThatIsCutOffAndOneThatHasLostAFile)
{
    const QMap<QString, QByteArray> files = FilesOf({12, 1});
    QStringList torn;
    QStringList cut;
    for (const QString& name : EndingWith(files, ".Z02")) {
        const QString stem = name.chopped(2);
        if (!files.contains(stem + "01"))
            torn << stem;
        else if (files[stem + "U"].size() * 3 < files[stem + "01"].size() * 2)
            cut << stem;
    }
    EXPECT_EQ(torn.size(), 1);
    EXPECT_EQ(cut.size(), 1);
}

TEST(SampleArchive, EndsWhenAFileIsNotTaken)
{
    int files = 0;
    EXPECT_FALSE(station::MakeArchive({10, 1}, [&](const NamedFile&) { return ++files < 15; }));
    EXPECT_EQ(files, 15);
}

TEST(Segments, HaveTheSamplesAndChangesOfTheirTimeAndTheStateAtItsStart)
{
    Recording whole;
    whole.startMicroseconds = 999999;
    whole.Add(recorderfile::AnalogChannel{"Q:Ia", "А", {1, 2, 3, 4, 5, 6, 7}, 1000});
    whole.Add(recorderfile::DiscreteChannel{"Q:x", 0, {{0, 0}, {500, 1}, {3000, 0}, {4999, 1}}});
    const std::vector<Recording> segments = station::CutIntoSegments(whole, 3);
    ASSERT_EQ(segments.size(), 2u); // the seventh sample is left over
    const auto analog = [&](size_t i) {
        return std::get<recorderfile::AnalogChannel>(segments[i].sections[0]);
    };
    const auto changes = [&](size_t i) {
        QStringList texts;
        for (const recorderfile::Change& change :
             std::get<recorderfile::DiscreteChannel>(segments[i].sections[1]).changes)
            texts << QStringLiteral("%1:%2").arg(change.time).arg(change.value);
        return texts.join(' ');
    };
    EXPECT_EQ(analog(0).samples, (std::vector<int16_t>{1, 2, 3}));
    EXPECT_EQ(analog(1).samples, (std::vector<int16_t>{4, 5, 6}));
    EXPECT_EQ(changes(0), "0:0 500:1");
    EXPECT_EQ(changes(1), "0:0 1999:1");
    EXPECT_EQ(segments[0].duration, 3000u);
    EXPECT_EQ(segments[1].startTime, whole.startTime + 1);
    EXPECT_EQ(segments[1].startMicroseconds, 2999);
    EXPECT_EQ(segments[1].trigTime, whole.trigTime);
}
