// What the catalogue is told about a recording and a record.
#include "archiveplace.h"

#include "station/station.h"
#include "zucmtr/archive/look.h"
#include "zucmtr/terminal/command.h"

#include <gtest/gtest.h>

using catalogue::Entry;
using catalogue::Kind;

namespace {

// The sample station's recording of a fault, with its ini file.
QString WriteStationFault(const TestDirectory& place)
{
    station::StationOptions options;
    place.Write("ZuDrv.ini", station::MakeIni(options).toUtf8());
    return place.Write(
        "fault.ZU",
        recorderfile::Encode(station::MakeRecording(options, station::StartKind::PositiveSequence).front()));
}

Entry Look(const QString& path, Kind kind)
{
    return archive::Looker({}).Look(path, kind);
}

} // namespace

TEST(Look, AtARecordingFindsWhoWhenWhyAndWhat)
{
    const TestDirectory place;
    const Entry entry = Look(WriteStationFault(place), Kind::Recording);
    EXPECT_EQ(entry.reason, "");
    EXPECT_EQ(entry.station, "ПС Узловая");
    EXPECT_EQ(entry.recorder, "РАС-1");
    EXPECT_EQ(entry.trigger, "2024-01-31T12:00:00.250000+03:00");
    EXPECT_EQ(entry.utcOffset, 180);
    EXPECT_EQ(entry.moment, 1706691600250000);
    EXPECT_EQ(entry.circuit, "ВЛ 110 кВ Восточная");
    EXPECT_EQ(entry.cause, "Пуск ПП ВЛ 110 кВ Восточная:I I1 больше");
    EXPECT_EQ(entry.setting, "Порог срабатывания - 1.440 кА, порог возврата - 1.368 кА");
    EXPECT_EQ(entry.rates, "2400");
    EXPECT_EQ(entry.samples, 4800);
    EXPECT_DOUBLE_EQ(entry.duration, 2);
    ASSERT_TRUE(entry.fault);
    EXPECT_EQ(entry.fault->kind, "AG");
    EXPECT_EQ(entry.fault->circuit, "ВЛ 110 кВ Восточная");
    EXPECT_EQ(entry.fault->direction, "forward");
    EXPECT_NEAR(entry.fault->onset, 0, 0.001);
    EXPECT_NEAR(*entry.fault->clearing, 0.104, 0.001);
    EXPECT_NEAR(*entry.fault->current, 4000, 40);
    EXPECT_NEAR(*entry.operating.trip, 0.056, 0.001);
    EXPECT_EQ(entry.operating.reclosed, true);
    EXPECT_EQ(entry.events.size(), 12u);
    EXPECT_EQ(entry.events[0].kind, "start");
    EXPECT_EQ(entry.digital[entry.events[0].channel].name, "Пуск защит ВЛ 110 кВ Восточная");
    ASSERT_EQ(entry.analog.size(), 32u);
    EXPECT_EQ(entry.analog[0].unit, "В");
    EXPECT_NEAR(*entry.analog[0].greatest, 220000 / 1.7320508 * 1.4142136, 200);
    EXPECT_EQ(*entry.analog[0].least, -*entry.analog[0].greatest);
    EXPECT_EQ(entry.greatestVoltage, 179656.66112399997655);
}

TEST(Look, AtARecordDoesTheSame)
{
    const ArchivePlace place;
    place.Comtrade("x");
    const Entry entry = Look(place.Path("x.cfg"), Kind::Record);
    EXPECT_EQ(entry.station, "S");
    EXPECT_EQ(entry.trigger, "2024-02-01T03:04:05.001000");
    EXPECT_EQ(entry.utcOffset, std::nullopt);
    EXPECT_EQ(entry.moment, 1706756645001000);
    EXPECT_EQ(entry.circuit, "");
    ASSERT_EQ(entry.digital.size(), 1u);
    EXPECT_EQ(entry.digital[0].changes, 1);
    EXPECT_EQ(entry.digital[0].first, 0);
    EXPECT_FALSE(entry.fault);
    EXPECT_FALSE(entry.greatestCurrent);
}

TEST(Look, SaysWhySomethingCannotBeRead)
{
    const TestDirectory place;
    const Entry recording = Look(place.Write("a.ZU", "no recording"), Kind::Recording);
    EXPECT_EQ(recording.reason, "recordingUnreadable");
    EXPECT_NE(recording.error, "");
    const Entry record = Look(place.Write("a.cfg", "no record"), Kind::Record);
    EXPECT_EQ(record.reason, "recordUnreadable");
    EXPECT_NE(record.error, "");
    EXPECT_EQ(Look(place.Path("missing.ZU"), Kind::Recording).reason, "doesNotExist");
}

TEST(Look, TakesEachRecordingWithTheIniFileOfItsDirectory)
{
    const ArchivePlace place;
    place.MakeDirectory("with");
    place.MakeDirectory("without");
    station::StationOptions options;
    place.Write("with/ZuDrv.ini", station::MakeIni(options).toUtf8());
    archive::Looker looker({});
    for (int turn = 0; turn < 2; ++turn) {
        EXPECT_EQ(looker.Look(place.Write("with/a.ZU", SmallFile(1)), Kind::Recording).station, "ПС Узловая");
        EXPECT_EQ(looker.Look(place.Write("without/a.ZU", SmallFile(1)), Kind::Recording).station, "");
    }
}

TEST(Look, HasNoStationWithoutAnIniFileButTheRecorderThatTheRecordingNames)
{
    const TestDirectory place;
    station::StationOptions options;
    const QString path = place.Write(
        "fault.ZU",
        recorderfile::Encode(station::MakeRecording(options, station::StartKind::PositiveSequence).front()));
    archive::Looker looker({});
    EXPECT_EQ(looker.Look(place.Write("first.ZU", SmallFile(1)), Kind::Recording).recorder, "");
    const Entry entry = looker.Look(path, Kind::Recording);
    EXPECT_EQ(entry.station, "");
    EXPECT_EQ(entry.recorder, "ПС Узловая, РАС-1");
    EXPECT_EQ(entry.error, "");
    ASSERT_TRUE(entry.fault);
    EXPECT_EQ(entry.fault->kind, "AG");
}

TEST(Look, ReadsARecordingWithoutALinesFileThatHasAMistakeAndSaysWhy)
{
    const TestDirectory place;
    const QString path = WriteStationFault(place);
    place.Write("lines.ini", "[ВЛ 110 кВ Восточная]\nlength=far\n");
    archive::Looker looker({});
    for (int turn = 0; turn < 2; ++turn) {
        const Entry entry = looker.Look(path, Kind::Recording);
        EXPECT_EQ(entry.reason, "");
        EXPECT_TRUE(entry.error.contains(place.Path("lines.ini"))) << entry.error.toStdString();
        EXPECT_EQ(entry.station, "ПС Узловая");
        EXPECT_TRUE(entry.fault);
    }
}

TEST(Look, ReadsARecordingWithoutAnIniFileOfSeveralRecordersAndSaysWhy)
{
    const TestDirectory place;
    const QString path = WriteStationFault(place);
    place.Write("ZuDrv.ini", station::MakeIni({}).toUtf8() + "\n[Second]\n");
    auto looker = std::make_unique<archive::Looker>(archive::Reading{});
    for (int turn = 0; turn < 2; ++turn) {
        const Entry entry = looker->Look(path, Kind::Recording);
        EXPECT_EQ(entry.reason, "");
        EXPECT_EQ(entry.error, "'" + place.Path("ZuDrv.ini") +
                                   "' describes 2 recorders; name the section of the one by --device: it has "
                                   "[Vostochnaya], [Second]");
        EXPECT_EQ(entry.station, "");
        ASSERT_TRUE(entry.fault);
    }
    looker.reset(); // there is one at a time
    archive::Reading chosen;
    chosen.choice.device = QStringLiteral("Vostochnaya");
    EXPECT_EQ(archive::Looker(chosen).Look(path, Kind::Recording).station, "ПС Узловая");
    chosen.choice.device = QStringLiteral("Third");
    EXPECT_THROW(archive::Looker(chosen).Look(path, Kind::Recording), ConfigurationError);
}
